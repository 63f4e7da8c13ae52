#include "xml/codecs/channel_reader.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/dom_text.h"
#include "support/expect.h"
#include "xml/codecs/base64.h"
#include "xml/codecs/channel_codec.h"
#include "xml/codecs/one_way_rows.h"
#include "xml/codecs/sample_channels.h"

namespace {

using xml::CodeChannel;
using xml::Direction;

/// An element and the record that it is read into.
struct ReadBack {
  ReadBack(InputSignalType type, const std::string& xml) : record(type), document(xml) {
    ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Read));
  }
  std::uint32_t Word(std::size_t offset, std::size_t width = 4) const {
    std::uint32_t value = 0;
    for (std::size_t i = width; i-- > 0;) value = value << 8 | record.block.at(offset + i);
    return value;
  }
  /// The zero-terminated text that must end inside its field.
  std::string Text(std::size_t offset, std::size_t width) const {
    const char* text = reinterpret_cast<const char*>(&record.block.at(offset));
    EXPECT_LT(strnlen(text, width), width) << "no terminator";
    return {text, strnlen(text, width)};
  }
  /// True when every byte of the range is zero.
  bool IsZero(std::size_t first, std::size_t last) const {
    return std::all_of(record.block.begin() + static_cast<std::ptrdiff_t>(first),
                       record.block.begin() + static_cast<std::ptrdiff_t>(last),
                       [](BYTE value) { return value == 0; });
  }

  FakeChannel record;
  TextDocument document;
};

ReadBack Dvbs(const std::string& attributes, const std::string& children = "") {
  return {InputSignalDVBSatellite, "<Channel " + attributes + ">" + children + "</Channel>"};
}

std::string Repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

std::string Encoded(const std::string& bytes) {
  std::vector<char> text(Base64EncodedSize(bytes.size()));
  Base64Encode(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<LONG>(bytes.size()),
               text.data());
  return text.data();
}

ReadBack OneSeg(const std::string& name, const std::string& displayName = "") {
  return {InputSignalISDBTerrestrialOneSeg,
          "<Channel name='" + name + "' nameDisplay='" + displayName + "'/>"};
}

}  // namespace

TEST(ChannelReader, NothingButTheElementName) {
  for (const Sample& sample : Samples()) {
    const ReadBack read(sample.signalType, "<Channel/>");
    EXPECT_EQ(1, read.record.stationsSet);
    EXPECT_EQ(sample.signalType, read.record.givenSignalType);
    EXPECT_EQ(sample.blockSize, read.record.givenByteCount);
    EXPECT_TRUE(read.IsZero(0, sample.blockSize)) << sample.file;
    EXPECT_EQ(0U, read.record.index);
    EXPECT_EQ(0U, read.record.station.dwFrequency);
  }
}

TEST(ChannelReader, EmptyElementStreamsIsAdded) {
  for (const Sample& sample : Samples()) {
    const ReadBack read(sample.signalType, "<Channel><Mine/></Channel>");
    const bool hasStreams =
        sample.signalType != InputSignalAnalogCable && sample.signalType != InputSignalFMRadio;
    EXPECT_EQ(hasStreams ? "<Channel>\n\t<Mine/>\n\t<ElementStreams/>\n</Channel>\n"
                         : "<Channel>\n\t<Mine/>\n</Channel>\n",
              Formatted(read.document.root));
  }
}

TEST(ChannelReader, ReadingTwiceAddsNothingMore) {
  ReadBack read(InputSignalDVBSatellite, "<Channel/>");
  ExpectHr(S_OK, CodeChannel(read.document.root, &read.record, Direction::Read));
  EXPECT_EQ("<Channel>\n\t<ElementStreams/>\n</Channel>\n", Formatted(read.document.root));
}

