#include "kit/xml/tokens/tokens.h"

#include <gtest/gtest.h>

#include <string>

namespace zortunedex::kit {

namespace {

using markup::Token;
using markup::TokenKind;

std::string Kinds(std::string_view bytes) {
  std::string text;
  for (const Token& token : markup::Tokens(bytes)) {
    static constexpr const char* kNames[] = {"Start", "Empty",   "End",         "Text",   "Comment",
                                             "Cdata", "Doctype", "Instruction", "Damaged"};
    text += kNames[static_cast<int>(token.kind)];
    text += '{';
    text += token.span.In(bytes);
    text += '}';
  }
  return text;
}

TEST(Tokens, CutAFile) {
  EXPECT_EQ(
      "Instruction{<?xml version=\"1.0\"?>}Text{\r\n}Start{<a b=\"1\">}Text{x}Empty{<c d='>'/>}"
      "Comment{<!-- <d> -->}Cdata{<![CDATA[<e>]]>}End{</a >}",
      Kinds("<?xml version=\"1.0\"?>\r\n<a b=\"1\">x<c d='>'/><!-- <d> --><![CDATA[<e>]]></a >"));
  EXPECT_EQ("", Kinds(""));
  EXPECT_EQ("Text{\xEF\xBB\xBF}Empty{<a/>}", Kinds("\xEF\xBB\xBF<a/>"));
  EXPECT_EQ("Doctype{<!DOCTYPE a [<!ENTITY b \"]>\">]>}Empty{<a/>}",
            Kinds("<!DOCTYPE a [<!ENTITY b \"]>\">]><a/>"));
}

TEST(Tokens, TakeALoneMarkForText) {
  EXPECT_EQ("Text{a < b <3 <}", Kinds("a < b <3 <"));
  EXPECT_EQ("Text{> \" / ]]>}", Kinds("> \" / ]]>"));
}

TEST(Tokens, TellWhatHasNoEnd) {
  EXPECT_EQ("Damaged{<a b=\"1}", Kinds("<a b=\"1"));
  EXPECT_EQ("Damaged{<!-- a}Empty{<b/>}", Kinds("<!-- a<b/>"));
  EXPECT_EQ("Damaged{<![CDATA[ a}", Kinds("<![CDATA[ a"));
  EXPECT_EQ("Damaged{<?a }Empty{<b/>}", Kinds("<?a <b/>"));
  EXPECT_EQ("Damaged{<!a>}Empty{<b/>}", Kinds("<!a><b/>"));
  EXPECT_EQ("Doctype{<!DOCTYPE}Text{ a }Empty{<b/>}", Kinds("<!DOCTYPE a <b/>"));
  EXPECT_EQ("Damaged{</>}Damaged{</a}", Kinds("</></a"));
}

TEST(Tokens, FindTheEndOfABrokenTag) {
  EXPECT_EQ("Start{<a b=\"x\"y\" c=\"1\">}Text{z}", Kinds("<a b=\"x\"y\" c=\"1\">z"));
  EXPECT_EQ("Empty{<a b=\"<&\"/>}", Kinds("<a b=\"<&\"/>"));
  EXPECT_EQ("Empty{<a b=\"x}Text{\n}Empty{<c/>}", Kinds("<a b=\"x\n<c/>"));
  EXPECT_EQ("Start{<a b=1 c>}", Kinds("<a b=1 c>"));
  EXPECT_EQ("End{</a b>}Text{c}", Kinds("</a b>c"));
}

}  // namespace

}  // namespace zortunedex::kit
