// Channels that the file cannot hold as they are, and what a host has to know about them.
#include "contract/database.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

class UnwritableChannels : public testing::Test {
 protected:
  ComPtr<IZorTunedex> Open(InputSignalType signalType = kSatellite) const {
    return OpenDatabase(m_directory.Path(), signalType);
  }
  std::string Saved() const { return m_directory.Read(kChannelFile); }
  /// How often a text stands in the saved file.
  std::size_t Count(const std::string& text) const {
    const std::string file = Saved();
    std::size_t count = 0;
    for (std::size_t at = file.find(text); at != std::string::npos; at = file.find(text, at + 1)) {
      ++count;
    }
    return count;
  }
  static ComPtr<IChannelInfo> AddWithoutStation(const ComPtr<IChannelInfoMgr>& list, UINT index) {
    ComPtr<IChannelInfo> channel;
    ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
    ExpectHr(E_NOTIMPL, channel->SetChannelIndex(index));
    ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
    return channel;
  }
  static BOOL IsDirty(const ComPtr<IChannelInfoMgr>& list) {
    BOOL dirty = -1;
    ExpectHr(S_OK, list->GetDirty(&dirty));
    return dirty;
  }
  static void SetDisplayName(const ComPtr<IChannelInfo>& channel, const Bstr& name) {
    ExpectHr(S_OK, channel->SetChannelDspName(name.Get()));
  }
  static Bstr DisplayName(const ComPtr<IChannelInfo>& channel) {
    Bstr name;
    ExpectHr(S_OK, channel->GetChannelDspName(name.Receive()));
    return name;
  }

  TempDir m_directory;
};

}  // namespace

// The result of a list is that of its last record.
TEST_F(UnwritableChannels, TheLastOneWithoutAStationKeepsAllFromTheFile) {
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
  AddMade(list, kSatellite, 2);
  const ComPtr<IChannelInfo> last = AddWithoutStation(list, 3);
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
  // The marks are gone all the same: nothing seems to be left to save.
  EXPECT_EQ(0, IsDirty(list));
  Station station = MakeChannel(kSatellite, 3).station;
  station.info.pbInformation = station.block.data();
  ExpectHr(S_OK, last->SetStationInfo(&station.info));
  ExpectHr(S_OK, last->SetDirty(0));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
  ExpectHr(S_OK, list->SetDirty(1));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(3U, Count("<Channel name="));
  // What the first try left behind.
  EXPECT_EQ(1U, Count("<Channel/>"));
}

TEST_F(UnwritableChannels, OneWithoutAStationComesBackEmpty) {
  {
    const ComPtr<IZorTunedex> database = Open();
    const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
    Add(list, MakeChannel(kSatellite, 1));
    Add(list, MakeChannel(kSatellite, 3));
    SetDisplayName(AddWithoutStation(list, 2), Wide("lost"));
    ExpectHr(S_OK, database->SaveChannelToFile());
    ExpectHr(S_OK, list->SetDirty(1));
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  EXPECT_EQ(2U, Count("<Channel/>")) << "one for each save";
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
  EXPECT_EQ((std::vector<UINT>{0, 0, 1, 3}), IndexesOf(list));
  EXPECT_TRUE(DisplayName(ChannelAt(list, 0)).IsEmpty());
}

// The file finds a channel by its index: the last of several with the same one is what it keeps.
TEST_F(UnwritableChannels, EqualIndexesBecomeOneChannel) {
  for (const EStorageType form : {StorageXML, StoragePreFmtXML}) {
    {
      const ComPtr<IZorTunedex> database = Open();
      const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
      ExpectHr(S_OK, list->Clear());
      SetDisplayName(Add(list, MakeChannel(kSatellite, 5)), Wide("added first"));
      SetDisplayName(Add(list, MakeChannel(kSatellite, 5)), Wide("added second"));
      EXPECT_EQ(2U, CountOf(list));
      ExpectText(OLESTR("added second"), DisplayName(ChannelAt(list, 5)).Get());
      ExpectHr(S_OK, database->SetStorageType(form));
      ExpectHr(S_OK, database->SaveChannelToFile());
    }
    const ComPtr<IZorTunedex> database = Open();
    const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
    EXPECT_EQ(1U, CountOf(list));
    ExpectText(OLESTR("added first"), DisplayName(ChannelAt(list, 5)).Get());
  }
}

// Their signal type has no form in the file. They alone are no reason to write it.
TEST_F(UnwritableChannels, TypesWithoutAFormLeaveEmptyElements) {
  constexpr InputSignalType kCable = InputSignalDVBCable;
  {
    const ComPtr<IZorTunedex> database = Open();
    const ComPtr<IChannelInfoMgr> list = ListOf(database, kCable);
    AddWithoutStation(list, 1);
    AddWithoutStation(list, 2);
    ExpectHr(E_FAIL, database->SaveChannelToFile());
    EXPECT_EQ(0U, m_directory.Count());
    AddMade(ListOf(database, kSatellite), kSatellite, 1);
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(2U, Count("<Channel/>"));
    // A list that was never loaded from the set holds nothing that it could strip.
    ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 1));
    ExpectHr(S_OK, ListOf(database, kSatellite)->SetDirty(1));
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(4U, Count("<Channel/>"));
    ExpectHr(S_OK, list->Clear());
    ExpectHr(S_OK, ListOf(database, kSatellite)->SetDirty(1));
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(4U, Count("<Channel/>"));
  }
  const ComPtr<IZorTunedex> database = Open(kCable);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kCable);
  EXPECT_EQ(0U, CountOf(list));
  ExpectHr(S_OK, list->Clear());
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  ExpectHr(S_OK, list->SetDirty(1));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(0U, Count("<Channel/>"));
  ExpectMade(ListOf(Open(), kSatellite), kSatellite, 1);
}

// Numbered from its end, a list has no index at its own place until it was loaded again.
TEST_F(UnwritableChannels, NavigationAfterADescendingSort) {
  const auto next = [](const ComPtr<IChannelInfoMgr>& list) {
    UINT index = 0;
    ExpectHr(S_OK, list->FindNextChannel(1, &index, kAllServices, 0, 0));
    return index;
  };
  {
    const ComPtr<IZorTunedex> database = Open();
    const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
    AddMade(list, kSatellite, 4);
    EXPECT_EQ(2U, next(list));
    ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 0));
    EXPECT_EQ(3U, next(list));
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  EXPECT_EQ(2U, next(ListOf(Open(), kSatellite)));
}

// Values are written as they are: white space comes back as blanks, and what XML has no place for
// makes a file that nobody can read.
TEST_F(UnwritableChannels, ThePreFormattedFormBreaksOnTexts) {
  const auto save = [this](const Bstr& name) {
    const ComPtr<IZorTunedex> database = Open();
    const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
    ExpectHr(S_OK, list->Clear());
    SetDisplayName(Add(list, MakeChannel(kSatellite, 1)), name);
    ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
    ExpectHr(S_OK, database->SaveChannelToFile());
  };
  save(Wide("a\tb\r\nc\nd'>"));
  ExpectText(OLESTR("a b c d'>"), DisplayName(ChannelAt(ListOf(Open(), kSatellite), 1)).Get());
  for (const char* text : {"a&b", "a<b", "a\"b",
                           "a\x01"
                           "b"}) {
    save(Wide(text));
    EXPECT_EQ(1U, Count(" nameDisplay=\"" + std::string(text) + "\"")) << text;
    EXPECT_EQ(0U, CountOf(ListOf(Open(), kSatellite))) << text;
  }
}
