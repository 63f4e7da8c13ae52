// What a record reads and writes inside its station block.
#include "channels/channel_records.h"

namespace {

struct NamePlace {
  InputSignalType signalType;
  std::size_t offset;
};
constexpr NamePlace kNamePlaces[] = {
    {InputSignalAnalogAntenna, 20},   {InputSignalAnalogCable, 20},
    {InputSignalFMRadio, 12},         {InputSignalATSCAntenna, 192},
    {InputSignalATSCCable, 192},      {InputSignalDVBSatellite, 608},
    {InputSignalDVBTerrestrial, 608}, {InputSignalISDBTerrestrialOneSeg, 608},
    {InputSignalDVBHandheld, 448},    {InputSignalTDMBMobile, 448},
};

HRESULT NameOf(IChannelInfo* record, Bstr& name) { return record->GetChannelName(name.Receive()); }

TEST(ChanInfoBlock, NamesStandAtTheirPlaces) {
  for (const NamePlace& row : kNamePlaces) {
    const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
    Station station(row.signalType);
    station.Text(row.offset, "Name");
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    Bstr name;
    ExpectHr(S_OK, NameOf(record.Get(), name));
    ExpectText(OLESTR("Name"), name.Get());
  }
}

TEST(ChanInfoBlock, EmptyNameIsAnEmptyText) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  Station station(InputSignalFMRadio);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  Bstr name = Wide("x");
  ExpectHr(S_OK, NameOf(record.Get(), name));
  EXPECT_EQ(0u, SysStringLen(name.Get()));
}

TEST(ChanInfoBlock, SetNamesStandAtTheirPlaces) {
  for (const NamePlace& row : kNamePlaces) {
    const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
    Station station(row.signalType);
    station.Fill(0x2E);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    record->SetDirty(0);
    const bool writes = row.signalType != InputSignalTDMBMobile;
    ExpectHr(writes ? S_OK : E_FAIL, record->SetChannelName(Wide("Neu").Get()));
    EXPECT_EQ(writes ? 1 : 0, DirtyOf(record.Get()));
    std::vector<BYTE> expected = station.Block();
    if (writes) std::copy_n("Neu", 4, expected.begin() + static_cast<std::ptrdiff_t>(row.offset));
    EXPECT_EQ(expected, StationCopy(record.Get()).Bytes()) << row.signalType;
  }
}

TEST(ChanInfoBlock, TdmbNameIsReadAndNeverWritten) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalTDMBMobile);
  Station station(InputSignalTDMBMobile);
  station.Text(448, "DMB");
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  ExpectHr(E_FAIL, record->SetChannelName(Wide("other").Get()));
  Bstr name;
  ExpectHr(S_OK, NameOf(record.Get(), name));
  ExpectText(OLESTR("DMB"), name.Get());
}

TEST(ChanInfoBlock, SetNameChecksItsText) {
  const Bstr empty{WideView()};
  for (const InputSignalType signalType : kAllSignalTypes) {
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    record->SetDirty(0);
    ExpectHr(E_INVALIDARG, record->SetChannelName(nullptr));
    ExpectHr(E_INVALIDARG, record->SetChannelName(empty.Get()));
    ExpectHr(E_FAIL, record->SetChannelName(Wide("no block").Get()));
    EXPECT_EQ(0, DirtyOf(record.Get()));
  }
}

TEST(ChanInfoBlock, NameEndsAtAZeroUnit) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  Station station(InputSignalFMRadio);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  const OLECHAR text[] = {'a', 'b', 0, 'c'};
  ExpectHr(S_OK, record->SetChannelName(Bstr(WideView(text, 4)).Get()));
  Bstr name;
  ExpectHr(S_OK, NameOf(record.Get(), name));
  ExpectText(OLESTR("ab"), name.Get());
}

// Names run to the end of the block and not further; the old bytes behind the terminator stay.
TEST(ChanInfoBlock, NamesEndWithTheBlock) {
  for (const NamePlace& row : kNamePlaces) {
    if (row.signalType == InputSignalTDMBMobile) continue;
    const std::size_t room = BlockSizeOf(row.signalType) - row.offset;
    for (const std::size_t length : {room - 2, room - 1, room, room + 1, room + 5000}) {
      const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
      Station station(row.signalType);
      station.Fill(0x2E);
      ExpectHr(S_OK, record->SetStationInfo(station.Get()));
      ExpectHr(S_OK, record->SetChannelName(Wide(std::string(length, 'n')).Get()));
      const std::size_t taken = std::min(length, room - 1);
      std::vector<BYTE> expected = station.Block();
      for (std::size_t i = 0; i < taken; ++i) expected[row.offset + i] = 'n';
      expected[row.offset + taken] = 0;
      EXPECT_EQ(expected, StationCopy(record.Get()).Bytes());
      Bstr name;
      ExpectHr(S_OK, NameOf(record.Get(), name));
      EXPECT_EQ(taken, SysStringLen(name.Get()));
    }
  }
}

TEST(ChanInfoBlock, NameWithoutTerminatorEndsWithTheBlock) {
  for (const NamePlace& row : kNamePlaces) {
    const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
    Station station(row.signalType);
    station.Fill('z');
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    Bstr name;
    ExpectHr(S_OK, NameOf(record.Get(), name));
    EXPECT_EQ(BlockSizeOf(row.signalType) - row.offset, SysStringLen(name.Get()));
  }
}

