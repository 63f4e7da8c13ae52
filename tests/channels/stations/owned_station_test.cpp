#include "channels/stations/owned_station.h"

#include "channels/channel_records.h"

namespace {

TEST(OwnedStation, BlocksHaveTheSizeOfTheType) {
  for (const InputSignalType signalType : kAllSignalTypes) {
    OwnedStation copy;
    const _StationTuneInfo nothing = {};
    const DWORD size = BlockSizeOf(signalType);
    ExpectHr(size == 0 ? E_FAIL : S_OK, copy.Assign(nothing, signalType));
    EXPECT_EQ(size, copy.Block().size()) << signalType;
    EXPECT_EQ(size != 0, copy.Get().pbInformation != nullptr) << signalType;
  }
  for (const int wrong : {-1, 7, 63, 177, 0x7FFFFFFF}) {
    OwnedStation copy;
    ExpectHr(E_FAIL, copy.Assign({}, static_cast<InputSignalType>(wrong)));
    EXPECT_EQ(nullptr, copy.Get().pbInformation);
  }
}

TEST(OwnedStation, CopiesFieldsAndTakesTheRecordsType) {
  Station source(InputSignalDVBSatellite);
  *source.Get() = {InputSignalFMRadio,   49, 21, 11'739'000, -250, 1101, source->cbInformation,
                   source->pbInformation};
  source.Word(2780, 0x01020304);
  OwnedStation copy;
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
TEST(OwnedStation, TakesNoMoreThanTheBlockAndZeroesTheRest) {
  for (const BlockSize& row : kBlockSizes) {
    for (std::size_t length = 0; length <= row.size + 100u; ++length) {
      Station source(row.signalType, length);
      source.Fill(0xA5);
      OwnedStation copy;
      ASSERT_EQ(S_OK, copy.Assign(*source.Get(), row.signalType));
      const std::size_t taken = std::min<std::size_t>(length, row.size);
      ASSERT_EQ(length == 0 ? 0u : taken, copy.Get().cbInformation);
      const std::span<const BYTE> block = copy.Block();
      ASSERT_EQ(row.size, block.size());
      for (std::size_t i = 0; i < block.size(); ++i) ASSERT_EQ(i < taken ? 0xA5 : 0, block[i]);
    }
  }
}

TEST(OwnedStation, CountsThatLieTakeTheBlockOnly) {
  Station source(InputSignalFMRadio);
  source.Fill(7);
  source->cbInformation = 0xFFFFFFFF;
  OwnedStation copy;
  ExpectHr(S_OK, copy.Assign(*source.Get(), InputSignalFMRadio));
  EXPECT_EQ(92u, copy.Get().cbInformation);
}

TEST(OwnedStation, NullSourceBlockCopiesNothing) {
  _StationTuneInfo source = {};
  source.cbInformation = 500;
  source.lPhysicalChannel = 3;
  OwnedStation copy;
  ExpectHr(S_OK, copy.Assign(source, InputSignalATSCCable));
  EXPECT_EQ(0u, copy.Get().cbInformation);
  EXPECT_EQ(3, copy.Get().lPhysicalChannel);
  ASSERT_EQ(528u, copy.Block().size());
  for (const BYTE byte : copy.Block()) EXPECT_EQ(0, byte);
}

TEST(OwnedStation, FailureLeavesAZeroedStation) {
  Station source(InputSignalDVBTerrestrial);
  source->lTSID = 5;
  OwnedStation copy;
  ExpectHr(S_OK, copy.Assign(*source.Get(), InputSignalDVBTerrestrial));
  ExpectHr(E_FAIL, copy.Assign(*source.Get(), InputSignalDVBCable));
  EXPECT_EQ(InputSignalUnknown, copy.Get().InputSignal);
  EXPECT_EQ(0, copy.Get().lTSID);
  EXPECT_EQ(0u, copy.Get().cbInformation);
  EXPECT_EQ(nullptr, copy.Get().pbInformation);
}

TEST(OwnedStation, ReleaseGivesTheBlockAway) {
  OwnedStation owner;
  ExpectHr(S_OK, owner.Assign({}, InputSignalFMRadio));
  const _StationTuneInfo given = owner.Release();
  EXPECT_EQ(nullptr, owner.Get().pbInformation);
  ASSERT_NE(nullptr, given.pbInformation);
  CoTaskMemFree(given.pbInformation);
}

}  // namespace
