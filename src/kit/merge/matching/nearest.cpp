#include "kit/merge/matching/nearest.h"

#include <algorithm>
#include <queue>
#include <tuple>

namespace zortunedex::kit::merge {
namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

/// The points that are left, each with its neighbours. The nearest two of different sides are
/// always neighbours: one between them would be nearer to one of the two.
class Line {
 public:
  Line(std::vector<Point> points, std::uint32_t reach)
      : m_points(std::move(points)), m_reach(reach) {
    std::sort(m_points.begin(), m_points.end(), [](const Point& a, const Point& b) {
      return std::tuple(a.value, !a.isLeft, a.node) < std::tuple(b.value, !b.isLeft, b.node);
    });
    for (std::size_t i = 0; i < m_points.size(); ++i) {
      m_before.push_back(i == 0 ? kNowhere : i - 1);
      m_behind.push_back(i + 1 == m_points.size() ? kNowhere : i + 1);
    }
    m_isTaken.resize(m_points.size());
    for (std::size_t i = 0; i + 1 < m_points.size(); ++i) Offer(i, i + 1);
  }

  std::vector<std::pair<std::size_t, std::size_t>> Take() {
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    while (!m_offers.empty()) {
      const auto [distance, low, high] = m_offers.top();
      m_offers.pop();
      if (m_isTaken[low] || m_isTaken[high]) continue;
      const Point& a = m_points[low];
      const Point& b = m_points[high];
      pairs.emplace_back(a.isLeft ? a.node : b.node, a.isLeft ? b.node : a.node);
      Remove(low);
      Remove(high);
      const std::size_t before = m_before[low];
      const std::size_t behind = m_behind[high];
      if (before != kNowhere && behind != kNowhere) Offer(before, behind);
    }
    return pairs;
  }

 private:
  using Pair = std::tuple<std::uint32_t, std::size_t, std::size_t>;

  void Offer(std::size_t low, std::size_t high) {
    if (m_points[low].isLeft == m_points[high].isLeft) return;
    const std::uint32_t distance = m_points[high].value - m_points[low].value;
    if (distance <= m_reach) m_offers.emplace(distance, low, high);
  }

  void Remove(std::size_t i) {
    m_isTaken[i] = true;
    if (m_before[i] != kNowhere) m_behind[m_before[i]] = m_behind[i];
    if (m_behind[i] != kNowhere) m_before[m_behind[i]] = m_before[i];
  }

  std::vector<Point> m_points;
  std::uint32_t m_reach;
  std::vector<std::size_t> m_before;
  std::vector<std::size_t> m_behind;
  std::vector<bool> m_isTaken;
  std::priority_queue<Pair, std::vector<Pair>, std::greater<>> m_offers;
};

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> NearestPairs(std::vector<Point> points,
                                                              std::uint32_t reach) {
  return Line(std::move(points), reach).Take();
}

}  // namespace zortunedex::kit::merge
