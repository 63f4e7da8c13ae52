#include "xml/codecs/channel_codec.h"

#include <gtest/gtest.h>

#include <string>

#include "channels/chan_info.h"
#include "platform/com_ptr.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "xml/codecs/channel_reader.h"
#include "xml/codecs/sample_channels.h"
#include "xml/files/xml_chan_parser.h"

namespace {

using xml::CodeChannel;
using xml::Direction;

constexpr InputSignalType kWithoutCodec[] = {InputSignalUnknown,
                                             InputSignalAnalogComposite,
                                             InputSignalAnalogSVideo,
                                             InputSignalAMRadio,
                                             InputSignalDVBCable,
                                             InputSignalISDBCable,
                                             InputSignalISDBSatellite,
                                             InputSignalISDBTerrestrial,
                                             static_cast<InputSignalType>(-1),
                                             static_cast<InputSignalType>(177)};

void ExpectLoads(const Sample& sample, const std::string& bytes) {
  const TextDocument document(bytes);
  dom::ElementList channels;
  ExpectHr(S_OK, document.root.Select("./Country/ChannelSet/Channel", channels));
  ASSERT_EQ(2, channels.Count());
  dom::Element channel;
  ExpectHr(S_OK, channels.Item(1, channel));
  FakeChannel full(sample.signalType);
  ExpectHr(S_OK, CodeChannel(channel, &full, Direction::Read));
  sample.ExpectReadBack(full);

  ExpectHr(S_OK, channels.Item(0, channel));
  FakeChannel bare(sample.signalType);
  bare.favor = 9;
  bare.lock = 9;
  bare.displayName = Wide("old");
  ExpectHr(S_OK, CodeChannel(channel, &bare, Direction::Read));
  EXPECT_EQ(2U, bare.index);
  EXPECT_EQ(0U, bare.favor);
  EXPECT_EQ(0, bare.lock);
  EXPECT_TRUE(bare.displayName.IsEmpty());
  std::vector<BYTE> expected(sample.blockSize);
  if (sample.signalType == InputSignalDVBSatellite) {
    // A zero is written as the word for -1.
    for (const std::size_t word : {952U, 976U, 980U, 996U}) {
      std::fill_n(expected.begin() + static_cast<std::ptrdiff_t>(word), 4, BYTE{0xFF});
    }
  }
  EXPECT_EQ(expected, bare.block);
}

}  // namespace

TEST(ChannelCodec, PreFormattedBytes) {
  for (const Sample& sample : Samples()) {
    EXPECT_EQ(GoldenFile(std::string(sample.file) + "_preformatted.xml"),
              SavedSample(sample, true));
  }
}

TEST(ChannelCodec, PlainFilesLoad) {
  for (const Sample& sample : Samples()) {
    SCOPED_TRACE(sample.file);
    ExpectLoads(sample, GoldenFile(std::string(sample.file) + ".xml"));
    ExpectLoads(sample, SavedSample(sample, false));
  }
}

TEST(ChannelCodec, PreFormattedFilesLoad) {
  for (const Sample& sample : Samples()) {
    SCOPED_TRACE(sample.file);
    ExpectLoads(sample, GoldenFile(std::string(sample.file) + "_preformatted.xml"));
    ExpectLoads(sample, SavedSample(sample, true));
  }
}

TEST(ChannelCodec, TheOtherTypeOfAKindHasTheSameForm) {
  const std::pair<InputSignalType, InputSignalType> kinds[] = {
      {InputSignalAnalogAntenna, InputSignalAnalogCable},
      {InputSignalATSCAntenna, InputSignalATSCCable}};
  for (const Sample& sample : Samples()) {
    for (const auto& [one, other] : kinds) {
      if (sample.signalType != one && sample.signalType != other) continue;
      const InputSignalType partner = sample.signalType == one ? other : one;
      const TextDocument document("<Channel/>");
      const TextDocument expected("<Channel/>");
      FakeChannel record;
      sample.Fill(record);
      ExpectHr(S_OK, CodeChannel(expected.root, &record, Direction::Write));
      record.signalType = partner;
      ExpectHr(S_OK, CodeChannel(document.root, &record, Direction::Write));
      EXPECT_EQ(Formatted(expected.root), Formatted(document.root));
      FakeChannel back(partner);
      ExpectHr(S_OK, CodeChannel(document.root, &back, Direction::Read));
      EXPECT_EQ(partner, back.givenSignalType) << "the station carries the record's own type";
      EXPECT_EQ(sample.blockSize, back.givenByteCount);
    }
  }
}

TEST(ChannelCodec, TypesWithoutCodec) {
  for (const InputSignalType type : kWithoutCodec) {
    const TextDocument document("<Channel index='4'><Mine/></Channel>");
    const std::string before = Formatted(document.root);
    FakeChannel record(type, 100);
    record.index = 4;
    ExpectHr(E_NOTIMPL, CodeChannel(document.root, &record, Direction::Write));
    ExpectHr(E_NOTIMPL, CodeChannel(document.root, &record, Direction::Read));
    EXPECT_EQ(before, Formatted(document.root));
    EXPECT_EQ(0, record.stationsSet);
  }
}