TEST(ChannelReader, ResultIsThatOfSetStationInfo) {
  for (const HRESULT hr : {S_OK, S_FALSE, E_FAIL, FakeChannel::kFailure}) {
    const TextDocument document("<Channel index='8'/>");
    FakeChannel record(InputSignalFMRadio);
    record.setStationResult = hr;
    ExpectHr(hr, CodeChannel(document.root, &record, Direction::Read));
    EXPECT_EQ(8U, record.index);
  }
}

TEST(ChannelReader, SettersThatRefuseAreNotLookedAt) {
  // SetChannelIndex answers E_NOTIMPL every time.
  const ReadBack read = Dvbs("index='7' favor='4294967295' lock='-1'");
  EXPECT_EQ(7U, read.record.index);
  EXPECT_EQ(4294967295U, read.record.favor);
  EXPECT_EQ(-1, read.record.lock);
}

TEST(ChannelReader, NumbersBeyondTheirRangeWrap) {
  const ReadBack read = Dvbs(
      "index='4294967301' freq='4294967295' freqOffset='2147483648' TSID='4294967294' "
      "physicalChannel='-2147483648' serviceID='4294967295' PcrPID='2147483648' ONID='-1' "
      "CA='  12x' serviceType='x' runningStatus=''");
  EXPECT_EQ(5U, read.record.index);
  EXPECT_EQ(4294967295U, read.record.station.dwFrequency);
  EXPECT_EQ(-2147483647 - 1, read.record.station.lOffsetFreq);
  EXPECT_EQ(-2, read.record.station.lTSID);
  EXPECT_EQ(-2147483647 - 1, read.record.station.lPhysicalChannel);
  EXPECT_EQ(4294967295U, read.Word(4));
  EXPECT_EQ(2147483648U, read.Word(8));
  EXPECT_EQ(4294967295U, read.Word(12));
  EXPECT_EQ(12U, read.Word(948));
  EXPECT_EQ(0U, read.Word(0));
  EXPECT_EQ(0U, read.Word(944));
}

TEST(ChannelReader, NarrowFieldsKeepTheLowBits) {
  const ReadBack read(InputSignalAnalogAntenna,
                      "<Channel CNI0='65536' CNI1='65537' CNI2='-1' CNI3='2147483649'/>");
  EXPECT_EQ(0U, read.Word(6, 2));
  EXPECT_EQ(1U, read.Word(8, 2));
  EXPECT_EQ(65535U, read.Word(10, 2));
  EXPECT_EQ(1U, read.Word(12, 2));
  EXPECT_TRUE(read.IsZero(0, 6));
  EXPECT_TRUE(read.IsZero(14, 100));
}

TEST(ChannelReader, StreamFieldsKeepTheLowBits) {
  const ReadBack read =
      Dvbs("",
           "<ElementStreams><VideoStream type='257' pid='65538' lang='65535'/>"
           "<VideoStream type='-1' pid='-1' lang='-1'/><VideoStream/></ElementStreams>");
  EXPECT_EQ((std::vector<BYTE>{1,   0, 2,   0,   15, 15, 15, 0, 0, 0,  //
                               255, 0, 255, 255, 15, 15, 15, 0, 0, 0}),
            (std::vector<BYTE>(read.record.block.begin() + 24, read.record.block.begin() + 44)));
  EXPECT_TRUE(read.IsZero(44, 608));
}

TEST(ChannelReader, LanguageIsThreeTimesFourBits) {
  const ReadBack read = Dvbs(
      "", "<ElementStreams><AudioStream lang='291'/><DsmccStream lang='2748'/></ElementStreams>");
  EXPECT_EQ(3, read.record.block[196]);
  EXPECT_EQ(2, read.record.block[197]);
  EXPECT_EQ(1, read.record.block[198]);
  EXPECT_EQ(0xC, read.record.block[1440]);
  EXPECT_EQ(0xB, read.record.block[1441]);
  EXPECT_EQ(0xA, read.record.block[1442]);
}

