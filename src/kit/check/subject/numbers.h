// Numbers as the library reads them, and how they are written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zortunedex::kit::check {

enum class Spelling : std::uint8_t {
  Plain,       ///< as the library writes it; unsigned above 2^31, too
  Unusual,     ///< the same number otherwise: leading zeros, a plus, minus zero
  OtherText,   ///< digits with something else around them, or no digits at all
  OutOfRange,  ///< digits alone, but beyond 32 bits
};

struct Number {
  std::int32_t value = 0;  ///< as read: the low 32 bits
  Spelling spelling = Spelling::OtherText;
};

Number ReadNumber(std::string_view text);

/// Frequencies and other numbers without a sign.
constexpr std::uint32_t Unsigned(std::int32_t value) { return static_cast<std::uint32_t>(value); }

}  // namespace zortunedex::kit::check
