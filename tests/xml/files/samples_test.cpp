// The sample household, opened and saved as a host does it.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/interfaces.h"
#include "core/station_blocks.h"
#include "database/tunedex.h"
#include "platform/com_ptr.h"
#include "platform/dom.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using station_blocks::Layout;
using station_blocks::OffsetOf;

constexpr char kFileName[] = "ChanInfo.xml";

std::string SampleBytes() {
  std::ifstream file(std::string(ZORTUNEDEX_SAMPLES) + "/home/" + kFileName, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Set {
  DWORD country;
  InputSignalType signalType;
  UINT count;
  const char* first;  // display name of the first channel, where it is ASCII in every code page
};

constexpr Set kSets[] = {
    {1, InputSignalATSCAntenna, 19, "2.1 WCBS-HD"},
    {1, InputSignalATSCCable, 10, "2.1 WCBS-HD"},
    {49, InputSignalAnalogCable, 17, "ARD"},
    {49, InputSignalFMRadio, 18, "radioBERLIN 88,8"},
    {49, InputSignalDVBSatellite, 58, "Das Erste HD"},
    {49, InputSignalDVBTerrestrial, 20, "Das Erste"},
    {81, InputSignalISDBTerrestrialOneSeg, 9, nullptr},
    {82, InputSignalTDMBMobile, 9, "YTN DMB"},
    {358, InputSignalDVBHandheld, 5, "YLE TV1"},
};

/// One channel with everything it has.
struct Record {
  UINT index = 0;
  UINT favorite = 0;
  BOOL lock = 0;
  LONG physicalChannel = 0;
  DWORD frequency = 0;
  LONG offsetFrequency = 0;
  LONG transportStream = 0;
  std::basic_string<OLECHAR> name;
  std::basic_string<OLECHAR> displayName;
  std::vector<BYTE> block;

  bool operator==(const Record&) const = default;

  std::uint32_t Number(station_blocks::Rows<station_blocks::Field> rows,
                       std::string_view attribute) const {
    const station_blocks::Field* field = station_blocks::FindField(rows, attribute);
    return station_blocks::Fetch(block.data() + field->offset, field->width);
  }
  std::string Text(std::size_t offset) const {
    return reinterpret_cast<const char*>(block.data() + offset);
  }
};

Record RecordOf(IChannelInfo* channel) {
  Record record;
  ExpectHr(S_OK, channel->GetChannelIndex(&record.index));
  ExpectHr(S_OK, channel->GetFavor(&record.favorite));
  ExpectHr(S_OK, channel->GetLock(&record.lock));
  Bstr text;
  ExpectHr(S_OK, channel->GetChannelName(text.Receive()));
  record.name = text.View();
  ExpectHr(S_OK, channel->GetChannelDspName(text.Receive()));
  record.displayName = text.View();
  _StationTuneInfo station = {};
  ExpectHr(S_OK, channel->GetStationInfo(&station));
  record.physicalChannel = station.lPhysicalChannel;
  record.frequency = station.dwFrequency;
  record.offsetFrequency = station.lOffsetFreq;
  record.transportStream = station.lTSID;
  record.block.assign(station.pbInformation, station.pbInformation + station.cbInformation);
  CoTaskMemFree(station.pbInformation);
  return record;
}

/// A copy of the household that is opened again and again.
class Household : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(SampleBytes().empty());
    m_dir.Write(kFileName, SampleBytes());
  }

  void Open(const Set& set) {
    Close();
    ExpectHr(S_OK, CTunedex::CreateInstance(nullptr, IID_IZorTunedex,
                                            reinterpret_cast<void**>(m_database.Receive())));
    ExpectHr(S_OK, m_database->Open(Wide(m_dir.Path()).Get(), set.country, set.signalType));
    ExpectHr(S_OK, m_database->GetChannelInfoMgr(set.signalType, m_list.Receive()));
  }

  void Close() {
    m_list.Reset();
    if (m_database) ExpectHr(S_OK, m_database->Close());
    m_database.Reset();
  }

  void TearDown() override { Close(); }

  UINT Count() {
    UINT count = 0;
    ExpectHr(S_OK, m_list->GetChannelCount(static_cast<DWORD>(ServiceAll), &count));
    return count;
  }

  ComPtr<IChannelInfo> Channel(UINT index) {
    ComPtr<IChannelInfo> channel;
    ExpectHr(S_OK, m_list->GetChannelInfoByIndex(index, channel.Receive()));
    return channel;
  }

  std::vector<Record> Records() {
    std::vector<Record> records;
    for (UINT index = 1; index <= Count(); ++index) {
      records.push_back(RecordOf(Channel(index).Get()));
    }
    return records;
  }

  /// The record of the open list's channel with the display name.
  Record Find(const std::string& displayName) {
    const Bstr wanted = Wide(displayName);
    for (const Record& record : Records()) {
      if (record.displayName == wanted.View()) return record;
    }
    ADD_FAILURE() << "no channel " << displayName;
    return {};
  }

  TempDir m_dir;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
};

