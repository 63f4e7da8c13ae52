#include "xml/codecs/sample_channels.h"

#include <cstring>
#include <fstream>
#include <iterator>

#include "support/expect.h"
#include "xml/codecs/channel_codec.h"

namespace {

using Numbers = std::vector<SampleNumber>;

void Store(std::vector<BYTE>& block, const SampleNumber& number) {
  for (std::size_t i = 0; i < number.width; ++i) {
    block.at(number.offset + i) = static_cast<BYTE>(number.value >> (8 * i));
  }
}

// An entry of ten bytes; of the language only three times four bits can be kept.
void AddStream(Numbers& numbers, std::size_t offset, std::uint32_t type, std::uint32_t pid,
               std::uint32_t language) {
  numbers.insert(numbers.end(), {{offset, 1, type},
                                 {offset + 2, 2, pid},
                                 {offset + 4, 1, language & 15},
                                 {offset + 5, 1, language >> 4 & 15},
                                 {offset + 6, 1, language >> 8 & 15}});
}

// An entry of 56 bytes whose last nine values count up from `first`.
void AddDataStream(Numbers& numbers, std::size_t offset, std::uint32_t type, std::uint32_t pid,
                   std::uint32_t language, std::uint32_t first) {
  AddStream(numbers, offset, type, pid, language);
  numbers.insert(numbers.end(), {{offset + 8, 4, first},
                                 {offset + 12, 4, first + 1},
                                 {offset + 16, 4, first + 2},
                                 {offset + 20, 4, first + 3},
                                 {offset + 24, 2, (first + 4) & 0xFFFF},
                                 {offset + 26, 2, (first + 5) & 0xFFFF},
                                 {offset + 28, 4, first + 6},
                                 {offset + 32, 4, first + 7},
                                 {offset + 36, 4, first + 8}});
}

Sample Analog() {
  return {"analog",
          InputSignalAnalogCable,
          100,
          {{6, 2, 0x1234}, {8, 2, 65535}, {10, 2, 1}, {12, 2, 32768}, {16, 4, 2147483648U}},
          {{20, Sample::kName}},
          {},
          true,
          true,
          true,
          false};
}

Sample FmRadio() {
  return {"fm_radio", InputSignalFMRadio, 92, {}, {{12, Sample::kName}}, {}, false, true, false,
          false};
}

Sample Atsc() {
  Numbers numbers = {{0, 4, 2},  {4, 4, 7},  {8, 4, 4294967295U}, {12, 4, 30001},
                     {16, 4, 1}, {20, 4, 2}, {104, 4, 0x10000},   {108, 4, 1}};
  AddStream(numbers, 24, 2, 49, 291);
  AddStream(numbers, 34, 255, 65535, 4095);
  AddStream(numbers, 112, 129, 52, 0x00F);
  return {
      "atsc", InputSignalATSCAntenna, 528, numbers, {{192, Sample::kName}}, {}, true, false, false,
      false};
}

// What the blocks of DVB-S and DVB-T have in common.
Numbers DvbNumbers() {
  Numbers numbers = {
      {0, 4, 25}, {4, 4, 28106}, {8, 4, 8190}, {12, 4, 41985}, {16, 4, 1},
      {20, 4, 2}, {184, 4, 2},   {188, 4, 3},  {944, 4, 4},    {948, 4, 1},
  };
  AddStream(numbers, 24, 27, 5101, 0);
  AddStream(numbers, 34, 36, 5105, 291);
  AddStream(numbers, 192, 3, 5102, 0x543);
  AddStream(numbers, 202, 4, 5103, 0xFFF);
  AddStream(numbers, 212, 129, 65535, 0x100);
  return numbers;
}

Sample Dvbs() {
  Numbers numbers = DvbNumbers();
  numbers.insert(numbers.end(), {{952, 4, 3},
                                 {956, 4, 1},
                                 {960, 4, 2147483648U},
                                 {964, 4, 4294967290U},
                                 {968, 4, 192},
                                 {972, 4, 22000000},
                                 {976, 4, 5},
                                 {980, 4, 20},
                                 {984, 4, 9750000},
                                 {988, 4, 10600000},
                                 {992, 4, 11700000},
                                 {996, 4, 2},
                                 {1256, 4, 11},
                                 {1260, 4, 1},
                                 {1344, 4, 12},
                                 {1348, 4, 1},
                                 {1432, 4, 2},
                                 {2332, 4, 1}});
  AddStream(numbers, 1264, 6, 5104, 0x234);
  AddStream(numbers, 1352, 6, 5106, 0x345);
  AddDataStream(numbers, 1436, 11, 2170, 0x456, 100);
  AddDataStream(numbers, 1492, 12, 2171, 0x567, 4294967280U);
  AddDataStream(numbers, 2336, 5, 2172, 0x678, 300);
  return {"dvbs",
          InputSignalDVBSatellite,
          2784,
          numbers,
          {{352, "Network"}, {608, Sample::kName}, {1000, "E0 10 38 F0"}},
          {},
          true,
          true,
          true,
          true};
}

Sample Dvbt() {
  Numbers numbers = DvbNumbers();
  numbers.insert(numbers.end(), {{952, 4, 11},
                                 {956, 4, 1},
                                 {1040, 4, 12},
                                 {1044, 4, 1},
                                 {1128, 4, 13},
                                 {1132, 4, 2},
                                 {2032, 4, 1}});
  AddStream(numbers, 960, 6, 5104, 0x234);
  AddStream(numbers, 1048, 6, 5106, 0x345);
  AddDataStream(numbers, 1136, 11, 2170, 0x456, 100);
  AddDataStream(numbers, 1192, 12, 2171, 0x567, 4294967280U);
  AddDataStream(numbers, 2036, 5, 2172, 0x678, 300);
  return {"dvbt",
          InputSignalDVBTerrestrial,
          2484,
          numbers,
          {{352, "Network"}, {608, Sample::kName}},
          {},
          true,
          true,
          true,
          true};
}

Sample Dvbh() {
  Numbers numbers = {{0, 4, 25},      {4, 4, 28106},  {8, 4, 8190},    {12, 4, 41985},
                     {16, 4, 1},      {20, 4, 1},     {104, 4, 2},     {108, 4, 2},
                     {872, 4, 4},     {876, 4, 1},    {944, 4, 5000},  {948, 4, 501},
                     {1016, 4, 5002}, {1020, 4, 502}, {1088, 4, 5004}, {1092, 4, 503}};
  AddStream(numbers, 24, 27, 5101, 0);
  AddStream(numbers, 112, 3, 5102, 0x543);
  AddStream(numbers, 122, 4, 5103, 0xFFF);
  return {"dvbh",
          InputSignalDVBHandheld,
          1096,
          numbers,
          {{192, "Network"},
           {448, Sample::kName},
           {880, "239.1.1.1"},
           {952, "239.1.1.2"},
           {1024, "ff15::3"}},
          {},
          true,
          true,
          true,
          true};
}

Sample Tdmb() {
  Numbers numbers = {{0, 4, 1},      {4, 4, 3760193}, {784, 4, 4},   {792, 4, 544},
                     {796, 4, 5},    {800, 4, 3},     {3144, 4, 24}, {3148, 4, 4294967295U},
                     {3152, 4, 192}, {3176, 4, 63},   {3180, 4, 2}};
  return {"tdmb",
          InputSignalTDMBMobile,
          4716,
          numbers,
          {{192, "Ensemble"}, {448, Sample::kName}, {1064, "Video"}, {1072, ""}, {1080, "SevenCh"}},
          {{796, 4, 5}},
          true,
          true,
          false,
          false};
}

Sample OneSeg() {
  Numbers numbers = {
      {4, 4, 1440},  {12, 4, 32736},
      {16, 4, 1},    {20, 4, 1},
      {184, 4, 2},   {188, 4, 1},
      {1040, 4, 11}, {1044, 4, 1},
      {1128, 4, 12}, {1132, 4, 1},
      {1216, 4, 13}, {1220, 4, 2},
      {2120, 4, 1},  {2572, 4, static_cast<std::uint32_t>(Sample::kPhysicalChannel)}};
  AddStream(numbers, 24, 27, 5101, 0);
  AddStream(numbers, 192, 15, 5102, 0x543);
  AddStream(numbers, 1048, 6, 5104, 0x234);
  AddStream(numbers, 1136, 6, 5106, 0x345);
  AddDataStream(numbers, 1224, 11, 2170, 0x456, 100);
  AddDataStream(numbers, 1280, 12, 2171, 0x567, 4294967280U);
  AddDataStream(numbers, 2124, 5, 2172, 0x678, 300);
  return {"one_seg",
          InputSignalISDBTerrestrialOneSeg,
          2580,
          numbers,
          {{608, Sample::kName}},
          {},
          true,
          true,
          false,
          false};
}

}  // namespace

