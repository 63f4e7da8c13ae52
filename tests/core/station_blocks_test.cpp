#include "core/station_blocks.h"

#include <gtest/gtest.h>

#include <string>

namespace {

namespace blocks = station_blocks;

}  // namespace

TEST(StationBlocks, SizesBySignalType) {
  for (std::int32_t value = -1; value <= 300; ++value) {
    std::uint32_t size = 0;
    switch (value) {
      case 1:
      case 2:
        size = 100;
        break;
      case 5:
        size = 92;
        break;
      case 16:
      case 32:
        size = 528;
        break;
      case 64:
        size = 2784;
        break;
      case 80:
        size = 2484;
        break;
      case 96:
        size = 1096;
        break;
      case 160:
        size = 4716;
        break;
      case 176:
        size = 2580;
        break;
      default:
        break;
    }
    const blocks::Layout* layout = blocks::Find(static_cast<InputSignalType>(value));
    EXPECT_EQ(size, layout ? layout->size : 0) << value;
  }
}

TEST(StationBlocks, ChannelNamePlaces) {
  const auto place = [](InputSignalType type) {
    return blocks::OffsetOf(blocks::Find(type)->channel, "name");
  };
  EXPECT_EQ(20, place(InputSignalAnalogAntenna));
  EXPECT_EQ(12, place(InputSignalFMRadio));
  EXPECT_EQ(192, place(InputSignalATSCCable));
  EXPECT_EQ(608, place(InputSignalDVBSatellite));
  EXPECT_EQ(608, place(InputSignalDVBTerrestrial));
  EXPECT_EQ(448, place(InputSignalDVBHandheld));
  EXPECT_EQ(448, place(InputSignalTDMBMobile));
  EXPECT_EQ(608, place(InputSignalISDBTerrestrialOneSeg));
}

TEST(StationBlocks, RowsAreFoundByTheirWholeName) {
  EXPECT_EQ(948, blocks::FindField(blocks::kDvbs.channel, "CA")->offset);
  EXPECT_EQ(nullptr, blocks::FindField(blocks::kDvbs.channel, "ca"));
  EXPECT_EQ(nullptr, blocks::FindField(blocks::kDvbs.channel, "C"));
  EXPECT_EQ(nullptr, blocks::FindField(blocks::kDvbs.channel, ""));
  EXPECT_EQ(nullptr, blocks::FindField({}, "CA"));
}

// DVB-S has no selected DSM-CC stream, DVB-T and the one-segment type have one.
TEST(StationBlocks, SelectedDataStream) {
  EXPECT_EQ(nullptr, blocks::FindField(blocks::kDvbs.elementStreams, "dsmccStream"));
  EXPECT_EQ(1128, blocks::OffsetOf(blocks::kDvbt.elementStreams, "dsmccStream"));
  EXPECT_EQ(1216, blocks::OffsetOf(blocks::kOneSeg.elementStreams, "dsmccStream"));
}

TEST(StationBlocks, NumbersAreLittleEndian) {
  BYTE bytes[6] = {0xEE, 0, 0, 0, 0, 0xEE};
  blocks::Store(bytes + 1, 4, 0x12345678);
  EXPECT_EQ(0x78, bytes[1]);
  EXPECT_EQ(0x12, bytes[4]);
  EXPECT_EQ(0x12345678U, blocks::Fetch(bytes + 1, 4));
  EXPECT_EQ(0x5678U, blocks::Fetch(bytes + 1, 2));
  EXPECT_EQ(0x78U, blocks::Fetch(bytes + 1, 1));
  EXPECT_EQ(0xEE, bytes[0]);
  EXPECT_EQ(0xEE, bytes[5]);
}

TEST(StationBlocks, StoreKeepsTheLowBytes) {
  BYTE bytes[4] = {9, 9, 9, 9};
  blocks::Store(bytes, 2, 0xABCD1234);
  EXPECT_EQ(0x34, bytes[0]);
  EXPECT_EQ(0x12, bytes[1]);
  EXPECT_EQ(9, bytes[2]);
}

TEST(StationBlocks, LanguageIsThreeTimesFourBits) {
  BYTE bytes[4] = {9, 9, 9, 9};
  blocks::StoreLanguage(bytes, 0x123);
  EXPECT_EQ(3, bytes[0]);
  EXPECT_EQ(2, bytes[1]);
  EXPECT_EQ(1, bytes[2]);
  EXPECT_EQ(9, bytes[3]);
  EXPECT_EQ(291U, blocks::FetchLanguage(bytes));
  blocks::StoreLanguage(bytes, 0xFFFFF000);
  EXPECT_EQ(0U, blocks::FetchLanguage(bytes));
  // Whole bytes overlap when they are fetched.
  const BYTE letters[] = {'d', 'e', 'u'};
  EXPECT_EQ('d' | 'e' << 4U | 'u' << 8U, blocks::FetchLanguage(letters));
}
