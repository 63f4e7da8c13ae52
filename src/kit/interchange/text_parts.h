// Parts of a line, and numbers that are digits alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zortunedex::kit::interchange {

/// The text in front of the separator, taken off the front together with it.
std::string_view TakeUpTo(char separator, std::string_view& rest);

/// Nothing for what is not digits alone; the highest number there is for what is beyond it.
std::optional<std::uint64_t> DigitsOf(std::string_view text, int base = 10);

}  // namespace zortunedex::kit::interchange
