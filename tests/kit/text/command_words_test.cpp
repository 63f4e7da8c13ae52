#include "kit/text/command_words.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

using Words = std::vector<std::string>;

TEST(CommandWords, ArePartedByBlanks) {
  EXPECT_EQ((Words{"channels", "favor", "3-9,12"}), CommandWords("  channels\tfavor  3-9,12 "));
  EXPECT_EQ(Words{}, CommandWords(""));
  EXPECT_EQ(Words{}, CommandWords(" \t "));
}

TEST(CommandWords, AreQuotedAsInAShell) {
  EXPECT_EQ((Words{"a b", "c d", "e f"}), CommandWords(R"('a b' "c d" e\ f)"));
  EXPECT_EQ((Words{"abcd"}), CommandWords(R"(a'b'"c"d)"));
  EXPECT_EQ((Words{"", ""}), CommandWords(R"('' "")"));
  EXPECT_EQ((Words{R"(\")"}), CommandWords(R"('\"')"));
  EXPECT_EQ((Words{R"("$`\ \n)"}), CommandWords(R"("\"\$\`\\ \n")"));
  EXPECT_EQ((Words{"it's"}), CommandWords(R"('it'\''s')"));
  EXPECT_EQ((Words{"\u65E5 \u672C"}), CommandWords("\u65E5\\ \u672C"));
}

TEST(CommandWords, ExpandNothing) {
  EXPECT_EQ((Words{"$HOME", "*", "~", "`x`", "a;b|c", "#"}), CommandWords("$HOME * ~ `x` a;b|c #"));
}

TEST(CommandWords, NeedTheirEnd) {
  for (const char* line : {"'a", "\"a", "a\\", "\"a\\", "\"a\\\"", "a 'b' 'c"}) {
    EXPECT_FALSE(CommandWords(line)) << line;
  }
}

}  // namespace

}  // namespace zortunedex::kit