TEST(ChannelReader, StreamListsBeyondTheBlockAreCut) {
  struct List {
    InputSignalType type;
    const char* element;
    std::size_t offset;
    std::size_t entrySize;
    int capacity;
  };
  constexpr InputSignalType kDvbs = InputSignalDVBSatellite;
  constexpr InputSignalType kDvbt = InputSignalDVBTerrestrial;
  constexpr InputSignalType kOneSeg = InputSignalISDBTerrestrialOneSeg;
  constexpr InputSignalType kTdmb = InputSignalTDMBMobile;
  const List lists[] = {
      {kDvbs, "VideoStream", 24, 10, 16},
      {kDvbs, "AudioStream", 192, 10, 16},
      {kDvbs, "TeletextStream", 1264, 10, 8},
      {kDvbs, "SubtitleStream", 1352, 10, 8},
      {kDvbs, "DsmccStream", 1436, 56, 16},
      {kDvbs, "MhpAitStream", 2336, 56, 8},
      {kDvbt, "VideoStream", 24, 10, 16},
      {kDvbt, "AudioStream", 192, 10, 16},
      {kDvbt, "TeletextStream", 960, 10, 8},
      {kDvbt, "SubtitleStream", 1048, 10, 8},
      {kDvbt, "DsmccStream", 1136, 56, 16},
      {kDvbt, "MhpAitStream", 2036, 56, 8},
      {kOneSeg, "VideoStream", 24, 10, 16},
      {kOneSeg, "AudioStream", 192, 10, 16},
      {kOneSeg, "TeletextStream", 1048, 10, 8},
      {kOneSeg, "SubtitleStream", 1136, 10, 8},
      {kOneSeg, "DsmccStream", 1224, 56, 16},
      {kOneSeg, "MhpAitStream", 2124, 56, 8},
      {kTdmb, "VideoStream", 24, 10, 8},
      {kTdmb, "AudioStream", 112, 10, 8},
      {kTdmb, "TeletextStream", 3192, 10, 8},
      {kTdmb, "SubtitleStream", 3280, 10, 8},
      {kTdmb, "DsmccStream", 3368, 56, 16},
      {kTdmb, "MhpAitStream", 4268, 56, 8},
      {InputSignalDVBHandheld, "VideoStream", 24, 10, 8},
      {InputSignalDVBHandheld, "AudioStream", 112, 10, 8},
      {InputSignalATSCCable, "VideoStream", 24, 10, 8},
      {InputSignalATSCCable, "AudioStream", 112, 10, 8},
  };
  for (const List& list : lists) {
    std::string children;
    for (int i = 0; i < list.capacity + 5; ++i) {
      children += "<" + std::string(list.element) + " pid='" + std::to_string(1000 + i) + "'/>";
    }
    const ReadBack read(list.type,
                        "<Channel><ElementStreams>" + children + "</ElementStreams></Channel>");
    std::vector<BYTE> expected(read.record.block.size());
    for (int i = 0; i < list.capacity; ++i) {
      const std::size_t place = list.offset + static_cast<std::size_t>(i) * list.entrySize + 2;
      expected[place] = static_cast<BYTE>((1000 + i) & 0xFF);
      expected[place + 1] = static_cast<BYTE>((1000 + i) >> 8);
    }
    EXPECT_EQ(expected, read.record.block) << list.type << " " << list.element;
  }
}

TEST(ChannelReader, CountsAreReadAsTheyStand) {
  const ReadBack read = Dvbs("",
                             "<ElementStreams numOfVideoStreams='4294967295' videoStream='99' "
                             "numOfAudioStreams='17'><VideoStream pid='5'/></ElementStreams>");
  EXPECT_EQ(4294967295U, read.Word(20));
  EXPECT_EQ(99U, read.Word(16));
  EXPECT_EQ(17U, read.Word(188));
  EXPECT_EQ(5U, read.Word(26, 2));
}

