#include "channels/chan_info.h"

#include <cstdint>
#include <cstring>

#include "channels/channel_records.h"

namespace {

// Sees the calls of the record's own SetDirty.
class Watched : public CChanInfo {
 public:
  HRESULT STDMETHODCALLTYPE SetDirty(BOOL bDirty) override {
    ++marks;
    return CChanInfo::SetDirty(bDirty);
  }
  int marks = 0;
};

TEST(ChanInfo, NewRecordIsEmpty) {
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, CChanInfo::CreateInstance(record.Receive()));
  InputSignalType signalType = InputSignalFMRadio;
  ExpectHr(S_OK, record->GetSignalType(&signalType));
  EXPECT_EQ(InputSignalUnknown, signalType);
  EXPECT_EQ(0u, NumberOf(record.Get()));
  EXPECT_EQ(0u, IndexOf(record.Get()));
  EXPECT_EQ(0, DirtyOf(record.Get()));
  const Bstr other = Wide("x");
  BSTR name = other.Get();
  ExpectHr(E_FAIL, record->GetChannelName(&name));
  EXPECT_EQ(other.Get(), name);
  ExpectHr(S_OK, record->GetChannelDspName(&name));
  EXPECT_EQ(nullptr, name);
  DWORD freq = 1;
  ExpectHr(S_OK, record->GetChannelFreq(&freq));
  EXPECT_EQ(0u, freq);
  LONG offset = 1;
  ExpectHr(S_OK, record->GetChannelOffsetFreq(&offset));
  EXPECT_EQ(0, offset);
  UINT favor = 1;
  ExpectHr(S_OK, record->GetFavor(&favor));
  EXPECT_EQ(0u, favor);
  BOOL lock = 1;
  ExpectHr(S_OK, record->GetLock(&lock));
  EXPECT_EQ(0, lock);
  const StationCopy station(record.Get());
  EXPECT_EQ(nullptr, station->pbInformation);
}

TEST(ChanInfo, NullOutPointers) {
  for (const InputSignalType signalType : kAllSignalTypes) {
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    ExpectHr(E_POINTER, record->GetSignalType(nullptr));
    ExpectHr(E_POINTER, record->GetServiceType(nullptr));
    ExpectHr(E_POINTER, record->GetChannelNo(nullptr));
    ExpectHr(E_POINTER, record->GetChannelIndex(nullptr));
    ExpectHr(E_POINTER, record->GetChannelName(nullptr));
    ExpectHr(E_POINTER, record->GetChannelDspName(nullptr));
    ExpectHr(E_POINTER, record->GetChannelFreq(nullptr));
    ExpectHr(E_POINTER, record->GetChannelOffsetFreq(nullptr));
    ExpectHr(E_POINTER, record->GetStationInfo(nullptr));
    ExpectHr(E_POINTER, record->SetStationInfo(nullptr));
    ExpectHr(E_POINTER, record->GetFavor(nullptr));
    ExpectHr(E_POINTER, record->GetLock(nullptr));
    ExpectHr(E_POINTER, record->GetDirty(nullptr));
    ExpectHr(E_POINTER, record->IsScrambled(nullptr));
    ExpectHr(E_POINTER, record->GetMhp(nullptr));
  }
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  record->SetChannelIndex(0xFFFFFFFF);
  ExpectHr(E_POINTER, record->GetChannelIndex(nullptr));
}

TEST(ChanInfo, SettersStoreAndMark) {
  Watched record;
  ExpectHr(S_OK, record.SetSignalType(InputSignalATSCCable));
  EXPECT_EQ(1, record.marks);
  InputSignalType signalType = InputSignalUnknown;
  ExpectHr(S_OK, record.GetSignalType(&signalType));
  EXPECT_EQ(InputSignalATSCCable, signalType);
  // Stored, and answered as not implemented.
  ExpectHr(E_NOTIMPL, record.SetChannelNo(0x80000001));
  EXPECT_EQ(2, record.marks);
  EXPECT_EQ(0x80000001, NumberOf(&record));
  ExpectHr(E_NOTIMPL, record.SetChannelIndex(12));
  EXPECT_EQ(3, record.marks);
  EXPECT_EQ(12u, IndexOf(&record));
  ExpectHr(S_OK, record.SetFavor(3));
  EXPECT_EQ(4, record.marks);
  UINT favor = 0;
  ExpectHr(S_OK, record.GetFavor(&favor));
  EXPECT_EQ(3u, favor);
  ExpectHr(S_OK, record.SetLock(-5));
  EXPECT_EQ(5, record.marks);
  BOOL lock = 0;
  ExpectHr(S_OK, record.GetLock(&lock));
  EXPECT_EQ(-5, lock);
  ExpectHr(S_OK, record.SetChannelDspName(Wide("A").Get()));
  EXPECT_EQ(6, record.marks);
  Station station(InputSignalATSCCable);
  ExpectHr(S_OK, record.SetStationInfo(station.Get()));
  EXPECT_EQ(7, record.marks);
  ExpectHr(S_OK, record.SetChannelName(Wide("B").Get()));
  EXPECT_EQ(8, record.marks);
  // These store without comparing.
  record.SetChannelNo(0x80000001);
  record.SetChannelIndex(12);
  record.SetFavor(3);
  record.SetLock(-5);
  record.SetSignalType(InputSignalATSCCable);
  EXPECT_EQ(13, record.marks);
  EXPECT_EQ(1, DirtyOf(&record));
}

