#include "xml/codecs/channel_writer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/station_blocks.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "xml/codecs/channel_codec.h"
#include "xml/codecs/one_way_rows.h"
#include "xml/codecs/sample_channels.h"

namespace {

using xml::CodeChannel;
using xml::Direction;

void Put(FakeChannel& record, std::size_t offset, std::size_t width, std::uint32_t value) {
  for (std::size_t i = 0; i < width; ++i) {
    record.block.at(offset + i) = static_cast<BYTE>(value >> (8 * i));
  }
}

/// A record and the element that it is written into.
struct Written {
  Written(InputSignalType type, std::size_t size, const std::string& xml = "<Channel/>")
      : record(type, size), document(xml) {}
  HRESULT Write() { return CodeChannel(document.root, &record, Direction::Write); }
  const dom::Element& Channel() const { return document.root; }
  dom::Element Streams() const { return Child(document.root, "./ElementStreams"); }
  dom::Element Params() const { return Child(document.root, "./SatelliteParams"); }

  FakeChannel record;
  TextDocument document;
};

struct DvbsChannel : Written {
  DvbsChannel() : Written(InputSignalDVBSatellite, 2784) {}
};

std::string ChildNames(const dom::Element& parent) {
  std::string names;
  dom::Element child;
  for (HRESULT hr = parent.FirstChildElement(child); hr == S_OK;) {
    std::string name;
    ExpectHr(S_OK, child.TagName(name));
    names += name + " ";
    dom::Element next;
    hr = child.NextSiblingElement(next);
    child = std::move(next);
  }
  return names;
}

}  // namespace

TEST(ChannelWriter, EveryGetterThatFailsEndsWithItsCode) {
  using Getter = FakeChannel::Getter;
  for (const Sample& sample : Samples()) {
    for (const Getter getter : {Getter::Station, Getter::Index, Getter::Favor, Getter::Lock,
                                Getter::Name, Getter::DisplayName}) {
      Written written(sample.signalType, sample.blockSize,
                      "<Channel index='7' mine='1'><ElementStreams v='1'/></Channel>");
      const std::string before = Formatted(written.Channel());
      sample.Fill(written.record);
      written.record.failing = getter;
      ExpectHr(FakeChannel::kFailure, written.Write());
      EXPECT_EQ(before, Formatted(written.Channel())) << sample.file;
    }
  }
}

TEST(ChannelWriter, StationWithoutABlock) {
  for (const Sample& sample : Samples()) {
    Written written(sample.signalType, 0);
    ExpectHr(E_FAIL, written.Write());
    EXPECT_EQ("<Channel/>\n", Formatted(written.Channel()));
  }
}

TEST(ChannelWriter, BlockThatEndsEarlierReadsAsZero) {
  for (const Sample& sample : Samples()) {
    for (const std::size_t size : {std::size_t{1}, sample.blockSize / 2, sample.blockSize - 1}) {
      Written cut(sample.signalType, 0);
      Written zeroed(sample.signalType, 0);
      sample.Fill(cut.record);
      sample.Fill(zeroed.record);
      cut.record.block.resize(size);
      std::fill(zeroed.record.block.begin() + static_cast<std::ptrdiff_t>(size),
                zeroed.record.block.end(), BYTE{0});
      ExpectHr(S_OK, cut.Write());
      ExpectHr(S_OK, zeroed.Write());
      EXPECT_EQ(Formatted(zeroed.Channel()), Formatted(cut.Channel()));
    }
  }
}

TEST(ChannelWriter, LongerBlockIsNotReadBehindItsLayout) {
  for (const Sample& sample : Samples()) {
    Written exact(sample.signalType, 0);
    Written longer(sample.signalType, 0);
    sample.Fill(exact.record);
    sample.Fill(longer.record);
    longer.record.block.resize(sample.blockSize + 500, BYTE{0xFF});
    ExpectHr(S_OK, exact.Write());
    ExpectHr(S_OK, longer.Write());
    EXPECT_EQ(Formatted(exact.Channel()), Formatted(longer.Channel()));
  }
}

