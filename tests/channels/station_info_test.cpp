#include "channels/station_info.h"

#include "channels/channel_records.h"

namespace {

TEST(StationInfo, BlocksHaveTheSizeOfTheType) {
  for (const InputSignalType signalType : kAllSignalTypes) {
    StationInfo copy;
    const _StationTuneInfo nothing = {};
    const DWORD size = BlockSizeOf(signalType);
    ExpectHr(size == 0 ? E_FAIL : S_OK, copy.Assign(nothing, signalType));
    EXPECT_EQ(size, copy.Block().size()) << signalType;
    EXPECT_EQ(size != 0, copy.Get().pbInformation != nullptr) << signalType;
  }
  for (const int wrong : {-1, 7, 63, 177, 0x7FFFFFFF}) {
    StationInfo copy;
    ExpectHr(E_FAIL, copy.Assign({}, static_cast<InputSignalType>(wrong)));
    EXPECT_EQ(nullptr, copy.Get().pbInformation);
  }
}

TEST(StationInfo, CopiesFieldsAndTakesTheRecordsType) {
  Station source(InputSignalDVBSatellite);
  *source.Get() = {InputSignalFMRadio,   49, 21, 11'739'000, -250, 1101, source->cbInformation,
                   source->pbInformation};
  source.Word(2780, 0x01020304);
  StationInfo copy;
  ExpectHr(S_OK, copy.Assign(*source.Get(), InputSignalDVBSatellite));
  EXPECT_EQ(InputSignalDVBSatellite, copy.Get().InputSignal);
  EXPECT_EQ(49, copy.Get().lCountry);
  EXPECT_EQ(21, copy.Get().lPhysicalChannel);
  EXPECT_EQ(11'739'000u, copy.Get().dwFrequency);
  EXPECT_EQ(-250, copy.Get().lOffsetFreq);
  EXPECT_EQ(1101, copy.Get().lTSID);
  EXPECT_EQ(2784u, copy.Get().cbInformation);
  EXPECT_NE(source->pbInformation, copy.Get().pbInformation);
  EXPECT_EQ(source.Block(), std::vector<BYTE>(copy.Block().begin(), copy.Block().end()));
}

// Every length of a source from nothing to past the block: the sanitizers see any byte too many.
TEST(StationInfo, TakesNoMoreThanTheBlockAndZeroesTheRest) {
  for (const BlockSize& row : kBlockSizes) {
    for (std::size_t length = 0; length <= row.size + 100u; ++length) {
      Station source(row.signalType, length);
      source.Fill(0xA5);
      StationInfo copy;
      ASSERT_EQ(S_OK, copy.Assign(*source.Get(), row.signalType));
      const std::size_t taken = std::min<std::size_t>(length, row.size);
      ASSERT_EQ(length == 0 ? 0u : taken, copy.Get().cbInformation);
      const std::span<const BYTE> block = copy.Block();
      ASSERT_EQ(row.size, block.size());
      for (std::size_t i = 0; i < block.size(); ++i) ASSERT_EQ(i < taken ? 0xA5 : 0, block[i]);
    }
  }
}

TEST(StationInfo, CountsThatLieTakeTheBlockOnly) {
  Station source(InputSignalFMRadio);
  source.Fill(7);
  source->cbInformation = 0xFFFFFFFF;
  StationInfo copy;
  ExpectHr(S_OK, copy.Assign(*source.Get(), InputSignalFMRadio));
  EXPECT_EQ(92u, copy.Get().cbInformation);
}

TEST(StationInfo, NullSourceBlockCopiesNothing) {
  _StationTuneInfo source = {};
  source.cbInformation = 500;
  source.lPhysicalChannel = 3;
  StationInfo copy;
  ExpectHr(S_OK, copy.Assign(source, InputSignalATSCCable));
  EXPECT_EQ(0u, copy.Get().cbInformation);
  EXPECT_EQ(3, copy.Get().lPhysicalChannel);
  ASSERT_EQ(528u, copy.Block().size());
  for (const BYTE byte : copy.Block()) EXPECT_EQ(0, byte);
}

TEST(StationInfo, FailureLeavesAZeroedStation) {
  Station source(InputSignalDVBTerrestrial);
  source->lTSID = 5;
  StationInfo copy;
  ExpectHr(S_OK, copy.Assign(*source.Get(), InputSignalDVBTerrestrial));
  ExpectHr(E_FAIL, copy.Assign(*source.Get(), InputSignalDVBCable));
  EXPECT_EQ(InputSignalUnknown, copy.Get().InputSignal);
  EXPECT_EQ(0, copy.Get().lTSID);
  EXPECT_EQ(0u, copy.Get().cbInformation);
  EXPECT_EQ(nullptr, copy.Get().pbInformation);
}

TEST(StationInfo, ReleaseGivesTheBlockAway) {
  StationInfo owner;
  ExpectHr(S_OK, owner.Assign({}, InputSignalFMRadio));
  const _StationTuneInfo given = owner.Release();
  EXPECT_EQ(nullptr, owner.Get().pbInformation);
  ASSERT_NE(nullptr, given.pbInformation);
  *owner.Receive() = given;  // and back: freed once, by the owner
  EXPECT_EQ(given.pbInformation, owner.Get().pbInformation);
}

TEST(StationView, WordsEndWithTheBlock) {
  Station station(InputSignalAnalogCable, 11);
  station.Word(0, 0x04030201).Word(7, 0xFFEEDDCC);
  const StationView view = StationView::Of(*station.Get());
  EXPECT_EQ(0x04030201u, view.Word(0));
  EXPECT_EQ(0xFFEEDDCCu, view.Word(7));
  for (const std::size_t outside : {std::size_t{8}, std::size_t{11}, std::size_t{1000},
                                    static_cast<std::size_t>(-1), static_cast<std::size_t>(-4)}) {
    EXPECT_EQ(std::nullopt, view.Word(outside)) << outside;
  }
  EXPECT_EQ(std::nullopt, StationView::Of(_StationTuneInfo{}).Word(0));
  Station shortOne(InputSignalAnalogCable, 3);
  EXPECT_EQ(std::nullopt, StationView::Of(*shortOne.Get()).Word(0));
}

TEST(StationView, BytesThatWereNotFilledReadAsZero) {
  const BYTE bytes[] = {1, 2, 3, 4, 5, 6};
  StationView view;
  view.bytes = bytes;
  view.blockSize = 12;
  EXPECT_EQ(0x04030201u, view.Word(0));
  EXPECT_EQ(0x00000605u, view.Word(4));
  EXPECT_EQ(0u, view.Word(8));
  EXPECT_EQ(std::nullopt, view.Word(9));
}

}  // namespace
