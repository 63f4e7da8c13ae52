#include "kit/text/columns/display_width.h"

#include <gtest/gtest.h>

#include "kit/text/columns/display_width_table.h"

namespace zortunedex::kit {

namespace {

template <std::size_t Count>
void ExpectAscending(const display_width::CharacterRange (&ranges)[Count]) {
  std::uint32_t next = 0;
  for (const display_width::CharacterRange& range : ranges) {
    EXPECT_LE(next, range.first);
    EXPECT_LE(range.first, range.last);
    next = range.last + 1;
  }
}

TEST(DisplayWidth, TablesAscend) {
  ExpectAscending(display_width::kWidthless);
  ExpectAscending(display_width::kWide);
}

TEST(DisplayWidth, OfCharacters) {
  const auto width = [](std::uint32_t character) { return display_width::Of(character); };
  EXPECT_EQ(0U, width(0));
  for (const std::uint32_t one :
       {0x20U, 0x7EU, 0xADU, 0xE9U, 0x2FFU, 0x3B1U, 0x416U, 0x5D0U, 0xE01U, 0x2026U, 0x2460U,
        0x303FU, 0xFF61U, 0xFF9FU, 0xFFFDU, 0x1D400U, 0x1F321U}) {
    EXPECT_EQ(1U, width(one)) << std::hex << one;
  }
  for (const std::uint32_t two :
       {0x1100U, 0x231AU, 0x3000U, 0x3042U, 0x30FFU, 0x3400U, 0x65E5U, 0x9FFFU, 0xAC00U, 0xD7A3U,
        0xF900U, 0xFE30U, 0xFF01U, 0xFF21U, 0xFFE0U, 0x1F600U, 0x20000U, 0x2A6D6U, 0x30000U}) {
    EXPECT_EQ(2U, width(two)) << std::hex << two;
  }
  for (const std::uint32_t none :
       {0x300U, 0x36FU, 0x489U, 0x5B0U, 0x64BU, 0xE31U, 0x1160U, 0x11FFU, 0x200BU, 0x200DU, 0x20D0U,
        0x302AU, 0x3099U, 0xFE0FU, 0xFEFFU, 0xE0100U}) {
    EXPECT_EQ(0U, width(none)) << std::hex << none;
  }
}

TEST(DisplayWidth, OfTexts) {
  const auto width = [](std::string_view text) { return display_width::Of(text); };
  EXPECT_EQ(0U, width(""));
  EXPECT_EQ(4U, width("K\u00F6ln"));
  EXPECT_EQ(4U, width("Ko\u0308ln"));
  EXPECT_EQ(6U, width("\u65E5\u672C\uFF14"));
  EXPECT_EQ(5U, width("NHK\uD55C"));
  EXPECT_EQ(3U, width("a\xFF\xC3"));
}

TEST(DisplayWidth, CutsToColumns) {
  const auto cut = [](std::string_view text, std::size_t columns) {
    return display_width::Cut(text, columns);
  };
  EXPECT_EQ("abc", cut("abc", 3));
  EXPECT_EQ("a\u2026", cut("abc", 2));
  EXPECT_EQ("\u2026", cut("abc", 1));
  EXPECT_EQ("", cut("abc", 0));
  // A wide character that would reach over the end goes whole.
  EXPECT_EQ("\u65E5\u2026", cut("\u65E5\u672C\u8A9E", 3));
  EXPECT_EQ("\u65E5\u2026", cut("\u65E5\u672C\u8A9E", 4));
  EXPECT_EQ("\u65E5\u672C\u2026", cut("\u65E5\u672C\u8A9E", 5));
  // Marks stay with their letter.
  EXPECT_EQ("Ko\u0308\u2026", cut("Ko\u0308ln", 3));
}

}  // namespace

}  // namespace zortunedex::kit
