#include "kit/selection/channel_filter.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/text/ascii.h"
#include "kit/text/letter_case.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Form;

namespace {

InvalidArgument NotTaken(const std::string& field, const std::string& choices,
                         const std::string& value) {
  return InvalidArgument{field + " takes " + choices + ", not '" + value + "'"};
}

/// Bits of a number of 32 bits, with a sign or without one.
std::uint32_t Bits(std::int64_t number) { return static_cast<std::uint32_t>(number); }

bool AreEqual(const FieldValue& found, const FieldValue& wanted, bool words) {
  if (found.index() != wanted.index()) return false;
  if (const auto* number = std::get_if<std::int64_t>(&found)) {
    return Bits(*number) == Bits(std::get<std::int64_t>(wanted));
  }
  const auto* text = std::get_if<std::string>(&found);
  if (text == nullptr || !words) return found == wanted;
  return EqualIgnoringCase(*text, std::get<std::string>(wanted));
}

}  // namespace

bool IsGiven(const ChannelFilter& filter) {
  return filter.all || !filter.indexes.empty() || filter.name || filter.favorites ||
         filter.locked || filter.services || !filter.where.empty();
}

FieldTest::FieldTest(InputSignalType signal, const FieldCondition& condition)
    : m_field(signal, condition.field) {
  const std::string& value = condition.value;
  const RecordField* record = m_field.Record();
  if (record == nullptr) {
    const Form form = m_field.Form();
    if (form == Form::Text || form == Form::Base64) {
      m_wanted = value;
    } else if (tuning_words::Of(form).empty() || ParseNumber(value)) {
      TakeNumber(value);
    } else {
      TakeWord(value, tuning_words::Value(form, value).has_value(), tuning_words::Choices(form));
    }
  } else if (record->kind == RecordField::Kind::Number) {
    TakeNumber(value);
  } else if (record->kind == RecordField::Kind::Mark) {
    const std::optional<bool> mark = ParseMark(value);
    if (!mark) throw NotTaken(condition.field, "yes or no", value);
    m_wanted = *mark;
  } else if (record->kind == RecordField::Kind::Service) {
    if (value == "-") return;
    TakeWord(value, ParseServiceType(value).has_value(),
             ServiceTypeChoices() + " (the number in the file is block." + condition.field + ")");
  } else {
    m_wanted = value;
  }
}

void FieldTest::TakeWord(const std::string& value, bool known, const std::string& choices) {
  if (!known) throw NotTaken(m_field.Name(), choices, value);
  m_wanted = value;
}

void FieldTest::TakeNumber(const std::string& value) {
  const std::optional<std::int64_t> number = ParseNumber(value, INT32_MIN, UINT32_MAX);
  if (!number) throw NotTaken(m_field.Name(), "a number of 32 bits", value);
  m_wanted = *number;
}

bool FieldTest::Accepts(const Channel& channel, const NarrowText& narrow) const {
  const RecordField* record = m_field.Record();
  const bool words = record != nullptr ? record->kind == RecordField::Kind::Service
                                       : !tuning_words::Of(m_field.Form()).empty();
  const FieldValue found = m_field.Of(channel, narrow);
  // A service type is nothing where there is none; an entry that is not there equals nothing.
  if (found.index() == 0 && record == nullptr) return false;
  return AreEqual(found, m_wanted, words);
}

ChannelMatcher::ChannelMatcher(const ChannelFilter& filter, InputSignalType signal)
    : m_filter(filter), m_indexes(InOrder(filter.indexes)) {
  if (filter.name) m_name = WithoutCase(WideArgument(*filter.name));
  for (const FieldCondition& condition : filter.where) m_tests.emplace_back(signal, condition);
}

bool ChannelMatcher::Accepts(const Channel& channel, const NarrowText& narrow) const {
  if (!m_indexes.empty() && !Holds(m_indexes, channel.index)) return false;
  if (m_filter.favorites && channel.favorite == 0) return false;
  if (m_filter.locked && channel.lock == 0) return false;
  if (m_filter.services) {
    const EServiceType service =
        channel.serviceType == ServiceUnknown ? ServiceAll : channel.serviceType;
    if ((static_cast<DWORD>(service) & *m_filter.services) == 0) return false;
  }
  if (m_filter.name && !HoldsIgnoringCase(channel.name, m_name) &&
      !HoldsIgnoringCase(channel.displayName, m_name)) {
    return false;
  }
  return std::all_of(m_tests.begin(), m_tests.end(),
                     [&](const FieldTest& test) { return test.Accepts(channel, narrow); });
}

std::vector<Channel> ChannelMatcher::Matching(const std::vector<Channel>& channels,
                                              const NarrowText& narrow) const {
  std::vector<Channel> matching;
  for (const Channel& channel : channels) {
    if (Accepts(channel, narrow)) matching.push_back(channel);
  }
  return matching;
}

std::vector<Channel> ChannelMatcher::Chosen(const std::vector<Channel>& channels,
                                            const NarrowText& narrow) const {
  RequireIndexes(channels);
  std::vector<Channel> chosen = Matching(channels, narrow);
  if (chosen.empty()) throw Failure{E_FAIL, "no channel matches"};
  return chosen;
}

void ChannelMatcher::RequireIndexes(const std::vector<Channel>& channels) const {
  if (m_filter.indexes.empty()) return;
  std::vector<UINT> indexes;
  indexes.reserve(channels.size());
  for (const Channel& channel : channels) indexes.push_back(channel.index);
  std::sort(indexes.begin(), indexes.end());
  for (const IndexRange& range : m_filter.indexes) {
    for (const UINT index : {range.first, range.last}) {
      if (std::binary_search(indexes.begin(), indexes.end(), index)) continue;
      throw Failure{E_FAIL, "no channel with index " + std::to_string(index)};
    }
  }
}

}  // namespace zortunedex::kit