TEST(ChannelReader, OtherChildrenAreNoStreams) {
  const ReadBack read =
      Dvbs("",
           "<VideoStream pid='1'/><ElementStreams><!-- x --><X><VideoStream pid='2'/></X>text"
           "<videostream pid='3'/><VideoStream pid='4'/></ElementStreams>"
           "<ElementStreams><VideoStream pid='5'/></ElementStreams>");
  EXPECT_EQ(4U, read.Word(26, 2));
  EXPECT_TRUE(read.IsZero(34, 608));
}

// Eleven values and six lists that are never written, but read where a file has them.
TEST(ChannelReader, StreamsOfTdmbAreRead) {
  const ReadBack read(
      InputSignalTDMBMobile,
      "<Channel><ElementStreams videoStream='1' numOfVideoStreams='2' audioStream='3' "
      "numOfAudioStreams='4' teletextStream='5' numOfTeletextStreams='6' subtitleStream='7' "
      "numOfSubtitleStreams='8' dsmccStream='9' numOfDsmccStreams='10' numOfMhpAitStreams='11'>"
      "<MhpAitStream flags='12'/></ElementStreams></Channel>");
  const std::size_t places[] = {16, 20, 104, 108, 3184, 3188, 3272, 3276, 3360, 3364, 4264};
  std::uint32_t expected = 0;
  for (const std::size_t place : places) EXPECT_EQ(++expected, read.Word(place)) << place;
  EXPECT_EQ(12U, read.Word(4268 + 36));
}

// The name that is looked for has a blank, which no attribute can have.
TEST(ChannelReader, ComponentIndexReadsBackAsZero) {
  const ReadBack read(
      InputSignalTDMBMobile,
      "<Channel><ElementStreams Component_index='5' ComponentIndex='6'/></Channel>");
  EXPECT_EQ(0U, read.Word(796));
}

// Rows of the channel and of its streams alike.
TEST(ChannelReader, RowsThatAreOnlyWrittenAreNotRead) {
  const TextDocument document(
      "<Channel both='1' read='2' written='3'>"
      "<ElementStreams both='4' read='5' written='6'/></Channel>");
  FakeChannel record(InputSignalFMRadio);
  ExpectHr(S_OK, xml::ReadChannel(document.root, &record, InputSignalFMRadio, kOneWayLayout));
  const std::uint32_t expected[] = {1, 2, 0, 4, 5, 0};
  ASSERT_EQ(24U, record.block.size());
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(expected[i], station_blocks::Fetch(&record.block[4 * i], 4)) << i;
  }
}

TEST(ChannelReader, ComponentsGoWhereTheirIdSays) {
  const ReadBack read(InputSignalTDMBMobile,
                      "<Channel><ElementStreams numOfComponents='4294967295'>"
                      "<Components ID='7' name='last' type='77'/>"
                      "<Components name='none' type='1'/>"
                      "<Components ID='2' name='first of two' type='22'/>"
                      "<Components ID='2' name='b' type='23'/>"
                      "<Components ID='8' name='out' type='8'/>"
                      "<Components ID='-1' name='out' type='9'/>"
                      "<Components ID='2147483647' name='out' type='9'/>"
                      "<Components ID='4294967299' name='wrapped' type='3'/>"
                      "<Components ID='4' name='1234567' type='44'/>"
                      "<Components ID='5' name='12345678' type='-1'/>"
                      "</ElementStreams></Channel>");
  EXPECT_EQ(4294967295U, read.Word(800));
  EXPECT_EQ("none", read.Text(1064, 8));
  EXPECT_EQ(1U, read.Word(3144));
  EXPECT_TRUE(read.IsZero(1072, 1080));
  EXPECT_EQ("b", read.Text(1080, 8)) << "the later one of two counts";
  EXPECT_EQ(23U, read.Word(3152));
  EXPECT_EQ("wrapped", read.Text(1088, 8));
  EXPECT_EQ(3U, read.Word(3156));
  EXPECT_EQ("1234567", read.Text(1096, 8));
  EXPECT_EQ("1234567", read.Text(1104, 8)) << "seven bytes and the terminator";
  EXPECT_EQ(4294967295U, read.Word(3164));
  EXPECT_EQ("last", read.Text(1120, 8));
  EXPECT_EQ(77U, read.Word(3172));
  EXPECT_TRUE(read.IsZero(1128, 3144));
  EXPECT_TRUE(read.IsZero(3176, 4716));
}