TEST(ChanInfo, DirtyFlagIsStoredAsGiven) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  EXPECT_EQ(1, DirtyOf(record.Get()));
  for (const BOOL value : {0, 7, -1}) {
    ExpectHr(S_OK, record->SetDirty(value));
    EXPECT_EQ(value, DirtyOf(record.Get()));
  }
}

TEST(ChanInfo, FrequencySettersCompare) {
  Watched record;
  ExpectHr(S_FALSE, record.SetChannelFreq(0));
  ExpectHr(S_FALSE, record.SetChannelOffsetFreq(0));
  EXPECT_EQ(0, record.marks);
  EXPECT_EQ(0, DirtyOf(&record));
  ExpectHr(S_OK, record.SetChannelFreq(0xFFFFFFFF));
  ExpectHr(S_OK, record.SetChannelOffsetFreq(-1));
  EXPECT_EQ(2, record.marks);
  record.SetDirty(0);
  ExpectHr(S_FALSE, record.SetChannelFreq(0xFFFFFFFF));
  ExpectHr(S_FALSE, record.SetChannelOffsetFreq(-1));
  EXPECT_EQ(0, DirtyOf(&record));
  DWORD freq = 0;
  ExpectHr(S_OK, record.GetChannelFreq(&freq));
  EXPECT_EQ(0xFFFFFFFF, freq);
  LONG offset = 0;
  ExpectHr(S_OK, record.GetChannelOffsetFreq(&offset));
  EXPECT_EQ(-1, offset);
}

TEST(ChanInfo, IndexOfAllOnesCannotBeHad) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  ExpectHr(E_NOTIMPL, record->SetChannelIndex(0xFFFFFFFF));
  UINT index = 42;
  ExpectHr(E_FAIL, record->GetChannelIndex(&index));
  EXPECT_EQ(42u, index);
  record->SetChannelIndex(0xFFFFFFFE);
  EXPECT_EQ(0xFFFFFFFE, IndexOf(record.Get()));
}

TEST(ChanInfo, ServiceTypeCannotBeSet) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalAnalogCable);
  record->SetDirty(0);
  ExpectHr(E_NOTIMPL, record->SetServiceType(ServiceDigitalTV));
  EXPECT_EQ(0, DirtyOf(record.Get()));
  EServiceType serviceType = ServiceUnknown;
  ExpectHr(S_OK, record->GetServiceType(&serviceType));
  EXPECT_EQ(ServiceAll, serviceType);
}

TEST(ChanInfo, DisplayNameIsCopiedByteForByte) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  const char bytes[] = {'a', 0, 0, 0, 'b', 0, 'c'};
  const Bstr given = Bstr::Attach(SysAllocStringByteLen(bytes, static_cast<UINT>(sizeof(bytes))));
  ExpectHr(S_OK, record->SetChannelDspName(given.Get()));
  Bstr first;
  Bstr second;
  ExpectHr(S_OK, record->GetChannelDspName(first.Receive()));
  ExpectHr(S_OK, record->GetChannelDspName(second.Receive()));
  EXPECT_NE(first.Get(), second.Get());
  EXPECT_NE(given.Get(), first.Get());
  ASSERT_EQ(7u, SysStringByteLen(first.Get()));
  EXPECT_EQ(0, std::memcmp(bytes, first.Get(), sizeof(bytes)));

  const Bstr empty{WideView()};
  ExpectHr(S_OK, record->SetChannelDspName(empty.Get()));
  ExpectHr(S_OK, record->GetChannelDspName(first.Receive()));
  EXPECT_NE(nullptr, first.Get());
  EXPECT_EQ(0u, SysStringLen(first.Get()));
  ExpectHr(S_OK, record->SetChannelDspName(nullptr));
  ExpectHr(S_OK, record->GetChannelDspName(first.Receive()));
  EXPECT_EQ(nullptr, first.Get());
}

