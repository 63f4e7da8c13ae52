#include "kit/merge/matching/several.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <tuple>

#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {
namespace {

/// What is found at one place can tell others apart; no real bucket takes more than a few rounds.
constexpr int kRounds = 32;

using Group = std::array<std::uint32_t, 3>;

class SeveralResolver {
 public:
  SeveralResolver(Bucket bucket, const Nodes& left, const Nodes& right, InputSignalType signal,
                  Matching& matching)
      : m_bucket(std::move(bucket)),
        m_left(left),
        m_right(right),
        m_recognition(RecognitionOf(signal)),
        m_matching(matching) {}

  void Run() {
    for (int round = 0; round < kRounds && !m_bucket.IsOneSided(); ++round) {
      const std::size_t before = m_bucket.left.size();
      RunRound();
      if (m_bucket.left.size() == before) break;
    }
    if (!m_bucket.IsOneSided()) SetAside();
  }

 private:
  void RunRound() {
    FindPlaces();
    PairSingles([](const Service& service, std::uint32_t place) -> std::optional<Group> {
      const std::uint32_t name = service[Part::Name];
      return place == 0 || name == 0 ? std::nullopt : std::optional(Group{place, name});
    });
    PairSingles([](const Service&, std::uint32_t place) -> std::optional<Group> {
      return place == 0 ? std::nullopt : std::optional(Group{place});
    });
    PairSingles([](const Service& service, std::uint32_t) -> std::optional<Group> {
      const std::uint32_t name = service[Part::Name];
      return name == 0 ? std::nullopt : std::optional(Group{name});
    });
    PairSingles([](const Service&, std::uint32_t) { return std::optional(Group{}); });
  }

  /// Numbers the places on the air from 1: a gap beyond the tolerance begins a new one.
  void FindPlaces() {
    m_places.clear();
    std::vector<std::pair<std::uint32_t, std::uint32_t>> sites;
    for (const auto& [nodes, side] :
         {std::pair(&m_bucket.left, &m_left), std::pair(&m_bucket.right, &m_right)}) {
      for (const std::size_t node : *nodes) {
        const Site site = SiteOf(side->services[node], m_recognition);
        if (site.value != 0) sites.emplace_back(site.line, site.value);
      }
    }
    std::sort(sites.begin(), sites.end());
    std::uint32_t place = 0;
    for (std::size_t i = 0; i < sites.size(); ++i) {
      const bool isSame = i > 0 && sites[i].first == sites[i - 1].first &&
                          sites[i].second - sites[i - 1].second <= m_recognition.tolerance;
      if (!isSame) ++place;
      m_places[sites[i]] = place;
    }
  }

  std::uint32_t PlaceOf(const Service& service) const {
    const Site site = SiteOf(service, m_recognition);
    const auto found = m_places.find({site.line, site.value});
    return found == m_places.end() ? 0 : found->second;
  }

  template <typename GroupOf>
  void PairSingles(GroupOf groupOf) {
    std::map<Group, Bucket> groups;
    const auto add = [&](const std::vector<std::size_t>& nodes, const Nodes& side,
                         std::vector<std::size_t> Bucket::*member) {
      for (const std::size_t node : nodes) {
        const Service& service = side.services[node];
        if (const auto group = groupOf(service, PlaceOf(service))) {
          (groups[*group].*member).push_back(node);
        }
      }
    };
    add(m_bucket.left, m_left, &Bucket::left);
    add(m_bucket.right, m_right, &Bucket::right);
    for (const auto& [group, bucket] : groups) {
      if (bucket.left.size() == 1 && bucket.right.size() == 1) {
        m_matching.Pair(bucket.left.front(), bucket.right.front());
      }
    }
    KeepOpen(m_bucket, m_matching);
  }

  void SetAside() {
    for (const std::size_t node : m_bucket.left) {
      m_matching.ambiguityOfLeft[node] = m_matching.ambiguities.size();
    }
    for (const std::size_t node : m_bucket.right) {
      m_matching.ambiguityOfRight[node] = m_matching.ambiguities.size();
    }
    m_matching.ambiguities.push_back({m_bucket.left, m_bucket.right});
  }

  Bucket m_bucket;
  const Nodes& m_left;
  const Nodes& m_right;
  const Recognition& m_recognition;
  Matching& m_matching;
  std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> m_places;
};

}  // namespace

void KeepOpen(Bucket& bucket, const Matching& matching) {
  std::erase_if(bucket.left, [&](std::size_t node) { return !matching.IsOpenLeft(node); });
  std::erase_if(bucket.right, [&](std::size_t node) { return !matching.IsOpenRight(node); });
}

void ResolveSeveral(Bucket bucket, const Nodes& left, const Nodes& right, InputSignalType signal,
                    Matching& matching) {
  KeepOpen(bucket, matching);
  if (bucket.IsOneSided()) return;
  SeveralResolver(std::move(bucket), left, right, signal, matching).Run();
}

}  // namespace zortunedex::kit::merge
