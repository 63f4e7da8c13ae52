// Narrow text in attributes and paths in code pages whose characters have several bytes.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/dom.h"
#include "support/code_page.h"
#include "support/dom_tools.h"
#include "support/expect.h"

namespace {

using namespace dom_tools;

class DomCodePage932 : public InCodePage<932> {};
class DomCodePage65001 : public InCodePage<65001> {};

constexpr char kTelevision[] = "\xE3\x83\x86\xE3\x83\xAC\xE3\x83\x93";  // three katakana
constexpr char kTelevisionSjis[] = "\x83\x65\x83\x8C\x83\x72";

TEST_F(DomCodePage65001, TextIsCutOnACharacter) {
  const dom::Document document = LoadBytes("<a n='" + std::string(kTelevision) + "'/>");
  char buffer[10] = "#########";
  ExpectHr(S_OK, Root(document).GetNarrow("n", buffer, 9));
  EXPECT_EQ(0, std::memcmp(buffer, "\xE3\x83\x86\xE3\x83\xAC\0##", 10));
  ExpectHr(S_OK, Root(document).GetNarrow("n", buffer, 10));
  EXPECT_STREQ(kTelevision, buffer);
}

TEST_F(DomCodePage65001, InvalidUtf8IsReplaced) {
  const dom::Document document = NewDocumentWithRoot("a");
  ExpectHr(S_OK, Root(document).SetNarrow("n",
                                          "a\xFF"
                                          "b\xE3\x83"));
  EXPECT_EQ(
      "a\xEF\xBF\xBD"
      "b\xEF\xBF\xBD",
      Utf8(Root(document), "n"));
}

TEST_F(DomCodePage932, TextIsConverted) {
  const dom::Document document = LoadBytes("<R><a n='" + std::string(kTelevision) + "'/></R>");
  dom::Element a;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  char buffer[10] = "#########";
  ExpectHr(S_OK, a.GetNarrow("n", buffer, sizeof(buffer)));
  EXPECT_STREQ(kTelevisionSjis, buffer);
  ExpectHr(S_OK, a.GetNarrow("n", buffer, 6));
  EXPECT_STREQ("\x83\x65\x83\x8C", buffer);
  ExpectHr(S_OK, a.SetNarrow("m", kTelevisionSjis));
  EXPECT_EQ(kTelevision, Utf8(a, "m"));
}

/// A path with this form of the name finds the element.
void ExpectFound(const std::string& name) {
  const dom::Document document = LoadBytes("<R><a n='" + std::string(kTelevision) + "'/></R>");
  dom::Element a;
  ExpectHr(S_OK, Root(document).SelectSingle(("./a[@n='" + name + "']").c_str(), a));
  EXPECT_EQ(kTelevision, Utf8(a, "n"));
}

TEST_F(DomCodePage65001, PathsAreConverted) {
  ExpectFound(kTelevision);
  const dom::Document document = LoadBytes("<R><a n='" + std::string(kTelevision) + "'/></R>");
  dom::Element a;
  const std::string otherPage = "./a[@n='" + std::string(kTelevisionSjis) + "']";
  ExpectHr(S_FALSE, Root(document).SelectSingle(otherPage.c_str(), a));
}

TEST_F(DomCodePage932, PathsAreConverted) { ExpectFound(kTelevisionSjis); }

}  // namespace
