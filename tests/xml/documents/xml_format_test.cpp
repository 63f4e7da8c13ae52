#include "xml/documents/xml_format.h"

#include <gtest/gtest.h>

#include <string>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/temp_dir.h"
#include "xml/files/file_header.h"

namespace {

std::string Format(const std::string& xml, int level = 0) {
  const TextDocument document(xml);
  std::string text;
  ExpectHr(S_OK, xml::FormatElement(document.root, level, text));
  return text;
}

// A body with `units` UTF-16 units, all of them the three-byte euro sign but the first `ascii`.
std::string Body(std::size_t ascii, std::size_t euros) {
  std::string body(ascii, 'a');
  for (std::size_t i = 0; i < euros; ++i) body += "\xE2\x82\xAC";
  return body;
}

}  // namespace

TEST(XmlFormat, ElementWithoutChildrenClosesItself) {
  EXPECT_EQ("<Channel/>\r\n", Format("<Channel/>"));
  EXPECT_EQ("<Channel index=\"5\" name=\"\"/>\r\n", Format("<Channel index='5' name=''/>"));
}

TEST(XmlFormat, ContainersAreOpenAlsoWhenEmpty) {
  EXPECT_EQ("<CHANNELTABLE>\r\n</CHANNELTABLE>\r\n", Format("<CHANNELTABLE/>"));
  EXPECT_EQ("<Country name=\"x\">\r\n</Country>\r\n", Format("<Country name='x'/>"));
  EXPECT_EQ("<ChannelSet>\r\n</ChannelSet>\r\n", Format("<ChannelSet></ChannelSet>"));
}

TEST(XmlFormat, ContainerNamesAreComparedWithCase) {
  EXPECT_EQ("<country/>\r\n", Format("<country/>"));
  EXPECT_EQ("<ChannelTable/>\r\n", Format("<ChannelTable/>"));
  EXPECT_EQ("<ChannelSets/>\r\n", Format("<ChannelSets/>"));
}

TEST(XmlFormat, OneTabALevel) {
  EXPECT_EQ("<a>\r\n\t<b>\r\n\t\t<c/>\r\n\t</b>\r\n\t<d/>\r\n</a>\r\n",
            Format("<a><b><c/></b><d/></a>"));
  EXPECT_EQ("\t\t<a>\r\n\t\t\t<b/>\r\n\t\t</a>\r\n", Format("<a><b/></a>", 2));
}

TEST(XmlFormat, AttributesInStoredOrder) {
  EXPECT_EQ("<a z=\"1\" b=\"2\" y=\"3\"/>\r\n", Format("<a z='1' b='2' y='3'/>"));
  const TextDocument document("<a z='1' b='2'/>");
  ExpectHr(S_OK, document.root.SetInt("z", 9));
  ExpectHr(S_OK, document.root.SetInt("a", 7));
  EXPECT_EQ("<a z=\"9\" b=\"2\" a=\"7\"/>\n", Formatted(document.root));
}

// Older readers of these files take the value as it stands; escaping would change names for them.
TEST(XmlFormat, ValuesAreNotEscaped) {
  EXPECT_EQ("<a v=\"A&B\"/>\r\n", Format("<a v='A&amp;B'/>"));
  EXPECT_EQ("<a v=\"<\"'>\"/>\r\n", Format("<a v='&lt;&quot;&apos;&gt;'/>"));
  EXPECT_EQ("<a v=\"1\n2\t3\"/>\r\n", Format("<a v='1&#10;2&#9;3'/>"));
}

TEST(XmlFormat, CommentsAndTextsEndHereButCountAsChildren) {
  EXPECT_EQ("<a>\r\n</a>\r\n", Format("<a><!-- remark --></a>"));
  EXPECT_EQ("<a>\r\n</a>\r\n", Format("<a>text</a>"));
  EXPECT_EQ("<a>\r\n\t<b/>\r\n</a>\r\n", Format("<a><!-- x -->text<b/><!-- y --></a>"));
  EXPECT_EQ("<a/>\r\n", Format("<a>\r\n\t </a>")) << "white space alone is no child";
}

