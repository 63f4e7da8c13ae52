// Attributes of a channel by their names in the file, whichever of them its signal type has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kit/model/channel.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit::interchange {

struct StreamEntry {
  std::uint32_t type = 0;
  std::uint32_t pid = 0;
  std::uint32_t language = 0;  ///< twelve bits
};

class StationValues {
 public:
  /// All three outlive the values.
  StationValues(const Channel& channel, InputSignalType signal, const NarrowText& narrow);

  /// 0 for an attribute that the type has not.
  std::uint32_t Number(std::string_view attribute) const;
  /// UTF-8; empty for an attribute that the type has not.
  std::string Text(std::string_view attribute) const;
  /// A tuning parameter; "not set" also for a value without a word and where the type has none.
  template <typename Word>
  Word WordOf(std::string_view attribute) const {
    return static_cast<Word>(WordValue(attribute));
  }
  /// Empty for a list that the type has not.
  std::vector<StreamEntry> Streams(std::string_view element) const;

 private:
  std::int32_t WordValue(std::string_view attribute) const;

  const Channel& m_channel;
  const station_blocks::Layout& m_layout;
  const NarrowText& m_narrow;
};

/// Row of an attribute of the block or the record; null when the type has none.
const station_blocks::Field* FindAttribute(const station_blocks::Layout& layout,
                                           std::string_view attribute);
const station_blocks::StreamList* FindList(const station_blocks::Layout& layout,
                                           std::string_view element);

}  // namespace zortunedex::kit::interchange
