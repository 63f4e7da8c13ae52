#include "kit/interchange/text_lines.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using interchange::TextLine;
using interchange::TextLines;
using Texts = std::vector<std::string_view>;

Texts LinesOf(std::string_view text) {
  Texts texts;
  TextLines lines(text);
  while (const std::optional<TextLine> line = lines.Next()) {
    texts.push_back(line->text);
    EXPECT_EQ(texts.size(), line->number);
  }
  return texts;
}

TEST(TextLines, EndWithLineFeedsOfEitherKind) {
  EXPECT_EQ((Texts{"a", "b"}), LinesOf("a\nb\n"));
  EXPECT_EQ((Texts{"a", "b"}), LinesOf("a\r\nb"));
  EXPECT_EQ((Texts{"", "", "a"}), LinesOf("\n\r\na"));
  EXPECT_EQ((Texts{"a\rb", ""}), LinesOf("a\rb\n\r\n"));
  EXPECT_EQ(Texts{}, LinesOf(""));
}

TEST(TextLines, BeginBehindAMark) {
  EXPECT_EQ((Texts{"a"}), LinesOf("\xEF\xBB\xBF"
                                  "a\n"));
  EXPECT_EQ(Texts{}, LinesOf("\xEF\xBB\xBF"));
}

}  // namespace