TEST(ChannelWriter, SavingTwiceLeavesTheSameChildren) {
  for (const Sample& sample : Samples()) {
    Written written(sample.signalType, 0);
    sample.Fill(written.record);
    ExpectHr(S_OK, written.Write());
    const std::string once = Formatted(written.Channel());
    const std::string children = ChildNames(written.Channel());
    ExpectHr(S_OK, written.Write());
    ExpectHr(S_OK, written.Write());
    if (sample.signalType == InputSignalDVBSatellite) {
      // The replaced streams stand behind what was there.
      EXPECT_EQ("ElementStreams SatelliteParams ", children);
      EXPECT_EQ("SatelliteParams ElementStreams ", ChildNames(written.Channel()));
      EXPECT_EQ(5, Count(written.Channel(), "./ElementStreams/VideoStream") +
                       Count(written.Channel(), "./ElementStreams/AudioStream"));
    } else {
      EXPECT_EQ(once, Formatted(written.Channel())) << sample.file;
    }
  }
}

TEST(ChannelWriter, SecondSaveDropsStreamsThatAreGone) {
  DvbsChannel written;
  Put(written.record, 20, 4, 2);
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ(2, Count(written.Channel(), "./ElementStreams/VideoStream"));
  Put(written.record, 20, 4, 0);
  ExpectHr(S_OK, written.Write());
  EXPECT_FALSE(written.Streams().HasChildNodes());
  EXPECT_EQ(1, Count(written.Channel(), "./ElementStreams"));
}

TEST(ChannelWriter, OnlyTheFirstElementStreamsIsReplaced) {
  Written written(InputSignalDVBHandheld, 1096,
                  "<Channel><ElementStreams v='1'/><ElementStreams v='2'/></Channel>");
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ(2, Count(written.Channel(), "./ElementStreams"));
  EXPECT_EQ(0, Count(written.Channel(), "./ElementStreams[@v='1']"));
}

TEST(ChannelWriter, ForeignAttributesAndChildrenStay) {
  Written written(InputSignalDVBSatellite, 2784,
                  "<Channel mine='1' freq='5'><Mine/><SatelliteParams mine='2' azimuth='9'><In/>"
                  "</SatelliteParams></Channel>");
  written.record.station.dwFrequency = 6;
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("Mine SatelliteParams ElementStreams ", ChildNames(written.Channel()));
  EXPECT_EQ("1", Attribute(written.Channel(), "mine"));
  EXPECT_EQ("6", Attribute(written.Channel(), "freq"));
  EXPECT_EQ("2", Attribute(written.Params(), "mine"));
  EXPECT_EQ("0", Attribute(written.Params(), "azimuth"));
  EXPECT_EQ("In ", ChildNames(written.Params()));
}

TEST(ChannelWriter, NumbersAreWrittenSigned) {
  DvbsChannel written;
  written.record.index = 4294967294U;
  written.record.favor = 2147483648U;
  written.record.lock = -1;
  written.record.station.dwFrequency = 4294967295U;
  written.record.station.lOffsetFreq = -2147483647 - 1;
  written.record.station.lTSID = -1;
  written.record.station.lPhysicalChannel = 2147483647;
  Put(written.record, 4, 4, 2147483648U);
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("-2", Attribute(written.Channel(), "index"));
  EXPECT_EQ("-2147483648", Attribute(written.Channel(), "favor"));
  EXPECT_EQ("-1", Attribute(written.Channel(), "lock"));
  EXPECT_EQ("-1", Attribute(written.Channel(), "freq"));
  EXPECT_EQ("-2147483648", Attribute(written.Channel(), "freqOffset"));
  EXPECT_EQ("-1", Attribute(written.Channel(), "TSID"));
  EXPECT_EQ("2147483647", Attribute(written.Channel(), "physicalChannel"));
  EXPECT_EQ("-2147483648", Attribute(written.Channel(), "serviceID"));
}

