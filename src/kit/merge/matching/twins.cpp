#include "kit/merge/matching/twins.h"

#include <iterator>

namespace zortunedex::kit::merge {

Service Twins::KeyOf(const Service& service) const {
  Service key = IdentityKey(service, m_signal);
  // One that is not known is near none.
  key[m_recognition.site] = service[m_recognition.site] == 0 ? 1 : 0;
  return key;
}

void Twins::Add(const Service& service, std::size_t node) {
  if (!IsIdentified(service, m_signal)) return;
  m_known[KeyOf(service)].try_emplace(service[m_recognition.site], node);
}

std::optional<std::size_t> Twins::Find(const Service& service) const {
  if (!IsIdentified(service, m_signal)) return std::nullopt;
  const auto known = m_known.find(KeyOf(service));
  if (known == m_known.end()) return std::nullopt;
  const std::uint32_t value = service[m_recognition.site];
  const auto high = known->second.lower_bound(value);
  if (high != known->second.end() && high->first - value <= m_recognition.tolerance) {
    return high->second;
  }
  if (high != known->second.begin()) {
    const auto low = std::prev(high);
    if (value - low->first <= m_recognition.tolerance) return low->second;
  }
  return std::nullopt;
}

}  // namespace zortunedex::kit::merge