TEST(ChanInfoBlock, ScrambledIsTheValueOfTheBlock) {
  for (const InputSignalType signalType : kAllSignalTypes) {
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    BOOL scrambled = 5;
    ExpectHr(S_OK, record->IsScrambled(&scrambled));
    EXPECT_EQ(0, scrambled);
    if (BlockSizeOf(signalType) == 0) continue;
    Station station(signalType);
    station.Fill(0x81);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    ExpectHr(S_OK, record->IsScrambled(&scrambled));
    const bool tells =
        signalType == InputSignalDVBSatellite || signalType == InputSignalDVBTerrestrial;
    EXPECT_EQ(tells ? static_cast<BOOL>(0x81818181) : 0, scrambled) << signalType;
  }
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalDVBSatellite);
  Station station(InputSignalDVBSatellite);
  station.Word(948, 6);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  BOOL scrambled = 0;
  ExpectHr(S_OK, record->IsScrambled(&scrambled));
  EXPECT_EQ(6, scrambled);
}

TEST(ChanInfoBlock, MhpNeedsBothCounts) {
  struct Row {
    InputSignalType signalType;
    std::size_t dsmcc;
    std::size_t ait;
  };
  for (const Row& row :
       {Row{InputSignalDVBSatellite, 1432, 2332}, Row{InputSignalDVBTerrestrial, 1132, 2032}}) {
    for (const std::uint32_t dsmcc : {0u, 1u, 16u, 0xFFFFFFFFu}) {
      for (const std::uint32_t ait : {0u, 1u, 8u, 0x80000000u}) {
        const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
        BOOL has = 9;
        ExpectHr(S_OK, record->GetMhp(&has));
        EXPECT_EQ(0, has);
        Station station(row.signalType);
        station.Word(row.dsmcc, dsmcc).Word(row.ait, ait);
        ExpectHr(S_OK, record->SetStationInfo(station.Get()));
        ExpectHr(S_OK, record->GetMhp(&has));
        EXPECT_EQ(dsmcc >= 1 && ait >= 1 ? 1 : 0, has) << dsmcc << " " << ait;
      }
    }
  }
  for (const InputSignalType signalType : kAllSignalTypes) {
    if (signalType == InputSignalDVBSatellite || signalType == InputSignalDVBTerrestrial) continue;
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    if (BlockSizeOf(signalType) != 0) {
      Station station(signalType);
      station.Fill(1);
      ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    }
    BOOL has = 9;
    ExpectHr(S_OK, record->GetMhp(&has));
    EXPECT_EQ(0, has) << signalType;
  }
}

// Every combination of the type a station was set with and the type the record has now.
TEST(ChanInfoBlock, ChangedSignalTypeStaysInsideTheOldBlock) {
  for (const BlockSize& before : kBlockSizes) {
    for (const NamePlace& after : kNamePlaces) {
      const ComPtr<IChannelInfo> record = MakeRecord(before.signalType);
      Station station(before.signalType);
      station.Fill(1);
      ExpectHr(S_OK, record->SetStationInfo(station.Get()));
      record->SetSignalType(after.signalType);
      record->SetDirty(0);
      const bool hasName = after.offset < before.size;
      Bstr name;
      ExpectHr(hasName ? S_OK : E_FAIL, NameOf(record.Get(), name));
      if (hasName) {
        EXPECT_EQ(before.size - after.offset, SysStringLen(name.Get()));
      }

      const bool dvb = after.signalType == InputSignalDVBSatellite ||
                       after.signalType == InputSignalDVBTerrestrial;
      BOOL flag = 5;
      ExpectHr(S_OK, record->IsScrambled(&flag));
      EXPECT_EQ(dvb && before.size >= 952 ? 0x01010101 : 0, flag);
      const std::size_t lastCount = after.signalType == InputSignalDVBSatellite ? 2332 : 2032;
      ExpectHr(S_OK, record->GetMhp(&flag));
      EXPECT_EQ(dvb && before.size >= lastCount + 4 ? 1 : 0, flag);

      const bool writes = hasName && after.signalType != InputSignalTDMBMobile;
      ExpectHr(writes ? S_OK : E_FAIL, record->SetChannelName(Wide(std::string(6000, 'w')).Get()));
      EXPECT_EQ(writes ? 1 : 0, DirtyOf(record.Get()));
      if (writes) {
        ExpectHr(S_OK, NameOf(record.Get(), name));
        EXPECT_EQ(before.size - after.offset - 1, SysStringLen(name.Get()));
      }
      const StationCopy copy(record.Get());
      EXPECT_EQ(after.signalType, copy->InputSignal);
      EXPECT_EQ(std::min(before.size, BlockSizeOf(after.signalType)), copy->cbInformation);
    }
  }
}

// Every length of a caller's block, through the whole of the record's interface.
TEST(ChanInfoBlock, ShortStationsReadAsZeroBehind) {
  for (const BlockSize& row : kBlockSizes) {
    for (std::size_t length = 0; length <= row.size + 100u; length += length < 60 ? 1 : 13) {
      const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
      Station station(row.signalType, length);
      station.Fill(2);
      ExpectHr(S_OK, record->SetStationInfo(station.Get()));
      Bstr name;
      ExpectHr(S_OK, NameOf(record.Get(), name));
      BOOL flag = 0;
      ExpectHr(S_OK, record->IsScrambled(&flag));
      ExpectHr(S_OK, record->GetMhp(&flag));
      const StationCopy copy(record.Get());
      EXPECT_EQ(std::min<std::size_t>(length, row.size), copy->cbInformation);
      // A name behind what the caller filled is kept; copies carry the filled bytes only.
      if (row.signalType != InputSignalTDMBMobile) {
        ExpectHr(S_OK, record->SetChannelName(Wide("late").Get()));
        ExpectHr(S_OK, NameOf(record.Get(), name));
        ExpectText(OLESTR("late"), name.Get());
        EXPECT_EQ(copy->cbInformation, StationCopy(record.Get())->cbInformation);
      }
    }
  }
}

}  // namespace