TEST(ChanInfo, StationRoundTripsInIndependentCopies) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalDVBTerrestrial);
  Station station(InputSignalDVBTerrestrial);
  *station.Get() = {InputSignalAMRadio,    33, 25, 506'000, 166, 8468, station->cbInformation,
                    station->pbInformation};
  station.Word(4, 16416).Word(2480, 9);
  record->SetDirty(0);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  EXPECT_EQ(1, DirtyOf(record.Get()));
  EXPECT_EQ(25u, NumberOf(record.Get()));
  const StationCopy first(record.Get());
  const StationCopy second(record.Get());
  EXPECT_NE(first->pbInformation, second->pbInformation);
  for (const StationCopy* copy : {&first, &second}) {
    EXPECT_EQ(InputSignalDVBTerrestrial, (*copy)->InputSignal);
    EXPECT_EQ(33, (*copy)->lCountry);
    EXPECT_EQ(25, (*copy)->lPhysicalChannel);
    EXPECT_EQ(506'000u, (*copy)->dwFrequency);
    EXPECT_EQ(166, (*copy)->lOffsetFreq);
    EXPECT_EQ(8468, (*copy)->lTSID);
    EXPECT_EQ(station.Block(), copy->Bytes());
  }
  // The caller's record keeps its own block.
  EXPECT_EQ(station.Block().data(), station->pbInformation);
}

TEST(ChanInfo, GetStationInfoZeroesTheCallersRecord) {
  for (const InputSignalType signalType : {InputSignalDVBCable, InputSignalDVBSatellite}) {
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    const bool hasBlock = BlockSizeOf(signalType) != 0;
    BYTE elsewhere = 0;
    _StationTuneInfo info = {InputSignalFMRadio, 1, 2, 3, 4, 5, 6, &elsewhere};
    ExpectHr(S_OK, record->GetStationInfo(&info));
    EXPECT_EQ(hasBlock ? signalType : InputSignalUnknown, info.InputSignal);
    EXPECT_EQ(0, info.lCountry);
    EXPECT_EQ(0, info.lPhysicalChannel);
    EXPECT_EQ(0u, info.dwFrequency);
    EXPECT_EQ(0, info.lOffsetFreq);
    EXPECT_EQ(0, info.lTSID);
    EXPECT_EQ(0u, info.cbInformation);
    // A type with a block hands one out, zeroed, also before a station was set.
    EXPECT_EQ(hasBlock, info.pbInformation != nullptr);
    CoTaskMemFree(info.pbInformation);
  }
}

TEST(ChanInfo, NumbersLiveInTheStation) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalAnalogAntenna);
  record->SetChannelNo(21);
  record->SetChannelFreq(471'250);
  record->SetChannelOffsetFreq(-12);
  const StationCopy copy(record.Get());
  EXPECT_EQ(21, copy->lPhysicalChannel);
  EXPECT_EQ(471'250u, copy->dwFrequency);
  EXPECT_EQ(-12, copy->lOffsetFreq);
}

TEST(ChanInfo, DvbCableTakesNoStation) {
  for (const InputSignalType signalType : kAllSignalTypes) {
    if (BlockSizeOf(signalType) != 0) continue;
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    Station station(InputSignalDVBSatellite);
    station->lPhysicalChannel = 5;
    record->SetChannelNo(9);
    record->SetDirty(0);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    EXPECT_EQ(1, DirtyOf(record.Get()));
    // The station that was there went with the failed copy.
    EXPECT_EQ(0u, NumberOf(record.Get()));
    Bstr name;
    ExpectHr(E_FAIL, record->GetChannelName(name.Receive()));
    ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
    EXPECT_EQ(0u, SysStringLen(name.Get()));
  }
}

TEST(ChanInfo, AtscDisplayNameIsMadeFromTheStation) {
  for (const InputSignalType signalType : {InputSignalATSCAntenna, InputSignalATSCCable}) {
    const ComPtr<IChannelInfo> record = MakeRecord(signalType);
    Station station(signalType);
    station.Word(4, 7).Word(8, 2).Text(192, "KABC");
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    Bstr name;
    ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
    ExpectText(OLESTR("7.2 KABC"), name.Get());
    // It is kept from then on.
    station.Word(8, 3).Text(192, "WXYZ");
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
    ExpectText(OLESTR("7.2 KABC"), name.Get());
    ExpectHr(S_OK, record->GetChannelName(name.Receive()));
    ExpectText(OLESTR("WXYZ"), name.Get());
    // An empty one is filled again.
    record->SetChannelDspName(Bstr(WideView()).Get());
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
    ExpectText(OLESTR("7.3 WXYZ"), name.Get());
  }
}

TEST(ChanInfo, AtscDisplayNameNumbersAreSigned) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalATSCCable);
  Station station(InputSignalATSCCable);
  station.Word(4, 0xFFFFFFFF).Word(8, 0x80000000);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  Bstr name;
  ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
  ExpectText(OLESTR("-1.-2147483648 "), name.Get());
}

