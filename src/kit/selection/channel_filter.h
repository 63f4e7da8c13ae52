// Which channels of a list are meant.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kit/selection/channel_field.h"
#include "kit/selection/index_ranges.h"

namespace zortunedex::kit {

/// The value that a field must have.
struct FieldCondition {
  std::string field;
  std::string value;
};

/// Everything that is given must hold.
struct ChannelFilter {
  bool all = false;                 ///< nothing else has to be given
  std::vector<IndexRange> indexes;  ///< one of these; every index where there are none
  std::optional<std::string> name;  ///< part of the name or of the display name, in any letter case
  bool favorites = false;
  bool locked = false;
  std::optional<DWORD>
      services;  ///< mask of service types; without one a channel matches all but 0
  std::vector<FieldCondition> where;
};

/// False for a filter that nobody gave anything to choose by.
bool IsGiven(const ChannelFilter& filter);

/// A condition that is known to make sense for a signal type. Numbers compare as numbers, a
/// negative one also as the number without a sign that has its bits; words and marks in any letter
/// case; texts have to be the same.
class FieldTest {
 public:
  /// InvalidArgument for a field that channels of the type have not, and a value that it never has.
  FieldTest(InputSignalType signal, const FieldCondition& condition);

  bool Accepts(const Channel& channel, const NarrowText& narrow) const;

 private:
  void TakeWord(const std::string& value, bool known, const std::string& choices);
  void TakeNumber(const std::string& value);

  ChannelField m_field;
  FieldValue m_wanted;
};

/// A filter that is known to make sense for a signal type.
class ChannelMatcher {
 public:
  /// InvalidArgument as of FieldTest, and for a name that is not UTF-8.
  ChannelMatcher(const ChannelFilter& filter, InputSignalType signal);

  /// The channels that match, in the order of the list.
  std::vector<Channel> Matching(const std::vector<Channel>& channels,
                                const NarrowText& narrow) const;
  /// The same for who wants to change them. Failure when a single index, or the first or last one
  /// of a range, is no channel's, and when nothing matches.
  std::vector<Channel> Chosen(const std::vector<Channel>& channels, const NarrowText& narrow) const;

 private:
  bool Accepts(const Channel& channel, const NarrowText& narrow) const;
  void RequireIndexes(const std::vector<Channel>& channels) const;

  ChannelFilter m_filter;
  std::vector<IndexRange> m_indexes;  ///< in order
  WideText m_name;
  std::vector<FieldTest> m_tests;
};

}  // namespace zortunedex::kit
