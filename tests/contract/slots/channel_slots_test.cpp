// The order of the methods of IChannelInfo: every slot is called and does what its method does.
#include "contract/database.h"
#include "contract/slots/slots.h"
#include "contract/stations.h"
#include "core/station_blocks.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

// One channel with a different answer to every question.
class ChannelSlots : public testing::Test {
 protected:
  ChannelSlots() : m_database(OpenDatabase(m_directory.Path(), kSatellite)) {
    Channel channel = MakeChannel(kSatellite, 2);
    BYTE* block = channel.station.block.data();
    station_blocks::Store(block, 4, 10);        // digital radio
    station_blocks::Store(block + 948, 4, 11);  // conditional access
    channel.favorite = 12;
    channel.lock = 13;
    channel.index = 14;
    channel.station.info.lPhysicalChannel = 15;
    channel.station.info.dwFrequency = 16;
    channel.station.info.lOffsetFreq = 17;
    m_channel = Add(ListOf(m_database, kSatellite), channel);
    ExpectHr(S_OK, m_channel->SetDirty(18));
    m_expected = channel;
  }

  template <typename T>
  void ExpectGet(std::size_t slot, T expected) {
    T actual{};
    ExpectHr(S_OK, CallSlot(m_channel.Get(), slot, &actual));
    EXPECT_EQ(expected, actual) << "slot " << slot;
    ExpectHr(E_POINTER, CallSlot(m_channel.Get(), slot, static_cast<T*>(nullptr)));
  }

  template <typename T>
  void ExpectSet(std::size_t slot, HRESULT expected, T value) {
    ExpectHr(expected, CallSlot(m_channel.Get(), slot, value));
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfo> m_channel;
  Channel m_expected;
};

}  // namespace

TEST_F(ChannelSlots, Numbers) {
  ExpectGet(3, kSatellite);
  ExpectGet(5, ServiceDigitalRadio);
  ExpectSet(6, E_NOTIMPL, ServiceAnalogTV);
  ExpectGet(25, BOOL{18});
  ExpectGet<UINT>(7, 15);
  ExpectGet<UINT>(9, 14);
  ExpectGet<DWORD>(15, 16);
  ExpectGet<LONG>(17, 17);
  ExpectGet<UINT>(21, 12);
  ExpectGet<BOOL>(23, 13);
  ExpectGet<BOOL>(27, 11);
  ExpectGet<BOOL>(28, 1);
  ExpectSet<UINT>(8, E_NOTIMPL, 25);
  ExpectSet<UINT>(10, E_NOTIMPL, 24);
  ExpectSet<DWORD>(16, S_OK, 26);
  ExpectSet<LONG>(18, S_OK, 27);
  ExpectSet<UINT>(22, S_OK, 22);
  ExpectSet<BOOL>(24, S_OK, 23);
  ExpectSet<BOOL>(26, S_OK, 28);
  ExpectGet<UINT>(7, 25);
  ExpectGet<UINT>(9, 24);
  ExpectGet<DWORD>(15, 26);
  ExpectGet<LONG>(17, 27);
  ExpectGet<UINT>(21, 22);
  ExpectGet<BOOL>(23, 23);
  ExpectGet<BOOL>(25, 28);
  ExpectSet(4, S_OK, InputSignalFMRadio);
  ExpectGet(3, InputSignalFMRadio);
  // No FM channel is scrambled or has applications, and every mask finds one.
  ExpectGet<BOOL>(27, 0);
  ExpectGet<BOOL>(28, 0);
  ExpectGet(5, ServiceAll);
}

TEST_F(ChannelSlots, Names) {
  Bstr name;
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 11, name.Receive()));
  ExpectText(Wide("T608-2").View(), name.Get());
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 12, Wide("name").Get()));
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 14, Wide("display").Get()));
  ExpectHr(S_OK, m_channel->GetChannelName(name.Receive()));
  ExpectText(OLESTR("name"), name.Get());
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 13, name.Receive()));
  ExpectText(OLESTR("display"), name.Get());
  ExpectHr(E_INVALIDARG, CallSlot(m_channel.Get(), 12, BSTR{nullptr}));
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 14, BSTR{nullptr}));
}

TEST_F(ChannelSlots, Station) {
  _StationTuneInfo station = {};
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 19, &station));
  ASSERT_NE(nullptr, station.pbInformation);
  EXPECT_EQ(0, std::memcmp(station.pbInformation, m_expected.station.block.data(),
                           m_expected.station.block.size()));
  station.pbInformation[4] ^= 1;
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 20, &station));
  EXPECT_EQ(station.pbInformation[4], Fetch(m_channel).station.block[4]);
  CoTaskMemFree(station.pbInformation);
  ExpectHr(E_POINTER, CallSlot(m_channel.Get(), 19, static_cast<_StationTuneInfo*>(nullptr)));
  ExpectHr(E_POINTER, CallSlot(m_channel.Get(), 20, static_cast<_StationTuneInfo*>(nullptr)));
}

TEST_F(ChannelSlots, IUnknown) {
  void* answer = nullptr;
  ExpectHr(S_OK, CallSlot(m_channel.Get(), 0, &IID_IChannelInfo, &answer));
  EXPECT_EQ(m_channel.Get(), answer);
  EXPECT_EQ(4U, CallSlot<ULONG>(m_channel.Get(), 1));
  EXPECT_EQ(3U, CallSlot<ULONG>(m_channel.Get(), 2));
  EXPECT_EQ(2U, CallSlot<ULONG>(m_channel.Get(), 2));
}