TEST(ChanInfo, AtscDisplayNameHas259BytesAtMost) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalATSCCable);
  Station station(InputSignalATSCCable);
  // No terminator up to the end of the block.
  station.Word(4, 7).Word(8, 2).Text(192, std::string(336, 'x'));
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  Bstr name;
  ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
  const Bstr expected = Wide("7.2 " + std::string(255, 'x'));
  ExpectText(expected.View(), name.Get());
  ExpectHr(S_OK, record->GetChannelName(name.Receive()));
  EXPECT_EQ(336u, SysStringLen(name.Get()));
}

TEST(ChanInfo, OtherDisplayNamesAreTheChannelName) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalTDMBMobile);
  Station station(InputSignalTDMBMobile);
  station.Text(448, "KBS DMB");
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  Bstr name;
  ExpectHr(S_OK, record->GetChannelDspName(name.Receive()));
  ExpectText(OLESTR("KBS DMB"), name.Get());

  const ComPtr<IChannelInfo> named = MakeRecord(InputSignalTDMBMobile);
  named->SetChannelDspName(Wide("Mine").Get());
  ExpectHr(S_OK, named->SetStationInfo(station.Get()));
  ExpectHr(S_OK, named->GetChannelDspName(name.Receive()));
  ExpectText(OLESTR("Mine"), name.Get());
}

TEST(ChanInfo, OurRecordsAreToldFromTheHosts) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
  EXPECT_EQ(static_cast<IChannelInfo*>(record.Get()), CChanInfo::From(record.Get()));
  HostRecord* raw = nullptr;
  const ComPtr<IChannelInfo> host = HostRecord::Make(&raw);
  EXPECT_EQ(nullptr, CChanInfo::From(host.Get()));
  Watched derived;
  EXPECT_EQ(nullptr, CChanInfo::From(&derived));
}

// The view must show what GetStationInfo hands out.
TEST(ChanInfo, ViewShowsWhatGetStationInfoHandsOut) {
  for (const BlockSize& row : kBlockSizes) {
    for (const InputSignalType after : kAllSignalTypes) {
      for (const std::size_t length : {std::size_t{0}, std::size_t{10}, std::size_t{row.size}}) {
        const ComPtr<IChannelInfo> record = MakeRecord(row.signalType);
        Station station(row.signalType, length);
        station.Fill(0x11);
        station->lTSID = 4;
        station->dwFrequency = 5;
        station->lPhysicalChannel = 6;
        ExpectHr(S_OK, record->SetStationInfo(station.Get()));
        record->SetChannelName(Wide("behind what was filled").Get());
        record->SetSignalType(after);
        const StationView view = CChanInfo::From(record.Get())->ViewStation();
        const StationCopy copy(record.Get());
        EXPECT_EQ(copy->lTSID, view.transportStream);
        EXPECT_EQ(copy->dwFrequency, view.frequency);
        EXPECT_EQ(copy->lPhysicalChannel, view.physicalChannel);
        const DWORD size = BlockSizeOf(after);
        for (std::size_t offset = 0; offset + 4 <= size; ++offset) {
          ASSERT_EQ(station_blocks::Fetch(copy->pbInformation + offset, 4), view.Word(offset));
        }
        EXPECT_EQ(std::nullopt, view.Word(size < 3 ? 0 : size - 3));
      }
    }
  }
}

}  // namespace
