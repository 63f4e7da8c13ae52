// The preset file to the byte, and its names in both code pages of Japanese files.
//
// Linux only: MSXML writes other bytes, and Wine others again
#include <gtest/gtest.h>

#include "support/linux/code_page_scope.h"
#include "xml/files/preset_file.h"

namespace {

dom::Element Channels(const std::string& channels) {
  return SourceOf("<ChannelSet>" + channels + "</ChannelSet>");
}

}  // namespace

TEST(PresetFileBytes, OfAStoredList) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(
                     Channels(ChannelXml(1, "VHdv", 26) + ChannelXml(2, "T25l", 27)), 2, "summer"));
  EXPECT_EQ(PresetData("stored_new.xml"), file.Saved());
}

TEST(PresetFileBytes, OfAListStoredAgain) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK, file.SaveCustomerChannelList(
                     Channels(ChannelXml(2, "VHdv", 22) + ChannelXml(3, "T25l", 21) +
                              ChannelXml(9, "VHdv", 24)),
                     0, "cottage"));
  EXPECT_EQ(PresetData("stored_over.xml"), file.Saved());
}

TEST(PresetFileBytes, OfASelectionAndADeletion) {
  PresetFile file(PresetData("presets.xml"));
  ExpectHr(S_OK, file->SetArea(0, 1));
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  EXPECT_EQ(PresetData("selected_and_deleted.xml"), file.Saved());
}

// Three bytes a character: 86 fit in 259 bytes, with one byte to spare.
TEST(PresetFileNames, AreCutOnACharacterInUtf8) {
  std::string name;
  for (int i = 0; i < 100; ++i) name += "\xE6\x97\xA5";
  PresetFile file(PresetXml("<Area AreaIndex='0' name='" + name +
                            "'><SubArea SubAreaIndex='0' name='a" + name + "'/></Area>"));
  EXPECT_EQ(name.substr(0, 258), file.AreaName(0));
  EXPECT_EQ(("a" + name).substr(0, 259), file.SubAreaName(0, 0));
}

// Two bytes a character: 129 fit.
TEST(PresetFileNames, AreCutOnACharacterInCodePage932) {
  const CodePageScope page(932);
  std::string utf8;
  std::string narrow;
  for (int i = 0; i < 200; ++i) {
    utf8 += "\xE6\x97\xA5";
    narrow += "\x93\xFA";
  }
  PresetFile file(PresetXml("<Area AreaIndex='0' name='" + utf8 +
                            "'><SubArea SubAreaIndex='0' name='a" + utf8 + "'/></Area>"));
  EXPECT_EQ(narrow.substr(0, 258), file.AreaName(0));
  EXPECT_EQ(("a" + narrow).substr(0, 259), file.SubAreaName(0, 0));
}

// What is written is not cut, and is UTF-8 in the file whatever the code page is.
TEST(PresetFileNames, OfStoredLists) {
  std::string utf8;
  std::string narrow;
  for (int i = 0; i < 200; ++i) {
    utf8 += "\xE6\x97\xA5";
    narrow += "\x93\xFA";
  }
  const std::string xml = PresetXml("<Area AreaIndex='0'/>");
  {
    const CodePageScope page(932);
    PresetFile file(xml);
    ExpectHr(S_OK, file.SaveCustomerChannelList(Channels(""), 0, narrow.c_str()));
    EXPECT_NE(std::string::npos, file.Saved().find("name=\"" + utf8 + "\""));
    EXPECT_EQ(narrow.substr(0, 258), file.SubAreaName(0, 0));
  }
  PresetFile file(xml);
  ExpectHr(S_OK, file.SaveCustomerChannelList(Channels(""), 0, utf8.c_str()));
  EXPECT_NE(std::string::npos, file.Saved().find("name=\"" + utf8 + "\""));
  EXPECT_EQ(utf8.substr(0, 258), file.SubAreaName(0, 0));
}

// A document that could not be read again is not written.
TEST(PresetFileNames, ThatXmlCannotHoldLeaveTheFile) {
  const std::string xml = PresetXml("<Area AreaIndex='0'/>");
  PresetFile file(xml);
  ExpectHr(S_OK, file.SaveCustomerChannelList(Channels(""), 0, "a\x01z"));
  EXPECT_EQ(xml, file.Saved());
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  EXPECT_EQ(1U, file.Files().Count());
}

// What is not changed is written as it was read.
TEST(PresetFileBytes, OfTheSampleAreKept) {
  const std::string bytes = SamplePresets();
  PresetFile file(bytes);
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  const std::size_t customer = bytes.find("<SubArea SubAreaIndex=\"0\" name=\"自宅\">");
  ASSERT_NE(std::string::npos, customer);
  const std::size_t end = bytes.find_last_not_of("\r\n\t", customer - 1) + 1;
  EXPECT_EQ(bytes.substr(0, end - 1), file.Saved().substr(0, end - 1));
}
