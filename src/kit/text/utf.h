// UTF-8, as the terminal has it, and the wide text of the interfaces.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "api/zortunedex/text.hpp"

namespace zortunedex::kit {

using WideText = detail::Wide;

namespace utf {

inline constexpr std::uint32_t kReplacement = 0xFFFD;

inline bool IsHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
inline bool IsLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Takes one character off the front of a text that is not empty; a lone surrogate comes as itself.
inline std::uint32_t Next(WideView& wide) {
  const std::uint32_t first = wide.front();
  wide.remove_prefix(1);
  if (!IsHighSurrogate(first) || wide.empty() || !IsLowSurrogate(wide.front())) return first;
  const std::uint32_t second = wide.front();
  wide.remove_prefix(1);
  return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

inline void Append(std::string& utf8, std::uint32_t character) {
  detail::AppendUtf8(utf8, character);
}

/// UTF-8 of wide text, U+FFFD for lone surrogates.
inline std::string FromWide(WideView wide) { return detail::ToUtf8(wide); }

/// Takes one character off the front of a text that is not empty; nothing when it is not
/// well-formed there.
inline std::optional<std::uint32_t> Next(std::string_view& utf8) {
  return detail::NextCharacter(utf8);
}

/// Wide text of UTF-8; nothing when that is not well-formed.
inline std::optional<WideText> ToWide(std::string_view utf8) { return detail::ToWide(utf8); }

}  // namespace utf

}  // namespace zortunedex::kit
