#include "kit/xml/damage_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

namespace markup {

void DamageList::Add(Reason reason, Span span) {
  Damage damage;
  damage.reason = reason;
  damage.span = span;
  Put(damage, {});
}

void DamageList::Add(Reason reason, Span span, std::vector<Edit> mends) {
  Damage damage;
  damage.reason = reason;
  damage.span = span;
  damage.isMended = true;
  Put(damage, std::move(mends));
}

void DamageList::Add(const CharacterRuns& characters) {
  for (const CharacterRuns::Run& run : characters.All()) {
    if (run.isMended) {
      AddReplacement(run.reason, run.span, run.text);
    } else {
      Add(run.reason, run.span);
    }
  }
}

void DamageList::Put(Damage damage, std::vector<Edit> mends) {
  if (m_damages.size() > kMostDamages) return;
  if (m_damages.size() == kMostDamages) {
    mends.clear();
    damage.reason = Reason::TooManyDamages;
    damage.isMended = false;
  }
  damage.firstMend = static_cast<std::uint32_t>(m_mends.size());
  damage.mendCount = static_cast<std::uint32_t>(mends.size());
  m_damages.push_back(damage);
  std::move(mends.begin(), mends.end(), std::back_inserter(m_mends));
}

void DamageList::Finish(std::vector<Damage>& damages, std::vector<Edit>& mends) {
  MendInner(DropInnerMends());
  std::stable_sort(m_damages.begin(), m_damages.end(),
                   [](const Damage& a, const Damage& b) { return a.span.begin < b.span.begin; });
  damages = std::move(m_damages);
  mends = std::move(m_mends);
}

/// Answers the spans of the replacements that stay, in ascending order.
std::vector<Span> DamageList::DropInnerMends() {
  std::vector<std::uint32_t> order(m_mends.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
    const Span& left = m_mends[a].span;
    const Span& right = m_mends[b].span;
    if (left.begin != right.begin) return left.begin < right.begin;
    // Of two for the same span what was found out later counts.
    return left.end != right.end ? left.end > right.end : !left.IsEmpty() && a > b;
  });
  std::vector<Span> outer;
  std::vector<bool> isDropped(m_mends.size());
  for (const std::uint32_t i : order) {
    const Span span = m_mends[i].span;
    const bool isFree = outer.empty() || span.begin >= outer.back().end ||
                        (span.IsEmpty() && span.begin == outer.back().begin);
    isDropped[i] = !isFree;
    if (isFree && !span.IsEmpty()) outer.push_back(span);
  }
  std::vector<Edit> kept;
  for (Damage& damage : m_damages) {
    const std::size_t first = damage.firstMend;
    damage.firstMend = static_cast<std::uint32_t>(kept.size());
    for (std::size_t i = first; i < first + damage.mendCount; ++i) {
      if (!isDropped[i]) kept.push_back(std::move(m_mends[i]));
    }
    damage.mendCount = static_cast<std::uint32_t>(kept.size()) - damage.firstMend;
  }
  m_mends = std::move(kept);
  return outer;
}

void DamageList::MendInner(const std::vector<Span>& outer) {
  for (Damage& damage : m_damages) {
    if (damage.isMended) continue;
    const auto behind =
        std::upper_bound(outer.begin(), outer.end(), damage.span.begin,
                         [](std::uint32_t begin, const Span& span) { return begin < span.begin; });
    damage.isMended = behind != outer.begin() && std::prev(behind)->Contains(damage.span);
  }
}

}  // namespace markup
