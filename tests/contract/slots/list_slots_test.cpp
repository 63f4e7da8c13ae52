// The order of the methods of IChannelInfoMgr and IZorTunedex, by calls through their tables.
#include "contract/database.h"
#include "contract/slots/slots.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

class ListSlots : public testing::Test {
 protected:
  ListSlots()
      : m_database(OpenDatabase(m_directory.Path(), kTerrestrial)),
        m_list(ListOf(m_database, kTerrestrial)) {}

  // Asks one of the methods that hand out a channel for the index of it.
  template <typename... Arguments>
  UINT IndexFrom(std::size_t slot, Arguments... arguments) {
    ComPtr<IChannelInfo> channel;
    ExpectHr(S_OK, CallSlot(m_list.Get(), slot, arguments..., channel.Receive()));
    return channel ? Fetch(channel).index : 0;
  }

  template <typename T>
  T Get(std::size_t slot) {
    T value{};
    ExpectHr(S_OK, CallSlot(m_list.Get(), slot, &value));
    return value;
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
};

}  // namespace

TEST_F(ListSlots, OfAChannelList) {
  ExpectHr(S_OK, CallSlot(m_list.Get(), 3));
  ExpectHr(E_NOTIMPL, CallSlot(m_list.Get(), 6, &IID_IUnknown, m_list.Get()));
  ExpectHr(E_NOTIMPL, CallSlot(m_list.Get(), 7, &IID_IUnknown, m_list.Get()));
  EXPECT_EQ(kTerrestrial, Get<InputSignalType>(8));
  EXPECT_EQ(0U, IndexFrom(10));
  AddMade(m_list, kTerrestrial, 3);
  Channel fourth = MakeChannel(kTerrestrial, 4);
  const ComPtr<IChannelInfo> channel = Add(m_list, fourth);
  ExpectHr(S_OK, CallSlot(m_list.Get(), 12, channel.Get()));
  EXPECT_EQ(3U, CountOf(m_list));
  ExpectHr(S_OK, CallSlot(m_list.Get(), 11, channel.Get()));
  UINT count = 0;
  ExpectHr(S_OK, CallSlot(m_list.Get(), 13, kAllServices, &count));
  EXPECT_EQ(4U, count);
  EXPECT_EQ(2U, IndexFrom(14, UINT{1002}));
  EXPECT_EQ(3U, IndexFrom(15, UINT{3}));
  fourth.station.info.pbInformation = fourth.station.block.data();
  EXPECT_EQ(4U, IndexFrom(16, &fourth.station.info));
}

TEST_F(ListSlots, OfAChannelListInOrder) {
  AddMade(m_list, kTerrestrial, 4);
  UINT index = 0;
  ExpectHr(S_OK, CallSlot(m_list.Get(), 17, UINT{3}, &index, kAllServices, BOOL{0}, BOOL{0}));
  EXPECT_EQ(2U, index);
  ExpectHr(S_OK, CallSlot(m_list.Get(), 18, UINT{3}, &index, kAllServices, BOOL{0}, BOOL{0}));
  EXPECT_EQ(4U, index);
  EXPECT_EQ(1, Get<BOOL>(19));
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  EXPECT_EQ(0, Get<BOOL>(19));
  ExpectHr(S_OK, CallSlot(m_list.Get(), 20, BOOL{5}));
  EXPECT_EQ(5, Get<BOOL>(19));
  ExpectHr(S_OK, CallSlot(m_list.Get(), 21, UINT{4}, UINT{1}));
  EXPECT_EQ(1U, IndexFrom(14, UINT{1004}));
  ExpectHr(S_OK, CallSlot(m_list.Get(), 22, SortChannelByNo, BOOL{1}));
  EXPECT_EQ(4U, IndexFrom(14, UINT{1004}));
  ExpectHr(E_FAIL, CallSlot(m_list.Get(), 22, SortNone, BOOL{1}));
  ExpectHr(S_OK, CallSlot(m_list.Get(), 9, InputSignalFMRadio));
  EXPECT_EQ(InputSignalFMRadio, Get<InputSignalType>(8));
  ExpectHr(S_OK, CallSlot(m_list.Get(), 5));
  EXPECT_EQ(0U, CountOf(m_list));
  AddMade(m_list, kTerrestrial, 1);
  ExpectHr(S_OK, CallSlot(m_list.Get(), 4));
  EXPECT_EQ(0U, CountOf(m_list));
}

// Clear strips the element that the list was loaded from, Close lets go of it first.
TEST_F(ListSlots, CloseAndClearAreNotExchanged) {
  AddMade(m_list, kTerrestrial, 2);
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  for (const bool clear : {false, true}) {
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kTerrestrial);
    ExpectHr(S_OK, CallSlot(ListOf(database, kTerrestrial).Get(), clear ? 5 : 4));
    ExpectHr(S_OK, database->SetStorageType(StorageXML));
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(clear ? 0U : 2U,
              CountOf(ListOf(OpenDatabase(m_directory.Path(), kTerrestrial), kTerrestrial)));
  }
}

TEST_F(ListSlots, OfADatabase) {
  IZorTunedex* object = m_database.Get();
  IChannelInfoMgr* list = nullptr;
  ExpectHr(S_OK, CallSlot(object, 5, kTerrestrial, &list));
  EXPECT_EQ(m_list.Get(), list);
  list->Release();
  AddMade(m_list, kTerrestrial, 2);
  ExpectHr(S_OK, CallSlot(object, 7));
  EXPECT_TRUE(m_directory.Has("ChanInfo.xml"));
  ExpectHr(S_OK, CallSlot(object, 6));
  EXPECT_EQ(4U, CountOf(m_list));
  ExpectHr(S_OK, CallSlot(object, 9, StoragePreFmtXML));
  EStorageType storage = StorageXML;
  ExpectHr(S_OK, CallSlot(object, 8, &storage));
  EXPECT_EQ(StoragePreFmtXML, storage);
  ExpectHr(S_OK, CallSlot(object, 4));
  ExpectHr(E_FAIL, object->LoadChannelFromFile());
  ExpectHr(S_OK, CallSlot(object, 3, PathText(m_directory.Path()).Get(), kGermany, kTerrestrial));
  EXPECT_EQ(2U, CountOf(ListOf(m_database, kTerrestrial)));
}

TEST_F(ListSlots, OfTheClassObject) {
  const ComPtr<IClassFactory> factory = GetFactory();
  void* database = nullptr;
  ExpectHr(S_OK, CallSlot(factory.Get(), 3, static_cast<IUnknown*>(nullptr), &IID_IZorTunedex,
                          &database));
  static_cast<IZorTunedex*>(database)->Release();
  ExpectHr(S_OK, CallSlot(factory.Get(), 4, BOOL{1}));
  ExpectHr(S_OK, CallSlot(factory.Get(), 4, BOOL{0}));
}
