// Memory runs out in the setters and getters of records, and while records are made.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include <vector>

#include "core/station_blocks.h"
#include "reliability/linux/every_allocation.h"
#include "reliability/saved_files.h"

namespace {

constexpr InputSignalType kTypes[] = {InputSignalFMRadio, InputSignalATSCAntenna,
                                      InputSignalDVBSatellite, InputSignalISDBTerrestrialOneSeg};
constexpr DWORD kFrequency = 557143;

/// An open database, for the lists that it hands out.
class MemoryFaultsOfRecords : public testing::Test {
 protected:
  ComPtr<IChannelInfo> NewChannel(InputSignalType signalType) const {
    ComPtr<IChannelInfoMgr> list;
    ComPtr<IChannelInfo> channel;
    ExpectHr(S_OK, m_database->GetChannelInfoMgr(signalType, list.Receive()));
    ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
    return channel;
  }
  ComPtr<ISatelliteInfoMgr> Satellites() const {
    ComPtr<ISatelliteInfoMgr> list;
    EXPECT_TRUE(SUCCEEDED(m_database->GetSatelliteInfoMgr(list.Receive())));
    return list;
  }
  ComPtr<ISatelliteInfo> NewSatellite() const {
    ComPtr<ISatelliteInfo> satellite;
    ExpectHr(S_OK, Satellites()->CreateSatelliteInfo(satellite.Receive()));
    return satellite;
  }
  /// Sets a text and gets it, both with memory that ends.
  template <typename I>
  void ExpectTextTold(I* record, HRESULT (I::*set)(BSTR), HRESULT (I::*get)(BSTR*)) const {
    Bstr got;
    ExpectHr(S_OK, (record->*set)(m_other.Get()));
    ForEveryAllocation({[] {}, [&] { return (record->*set)(m_text.Get()); },
                        [&](HRESULT hr, bool hasFailed) {
                          ExpectHr(hasFailed ? E_OUTOFMEMORY : S_OK, hr);
                          ExpectHr(S_OK, (record->*get)(got.Receive()));
                          ExpectText((hasFailed ? m_other : m_text).View(), got.Get());
                          ExpectHr(S_OK, (record->*set)(m_other.Get()));
                        },
                        Tells::MayRaise});
    ExpectHr(S_OK, (record->*set)(m_text.Get()));
    ExpectToldEverywhere([&] { return (record->*get)(got.Receive()); }, Tells::MayRaise);
    ExpectText(m_text.View(), got.Get());
  }

  const TempDir m_directory;
  const ComPtr<IZorTunedex> m_database = OpenFor(kSavedFiles[2], m_directory);
  const Bstr m_text = Wide(std::string(50, 'n'));
  const Bstr m_other = Wide(std::string(40, 'o'));
};

/// A station with a name, as a host passes it.
struct Station : _StationTuneInfo {
  explicit Station(InputSignalType signalType)
      : _StationTuneInfo(), block(station_blocks::Find(signalType)->size, 'x') {
    dwFrequency = kFrequency;
    cbInformation = static_cast<DWORD>(block.size());
    pbInformation = block.data();
    block.back() = 0;
  }
  std::vector<BYTE> block;
};

DWORD FrequencyOf(const ComPtr<IChannelInfo>& channel) {
  DWORD frequency = 0;
  ExpectHr(S_OK, channel->GetChannelFreq(&frequency));
  return frequency;
}

}  // namespace

TEST_F(MemoryFaultsOfRecords, ChannelTexts) {
  for (const InputSignalType signalType : kTypes) {
    const ComPtr<IChannelInfo> channel = NewChannel(signalType);
    Station station(signalType);
    ExpectHr(S_OK, channel->SetStationInfo(&station));
    using I = IChannelInfo;
    ExpectTextTold<I>(channel.Get(), &I::SetChannelName, &I::GetChannelName);
    ExpectTextTold<I>(channel.Get(), &I::SetChannelDspName, &I::GetChannelDspName);
  }
}

// The two answer S_OK without memory for the block, too: the station is then zero.
TEST_F(MemoryFaultsOfRecords, ChannelStations) {
  for (const InputSignalType signalType : kTypes) {
    Station station(signalType);
    ComPtr<IChannelInfo> channel;
    ForEveryAllocation({[&] { channel = NewChannel(signalType); },
                        [&] { return channel->SetStationInfo(&station); },
                        [&](HRESULT hr, bool hasFailed) {
                          EXPECT_TRUE(hr == S_OK || (hasFailed && hr == E_OUTOFMEMORY));
                          const DWORD frequency = FrequencyOf(channel);
                          EXPECT_TRUE(frequency == kFrequency || (hasFailed && frequency == 0));
                          ExpectHr(S_OK, channel->SetStationInfo(&station));
                          EXPECT_EQ(kFrequency, FrequencyOf(channel));
                        },
                        Tells::MayRaise});
    _StationTuneInfo got = {};
    ForEveryAllocation({[&] { got = {}; }, [&] { return channel->GetStationInfo(&got); },
                        [&](HRESULT hr, bool hasFailed) {
                          ExpectHr(S_OK, hr);
                          EXPECT_EQ(hasFailed ? 0 : kFrequency, got.dwFrequency);
                          EXPECT_EQ(hasFailed, got.pbInformation == nullptr);
                          CoTaskMemFree(got.pbInformation);
                        }});
  }
}

