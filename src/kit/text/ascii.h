// Numbers and words as they stand in files and on command lines.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zortunedex::kit {

/// Decimal, or hexadecimal behind 0x, with an optional minus sign.
std::optional<std::int64_t> ParseNumber(std::string_view text);
/// The same inside a range.
std::optional<std::int64_t> ParseNumber(std::string_view text, std::int64_t lowest,
                                        std::int64_t highest);
/// ASCII letters only.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

}  // namespace zortunedex::kit
