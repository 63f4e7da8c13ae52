// UTF-8, as the terminal has it, and the wide text of the interfaces.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace zortunedex::kit {

using WideText = std::basic_string<OLECHAR>;

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
  const auto put = [&utf8](std::uint32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

/// UTF-8 of wide text, U+FFFD for lone surrogates.
inline std::string FromWide(WideView wide) {
  std::string utf8;
  while (!wide.empty()) {
    const std::uint32_t character = Next(wide);
    const bool lone = IsHighSurrogate(character) || IsLowSurrogate(character);
    Append(utf8, lone ? kReplacement : character);
  }
  return utf8;
}

/// Takes one character off the front of a text that is not empty; nothing when it is not
/// well-formed there.
inline std::optional<std::uint32_t> Next(std::string_view& utf8) {
  const auto byte = [&utf8](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
  const std::uint32_t first = byte(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || utf8.size() < length) return std::nullopt;
  std::uint32_t character = length == 1 ? first : first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (byte(i) & 0x3FU);
  }
  constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (character < kSmallest[length] || character > 0x10FFFF || IsHighSurrogate(character) ||
      IsLowSurrogate(character)) {
    return std::nullopt;
  }
  utf8.remove_prefix(length);
  return character;
}

/// Wide text of UTF-8; nothing when that is not well-formed.
inline std::optional<WideText> ToWide(std::string_view utf8) {
  WideText wide;
  while (!utf8.empty()) {
    const std::optional<std::uint32_t> character = Next(utf8);
    if (!character) return std::nullopt;
    if (*character >= 0x10000) {
      wide.push_back(static_cast<OLECHAR>(0xD800 + ((*character - 0x10000) >> 10)));
      wide.push_back(static_cast<OLECHAR>(0xDC00 + (*character & 0x3FF)));
    } else {
      wide.push_back(static_cast<OLECHAR>(*character));
    }
  }
  return wide;
}

}  // namespace utf

}  // namespace zortunedex::kit
