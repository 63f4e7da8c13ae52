// Texts in the code page of the process.
#include "support/code_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/code_page_codes.h"
#include "platform/text.h"
#include "support/expect.h"

namespace {

using namespace std::string_view_literals;

class CodePage932 : public InCodePage<932> {};
class CodePage1252 : public InCodePage<1252> {};
class CodePage65001 : public InCodePage<65001> {};

TEST_F(CodePage65001, TextIsUtf8) {
  ExpectText(OLESTR("\u00E9\U0001F600"), text::FromNarrow("\xC3\xA9\xF0\x9F\x98\x80").Get());
  EXPECT_EQ("\xC3\xA9\xF0\x9F\x98\x80", text::ToNarrow(OLESTR("\u00E9\U0001F600")));
}

TEST_F(CodePage932, BackslashAndTildeAreThemselves) {
  ExpectText(OLESTR("\\~"), text::FromNarrow("\x5C\x7E").Get());
  EXPECT_EQ("\x5C\x7E", text::ToNarrow(OLESTR("\\~")));
  ExpectText(OLESTR("\u30BD\u8868\\"), text::FromNarrow("\x83\x5C\x95\x5C\x5C").Get());
  EXPECT_EQ("\x83\x5C\x95\x5C\x5C", text::ToNarrow(OLESTR("\u30BD\u8868\\")));
}

TEST_F(CodePage932, HasWhatWindowsAddedToIt) {
  const auto expectPair = [](std::string_view narrow, WideView wide) {
    ExpectText(wide, text::FromNarrow(narrow).Get());
    EXPECT_EQ(narrow, text::ToNarrow(wide));
  };
  expectPair("\xB1\xDF", OLESTR("\uFF71\uFF9F"));          // half-width
  expectPair("\x87\x40\x87\x8A", OLESTR("\u2460\u3231"));  // NEC row 13
  expectPair("\xFB\xFC\xFA\x40", OLESTR("\u9AD9\u2170"));  // IBM's
  expectPair("\xF0\x40\xF9\xFC", OLESTR("\uE000\uE757"));  // user-defined
  expectPair("\x80\xA0\xFD\xFF", OLESTR("\u0080\uF8F0\uF8F1\uF8F3"));
  expectPair("\x81\x60\x81\x7C", OLESTR("\uFF5E\uFF0D"));  // not the wave dash, nor the minus
  // NEC's selection of IBM's characters reads the same and is written in IBM's place.
  ExpectText(OLESTR("\u7E8A"), text::FromNarrow("\xED\x40").Get());
  EXPECT_EQ("\xFA\x5C", text::ToNarrow(OLESTR("\u7E8A")));
}

TEST_F(CodePage932, BytesWithoutACharacterBecomeAMark) {
  const Bstr lone = text::FromNarrow("\x81");
  // The replacement character on Linux, a middle dot on Windows.
  ASSERT_TRUE(lone.View() == OLESTR("\uFFFD") || lone.View() == OLESTR("\u30FB"));
  const std::basic_string<OLECHAR> mark(lone.View());
  const std::basic_string<OLECHAR> a(1, 'a');
  ExpectText(a + mark, text::FromNarrow("a\xE0").Get());
  ExpectText(mark + mark, text::FromNarrow("\xFC\xFC\x85\x40").Get());
  // The zero behind a lead byte is no part of a character.
  ExpectText(mark + OLECHAR('\0') + a, text::FromNarrow("\x81\0a"sv).Get());
}

TEST_F(CodePage1252, CharactersWithoutACodeBecomeQuestionMarks) {
  EXPECT_EQ("a?b", text::ToNarrow(OLESTR("a\u3042b")));
  EXPECT_EQ("?", text::ToNarrow(OLESTR("\uFFFD")));
  // One for each unit, as on Windows.
  EXPECT_EQ("??", text::ToNarrow(OLESTR("\U0001F600")));
  EXPECT_EQ("\x80\xE9\0?"sv, text::ToNarrow(WideView(OLESTR("\u20AC\u00E9\0\u3042"), 4)));
}

/// Ends of characters, found by walking over them.
std::vector<std::size_t> Ends(std::string_view narrow) {
  std::vector<std::size_t> ends = {0};
  for (std::size_t next = 0; next < narrow.size(); ends.push_back(next)) {
    const bool isLead = IsLead(932, static_cast<unsigned char>(narrow[next]));
    next += isLead && next + 1 < narrow.size() && narrow[next + 1] != 0 ? 2U : 1U;
  }
  return ends;
}

TEST_F(CodePage932, IsCutBetweenCharacters) {
  for (const std::string& narrow : Texts("\0a\x5C\x83\xB1\xFC"sv, 6)) {
    const std::vector<std::size_t> ends = Ends(narrow);
    for (std::size_t limit = 0; limit <= narrow.size() + 1; ++limit) {
      std::size_t expected = 0;
      for (const std::size_t end : ends) {
        if (end <= limit) expected = end;
      }
      const std::size_t cut = text::CutLength(narrow, limit);
      ASSERT_EQ(expected, cut) << narrow << " limit " << limit;
      if (limit == 3) ExpectCleanCut(narrow, cut);
    }
  }
}

TEST_F(CodePage65001, IsCutBetweenCharacters) {
  const std::string characters[] = {"a", "\xC3\xA9", "\xE3\x83\x86", "\xF0\x9F\x98\x80"};
  // All texts of four of them.
  for (unsigned choice = 0; choice < 256; ++choice) {
    std::string narrow;
    std::vector<std::size_t> ends = {0};
    for (unsigned digits = choice, i = 0; i < 4; digits /= 4, ++i) {
      narrow += characters[digits % 4];
      ends.push_back(narrow.size());
    }
    for (std::size_t limit = 0; limit <= narrow.size() + 1; ++limit) {
      const std::size_t cut = text::CutLength(narrow, limit);
      ASSERT_EQ(*std::prev(std::upper_bound(ends.begin(), ends.end(), limit)), cut) << narrow;
      ExpectCleanCut(narrow, cut);
    }
  }
}

TEST_F(CodePage1252, IsCutAnywhere) {
  EXPECT_EQ(2U, text::CutLength("\xE3\x81\x82", 2));
  EXPECT_EQ(3U, text::CutLength("\xE3\x81\x82", 3));
}

TEST_F(CodePage932, CopyCutNeverLeavesHalfACharacter) {
  char buffer[6];
  text::CopyCut("\x82\xA0\x82\xA2\x82\xA4", buffer, sizeof(buffer));
  EXPECT_STREQ("\x82\xA0\x82\xA2", buffer);
  text::CopyCut("\x82\xA0", buffer, 2);
  EXPECT_STREQ("", buffer);
}

}  // namespace