// Only what the host wrote into the record counts, not the copy in the block.
TEST(ChannelWriter, OneSegmentPhysicalChannelComesFromTheStation) {
  Written written(InputSignalISDBTerrestrialOneSeg, 2580);
  written.record.station.lPhysicalChannel = 27;
  Put(written.record, 2572, 4, 13);
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("27", Attribute(written.Channel(), "physicalChannel"));
}

TEST(ChannelWriter, NarrowNumbersHaveNoSign) {
  Written written(InputSignalAnalogAntenna, 100);
  Put(written.record, 6, 2, 65535);
  Put(written.record, 0, 4, 0xFFFFFFFF);  // bytes that the file has no place for
  Put(written.record, 14, 2, 0xFFFF);
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("65535", Attribute(written.Channel(), "CNI0"));
  EXPECT_EQ("0", Attribute(written.Channel(), "CNI3"));
}

TEST(ChannelWriter, CountsBeyondTheBlockWriteWhatItHolds) {
  struct List {
    InputSignalType type;
    std::size_t blockSize;
    std::size_t countOffset;
    const char* count;
    const char* path;
    LONG capacity;
  };
  constexpr InputSignalType kDvbs = InputSignalDVBSatellite;
  constexpr InputSignalType kDvbt = InputSignalDVBTerrestrial;
  constexpr InputSignalType kDvbh = InputSignalDVBHandheld;
  constexpr InputSignalType kOneSeg = InputSignalISDBTerrestrialOneSeg;
  const List lists[] = {
      {kDvbs, 2784, 20, "numOfVideoStreams", "./VideoStream", 16},
      {kDvbs, 2784, 188, "numOfAudioStreams", "./AudioStream", 16},
      {kDvbs, 2784, 1260, "numOfTeletextStreams", "./TeletextStream", 8},
      {kDvbs, 2784, 1348, "numOfSubtitleStreams", "./SubtitleStream", 8},
      {kDvbs, 2784, 1432, "numOfDsmccStreams", "./DsmccStream", 16},
      {kDvbs, 2784, 2332, "numOfMhpAitStreams", "./MhpAitStream", 8},
      {kDvbt, 2484, 956, "numOfTeletextStreams", "./TeletextStream", 8},
      {kDvbt, 2484, 1044, "numOfSubtitleStreams", "./SubtitleStream", 8},
      {kDvbt, 2484, 1132, "numOfDsmccStreams", "./DsmccStream", 16},
      {kDvbt, 2484, 2032, "numOfMhpAitStreams", "./MhpAitStream", 8},
      {kDvbh, 1096, 20, "numOfVideoStreams", "./VideoStream", 8},
      {kDvbh, 1096, 108, "numOfAudioStreams", "./AudioStream", 8},
      {InputSignalATSCCable, 528, 20, "numOfVideoStreams", "./VideoStream", 8},
      {InputSignalATSCCable, 528, 108, "numOfAudioStreams", "./AudioStream", 8},
      {kOneSeg, 2580, 20, "numOfVideoStreams", "./VideoStream", 16},
      {kOneSeg, 2580, 188, "numOfAudioStreams", "./AudioStream", 16},
      {kOneSeg, 2580, 1044, "numOfTeletextStreams", "./TeletextStream", 8},
      {kOneSeg, 2580, 1132, "numOfSubtitleStreams", "./SubtitleStream", 8},
      {kOneSeg, 2580, 1220, "numOfDsmccStreams", "./DsmccStream", 16},
      {kOneSeg, 2580, 2120, "numOfMhpAitStreams", "./MhpAitStream", 8},
      {InputSignalTDMBMobile, 4716, 800, "numOfComponents", "./Components", 8},
  };
  for (const List& list : lists) {
    const auto capacity = static_cast<std::uint32_t>(list.capacity);
    for (const std::uint32_t count : {0U, 1U, capacity, capacity + 1, 2147483648U, 4294967295U}) {
      Written written(list.type, list.blockSize);
      Put(written.record, list.countOffset, 4, count);
      ExpectHr(S_OK, written.Write());
      const dom::Element streams = written.Streams();
      EXPECT_EQ(std::to_string(static_cast<std::int32_t>(count)), Attribute(streams, list.count));
      EXPECT_EQ(count < capacity ? static_cast<LONG>(count) : list.capacity,
                Count(streams, list.path))
          << list.type << " " << list.path;
    }
  }
}