// Such a channel lives in memory alone: its element gets no index, so no later save finds it.
TEST(ChannelCodec, EverySaveOfATypeWithoutCodecAddsAnEmptyChannel) {
  SampleFile file(InputSignalDVBCable);
  FakeChannel record(InputSignalDVBCable);
  record.index = 1;
  for (int saves = 1; saves <= 3; ++saves) {
    ExpectHr(E_NOTIMPL, file.Add(record));
    EXPECT_EQ(saves, Count(file.set, "./Channel"));
  }
  EXPECT_EQ(
      "<ChannelSet type=\"\" inputSignalType=\"48\">\n\t<Channel/>\n\t<Channel/>\n\t<Channel/>\n"
      "</ChannelSet>\n",
      Formatted(file.set));
  ExpectHr(S_OK, CXmlChanParser::RemoveAllChannels(file.set));
  EXPECT_EQ(0, Count(file.set, "./Channel"));
}

TEST(ChannelCodec, RecordWithoutAStationLeavesAnEmptyChannelEachSave) {
  SampleFile file(InputSignalFMRadio);
  FakeChannel record(InputSignalFMRadio);
  record.index = 1;
  ExpectHr(E_FAIL, file.Add(record));
  ExpectHr(E_FAIL, file.Add(record));
  EXPECT_EQ(2, Count(file.set, "./Channel"));
  record.block.resize(92);
  ExpectHr(S_OK, file.Add(record));
  const std::string saved = Formatted(file.set);
  EXPECT_EQ(3, Count(file.set, "./Channel"));
  record.block.clear();
  ExpectHr(E_FAIL, file.Add(record));
  EXPECT_EQ(saved, Formatted(file.set)) << "an element that is there keeps what it holds";
}

TEST(ChannelCodec, SignalTypeThatCannotBeHad) {
  const TextDocument document("<Channel/>");
  FakeChannel record(InputSignalFMRadio, 92);
  record.failing = FakeChannel::Getter::SignalType;
  ExpectHr(FakeChannel::kFailure, CodeChannel(document.root, &record, Direction::Write));
  ExpectHr(FakeChannel::kFailure, CodeChannel(document.root, &record, Direction::Read));
  EXPECT_EQ("<Channel/>\n", Formatted(document.root));
}

TEST(ChannelCodec, Nulls) {
  const TextDocument document("<Channel/>");
  FakeChannel record(InputSignalFMRadio, 92);
  for (const Direction direction : {Direction::Read, Direction::Write}) {
    ExpectHr(E_POINTER, CodeChannel(dom::Element(), &record, direction));
    ExpectHr(E_POINTER, CodeChannel(document.root, nullptr, direction));
  }
}

TEST(ElementStreams, FoundOneIsAnswered) {
  const TextDocument document("<Channel><A/><ElementStreams v='1'/><B/></Channel>");
  const std::string before = Formatted(document.root);
  dom::Element streams;
  ExpectHr(S_OK, xml::GetElementStreams(document.root, streams, false));
  EXPECT_EQ("1", Attribute(streams, "v"));
  EXPECT_EQ(before, Formatted(document.root));
}

TEST(ElementStreams, MissingOneIsAddedEitherWay) {
  for (const bool create : {false, true}) {
    const TextDocument document("<Channel><A/></Channel>");
    dom::Element streams;
    ExpectHr(S_OK, xml::GetElementStreams(document.root, streams, create));
    ASSERT_TRUE(streams);
    ExpectHr(S_OK, streams.SetInt("v", 1));
    EXPECT_EQ("<Channel>\n\t<A/>\n\t<ElementStreams v=\"1\"/>\n</Channel>\n",
              Formatted(document.root));
  }
}

TEST(ElementStreams, OldOneIsReplacedAtTheEnd) {
  const TextDocument document("<Channel><ElementStreams v='1'><X/></ElementStreams><A/></Channel>");
  dom::Element streams;
  ExpectHr(S_OK, xml::GetElementStreams(document.root, streams, true));
  EXPECT_EQ("<Channel>\n\t<A/>\n\t<ElementStreams/>\n</Channel>\n", Formatted(document.root));
}

// The display name of an ATSC channel follows from its station where the file has none.
TEST(ChannelCodec, RecordOfTheLibrary) {
  const TextDocument document(
      "<Channel name='KABC' index='4' majorChannel='7' minorChannel='2' favor='1'/>");
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, CChanInfo::CreateInstance(record.Receive()));
  record->SetSignalType(InputSignalATSCAntenna);
  ExpectHr(S_OK, CodeChannel(document.root, record.Get(), Direction::Read));
  Bstr name;
  ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
  ExpectText(OLESTR("7.2 KABC"), name.Get());

  const TextDocument written("<Channel/>");
  ExpectHr(S_OK, CodeChannel(written.root, record.Get(), Direction::Write));
  EXPECT_EQ(
      "<Channel name=\"KABC\" nameDisplay=\"7.2 KABC\" index=\"4\" physicalChannel=\"0\" "
      "majorChannel=\"7\" minorChannel=\"2\" serviceType=\"0\" programNumber=\"0\" favor=\"1\" "
      "lock=\"0\">\n\t<ElementStreams videoStream=\"0\" numOfVideoStreams=\"0\" audioStream=\"0\" "
      "numOfAudioStreams=\"0\"/>\n</Channel>\n",
      Formatted(written.root));
}

TEST(ChannelCodec, RecordOfTheLibraryWithoutAStation) {
  const TextDocument document("<Channel/>");
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, CChanInfo::CreateInstance(record.Receive()));
  record->SetSignalType(InputSignalDVBSatellite);
  ExpectHr(E_FAIL, CodeChannel(document.root, record.Get(), Direction::Write));
  EXPECT_EQ("<Channel/>\n", Formatted(document.root));
}
