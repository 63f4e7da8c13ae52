// UTF-8, and the wide text of the interfaces.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/bstr.h"

namespace zortunedex::detail {

using Wide = std::basic_string<OLECHAR>;

constexpr bool IsSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

inline void AppendUtf8(std::string& text, std::uint32_t character) {
  if (character < 0x80) {
    text.push_back(static_cast<char>(character));
    return;
  }
  const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  const std::uint32_t mark = more == 1 ? 0xC0 : more == 2 ? 0xE0 : 0xF0;
  text.push_back(static_cast<char>(mark | character >> (6 * more)));
  for (int i = more; i-- > 0;) {
    text.push_back(static_cast<char>(0x80 | (character >> (6 * i) & 0x3F)));
  }
}

/// UTF-8 of wide text; U+FFFD stands for half a pair of surrogates.
inline std::string ToUtf8(WideView wide) {
  std::string text;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    std::uint32_t character = wide[i];
    if (IsSurrogate(character)) {
      const std::uint32_t next = i + 1 < wide.size() ? wide[i + 1] : 0U;
      const bool isPair = character < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF;
      character = isPair ? 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00) : 0xFFFD;
      if (isPair) ++i;
    }
    AppendUtf8(text, character);
  }
  return text;
}

/// Takes one character off the front of a text that is not empty; nothing where it is not UTF-8.
inline std::optional<std::uint32_t> NextCharacter(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t more = first < 0x80   ? 0
                           : first < 0xC2 ? 4
                           : first < 0xE0 ? 1
                           : first < 0xF0 ? 2
                           : first < 0xF5 ? 3
                                          : 4;
  if (more == 4 || text.size() <= more) return std::nullopt;
  std::uint32_t character = more == 0 ? first : first & (0x3FU >> more);
  for (std::size_t i = 1; i <= more; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (byte & 0x3F);
  }
  constexpr std::uint32_t kLowest[] = {0, 0x80, 0x800, 0x10000};
  if (character < kLowest[more] || character > 0x10FFFF || IsSurrogate(character)) {
    return std::nullopt;
  }
  text.remove_prefix(more + 1);
  return character;
}

/// Wide text of UTF-8; nothing where it is not well-formed.
inline std::optional<Wide> ToWide(std::string_view text) {
  Wide wide;
  while (!text.empty()) {
    const std::optional<std::uint32_t> character = NextCharacter(text);
    if (!character) return std::nullopt;
    if (*character < 0x10000) {
      wide.push_back(static_cast<OLECHAR>(*character));
    } else {
      wide.push_back(static_cast<OLECHAR>(0xD7C0 + (*character >> 10)));
      wide.push_back(static_cast<OLECHAR>(0xDC00 + (*character & 0x3FF)));
    }
  }
  return wide;
}

/// True for a character that no XML file can hold.
constexpr bool IsForbidden(std::uint32_t unit) {
  const bool isBlank = unit == '\t' || unit == '\n' || unit == '\r';
  return (unit < 0x20 && !isBlank) || unit == 0xFFFE || unit == 0xFFFF;
}

/// Why a text can stand in no file, whatever its code page; null when it can.
inline const char* WhyRefused(std::string_view text) {
  const std::optional<Wide> wide = ToWide(text);
  if (!wide) return "the text is not UTF-8";
  for (const OLECHAR unit : *wide) {
    if (IsForbidden(unit)) return "the text holds a character that no file can hold";
  }
  return nullptr;
}

}  // namespace zortunedex::detail
