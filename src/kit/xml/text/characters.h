// What XML makes of single characters.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zortunedex::kit::markup {

inline constexpr std::string_view kBlanks = " \t\r\n";
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Classes of bytes.
inline constexpr std::uint8_t kNameByte = 1;       ///< may stand in a name
inline constexpr std::uint8_t kNameStartByte = 2;  ///< and begin it
inline constexpr std::uint8_t kBlankByte = 4;
inline constexpr std::uint8_t kUnusualByte = 8;   ///< in a name: a colon or no ASCII
inline constexpr std::uint8_t kControlByte = 16;  ///< XML has no such character
inline constexpr std::uint8_t kHighByte = 32;     ///< no ASCII
inline constexpr std::uint8_t kLineByte = 64;     ///< a tab or a part of a line break
inline constexpr std::uint8_t kMarkupByte = 128;  ///< & or <

inline constexpr std::array<std::uint8_t, 256> kByteClasses = [] {
  std::array<std::uint8_t, 256> classes{};
  for (std::size_t i = 0; i < 0x20; ++i) classes[i] = kControlByte;
  for (std::size_t i = 0x80; i < 0x100; ++i) {
    classes[i] = kNameByte | kNameStartByte | kUnusualByte | kHighByte;
  }
  for (std::size_t i = 'a'; i <= 'z'; ++i) classes[i] = kNameByte | kNameStartByte;
  for (std::size_t i = 'A'; i <= 'Z'; ++i) classes[i] = kNameByte | kNameStartByte;
  for (std::size_t i = '0'; i <= '9'; ++i) classes[i] = kNameByte;
  classes['_'] = kNameByte | kNameStartByte;
  classes[':'] = kNameByte | kNameStartByte | kUnusualByte;
  classes['-'] = classes['.'] = kNameByte;
  classes[' '] = kBlankByte;
  classes['\t'] = classes['\r'] = classes['\n'] = kBlankByte | kLineByte;
  classes['&'] = classes['<'] = kMarkupByte;
  return classes;
}();

constexpr std::uint8_t ClassesOf(char byte) {
  return kByteClasses[static_cast<unsigned char>(byte)];
}

constexpr bool Is(char byte, std::uint8_t classes) { return (ClassesOf(byte) & classes) != 0; }

/// XML has this character.
constexpr bool IsCharacter(std::uint32_t character) {
  return character == '\t' || character == '\n' || character == '\r' ||
         (character >= 0x20 && character <= 0xD7FF) ||
         (character >= 0xE000 && character <= 0xFFFD) ||
         (character >= 0x10000 && character <= 0x10FFFF);
}

/// A name that begins with this character is one.
bool IsNameStart(std::uint32_t character);

/// A name, or a prefix, a colon and a name.
bool IsQualifiedName(std::string_view text);

/// Place of the first byte that is not blank, or the end.
inline std::size_t SkipBlanks(std::string_view text, std::size_t from) {
  while (from < text.size() && Is(text[from], kBlankByte)) ++from;
  return from;
}

/// Nothing but blanks, or nothing.
inline bool IsBlankText(std::string_view text) {
  return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

}  // namespace zortunedex::kit::markup