TEST(ChannelWriter, EmptyStreamListAnswersInvalidArgument) {
  const TextDocument document("<ElementStreams/>");
  const BYTE block[2784] = {};
  for (const station_blocks::StreamList& list : station_blocks::kDvbs.lists) {
    ExpectHr(E_INVALIDARG, xml::WriteStreamList(document.root, list, block));
  }
  EXPECT_FALSE(document.root.HasChildNodes());
}

TEST(ChannelWriter, StreamsWithoutAudioAreSaved) {
  DvbsChannel written;
  Put(written.record, 20, 4, 1);
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("VideoStream ", ChildNames(written.Streams()));
  EXPECT_TRUE(written.Params());
}

TEST(ChannelWriter, LanguageBytesAreOneNumber) {
  DvbsChannel written;
  Put(written.record, 20, 4, 3);
  Put(written.record, 28, 3, 0x010203);  // bytes 3, 2, 1
  Put(written.record, 38, 3, 0x756564);  // whole letters overlap
  Put(written.record, 48, 3, 0xFFFFFF);
  ExpectHr(S_OK, written.Write());
  EXPECT_TRUE(Child(written.Streams(), "./VideoStream[@lang='291']"));
  EXPECT_TRUE(Child(
      written.Streams(),
      ("./VideoStream[@lang='" + std::to_string(0x64 | 0x65 << 4 | 0x75 << 8) + "']").c_str()));
  EXPECT_TRUE(
      Child(written.Streams(),
            ("./VideoStream[@lang='" + std::to_string(0xFF | 0xFF0 | 0xFF00) + "']").c_str()));
}

TEST(ChannelWriter, WordsOfValues) {
  struct Word {
    std::size_t offset;
    const char* attribute;
    std::uint32_t value;
    const char* word;
  };
  constexpr std::uint32_t kNotSet = 4294967295U;
  const Word words[] = {
      {952, "polarisation", kNotSet, "NotSet"},
      {952, "polarisation", 0, "NotSet"},
      {952, "polarisation", 4, "CircularR"},
      {952, "polarisation", 5, ""},
      {952, "polarisation", 2147483648U, ""},
      {976, "innerFECRate", kNotSet, "NotSet"},
      {976, "innerFECRate", 8, "7/8"},
      {976, "innerFECRate", 9, ""},
      {976, "innerFECRate", 12, ""},
      {980, "modulation", 26, "ANALOG_FREQUENCY"},
      {980, "modulation", 27, ""},
      {980, "modulation", 1, "16QAM"},
      {996, "spectralInversion", 0, "NotSet"},
      {996, "spectralInversion", 3, "inverted"},
      {996, "spectralInversion", 4, ""},
      {996, "spectralInversion", kNotSet - 1, ""},
  };
  for (const Word& word : words) {
    DvbsChannel written;
    Put(written.record, word.offset, 4, word.value);
    ExpectHr(S_OK, written.Write());
    EXPECT_EQ(word.word, Attribute(written.Params(), word.attribute)) << word.value;
  }
}

TEST(ChannelWriter, TextsOfTheBlockEndWithTheirField) {
  DvbsChannel written;
  std::fill_n(written.record.block.begin() + 352, 256, BYTE{'n'});
  std::fill_n(written.record.block.begin() + 1000, 256, BYTE{'d'});
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ(std::string(256, 'n'), Attribute(written.Channel(), "networkName"));
  EXPECT_EQ(std::string(256, 'd'), Attribute(written.Params(), "DiSEqC_Msg"));
}

