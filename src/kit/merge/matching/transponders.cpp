#include "kit/merge/matching/transponders.h"

#include <iterator>

namespace zortunedex::kit::merge {

void Transponders::Add(const Service& service, std::size_t place) {
  const Site site = SiteOf(service, m_recognition);
  if (!m_recognition.hasTransponders || site.value == 0) return;
  for (const std::int64_t position : {std::int64_t{service[Part::Position]}, kAll}) {
    for (const std::int64_t line : {std::int64_t{site.line}, kAll}) {
      m_lines[{position, line}][site.value] = place;
    }
  }
}

std::optional<std::size_t> Transponders::LastOf(const Service& service) const {
  const Site site = SiteOf(service, m_recognition);
  if (!m_recognition.hasTransponders || site.value == 0) return std::nullopt;
  std::optional<Found> best;
  const auto look = [&](std::int64_t position) {
    if (site.line == 0) return Look({position, kAll}, site.value, best);
    Look({position, site.line}, site.value, best);
    Look({position, 0}, site.value, best);
  };
  const std::uint32_t position = service[Part::Position];
  if (position == 0) {
    look(kAll);
  } else {
    look(0);
    for (std::uint32_t offset = 0; offset <= 2 * kNearPosition; ++offset) {
      look(position - kNearPosition + offset);
    }
  }
  if (!best) return std::nullopt;
  return best->place;
}

void Transponders::Look(const Line& line, std::uint32_t value, std::optional<Found>& best) const {
  const auto sites = m_lines.find(line);
  if (sites == m_lines.end()) return;
  const auto offer = [&](Sites::const_iterator site) {
    const std::uint32_t distance = site->first < value ? value - site->first : site->first - value;
    if (distance > m_recognition.tolerance) return;
    const bool isBetter = !best || distance < best->distance ||
                          (distance == best->distance && site->second > best->place);
    if (isBetter) best = Found{distance, site->second};
  };
  const auto high = sites->second.lower_bound(value);
  if (high != sites->second.end()) offer(high);
  if (high != sites->second.begin()) offer(std::prev(high));
}

}  // namespace zortunedex::kit::merge
