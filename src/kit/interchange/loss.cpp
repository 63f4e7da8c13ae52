#include "kit/interchange/loss.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zortunedex::kit::interchange {
namespace {

constexpr CodeMeaning kCodes[] = {
    {Code::NoPlace, "field without a place in the target"},
    {Code::StreamsDropped, "further streams of a kind dropped"},
    {Code::StreamKindDropped, "stream types or languages dropped"},
    {Code::MarkDropped, "favourite, lock or order dropped"},
    {Code::WordLacking, "word that the list lacks became NotSet"},
    {Code::SecondGenerationDropped, "roll-off, pilot, stream id or T2 value dropped"},
    {Code::CaIdsBecameFlag, "several CA ids became a flag"},
    {Code::StreamUnknown, "stream of unknown kind left out"},
    {Code::NameChanged, "name changed: separator, length or code page"},
    {Code::NumberRounded, "number rounded"},
    {Code::CaFlagCleared, "CA flag became 0"},
    {Code::ProviderTaken, "provider taken as network name"},
    {Code::SystemAssumed, "system or modulation assumed"},
    {Code::LanguageAssumed, "language assumed"},
    {Code::TypeAssumed, "stream or service type assumed"},
    {Code::PositionUnknown, "position unknown, taken as 0"},
    {Code::TuningDerived, "bandwidth or RF channel derived"},
    {Code::SignalNotOfTarget, "signal without a form in the target: channel left out"},
    {Code::SignalNotOfList, "signal without a form in the list: channel left out"},
    {Code::IdentityTwice, "identity twice: channel left out"},
    {Code::NoIdentity, "no identity: channel left out"},
    {Code::LineNotUnderstood, "line not understood: left out"},
    {Code::KeyUnknown, "unknown key ignored"},
    {Code::ValueOutOfRange, "value out of range: left out"},
};
static_assert(std::ranges::is_sorted(kCodes, {}, &CodeMeaning::code));

}  // namespace

std::span<const CodeMeaning> Codes() { return kCodes; }

std::string CodeName(Code code) { return "L" + std::to_string(static_cast<unsigned>(code)); }

const char* MeaningOf(Code code) {
  return std::ranges::lower_bound(kCodes, code, {}, &CodeMeaning::code)->text;
}

void Losses::Add(Code code, std::string_view field, const Place& place, FieldValue value,
                 FieldValue became) {
  if (m_all.size() >= m_most) {
    ++m_beyond[code];
    return;
  }
  m_all.push_back({code, std::string(field), place, std::move(value), std::move(became)});
}

void Losses::Take(Losses&& more) {
  const std::size_t room = std::min(m_most - std::min(m_most, m_all.size()), more.m_all.size());
  const auto end = more.m_all.begin() + static_cast<std::ptrdiff_t>(room);
  m_all.insert(m_all.end(), std::make_move_iterator(more.m_all.begin()),
               std::make_move_iterator(end));
  for (auto loss = end; loss != more.m_all.end(); ++loss) ++m_beyond[loss->code];
  for (const auto& [code, count] : more.m_beyond) m_beyond[code] += count;
  more.m_all.clear();
  more.m_beyond.clear();
}

bool Losses::Has(Code code) const {
  return m_beyond.contains(code) || std::ranges::find(m_all, code, &Loss::code) != m_all.end();
}

}  // namespace zortunedex::kit::interchange