std::vector<BYTE> Sample::Block() const {
  std::vector<BYTE> block(blockSize);
  for (const SampleNumber& number : numbers) Store(block, number);
  for (const SampleText& text : texts) {
    std::memcpy(&block.at(text.offset), text.text, std::strlen(text.text));
  }
  return block;
}

void Sample::Fill(FakeChannel& record) const {
  record.signalType = signalType;
  record.index = kIndex;
  record.favor = kFavor;
  record.lock = kLock;
  record.name = Wide(kName);
  record.displayName = Wide(kDisplayName);
  record.station = {signalType, 49, kPhysicalChannel, kFrequency, kOffset, kTransportStream, 0, {}};
  record.block = Block();
}

void Sample::ExpectReadBack(const FakeChannel& record) const {
  EXPECT_EQ(1, record.stationsSet);
  EXPECT_EQ(kIndex, record.index);
  EXPECT_EQ(kFavor, record.favor);
  EXPECT_EQ(kLock, record.lock);
  ExpectText(Wide(kDisplayName).View(), record.displayName.Get());
  EXPECT_EQ(signalType, record.station.InputSignal);
  EXPECT_EQ(0, record.station.lCountry);
  EXPECT_EQ(hasPhysicalChannel ? kPhysicalChannel : 0, record.station.lPhysicalChannel);
  EXPECT_EQ(hasFrequency ? kFrequency : 0, record.station.dwFrequency);
  EXPECT_EQ(hasOffset ? kOffset : 0, record.station.lOffsetFreq);
  EXPECT_EQ(hasTransportStream ? kTransportStream : 0, record.station.lTSID);
  EXPECT_EQ(blockSize, record.station.cbInformation);
  std::vector<BYTE> expected = Block();
  for (const SampleNumber& number : lost) Store(expected, {number.offset, number.width, 0});
  ASSERT_EQ(expected.size(), record.block.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    ASSERT_EQ(expected[i], record.block[i]) << "at offset " << i;
  }
}

