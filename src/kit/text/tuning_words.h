// The words of the satellite parameters, as the channel file has them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/station_blocks.h"

namespace zortunedex::kit::tuning_words {

struct Word {
  std::int32_t value;
  const char* text;
};

/// The words of a form that the file gives back as what was written; empty for a form without
/// words.
std::span<const Word> Of(station_blocks::Form form);

/// Value of a word in any letter case.
std::optional<std::int32_t> Value(station_blocks::Form form, std::string_view text);
/// Word of a value as the file has it (0 is written as NotSet), null where it has none.
const char* Text(station_blocks::Form form, std::int32_t value);
/// What comes back from the file: 0 and values without a word do not.
std::int32_t AsRead(station_blocks::Form form, std::int32_t value);
/// "a, b or c".
std::string Choices(station_blocks::Form form);

}  // namespace zortunedex::kit::tuning_words
