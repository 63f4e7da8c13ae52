// Texts of the file in code pages whose characters have several bytes.
//
// Linux only: only there does the process choose its code page
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/fake_channel.h"
#include "support/linux/code_page_scope.h"
#include "xml/base64.h"
#include "xml/channel_codec.h"
#include "xml/xml_nodes.h"

namespace {

using xml::CodeChannel;
using xml::Direction;

// The first character of "Japan": U+65E5.
const std::string kUtf8 = "\xE6\x97\xA5";
const std::string kShiftJis = "\x93\xFA";
constexpr OLECHAR kWide = 0x65E5;

std::string Repeated(const std::string& text, std::size_t times) {
  std::string result;
  while (times-- > 0) result += text;
  return result;
}

struct TextField {
  InputSignalType type;
  const char* attribute;
  std::size_t offset;
  std::size_t width;
};
constexpr TextField kFields[] = {
    {InputSignalAnalogCable, "name", 20, 80},
    {InputSignalFMRadio, "name", 12, 80},
    {InputSignalATSCCable, "name", 192, 336},
    {InputSignalDVBSatellite, "name", 608, 336},
    {InputSignalDVBSatellite, "networkName", 352, 256},
    {InputSignalDVBHandheld, "VideoIP", 880, 64},
    {InputSignalTDMBMobile, "EnsembelLab", 192, 256},
};

/// Checks that a long text is cut to whole characters of `character` everywhere.
void ExpectCutOnBoundaries(const std::string& character) {
  for (const TextField& field : kFields) {
    for (const char* before : {"", "x", "xx"}) {
      const TextDocument document("<Channel " + std::string(field.attribute) + "='" + before +
                                  Repeated(kUtf8, 500) + "'/>");
      FakeChannel record(field.type);
      ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
      const std::size_t room = std::min<std::size_t>(field.width, 260) - 1 - std::strlen(before);
      const std::string expected = before + Repeated(character, room / character.size());
      EXPECT_EQ(expected, reinterpret_cast<const char*>(&record.block.at(field.offset)));
      for (std::size_t i = expected.size(); i < field.width; ++i) {
        ASSERT_EQ(0, record.block.at(field.offset + i)) << field.attribute << " " << i;
      }
    }
  }
}

std::string ComponentName(const std::string& name) {
  const TextDocument document("<Channel><ElementStreams><Components ID='0' name='" + name +
                              "'/></ElementStreams></Channel>");
  FakeChannel record(InputSignalTDMBMobile);
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  return {reinterpret_cast<const char*>(&record.block.at(1064)),
          strnlen(reinterpret_cast<const char*>(&record.block.at(1064)), 8)};
}

/// The record that a one-segment channel of these names is after a save and a load.
struct OneSegment {
  OneSegment(WideView name, WideView displayName) : document("<Channel/>") {
    FakeChannel record(InputSignalISDBTerrestrialOneSeg, 2580);
    record.name = Bstr(name);
    record.displayName = Bstr(displayName);
    ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Write));
    ExpectHr(S_OK, CodeChannel(document.root, &back, Direction::Read));
  }
  std::string Name() const { return reinterpret_cast<const char*>(&back.block.at(608)); }

  TextDocument document;
  FakeChannel back{InputSignalISDBTerrestrialOneSeg};
};

}  // namespace

TEST(ChannelCodePage, Utf8IsCutOnCharacters) { ExpectCutOnBoundaries(kUtf8); }

TEST(ChannelCodePage, ShiftJisIsCutOnCharacters) {
  const CodePageScope page(932);
  ExpectCutOnBoundaries(kShiftJis);
}

TEST(ChannelCodePage, ComponentSlots) {
  EXPECT_EQ(kUtf8 + kUtf8, ComponentName(Repeated(kUtf8, 5)));
  EXPECT_EQ("x" + kUtf8 + kUtf8, ComponentName("x" + Repeated(kUtf8, 5)));
  const CodePageScope page(932);
  EXPECT_EQ(Repeated(kShiftJis, 3), ComponentName(Repeated(kUtf8, 5)));
  EXPECT_EQ("x" + Repeated(kShiftJis, 3), ComponentName("x" + Repeated(kUtf8, 5)));
}

TEST(ChannelCodePage, TextBuffer) {
  const TextDocument document("<a t='" + Repeated(kUtf8, 200) + "'/>");
  xml::TextBuffer buffer = {};
  ExpectHr(S_OK, xml::GetAttrText(document.root, "t", buffer));
  EXPECT_EQ(Repeated(kUtf8, 86), buffer);
  const CodePageScope page(932);
  ExpectHr(S_OK, xml::GetAttrText(document.root, "t", buffer));
  EXPECT_EQ(Repeated(kShiftJis, 129), buffer);
}