TEST_F(MemoryFaultsOfRecords, ChannelLists) {
  ComPtr<IChannelInfoMgr> list;
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, m_database->GetChannelInfoMgr(kTypes[0], list.Receive()));
  ExpectToldEverywhere([&] { return list->CreateChannelInfo(channel.Receive()); });
  ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
  ExpectToldEverywhere([&] { return list->SortChannel(SortChannelByNo, 1); });
  ExpectToldEverywhere([&] { return list->SortChannel(SortChannelBySrvType, 0); });
}

TEST_F(MemoryFaultsOfRecords, Satellites) {
  const ComPtr<ISatelliteInfoMgr> list = Satellites();
  const ComPtr<ISatelliteInfo> satellite = NewSatellite();
  using I = ISatelliteInfo;
  ExpectTextTold<I>(satellite.Get(), &I::SetName, &I::GetName);
  ExpectTextTold<I>(satellite.Get(), &I::SetID, &I::GetID);
  ExpectHr(S_OK, list->AddSatelliteInfo(satellite.Get()));
  ComPtr<I> found;
  ExpectToldEverywhere([&] { return list->CreateSatelliteInfo(found.Receive()); });
  ExpectToldEverywhere([&] { return list->GetSatInfoByName(m_text.Get(), found.Receive()); },
                       Tells::MayRaise);
  EXPECT_EQ(satellite.Get(), found.Get());
}

// The text is taken over wherever memory ends.
TEST_F(MemoryFaultsOfRecords, LookupsThatTakeTheText) {
  const ComPtr<ISatelliteInfoMgr> list = Satellites();
  const ComPtr<ISatelliteInfo> satellite = NewSatellite();
  ComPtr<ITransponderInfoMgr> transponders;
  ComPtr<ITransponderInfo> transponder;
  satellite->SetID(m_text.Get());
  ExpectHr(S_OK, list->AddSatelliteInfo(satellite.Get()));
  satellite->GetTransponderMgr(SatFreqBand_CBand, transponders.Receive());
  ExpectHr(S_OK, transponders->CreateTransponderInfo(transponder.Receive()));
  transponder->SetName(m_text.Get());
  ExpectHr(S_OK, transponders->AddTransponderInfo(transponder.Get()));
  BSTR taken = nullptr;
  const auto prepare = [&] { taken = Bstr::Copy(m_text.Get()).Release(); };
  const auto check = [](HRESULT hr, bool hasFailed) {
    ExpectHr(hasFailed ? E_OUTOFMEMORY : S_OK, hr);
  };
  ComPtr<ISatelliteInfo> found;
  ForEveryAllocation({prepare, [&] { return list->GetSatInfoByID(&taken, found.Receive()); }, check,
                      Tells::MayRaise});
  ComPtr<ITransponderInfo> other;
  ForEveryAllocation(
      {prepare, [&] { return transponders->GetTransponderInfoByName(&taken, other.Receive()); },
       check, Tells::MayRaise});
  EXPECT_EQ(satellite.Get(), found.Get());
  EXPECT_EQ(transponder.Get(), other.Get());
}

TEST_F(MemoryFaultsOfRecords, Transponders) {
  const ComPtr<ISatelliteInfo> satellite = NewSatellite();
  ComPtr<ITransponderInfoMgr> list;
  ComPtr<ITransponderInfo> transponder;
  satellite->GetTransponderMgr(SatFreqBand_KuBand, list.Receive());
  ExpectToldEverywhere([&] { return list->CreateTransponderInfo(transponder.Receive()); });
  using I = ITransponderInfo;
  ExpectTextTold<I>(transponder.Get(), &I::SetName, &I::GetName);
}

TEST_F(MemoryFaultsOfRecords, LNBs) {
  ComPtr<ILNBInfoMgr> list;
  ComPtr<ILNBInfo> lnb;
  EXPECT_TRUE(SUCCEEDED(m_database->GetLNBInfoMgr(list.Receive())));
  ExpectToldEverywhere([&] { return list->CreateLNBInfo(lnb.Receive()); });
  using I = ILNBInfo;
  ExpectTextTold<I>(lnb.Get(), &I::SetType, &I::GetType);
  ExpectHr(S_OK, list->AddLNBInfo(lnb.Get()));
  ComPtr<I> found;
  ExpectToldEverywhere([&] { return list->GetLNBInfoByType(m_text.Get(), found.Receive()); },
                       Tells::MayRaise);
  EXPECT_EQ(lnb.Get(), found.Get());
}

TEST_F(MemoryFaultsOfRecords, Assignments) {
  ComPtr<IDishSatInfoMgr> list;
  ComPtr<IDishSatInfo> record;
  EXPECT_TRUE(SUCCEEDED(m_database->GetDishSatInfoMgr(list.Receive())));
  ExpectToldEverywhere([&] { return list->CreateDishSatInfo(record.Receive()); });
  using I = IDishSatInfo;
  ExpectTextTold<I>(record.Get(), &I::SetID, &I::GetID);
  ExpectTextTold<I>(record.Get(), &I::SetBand, &I::GetBand);
}

TEST_F(MemoryFaultsOfRecords, Databases) {
  ExpectToldEverywhere([] {
    ComPtr<IZorTunedex> database;
    return NewDatabase(database);
  });
}
