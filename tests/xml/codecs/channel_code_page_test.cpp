// Texts of the file in code pages whose characters have several bytes.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

#include "support/code_page.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "support/fake_channel.h"
#include "xml/codecs/base64.h"
#include "xml/codecs/channel_codec.h"
#include "xml/elements/xml_nodes.h"

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

std::basic_string<OLECHAR> Wides(std::size_t count) {
  return std::basic_string<OLECHAR>(count, kWide);
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

/// What the buffer of text attributes holds of so many characters.
std::string CutToBuffer(std::size_t characters) {
  const TextDocument document("<a t='" + Repeated(kUtf8, characters) + "'/>");
  xml::TextBuffer buffer = {};
  ExpectHr(S_OK, xml::GetAttrText(document.root, "t", buffer));
  return buffer;
}

/// Of a display name of 200 characters so many are read.
void ExpectDisplayName(std::size_t characters) {
  const TextDocument document("<Channel nameDisplay='" + Repeated(kUtf8, 200) + "'/>");
  FakeChannel record(InputSignalFMRadio);
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  ExpectText(Wides(characters), record.displayName.Get());
}

void ExpectOneSegmentJapan(const std::string& base64, const std::string& bytes) {
  const OLECHAR japan[] = {kWide, 0x672C};
  const OneSegment channel({japan, 2}, {japan, 2});
  EXPECT_EQ(base64, Attribute(channel.document.root, "name"));
  EXPECT_EQ(base64, Attribute(channel.document.root, "nameDisplay"));
  EXPECT_EQ(bytes, channel.Name());
  ExpectText({japan, 2}, channel.back.displayName.Get());
}

/// Of names of 200 characters these bytes and so many characters are kept.
void ExpectOneSegmentCut(const std::string& bytes, std::size_t characters) {
  const OneSegment channel(Wides(200), Wides(200));
  EXPECT_EQ(bytes, channel.Name());
  ExpectText(Wides(characters), channel.back.displayName.Get());
}

/// What is read of a name with these bytes.
Bstr OneSegmentDisplayName(const std::string& narrow) {
  std::string encoded(Base64EncodedSize(narrow.size()), '\0');
  Base64Encode(reinterpret_cast<const BYTE*>(narrow.data()), static_cast<LONG>(narrow.size()),
               encoded.data());
  encoded.pop_back();
  const TextDocument document("<Channel nameDisplay='" + encoded + "'/>");
  FakeChannel record(InputSignalISDBTerrestrialOneSeg);
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  return std::move(record.displayName);
}

class ChannelCodePage932 : public InCodePage<932> {};
class ChannelCodePage65001 : public InCodePage<65001> {};

}  // namespace

TEST_F(ChannelCodePage65001, TextsAreCutOnCharacters) { ExpectCutOnBoundaries(kUtf8); }

TEST_F(ChannelCodePage932, TextsAreCutOnCharacters) { ExpectCutOnBoundaries(kShiftJis); }

TEST_F(ChannelCodePage65001, ComponentSlots) {
  EXPECT_EQ(kUtf8 + kUtf8, ComponentName(Repeated(kUtf8, 5)));
  EXPECT_EQ("x" + kUtf8 + kUtf8, ComponentName("x" + Repeated(kUtf8, 5)));
}

TEST_F(ChannelCodePage932, ComponentSlots) {
  EXPECT_EQ(Repeated(kShiftJis, 3), ComponentName(Repeated(kUtf8, 5)));
  EXPECT_EQ("x" + Repeated(kShiftJis, 3), ComponentName("x" + Repeated(kUtf8, 5)));
}

TEST_F(ChannelCodePage65001, TextBuffer) { EXPECT_EQ(Repeated(kUtf8, 86), CutToBuffer(200)); }

TEST_F(ChannelCodePage932, TextBuffer) { EXPECT_EQ(Repeated(kShiftJis, 129), CutToBuffer(200)); }

TEST_F(ChannelCodePage65001, DisplayNames) { ExpectDisplayName(86); }

TEST_F(ChannelCodePage932, DisplayNames) { ExpectDisplayName(129); }

// Texts are written as they stand; what the code page lacks is lost when they are read.
TEST_F(ChannelCodePage932, CharactersOutsideThePage) {
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

TEST_F(ChannelCodePage932, TextsOfTheBlockAreWrittenFromThePage) {
  FakeChannel record(InputSignalDVBSatellite, 2784);
  std::memcpy(&record.block[352], kShiftJis.data(), kShiftJis.size());
  const TextDocument document("<Channel/>");
  ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Write));
  EXPECT_EQ(kUtf8, Attribute(document.root, "networkName"));
}

TEST_F(ChannelCodePage65001, OneSegmentNamesAreBase64OfThePage) {
  ExpectOneSegmentJapan("5pel5pys", kUtf8 + "\xE6\x9C\xAC");
}

TEST_F(ChannelCodePage932, OneSegmentNamesAreBase64OfThePage) {
  ExpectOneSegmentJapan("k/qWew==", kShiftJis + "\x96\x7B");
}

TEST_F(ChannelCodePage65001, OneSegmentNamesAreCutOnCharacters) {
  ExpectOneSegmentCut(Repeated(kUtf8, 26), 86);
}

TEST_F(ChannelCodePage932, OneSegmentNamesAreCutOnCharacters) {
  ExpectOneSegmentCut(Repeated(kShiftJis, 39), 129);
}

// A file of another program may hold more than is ever written here.
TEST_F(ChannelCodePage65001, LongOneSegmentNamesAreCutOnCharacters) {
  for (const std::size_t count : {86U, 87U, 88U, 500U}) {
    ExpectText(Wides(86), OneSegmentDisplayName(Repeated(kUtf8, count)).Get());
    ExpectText(OLESTR("x") + Wides(86), OneSegmentDisplayName("x" + Repeated(kUtf8, count)).Get());
    ExpectText(OLESTR("xx") + Wides(85),
               OneSegmentDisplayName("xx" + Repeated(kUtf8, count)).Get());
  }
}

TEST_F(ChannelCodePage932, LongOneSegmentNamesAreCutOnCharacters) {
  ExpectText(Wides(129), OneSegmentDisplayName(Repeated(kShiftJis, 131)).Get());
  ExpectText(OLESTR("x") + Wides(129), OneSegmentDisplayName("x" + Repeated(kShiftJis, 131)).Get());
}
