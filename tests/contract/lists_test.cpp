// The fourteen lists of a database.
#include <array>

#include "contract/database.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

class Lists : public testing::Test {
 protected:
  Lists() : m_database(OpenDatabase(m_directory.Path(), kSatellite)) {}

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
};

}  // namespace

TEST_F(Lists, EveryListedTypeHasOne) {
  std::vector<IChannelInfoMgr*> seen;
  for (const InputSignalType signalType : kListedTypes) {
    const ComPtr<IChannelInfoMgr> list = ListOf(m_database, signalType);
    InputSignalType actual = InputSignalUnknown;
    ExpectHr(S_OK, list->GetSignalType(&actual));
    EXPECT_EQ(signalType, actual);
    EXPECT_EQ(0U, CountOf(list));
    EXPECT_EQ(list.Get(), ListOf(m_database, signalType).Get());
    for (const IChannelInfoMgr* other : seen) EXPECT_NE(other, list.Get());
    seen.push_back(list.Get());
    // The database's own and ours.
    ExpectRefCount(2, list.Get());
  }
  EXPECT_EQ(14U, seen.size());
}

TEST_F(Lists, NoOtherTypeHasOne) {
  for (const InputSignalType signalType : kUnlistedTypes) {
    auto* list = reinterpret_cast<IChannelInfoMgr*>(m_database.Get());
    ExpectHr(E_FAIL, m_database->GetChannelInfoMgr(signalType, &list));
    EXPECT_EQ(static_cast<void*>(m_database.Get()), static_cast<void*>(list));
    ExpectHr(E_POINTER, m_database->GetChannelInfoMgr(signalType, nullptr));
  }
  ExpectHr(E_POINTER, m_database->GetChannelInfoMgr(kSatellite, nullptr));
}

TEST_F(Lists, NewChannelsAreOfTheListsType) {
  for (const InputSignalType signalType : kListedTypes) {
    ComPtr<IChannelInfo> channel;
    ExpectHr(S_OK, ListOf(m_database, signalType)->CreateChannelInfo(channel.Receive()));
    InputSignalType actual = InputSignalUnknown;
    ExpectHr(S_OK, channel->GetSignalType(&actual));
    EXPECT_EQ(signalType, actual);
  }
}

TEST_F(Lists, OutliveTheirDatabaseEmpty) {
  const ComPtr<IChannelInfoMgr> list = ListOf(m_database, kSatellite);
  AddMade(list, kSatellite, 3);
  const ComPtr<IChannelInfo> channel = ChannelAt(list, 2);
  ExpectRefCount(2, channel.Get());
  ExpectHr(S_OK, m_database->Close());
  EXPECT_EQ(0U, CountOf(list));
  ExpectRefCount(1, list.Get());
  ExpectRefCount(1, channel.Get());
  ExpectChannel(MakeChannel(kSatellite, 2), Fetch(channel));
  m_database.Reset();
  // The list works on by itself.
  AddMade(list, kSatellite, 2);
  ExpectMade(list, kSatellite, 2);
}

TEST_F(Lists, OutliveADatabaseThatWasNeverClosed) {
  AddMade(ListOf(m_database, kSatellite), kSatellite, 2);
  ExpectHr(S_OK, m_database->SaveChannelToFile());
  ComPtr<IZorTunedex> loaded = OpenDatabase(m_directory.Path(), kSatellite);
  const ComPtr<IChannelInfoMgr> list = ListOf(loaded, kSatellite);
  const ComPtr<IChannelInfo> channel = ChannelAt(list, 1);
  loaded.Reset();
  EXPECT_EQ(0U, CountOf(list));
  ExpectChannel(MakeChannel(kSatellite, 1), Fetch(channel));
  ExpectHr(S_OK, list->Clear());
  ExpectHr(S_OK, list->Close());
}

// A list that lost its database does not reach the next one that is opened.
TEST_F(Lists, AClosedListStaysOutOfTheNextOpen) {
  const ComPtr<IChannelInfoMgr> old = ListOf(m_database, kSatellite);
  ExpectHr(S_OK, m_database->Close());
  AddMade(old, kSatellite, 2);
  ExpectHr(S_OK, m_database->Open(PathText(m_directory.Path()).Get(), kGermany, kSatellite));
  EXPECT_NE(old.Get(), ListOf(m_database, kSatellite).Get());
  ExpectHr(E_FAIL, m_database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
}

// Such channels live in memory alone.
TEST_F(Lists, TypesWithoutAPlaceInTheFile) {
  constexpr std::array kMemoryOnly = {InputSignalDVBCable, InputSignalISDBTerrestrial,
                                      InputSignalISDBSatellite, InputSignalISDBCable};
  for (const InputSignalType signalType : kMemoryOnly) {
    const ComPtr<IChannelInfoMgr> list = ListOf(m_database, signalType);
    ComPtr<IChannelInfo> channel;
    ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
    ExpectHr(E_NOTIMPL, channel->SetChannelNo(7));
    ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
    ComPtr<IChannelInfo> found;
    ExpectHr(S_OK, list->GetChannelInfoByNo(7, found.Receive()));
    EXPECT_EQ(channel.Get(), found.Get());
  }
  // Nothing could be saved.
  ExpectHr(E_FAIL, m_database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
}