TEST(ChannelReader, TextsAreCutToTheirFields) {
  struct Field {
    InputSignalType type;
    const char* attribute;
    std::size_t offset;
    std::size_t width;
    std::size_t kept;
  };
  const Field fields[] = {
      {InputSignalAnalogCable, "name", 20, 80, 79},
      {InputSignalFMRadio, "name", 12, 80, 79},
      {InputSignalATSCCable, "name", 192, 336, 259},
      {InputSignalDVBSatellite, "name", 608, 336, 259},
      {InputSignalDVBSatellite, "networkName", 352, 256, 255},
      {InputSignalDVBTerrestrial, "name", 608, 336, 259},
      {InputSignalDVBTerrestrial, "networkName", 352, 256, 255},
      {InputSignalDVBHandheld, "name", 448, 424, 259},
      {InputSignalDVBHandheld, "networkName", 192, 256, 255},
      {InputSignalDVBHandheld, "VideoIP", 880, 64, 63},
      {InputSignalDVBHandheld, "AudioIP", 952, 64, 63},
      {InputSignalDVBHandheld, "EsgIP", 1024, 64, 63},
      {InputSignalTDMBMobile, "name", 448, 336, 259},
      {InputSignalTDMBMobile, "EnsembelLab", 192, 256, 255},
  };
  for (const Field& field : fields) {
    for (const std::size_t length :
         {field.kept - 1, field.kept, field.kept + 1, std::size_t{999}}) {
      const std::string text(length, 'x');
      const ReadBack read(field.type,
                          "<Channel " + std::string(field.attribute) + "='" + text + "'/>");
      std::vector<BYTE> expected(read.record.block.size());
      std::fill_n(expected.begin() + static_cast<std::ptrdiff_t>(field.offset),
                  std::min(length, field.kept), BYTE{'x'});
      EXPECT_EQ(expected, read.record.block) << field.type << field.attribute << length;
    }
  }
}

TEST(ChannelReader, DisplayNameIsCutToItsBuffer) {
  const ReadBack read = Dvbs("nameDisplay='" + std::string(300, 'x') + "'");
  EXPECT_EQ(259U, SysStringLen(read.record.displayName.Get()));
}

TEST(ChannelReader, SatelliteParamsAreReadAndNeverMade) {
  const ReadBack none = Dvbs("polarisation='LinearH'");
  EXPECT_TRUE(none.IsZero(952, 1256));
  EXPECT_FALSE(Child(none.document.root, "./SatelliteParams"));
  const ReadBack read = Dvbs(
      "", "<SatelliteParams DiSEqC_Msg='" + std::string(300, 'd') + "' LNB_LowFreq='4294967295'/>");
  EXPECT_EQ(std::string(255, 'd'), read.Text(1000, 256));
  EXPECT_EQ(4294967295U, read.Word(984));
}

