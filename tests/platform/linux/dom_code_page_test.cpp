// Narrow text in attributes and paths under code pages other than UTF-8.
//
// Linux only: only there does the process choose its code page
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/dom.h"
#include "support/dom_tools.h"
#include "support/expect.h"

namespace {

using namespace dom_tools;

/// Sets the process's code page for as long as it lives.
class CodePageFor {
 public:
  explicit CodePageFor(UINT codePage) { ExpectHr(S_OK, ZorTunedexSetCodePage(codePage)); }
  CodePageFor(const CodePageFor&) = delete;
  CodePageFor& operator=(const CodePageFor&) = delete;
  ~CodePageFor() { ExpectHr(S_OK, ZorTunedexSetCodePage(65001)); }
};

constexpr char kTelevision[] = "\xE3\x83\x86\xE3\x83\xAC\xE3\x83\x93";  // three katakana
constexpr char kTelevisionSjis[] = "\x83\x65\x83\x8C\x83\x72";

TEST(DomCodePage, Utf8IsCutOnACharacter) {
  const dom::Document document = LoadBytes("<a n='" + std::string(kTelevision) + "'/>");
  char buffer[10] = "#########";
  ExpectHr(S_OK, Root(document).GetNarrow("n", buffer, 9));
  EXPECT_EQ(0, std::memcmp(buffer, "\xE3\x83\x86\xE3\x83\xAC\0##", 10));
  ExpectHr(S_OK, Root(document).GetNarrow("n", buffer, 10));
  EXPECT_STREQ(kTelevision, buffer);
}

TEST(DomCodePage, InvalidUtf8IsReplaced) {
  const dom::Document document = NewDocumentWithRoot("a");
  ExpectHr(S_OK, Root(document).SetNarrow("n",
                                          "a\xFF"
                                          "b\xE3\x83"));
  EXPECT_EQ(
      "a\xEF\xBF\xBD"
      "b\xEF\xBF\xBD",
      Utf8(Root(document), "n"));
}

TEST(DomCodePage, TextIsConverted) {
  const CodePageFor japanese(932);
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

TEST(DomCodePage, PathsAreConverted) {
  const std::string bytes = "<R><a n='" + std::string(kTelevision) + "'/></R>";
  const dom::Document document = LoadBytes(bytes);
  const std::string utf8Path = "./a[@n='" + std::string(kTelevision) + "']";
  const std::string sjisPath = "./a[@n='" + std::string(kTelevisionSjis) + "']";
  dom::Element a;
  ExpectHr(S_OK, Root(document).SelectSingle(utf8Path.c_str(), a));
  ExpectHr(S_FALSE, Root(document).SelectSingle(sjisPath.c_str(), a));
  const CodePageFor japanese(932);
  ExpectHr(S_OK, Root(document).SelectSingle(sjisPath.c_str(), a));
  EXPECT_EQ(kTelevision, Utf8(a, "n"));
}

}  // namespace