TEST(ChannelWriter, NamesComeFromTheRecord) {
  DvbsChannel written;
  std::memcpy(&written.record.block[608], "in the block", 12);
  written.record.name = Wide("in the record");
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("in the record", Attribute(written.Channel(), "name"));
  EXPECT_EQ("", Attribute(written.Channel(), "nameDisplay")) << "a null text is written empty";
  const OLECHAR japanese[] = {0x65E5, 0x672C, 0xD83D, 0xDCFA};
  written.record.name = Bstr(WideView(japanese, 4));
  written.record.displayName = Bstr(WideView(japanese, 2));
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ("\xE6\x97\xA5\xE6\x9C\xAC\xF0\x9F\x93\xBA", Attribute(written.Channel(), "name"));
  EXPECT_EQ("\xE6\x97\xA5\xE6\x9C\xAC", Attribute(written.Channel(), "nameDisplay"));
}

TEST(ChannelWriter, LongNamesAreWrittenWhole) {
  DvbsChannel written;
  written.record.name = Wide(std::string(1000, 'x'));
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ(std::string(1000, 'x'), Attribute(written.Channel(), "name"));
}

TEST(ChannelWriter, OneSegmentNames) {
  const std::pair<std::string, std::string> names[] = {
      {"", ""},
      {"M", "TQ=="},
      {"NHK", "TkhL"},
      {std::string(259, 'x'), ""},
      {std::string(260, 'x'), ""},
      {std::string(2000, 'x'), ""},
  };
  std::string longest;
  for (const auto& [name, expected] : names) {
    Written written(InputSignalISDBTerrestrialOneSeg, 2580);
    written.record.name = Wide(name);
    written.record.displayName = Wide(name);
    ExpectHr(S_OK, written.Write());
    const std::string value = Attribute(written.Channel(), "name");
    EXPECT_EQ(value, Attribute(written.Channel(), "nameDisplay"));
    if (name.size() < 10) {
      EXPECT_EQ(expected, value);
      continue;
    }
    // 259 bytes are the most that are written.
    EXPECT_EQ(348U, value.size());
    if (longest.empty()) longest = value;
    EXPECT_EQ(longest, value);
  }
}

// Rows of the channel and of its streams alike.
TEST(ChannelWriter, RowsThatAreOnlyReadAreNotWritten) {
  Written written(InputSignalFMRadio, kOneWayLayout.size);
  for (std::uint32_t i = 0; i < 6; ++i) Put(written.record, 4 * i, 4, i + 1);
  ExpectHr(S_OK, xml::WriteChannel(written.Channel(), &written.record, kOneWayLayout));
  EXPECT_EQ(
      "<Channel both=\"1\" written=\"3\">\n\t<ElementStreams both=\"4\" written=\"6\"/>\n"
      "</Channel>\n",
      Formatted(written.Channel()));
}

TEST(ChannelWriter, ComponentsOfTdmb) {
  Written written(InputSignalTDMBMobile, 4716);
  Put(written.record, 796, 4, 5);
  Put(written.record, 800, 4, 3);
  std::memcpy(&written.record.block[1064], "12345678abcdefgh", 16);  // two full slots
  Put(written.record, 3144, 4, 4294967295U);
  Put(written.record, 3152, 4, 9);
  ExpectHr(S_OK, written.Write());
  EXPECT_EQ(
      "<ElementStreams ServiceID=\"0\" Component_index=\"5\" numOfComponents=\"3\" "
      "ServiceType=\"0\" SubChannelID=\"0\" StreamType=\"0\">\n"
      "\t<Components ID=\"0\" name=\"12345678\" type=\"-1\"/>\n"
      "\t<Components ID=\"1\" name=\"abcdefgh\" type=\"0\"/>\n"
      "\t<Components ID=\"2\" name=\"\" type=\"9\"/>\n"
      "</ElementStreams>\n",
      Formatted(written.Streams()));
}

TEST(ChannelWriter, StreamsOfTdmbAreNotWritten) {
  Written written(InputSignalTDMBMobile, 4716);
  for (const std::size_t count : {20U, 108U, 3188U, 3276U, 3364U, 4264U}) {
    Put(written.record, count, 4, 2);
  }
  ExpectHr(S_OK, written.Write());
  EXPECT_FALSE(written.Streams().HasChildNodes());
  EXPECT_EQ("<missing>", Attribute(written.Streams(), "numOfVideoStreams"));
}