TEST(ChannelCodePage, DisplayNames) {
  const TextDocument document("<Channel nameDisplay='" + Repeated(kUtf8, 200) + "'/>");
  FakeChannel record(InputSignalFMRadio);
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  ExpectText(std::u16string(86, kWide), record.displayName.Get());
  const CodePageScope page(932);
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  ExpectText(std::u16string(129, kWide), record.displayName.Get());
}

// Texts are written as they stand; what the code page lacks is lost when they are read.
TEST(ChannelCodePage, CharactersOutsideThePage) {
  const CodePageScope page(932);
  const TextDocument document("<Channel/>");
  FakeChannel record(InputSignalFMRadio, 92);
  const OLECHAR name[] = {'a', 0x0E01, kWide};  // a Thai letter in between
  record.name = Bstr(WideView(name, 3));
  record.displayName = Bstr(WideView(name, 3));
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Write));
  EXPECT_EQ("a\xE0\xB8\x81" + kUtf8, Attribute(document.root, "name"));
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  EXPECT_STREQ(("a?" + kShiftJis).c_str(), reinterpret_cast<const char*>(&record.block[12]));
  const OLECHAR read[] = {'a', '?', kWide};
  ExpectText(WideView(read, 3), record.displayName.Get());
}

TEST(ChannelCodePage, TextsOfTheBlockAreWrittenFromThePage) {
  FakeChannel record(InputSignalDVBSatellite, 2784);
  std::memcpy(&record.block[352], kShiftJis.data(), kShiftJis.size());
  const CodePageScope page(932);
  const TextDocument document("<Channel/>");
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Write));
  EXPECT_EQ(kUtf8, Attribute(document.root, "networkName"));
}

TEST(ChannelCodePage, OneSegmentNamesAreBase64OfThePage) {
  const OLECHAR japan[] = {kWide, 0x672C};
  {
    const OneSegment utf8({japan, 2}, {japan, 2});
    EXPECT_EQ("5pel5pys", Attribute(utf8.document.root, "name"));
    EXPECT_EQ("5pel5pys", Attribute(utf8.document.root, "nameDisplay"));
    EXPECT_EQ(kUtf8 + "\xE6\x9C\xAC", utf8.Name());
    ExpectText({japan, 2}, utf8.back.displayName.Get());
  }
  const CodePageScope page(932);
  const OneSegment shiftJis({japan, 2}, {japan, 2});
  EXPECT_EQ("k/qWew==", Attribute(shiftJis.document.root, "name"));
  EXPECT_EQ(kShiftJis + "\x96\x7B", shiftJis.Name());
  ExpectText({japan, 2}, shiftJis.back.displayName.Get());
}

TEST(ChannelCodePage, OneSegmentNamesAreCutOnCharacters) {
  const std::u16string text(200, kWide);
  {
    const OneSegment utf8(text, text);
    EXPECT_EQ(Repeated(kUtf8, 26), utf8.Name());
    ExpectText(text.substr(0, 86), utf8.back.displayName.Get());
  }
  const CodePageScope page(932);
  const OneSegment shiftJis(text, text);
  EXPECT_EQ(Repeated(kShiftJis, 39), shiftJis.Name());
  ExpectText(text.substr(0, 129), shiftJis.back.displayName.Get());
}

// A file of another program may hold more than is ever written here.
TEST(ChannelCodePage, LongOneSegmentNamesAreCutOnCharacters) {
  const auto displayName = [](const std::string& narrow) {
    std::string encoded(Base64EncodedSize(narrow.size()), '\0');
    Base64Encode(reinterpret_cast<const BYTE*>(narrow.data()), static_cast<LONG>(narrow.size()),
                 encoded.data());
    encoded.pop_back();
    const TextDocument document("<Channel nameDisplay='" + encoded + "'/>");
    FakeChannel record(InputSignalISDBTerrestrialOneSeg);
    ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
    return std::u16string(record.displayName.View());
  };
  for (const std::size_t count : {86U, 87U, 88U, 500U}) {
    EXPECT_EQ(std::u16string(86, kWide), displayName(Repeated(kUtf8, count))) << count;
    EXPECT_EQ(u"x" + std::u16string(86, kWide), displayName("x" + Repeated(kUtf8, count)));
    EXPECT_EQ(u"xx" + std::u16string(85, kWide), displayName("xx" + Repeated(kUtf8, count)));
  }
  const CodePageScope page(932);
  EXPECT_EQ(std::u16string(129, kWide), displayName(Repeated(kShiftJis, 131)));
  EXPECT_EQ(u"x" + std::u16string(129, kWide), displayName("x" + Repeated(kShiftJis, 131)));
}
