// The sample presets: every sub-area loads, and the numbers keep the rules of Japanese
// broadcasting.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <utility>

#include "core/station_blocks.h"
#include "xml/files/preset_file.h"

namespace {

constexpr LONG kSubAreas[] = {1, 6, 7, 9, 7, 5, 4, 8, 1};

/// How many channels the sub-areas have that have any.
const std::map<std::pair<LONG, LONG>, UINT> kChannels = {
    {{0, 0}, 7}, {{2, 3}, 8}, {{2, 4}, 8}, {{2, 5}, 8}, {{2, 6}, 8},
    {{3, 8}, 7}, {{4, 3}, 7}, {{4, 4}, 7}, {{7, 0}, 7}, {{8, 0}, 3},
};

struct Station {
  LONG physicalChannel = 0;
  DWORD frequency = 0;
  std::uint32_t network = 0;
  std::uint32_t service = 0;
};

Station StationOf(const ComPtr<IChannelInfoMgr>& list, UINT index) {
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(index, channel.Receive()));
  _StationTuneInfo info = {};
  if (channel) ExpectHr(S_OK, channel->GetStationInfo(&info));
  Station station{info.lPhysicalChannel, info.dwFrequency, 0, 0};
  if (info.pbInformation != nullptr) {
    const auto number = [&](const char* attribute) {
      const auto offset = station_blocks::OffsetOf(station_blocks::kOneSegChannel, attribute);
      return station_blocks::Fetch(info.pbInformation + offset, 4);
    };
    station.network = number("NetworkID");
    station.service = number("ServiceID");
  }
  CoTaskMemFree(info.pbInformation);
  return station;
}

void ExpectStation(const Station& expected, PresetFile& file, LONG lArea, LONG lSubArea,
                   UINT index) {
  const Station actual = StationOf(file.List(lArea, lSubArea), index);
  EXPECT_EQ(expected.physicalChannel, actual.physicalChannel);
  EXPECT_EQ(expected.frequency, actual.frequency);
  EXPECT_EQ(expected.network, actual.network);
  EXPECT_EQ(expected.service, actual.service);
}

/// A service identifier is region, service type (3: one-segment), broadcaster and number; the
/// network identifier counts down from 0x7FF0 by regions and up by broadcasters. Channel 13 has its
/// centre at 473 1/7 MHz, each further one 6 MHz above.
void ExpectConsistent(const Station& station) {
  const std::uint32_t region = station.service >> 10;
  const std::uint32_t broadcaster = station.service >> 3 & 15;
  EXPECT_EQ(region << 10 | 3 << 7 | broadcaster << 3, station.service);
  EXPECT_EQ(0x7FF0 - 0x10 * region + broadcaster, station.network);
  EXPECT_TRUE(station.physicalChannel >= 13 && station.physicalChannel <= 52);
  EXPECT_EQ(473143U + 6000U * static_cast<DWORD>(station.physicalChannel - 13), station.frequency);
}

}  // namespace

TEST(SamplePresets, EverySubAreaLoads) {
  PresetFile file(SamplePresets());
  ASSERT_EQ(9, file.AreaCount());
  for (LONG lArea = 0; lArea < 9; ++lArea) {
    EXPECT_FALSE(file.AreaName(lArea).empty());
    ASSERT_EQ(kSubAreas[lArea], file.SubAreaCount(lArea)) << lArea;
    for (LONG lSubArea = 0; lSubArea < kSubAreas[lArea]; ++lSubArea) {
      SCOPED_TRACE(std::to_string(lArea) + "/" + std::to_string(lSubArea));
      EXPECT_FALSE(file.SubAreaName(lArea, lSubArea).empty());
      const auto expected = kChannels.find({lArea, lSubArea});
      const ComPtr<IChannelInfoMgr> list = file.List(lArea, lSubArea);
      UINT count = 0;
      ExpectHr(S_OK, list->GetChannelCount(static_cast<DWORD>(ServiceAll), &count));
      ASSERT_EQ(expected == kChannels.end() ? 0U : expected->second, count);
      std::set<LONG> physicalChannels;
      for (UINT index = 1; index <= count; ++index) {
        const Station station = StationOf(list, index);
        ExpectConsistent(station);
        EXPECT_TRUE(physicalChannels.insert(station.physicalChannel).second) << "twice";
      }
    }
  }
}

TEST(SamplePresets, KnownStations) {
  PresetFile file(SamplePresets());
  ExpectStation({27, 557143, 32736, 1408}, file, 2, 5, 1);  // Tokyo
  ExpectStation({16, 491143, 32391, 23992}, file, 2, 5, 8);
  ExpectStation({24, 539143, 32112, 41344}, file, 4, 3, 1);  // Osaka
  ExpectStation({18, 503143, 32707, 3480}, file, 3, 8, 5);   // Nagoya
  ExpectStation({19, 509143, 32594, 10640}, file, 0, 0, 3);  // Sapporo
  ExpectStation({31, 581143, 31874, 56720}, file, 7, 0, 3);  // Fukuoka
  ExpectStation({16, 491143, 32391, 23992}, file, 8, 0, 1);  // the customer's
}

TEST(SamplePresets, TheCustomersListCanBeReplaced) {
  PresetFile file(SamplePresets());
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  ExpectHr(S_OK, file.SaveCustomerChannelList(SourceOf("<Country/>"), 0, "mine"));
  PresetFile saved(file.Saved());
  EXPECT_EQ(1, saved.SubAreaCount(8));
  EXPECT_EQ("mine", saved.SubAreaName(8, 0));
  EXPECT_EQ("1:27 2:26 3:25 4:24 5:22 6:23 7:21 8:16", ChannelsOf(saved.List(2, 5)));
}
