#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace utf8 {

inline constexpr char32_t kReplacement = 0xFFFD;

struct Character {
  char32_t code;
  std::size_t length;  ///< bytes that it takes
};

/// The first character of `text`, which is not empty. Ill-formed bytes read as U+FFFD, one for each
/// longest beginning of a well-formed character.
Character First(std::string_view text);

void Append(std::string& text, char32_t code);

std::string FromWide(std::u16string_view wide);
std::u16string ToWide(std::string_view text);

/// See text::CutLength.
std::size_t CutLength(std::string_view text, std::size_t limit);

}  // namespace utf8