void ExpectServiceType(EServiceType expected, IChannelInfo* channel) {
  EServiceType type = ServiceUnknown;
  ExpectHr(S_OK, channel->GetServiceType(&type));
  EXPECT_EQ(expected, type);
}

/// The tree below an element: one text an element, children of different names in the order of
/// these (a save puts new ElementStreams behind older siblings).
void Flatten(const dom::Element& element, std::vector<std::string>& out) {
  std::string text;
  ExpectHr(S_OK, element.TagName(text));
  element.VisitAttributes([&text](std::string_view name, std::string_view value) {
    text.append(" ").append(name).append("=").append(value);
  });
  out.push_back(text);
  std::vector<std::pair<std::string, dom::Element>> children;
  dom::Element child;
  for (HRESULT hr = element.FirstChildElement(child); hr == S_OK;) {
    std::string tag;
    child.TagName(tag);
    children.emplace_back(tag, child);
    dom::Element next;
    hr = child.NextSiblingElement(next);
    child = next;
  }
  std::stable_sort(children.begin(), children.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [tag, each] : children) Flatten(each, out);
}

std::vector<std::string> ContentOf(const std::string& path) {
  dom::Document document;
  ExpectHr(S_OK, document.Create());
  bool success = false;
  ExpectHr(S_OK, document.Load(path, success));
  dom::Element root;
  ExpectHr(S_OK, document.DocumentElement(root));
  std::vector<std::string> content;
  if (root) Flatten(root, content);
  return content;
}

}  // namespace

TEST_F(Household, EverySetLoads) {
  for (const Set& set : kSets) {
    SCOPED_TRACE(std::to_string(set.country) + "/" + std::to_string(set.signalType));
    Open(set);
    EXPECT_EQ(set.count, Count());
    const std::vector<Record> records = Records();
    ASSERT_EQ(set.count, records.size());
    if (set.first != nullptr) {
      EXPECT_EQ(records[0].displayName, Wide(set.first).View());
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
      EXPECT_EQ(i + 1, records[i].index);
      EXPECT_FALSE(records[i].name.empty());
      EXPECT_EQ(station_blocks::Find(set.signalType)->size, records[i].block.size());
    }
    BOOL dirty = 1;
    ExpectHr(S_OK, m_list->GetDirty(&dirty));
    EXPECT_EQ(0, dirty);
  }
}

TEST_F(Household, ASetThatIsNotThereIsEmpty) {
  Open({49, InputSignalTDMBMobile, 0, nullptr});
  EXPECT_EQ(0U, Count());
  Open({44, InputSignalDVBSatellite, 0, nullptr});
  EXPECT_EQ(0U, Count());
}

// In every stream list the count is that of the elements: the entry before the count has a PID, the
// one behind has none.
TEST_F(Household, CountsAreThoseOfTheStreams) {
  std::size_t streams = 0;
  for (const Set& set : kSets) {
    const Layout& layout = *station_blocks::Find(set.signalType);
    Open(set);
    for (const Record& record : Records()) {
      for (const station_blocks::StreamList& list : layout.lists) {
        const std::uint32_t count =
            station_blocks::Fetch(record.block.data() + list.countOffset, 4);
        ASSERT_LE(count, list.capacity);
        for (std::uint32_t i = 0; i < list.capacity; ++i) {
          const BYTE* entry = record.block.data() + list.offset + i * list.entrySize;
          EXPECT_EQ(i < count, station_blocks::Fetch(entry + 2, 2) != 0) << record.index;
        }
        streams += count;
      }
    }
  }
  EXPECT_LT(300U, streams);
}

