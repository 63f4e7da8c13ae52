#include "channels/stations/kept_station.h"

#include "channels/channel_records.h"

namespace {

std::vector<BYTE> BytesOf(const OwnedStation& station) {
  return {station.Block().begin(), station.Block().end()};
}

// What a record would hand out as one type after it was set as another, the whole block kept.
void ExpectCopyAsOfTheWhole(const _StationTuneInfo& source, InputSignalType set,
                            InputSignalType asked) {
  KeptStation kept;
  OwnedStation whole;
  ASSERT_EQ(whole.Assign(source, set), kept.Assign(source, set));
  EXPECT_EQ(whole.Block().size(), kept.BlockSize());
  OwnedStation expected;
  OwnedStation copy;
  ASSERT_EQ(expected.Assign(whole.Get(), asked), kept.CopyTo(copy, asked));
  EXPECT_EQ(expected.Get().InputSignal, copy.Get().InputSignal);
  EXPECT_EQ(expected.Get().lPhysicalChannel, copy.Get().lPhysicalChannel);
  EXPECT_EQ(expected.Get().cbInformation, copy.Get().cbInformation);
  EXPECT_EQ(expected.Get().pbInformation != nullptr, copy.Get().pbInformation != nullptr);
  EXPECT_EQ(BytesOf(expected), BytesOf(copy));
}

TEST(KeptStation, CopiesAreThoseOfTheWhole) {
  for (const BlockSize& row : kBlockSizes) {
    for (const InputSignalType asked : kAllSignalTypes) {
      for (const std::size_t used : {std::size_t{0}, std::size_t{1}, std::size_t{row.size / 2},
                                     std::size_t{row.size - 1}, std::size_t{row.size}}) {
        Station source(row.signalType);
        source->lPhysicalChannel = 21;
        for (std::size_t i = 0; i < used; ++i) source.Block()[i] = static_cast<BYTE>(i % 3);
        if (used != 0) source.Block()[used - 1] = 0xFF;
        ExpectCopyAsOfTheWhole(*source.Get(), row.signalType, asked);
        source->cbInformation = row.size / 3;
        ExpectCopyAsOfTheWhole(*source.Get(), row.signalType, asked);
      }
    }
  }
  ExpectCopyAsOfTheWhole({}, InputSignalDVBSatellite, InputSignalDVBSatellite);
  ExpectCopyAsOfTheWhole({}, InputSignalDVBCable, InputSignalDVBSatellite);
}

TEST(KeptStation, KeepsUpToTheLastByteThatIsNotZero) {
  for (std::size_t last = 0; last <= 100; ++last) {
    Station source(InputSignalAnalogCable);
    if (last != 0) source.Block()[last - 1] = 1;
    KeptStation kept;
    ExpectHr(S_OK, kept.Assign(*source.Get(), InputSignalAnalogCable));
    EXPECT_EQ(last, kept.Kept().size());
    EXPECT_EQ(100u, kept.Get().cbInformation);
    EXPECT_EQ(100u, kept.BlockSize());
  }
}

TEST(KeptStation, MakesRoomWithZeros) {
  Station source(InputSignalFMRadio);
  source.Block()[2] = 7;
  KeptStation kept;
  ExpectHr(S_OK, kept.Assign(*source.Get(), InputSignalFMRadio));
  const std::span<BYTE> front = kept.Front(5);
  EXPECT_EQ((std::vector<BYTE>{0, 0, 7, 0, 0}), std::vector<BYTE>(front.begin(), front.end()));
  front[4] = 9;
  EXPECT_EQ(9, kept.Front(92)[4]);
  EXPECT_EQ(92u, kept.Kept().size());
  EXPECT_EQ(2u, kept.Front(2).size());
  EXPECT_EQ(92u, kept.Kept().size());
}

TEST(KeptStation, ForgetsAllWithATypeThatHasNoBlock) {
  Station source(InputSignalFMRadio);
  source.Fill(1);
  source->lTSID = 5;
  KeptStation kept;
  ExpectHr(S_OK, kept.Assign(*source.Get(), InputSignalFMRadio));
  ExpectHr(E_FAIL, kept.Assign(*source.Get(), InputSignalDVBCable));
  EXPECT_EQ(0, kept.Get().lTSID);
  EXPECT_EQ(0u, kept.BlockSize());
  EXPECT_TRUE(kept.Kept().empty());
}

// A name is written into the block whatever of it was kept, and runs over what stands behind it.
TEST(KeptStation, OfARecordTakesANameOfAnyLength) {
  for (const std::size_t length : {1u, 300u, 1000u, 3000u}) {
    const ComPtr<IChannelInfo> record = MakeRecord(InputSignalDVBSatellite);
    Station station(InputSignalDVBSatellite);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    const Bstr name(std::basic_string<OLECHAR>(length, OLECHAR{'n'}));
    ExpectHr(S_OK, record->SetChannelName(name.Get()));
    constexpr std::size_t kPlace = station_blocks::OffsetOf(station_blocks::kDvbs.channel, "name");
    const std::size_t taken = std::min<std::size_t>(length, 2784 - kPlace - 1);
    std::fill_n(station.Block().begin() + kPlace, taken, BYTE{'n'});
    EXPECT_EQ(station.Block(), StationCopy(record.Get()).Bytes());
    Bstr read;
    ExpectHr(S_OK, record->GetChannelName(read.Receive()));
    EXPECT_EQ(taken, read.View().size());
  }
}

}  // namespace