TEST(ChannelReader, WordsOfValues) {
  struct Word {
    const char* attribute;
    const char* word;
    std::size_t offset;
    std::uint32_t value;
  };
  constexpr std::uint32_t kNotSet = 4294967295U;
  const Word words[] = {
      {"polarisation", "NotSet", 952, kNotSet},
      {"polarisation", "Linearv", 952, 2},
      {"polarisation", "CircularR", 952, 4},
      {"polarisation", "linearV", 952, 0},
      {"polarisation", "-1", 952, 0},
      {"polarisation", "", 952, 0},
      {"polarisation", "2", 952, 0},
      {"innerFECRate", "6/7", 976, kNotSet},
      {"innerFECRate", "-1", 976, kNotSet},
      {"innerFECRate", "7/8", 976, 8},
      {"innerFECRate", "9/10", 976, 0},
      {"innerFECRate", " 7/8", 976, 0},
      {"modulation", "ANALOG_FREQUENCY", 980, 0},
      {"modulation", "BDA_MOD_ANALOG_FREQUENCY", 980, 26},
      {"modulation", "8PSK", 980, 0},
      {"modulation", "QPSK", 980, 20},
      {"spectralInversion", "-1", 996, kNotSet},
      {"spectralInversion", "inverted", 996, 3},
      {"spectralInversion", "Unknown", 996, 0},
  };
  for (const Word& word : words) {
    const ReadBack read =
        Dvbs("", "<SatelliteParams " + std::string(word.attribute) + "='" + word.word + "'/>");
    EXPECT_EQ(word.value, read.Word(word.offset)) << word.attribute << " " << word.word;
  }
}

TEST(ChannelReader, OneSegmentPhysicalChannelHasTwoPlaces) {
  const ReadBack read(InputSignalISDBTerrestrialOneSeg, "<Channel physicalChannel='27'/>");
  EXPECT_EQ(27, read.record.station.lPhysicalChannel);
  EXPECT_EQ(27U, read.Word(2572));
}

TEST(ChannelReader, OneSegmentNames) {
  const ReadBack read = OneSeg(Encoded("NHK"), Encoded("Displayed"));
  EXPECT_EQ("NHK", read.Text(608, 80));
  ExpectText(OLESTR("Displayed"), read.record.displayName.Get());

  const ReadBack none = OneSeg("");
  EXPECT_TRUE(none.IsZero(608, 1040));
  EXPECT_TRUE(none.record.displayName.IsEmpty());
}

TEST(ChannelReader, OneSegmentNamesAreCut) {
  for (const std::size_t length : {79U, 80U, 259U}) {
    const std::string text(length, 'x');
    const ReadBack read = OneSeg(Encoded(text), Encoded(text));
    EXPECT_EQ(std::string(79, 'x'), read.Text(608, 80));
    EXPECT_TRUE(read.IsZero(688, 1040));
    ExpectText(Wide(text).View(), read.record.displayName.Get());
  }
  // More than the writer ever puts there is cut, not refused.
  const ReadBack longer = OneSeg(Encoded(std::string(5000, 'x')), Encoded(std::string(5000, 'x')));
  EXPECT_EQ(std::string(79, 'x'), longer.Text(608, 80));
  EXPECT_EQ(259U, SysStringLen(longer.record.displayName.Get()));
  // Line breaks are no part of the text.
  std::string broken = Encoded(std::string(259, 'x'));
  for (std::size_t at = 4; at < broken.size(); at += 6) broken.insert(at, "\r\n");
  for (std::size_t at = broken.find('\r'); at != std::string::npos; at = broken.find('\r')) {
    broken.replace(at, 2, "&#13;&#10;");
  }
  const ReadBack lines = OneSeg("", broken);
  ExpectText(Wide(std::string(259, 'x')).View(), lines.record.displayName.Get());
}

TEST(ChannelReader, OneSegmentNamesThatAreNoBase64) {
  EXPECT_EQ("", OneSeg("****").Text(608, 80));
  EXPECT_EQ("NHK", OneSeg("Tk&#13;&#10;hL").Text(608, 80));
  EXPECT_EQ("N", OneSeg("Tg==").Text(608, 80));
  EXPECT_EQ("N", OneSeg("Tg").Text(608, 80));
  EXPECT_EQ("A", OneSeg(Encoded(std::string("A\0B", 3))).Text(608, 80)) << "a zero ends the text";
  EXPECT_EQ("", OneSeg("=").Text(608, 80));
  const ReadBack read = OneSeg(Repeated("/", 400), Repeated("\xE6\x97\xA5", 200));
  EXPECT_TRUE(read.IsZero(688, 1040));
}