TEST_F(Household, SatelliteChannel) {
  Open(kSets[4]);
  const Record record = Find("Das Erste HD");
  using station_blocks::kDvbsChannel;
  using station_blocks::kDvbsSatelliteParams;
  using station_blocks::kDvbsStreams;
  EXPECT_EQ(11493750U, record.frequency);
  EXPECT_EQ(1019, record.transportStream);
  EXPECT_EQ(1U, record.favorite);
  EXPECT_EQ("Das Erste HD", record.Text(OffsetOf(kDvbsChannel, "name")));
  EXPECT_EQ("ASTRA 1", record.Text(OffsetOf(kDvbsChannel, "networkName")));
  EXPECT_EQ(10301U, record.Number(kDvbsChannel, "serviceID"));
  EXPECT_EQ(1U, record.Number(kDvbsChannel, "ONID"));
  EXPECT_EQ(5101U, record.Number(kDvbsChannel, "PcrPID"));
  EXPECT_EQ(4U, record.Number(kDvbsChannel, "runningStatus"));
  EXPECT_EQ(3U, record.Number(kDvbsStreams, "numOfAudioStreams"));
  const BYTE* secondAudio = record.block.data() + station_blocks::kDvbsLists[1].offset + 10;
  EXPECT_EQ(3U, secondAudio[0]);
  EXPECT_EQ(5103U, station_blocks::Fetch(secondAudio + 2, 2));
  EXPECT_EQ(0x39DU, station_blocks::FetchLanguage(secondAudio + 4));
  EXPECT_EQ(std::uint32_t{BDA_POLARISATION_LINEAR_H},
            record.Number(kDvbsSatelliteParams, "polarisation"));
  EXPECT_EQ(std::uint32_t{BDA_BCC_RATE_2_3}, record.Number(kDvbsSatelliteParams, "innerFECRate"));
  EXPECT_EQ(0xFFFFFFFFU, record.Number(kDvbsSatelliteParams, "modulation"));
  EXPECT_EQ(22000U, record.Number(kDvbsSatelliteParams, "symbolRate"));
  EXPECT_EQ(192U, record.Number(kDvbsSatelliteParams, "orbitalPosition"));
  EXPECT_EQ(10600000U, record.Number(kDvbsSatelliteParams, "LNB_HighFreq"));
  EXPECT_EQ("E0 10 38 F2", record.Text(OffsetOf(kDvbsSatelliteParams, "DiSEqC_Msg")));
  const auto qpsk = Find("RTL Television");
  EXPECT_EQ(std::uint32_t{BDA_MOD_QPSK}, qpsk.Number(kDvbsSatelliteParams, "modulation"));
}

TEST_F(Household, SatelliteMarks) {
  Open(kSets[4]);
  UINT radio = 0;
  ExpectHr(S_OK, m_list->GetChannelCount(ServiceDigitalRadio, &radio));
  EXPECT_EQ(11U, radio);
  UINT scrambled = 0;
  UINT interactive = 0;
  for (UINT index = 1; index <= 58; ++index) {
    BOOL flag = 0;
    ExpectHr(S_OK, Channel(index)->IsScrambled(&flag));
    scrambled += flag != 0;
    ExpectHr(S_OK, Channel(index)->GetMhp(&flag));
    interactive += flag != 0;
  }
  EXPECT_EQ(5U, scrambled);
  EXPECT_EQ(2U, interactive);
  ExpectServiceType(ServiceDigitalTV, Channel(1).Get());
  ExpectServiceType(ServiceDigitalRadio, Channel(58).Get());
}