TEST(XmlFormat, NonAsciiValuesComeOutAsUtf8) {
  EXPECT_EQ("<a v=\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\xBA\"/>\r\n",
            Format("<a v='\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\xBA'/>"));
}

TEST(XmlFormat, AppendsToTheText) {
  const TextDocument document("<a/>");
  std::string text = "before|";
  ExpectHr(S_OK, xml::FormatElement(document.root, 1, text));
  EXPECT_EQ("before|\t<a/>\r\n", text);
}

TEST(XmlFormat, NoElementIsAFailure) {
  std::string text;
  EXPECT_TRUE(FAILED(xml::FormatElement(dom::Element(), 0, text)));
}

TEST(WriteFormattedFile, HeaderAndBodyWithoutMark) {
  const TempDir dir;
  ExpectHr(S_OK, xml::WriteFormattedFile(dir.File("f.xml"), "<a/>\r\n"));
  EXPECT_EQ(kHeader + "<a/>\r\n", dir.Read("f.xml"));
  EXPECT_EQ(40U, kHeader.size());
}

TEST(WriteFormattedFile, ReplacesTheWholeFile) {
  const TempDir dir;
  dir.Write("f.xml", std::string(1000, 'x'));
  ExpectHr(S_OK, xml::WriteFormattedFile(dir.File("f.xml"), "<a/>\r\n"));
  EXPECT_EQ(kHeader + "<a/>\r\n", dir.Read("f.xml"));
  ExpectHr(S_OK, xml::WriteFormattedFile(dir.File("f.xml"), ""));
  EXPECT_EQ(kHeader, dir.Read("f.xml"));
  EXPECT_EQ(1U, dir.Count());
}

TEST(WriteFormattedFile, TwoBytesAUnitFit) {
  const TempDir dir;
  // One byte and three bytes: two units in four bytes.
  ExpectHr(S_OK, xml::WriteFormattedFile(dir.File("f.xml"), Body(50, 50)));
  EXPECT_EQ(kHeader + Body(50, 50), dir.Read("f.xml"));
  // A character outside the first plane has four bytes in two units.
  ExpectHr(S_OK, xml::WriteFormattedFile(dir.File("f.xml"), "\xF0\x9F\x93\xBA"));
  // All of two bytes.
  ExpectHr(S_OK, xml::WriteFormattedFile(dir.File("f.xml"), "\xC3\xA4\xC3\xB6"));
}

TEST(WriteFormattedFile, MoreThanTwoBytesAUnitLeaveTheOldFile) {
  const TempDir dir;
  dir.Write("f.xml", "old");
  ExpectHr(E_FAIL, xml::WriteFormattedFile(dir.File("f.xml"), Body(49, 50)));
  ExpectHr(E_FAIL, xml::WriteFormattedFile(dir.File("f.xml"), Body(0, 1)));
  EXPECT_EQ("old", dir.Read("f.xml"));
  ExpectHr(E_FAIL, xml::WriteFormattedFile(dir.File("new.xml"), Body(0, 1)));
  EXPECT_EQ(1U, dir.Count());
}

TEST(WriteFormattedFile, UnwritablePlaces) {
  const TempDir dir;
  dir.Write("file", "old");
  ExpectHr(E_FAIL, xml::WriteFormattedFile(dir.Path(), "<a/>"));
  ExpectHr(E_FAIL, xml::WriteFormattedFile(dir.File("missing/f.xml"), "<a/>"));
  ExpectHr(E_FAIL, xml::WriteFormattedFile(dir.File("file/f.xml"), "<a/>"));
  ExpectHr(E_FAIL, xml::WriteFormattedFile("", "<a/>"));
  EXPECT_EQ("old", dir.Read("file"));
  EXPECT_EQ(1U, dir.Count());
}
