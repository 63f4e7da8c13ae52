#include "kit/xml/tree/damage_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

namespace zortunedex::kit::markup {
namespace {

bool IsOfCharacters(const Damage& damage) {
  return damage.reason == Reason::NotUtf8 || damage.reason == Reason::ForbiddenCharacter;
}

}  // namespace

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
  if (m_isFull) return;
  const bool hasRoom = m_damages.size() < kMostDamages;
  if (!hasRoom || m_mends.size() + mends.size() > kMostDamages) {
    m_isFull = true;
    mends.clear();
    damage.reason = Reason::TooManyDamages;
    damage.isMended = false;
  }
  m_areBeyondReading = m_areBeyondReading || IsBeyondReading(damage.reason);
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

/// Answers the spans of the replacements of whole parts, in ascending order.
std::vector<Span> DamageList::DropInnerMends() {
  std::vector<Span> outer;
  const std::vector<bool> isKept = ChooseMends(outer);
  std::vector<Edit> kept;
  for (Damage& damage : m_damages) {
    const std::size_t first = damage.firstMend;
    damage.firstMend = static_cast<std::uint32_t>(kept.size());
    for (std::size_t i = first; i < first + damage.mendCount; ++i) {
      if (isKept[i]) kept.push_back(std::move(m_mends[i]));
    }
    const auto count = static_cast<std::uint32_t>(kept.size()) - damage.firstMend;
    // What surrounds it, or begins or ends in it, has another idea of it.
    if (count < damage.mendCount && IsOfCharacters(damage)) damage.isMended = false;
    damage.mendCount = count;
  }
  m_mends = std::move(kept);
  return outer;
}

/// The mends that go together: those of markup first, the outer ones before those in them.
std::vector<bool> DamageList::ChooseMends(std::vector<Span>& outer) const {
  std::vector<bool> isOfCharacters(m_mends.size());
  for (const Damage& damage : m_damages) {
    const std::size_t end = damage.firstMend + damage.mendCount;
    for (std::size_t i = damage.firstMend; i < end; ++i) {
      isOfCharacters[i] = IsOfCharacters(damage);
    }
  }
  std::vector<std::uint32_t> order(m_mends.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
    const Span& left = m_mends[a].span;
    const Span& right = m_mends[b].span;
    if (left.begin != right.begin) return left.begin < right.begin;
    // Of two for the same span what was found out later counts.
    return left.end != right.end ? left.end > right.end : a > b;
  });
  std::vector<bool> isKept(m_mends.size());
  Edits edits;
  for (const bool areCharacters : {false, true}) {
    for (const std::uint32_t i : order) {
      if (isOfCharacters[i] != areCharacters) continue;
      const Span span = m_mends[i].span;
      isKept[i] = edits.Add({span, {}});
      if (isKept[i] && !areCharacters && !span.IsEmpty()) outer.push_back(span);
    }
  }
  return isKept;
}

void DamageList::MendInner(const std::vector<Span>& outer) {
  for (Damage& damage : m_damages) {
    // What is wrong with the file as a whole stands nowhere.
    const bool isOfFile = damage.span.IsEmpty() || damage.reason == Reason::TooManyDamages;
    if (damage.isMended || isOfFile) continue;
    const auto behind =
        std::upper_bound(outer.begin(), outer.end(), damage.span.begin,
                         [](std::uint32_t begin, const Span& span) { return begin < span.begin; });
    damage.isMended = behind != outer.begin() && std::prev(behind)->Contains(damage.span);
  }
}

}  // namespace zortunedex::kit::markup
