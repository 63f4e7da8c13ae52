#include "module/script_reader.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Kind = ScriptToken::Kind;

// The tokens to the end or to an error: words as they are, others marked.
std::vector<std::string> TokensOf(std::string_view script) {
  std::vector<std::string> tokens;
  ScriptReader reader(script);
  while (reader.Current().kind != Kind::End) {
    const ScriptToken& token = reader.Current();
    switch (token.kind) {
      case Kind::Word:
        tokens.push_back(token.text);
        break;
      case Kind::Quoted:
        tokens.push_back("<" + token.text + ">");
        break;
      case Kind::Open:
        tokens.push_back("OPEN");
        break;
      case Kind::Close:
        tokens.push_back("CLOSE");
        break;
      default:
        tokens.push_back("ERROR");
        return tokens;
    }
    reader.Advance();
  }
  return tokens;
}

using Tokens = std::vector<std::string>;

std::string Replaced(std::string_view script, const ScriptReplacements& replacements) {
  std::string replaced;
  EXPECT_TRUE(ReplaceInScript(script, replacements, replaced)) << script;
  return replaced;
}

void ExpectUnreadable(std::string_view script) {
  std::string replaced;
  EXPECT_FALSE(ReplaceInScript(script, {{"MODULE", "x"}}, replaced)) << script;
}

}  // namespace

TEST(ScriptReader, Nothing) {
  EXPECT_EQ(Tokens(), TokensOf(""));
  EXPECT_EQ(Tokens(), TokensOf(" \t\r\n\v\f "));
}

TEST(ScriptReader, WordsStandBetweenWhiteSpace) {
  EXPECT_EQ((Tokens{"HKCR", "OPEN", "NoRemove", "{guid}", "=", "s", "a'b", "CLOSE"}),
            TokensOf("HKCR\r\n{\tNoRemove {guid} = s a'b\n}"));
  EXPECT_EQ((Tokens{"HKCR{", "}}", "{{"}), TokensOf("HKCR{ }} {{"));
}

TEST(ScriptReader, QuotesHoldAnyText) {
  EXPECT_EQ((Tokens{"<a b>", "<>", "<'>", "<it's>", "<a\n{ } b>", "<''>"}),
            TokensOf("'a b' '' '''' 'it''s' 'a\n{ } b' ''''''"));
  EXPECT_EQ((Tokens{"<a>", "OPEN", "<b>", "CLOSE"}), TokensOf("'a'{ 'b'}"));
}

TEST(ScriptReader, QuotesMustEnd) {
  EXPECT_EQ((Tokens{"ERROR"}), TokensOf("'"));
  EXPECT_EQ((Tokens{"<a>", "ERROR"}), TokensOf("'a' 'b"));
  EXPECT_EQ((Tokens{"ERROR"}), TokensOf("'''"));
  EXPECT_EQ((Tokens{"ERROR"}), TokensOf("'a''"));
}

TEST(ScriptReader, ErrorsAndTheEndStay) {
  ScriptReader broken("'a");
  broken.Advance();
  EXPECT_EQ(Kind::Error, broken.Current().kind);
  ScriptReader ended("a");
  for (int i = 0; i < 3; ++i) ended.Advance();
  EXPECT_EQ(Kind::End, ended.Current().kind);
}

TEST(ScriptReader, WordsCompareWithoutCase) {
  EXPECT_TRUE(ScriptReader("NoRemove").Current().Is("NOREMOVE"));
  EXPECT_TRUE(ScriptReader("noremove").Current().Is("NOREMOVE"));
  EXPECT_FALSE(ScriptReader("NoRemov").Current().Is("NOREMOVE"));
  EXPECT_FALSE(ScriptReader("'NoRemove'").Current().Is("NOREMOVE"));
  EXPECT_FALSE(ScriptReader("").Current().Is(""));
}

TEST(ScriptReplacements, NamesBecomeTexts) {
  EXPECT_EQ("no names", Replaced("no names", {}));
  EXPECT_EQ("'C:\\a b.dll'", Replaced("'%MODULE%'", {{"MODULE", "C:\\a b.dll"}}));
  EXPECT_EQ("xyx", Replaced("%a%%b%%A%", {{"A", "x"}, {"B", "y"}}));
  EXPECT_EQ("", Replaced("%module%", {{"MODULE", ""}}));
}

TEST(ScriptReplacements, QuotesAreDoubled) {
  EXPECT_EQ("'it''s ''''x'", Replaced("'%MODULE%'", {{"MODULE", "it's ''x"}}));
}

TEST(ScriptReplacements, TextsAreNotLookedInto) {
  EXPECT_EQ("%B%", Replaced("%A%", {{"A", "%B%"}, {"B", "y"}}));
}

TEST(ScriptReplacements, TwoPercentSignsAreOne) {
  EXPECT_EQ("100% %x%", Replaced("100%% %%x%%", {}));
}

TEST(ScriptReplacements, BadNamesAreRefused) {
  ExpectUnreadable("%");
  ExpectUnreadable("%MODULE");
  ExpectUnreadable("%%%");
  ExpectUnreadable("%OTHER%");
  ExpectUnreadable("% MODULE%");
  ExpectUnreadable("%MODULE%MODULE%");
}
