#include "kit/interchange/text_lines.h"

#include <gtest/gtest.h>

#include <vector>

namespace zortunedex::kit {

namespace {

using interchange::TextLine;
using interchange::TextLines;
using TextsOfLines = std::vector<std::string_view>;

TextsOfLines LinesOf(std::string_view text) {
  TextsOfLines texts;
  TextLines lines(text);
  while (const std::optional<TextLine> line = lines.Next()) {
    texts.push_back(line->text);
    EXPECT_EQ(texts.size(), line->number);
  }
  return texts;
}

TEST(TextLines, EndWithLineFeedsOfEitherKind) {
  EXPECT_EQ((TextsOfLines{"a", "b"}), LinesOf("a\nb\n"));
  EXPECT_EQ((TextsOfLines{"a", "b"}), LinesOf("a\r\nb"));
  EXPECT_EQ((TextsOfLines{"", "", "a"}), LinesOf("\n\r\na"));
  EXPECT_EQ((TextsOfLines{"a\rb", ""}), LinesOf("a\rb\n\r\n"));
  EXPECT_EQ(TextsOfLines{}, LinesOf(""));
}

TEST(TextLines, BeginBehindAMark) {
  EXPECT_EQ((TextsOfLines{"a"}), LinesOf("\xEF\xBB\xBF"
                                         "a\n"));
  EXPECT_EQ(TextsOfLines{}, LinesOf("\xEF\xBB\xBF"));
}

}  // namespace

}  // namespace zortunedex::kit