const std::vector<Sample>& Samples() {
  static const std::vector<Sample> samples = {Analog(), FmRadio(), Atsc(), Dvbs(),
                                              Dvbt(),   Dvbh(),    Tdmb(), OneSeg()};
  return samples;
}

SampleFile::SampleFile(InputSignalType type) {
  ExpectHr(S_OK, m_parser.Open(m_dir.File("ChanInfo.xml")));
  ExpectHr(S_OK, m_parser.Load());
  dom::Element country;
  ExpectHr(S_OK, m_parser.FindOrCreateCountry(49, &country));
  ExpectHr(S_OK, CXmlChanParser::FindChannelSet(country, type, &set, true));
}

HRESULT SampleFile::Add(FakeChannel& record) {
  dom::Element channel;
  ExpectHr(S_OK, CXmlChanParser::FindOrCreateChannelElement(set, &record, &channel));
  return xml::CodeChannel(channel, &record, xml::Direction::Write);
}

std::string SampleFile::Save(bool preFormatted) {
  m_parser.SetPreFormatted(preFormatted);
  m_parser.SetDirty(true);
  ExpectHr(S_OK, m_parser.Save());
  return m_dir.Read("ChanInfo.xml");
}

std::string SavedSample(const Sample& sample, bool preFormatted) {
  SampleFile file(sample.signalType);
  FakeChannel full;
  sample.Fill(full);
  ExpectHr(S_OK, file.Add(full));
  FakeChannel bare(sample.signalType, sample.blockSize);
  bare.index = 2;
  ExpectHr(S_OK, file.Add(bare));
  return file.Save(preFormatted);
}

std::string GoldenFile(const std::string& name) {
  std::ifstream file(std::string(ZORTUNEDEX_TEST_DATA) + "/channels/" + name, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