TEST_F(Household, TerrestrialAtscAndAnalogueChannels) {
  Open(kSets[5]);
  const Record zdf = Find("ZDF");
  EXPECT_EQ(33, zdf.physicalChannel);
  EXPECT_EQ(570000U, zdf.frequency);
  EXPECT_EQ(514, zdf.transportStream);
  EXPECT_EQ(8468U, zdf.Number(station_blocks::kDvbsChannel, "ONID"));
  EXPECT_EQ(545U,
            station_blocks::Fetch(zdf.block.data() + station_blocks::kDvbtLists[0].offset + 2, 2));

  Open(kSets[0]);
  const Record wnet = Find("13.1 WNET-HD");
  EXPECT_EQ(13, wnet.physicalChannel);
  EXPECT_EQ(13U, wnet.Number(station_blocks::kAtscChannel, "majorChannel"));
  EXPECT_EQ(1U, wnet.Number(station_blocks::kAtscChannel, "minorChannel"));
  EXPECT_EQ(2U, wnet.Number(station_blocks::kAtscStreams, "numOfAudioStreams"));
  EXPECT_EQ(0U, wnet.frequency);

  Open(kSets[1]);
  EXPECT_EQ(1, Find("78.1 C-SPAN").lock);

  Open(kSets[2]);
  const Record ard = Find("ARD");
  EXPECT_EQ(175250U, ard.frequency);
  EXPECT_EQ(0x1DC1U, ard.Number(station_blocks::kAnalogChannel, "CNI0"));
  EXPECT_EQ(0x4901U, ard.Number(station_blocks::kAnalogChannel, "CNI1"));

  Open(kSets[3]);
  EXPECT_EQ(97700U, Find("Deutschlandfunk").frequency);
}

TEST_F(Household, MobileChannels) {
  Open(kSets[6]);
  const Record nhk = Records()[0];
  EXPECT_EQ(27, nhk.physicalChannel);
  EXPECT_EQ(27U, nhk.Number(station_blocks::kOneSegChannel, "physicalChannel"));
  EXPECT_EQ(557143U, nhk.frequency);
  EXPECT_EQ(32736U, nhk.Number(station_blocks::kOneSegChannel, "NetworkID"));
  EXPECT_EQ("ＮＨＫ総合・東京", nhk.Text(OffsetOf(station_blocks::kOneSegChannel, "name")));

  Open(kSets[7]);
  const Record ytn = Records()[0];
  EXPECT_EQ(181280U, ytn.frequency);
  EXPECT_EQ(0xE0A00001U, ytn.Number(station_blocks::kTdmbStreams, "ServiceID"));
  EXPECT_EQ(1U, ytn.Number(station_blocks::kTdmbStreams, "numOfComponents"));
  EXPECT_EQ("YTN", ytn.Text(station_blocks::kTdmbComponents.nameOffset));
  EXPECT_EQ(
      24U, station_blocks::Fetch(ytn.block.data() + station_blocks::kTdmbComponents.typeOffset, 4));
  UINT radio = 0;
  ExpectHr(S_OK, m_list->GetChannelCount(ServiceDigitalAudio, &radio));
  EXPECT_EQ(2U, radio);

  Open(kSets[8]);
  const Record yle = Find("YLE TV1");
  EXPECT_EQ("239.255.1.10", yle.Text(OffsetOf(station_blocks::kDvbhChannel, "VideoIP")));
  EXPECT_EQ(4098U, yle.Number(station_blocks::kDvbhChannel, "AudioPort"));
}

TEST_F(Household, SavingEveryRecordKeepsAllOfThem) {
  const std::vector<std::string> before = ContentOf(m_dir.File(kFileName));
  ASSERT_LT(600U, before.size());
  for (const Set& set : kSets) {
    SCOPED_TRACE(std::to_string(set.country) + "/" + std::to_string(set.signalType));
    Open(set);
    const std::vector<Record> records = Records();
    for (UINT index = 1; index <= set.count; ++index) {
      ExpectHr(S_OK, Channel(index)->SetDirty(1));
    }
    ExpectHr(S_OK, m_database->SaveChannelToFile());
    Open(set);
    EXPECT_TRUE(records == Records());
  }
  EXPECT_NE(SampleBytes(), m_dir.Read(kFileName));
  EXPECT_EQ(before, ContentOf(m_dir.File(kFileName)));
}

// The sample is laid out as the pre-formatted form lays out, so an untouched document comes back
// byte for byte.
TEST_F(Household, ThePreFormattedFormIsThatOfTheSample) {
  Open(kSets[4]);
  ExpectHr(S_OK, m_database->SetStorageType(StoragePreFmtXML));
  m_dir.Write(kFileName, "replaced by the save");
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  EXPECT_EQ(SampleBytes(), m_dir.Read(kFileName));
}
