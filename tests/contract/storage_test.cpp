// Loading and saving the channel file.
#include "contract/database.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr char kFormattedStart[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>\r\n";

class Storage : public testing::Test {
 protected:
  ComPtr<IZorTunedex> Open(DWORD countryCode = kGermany) const {
    return OpenDatabase(m_directory.Path(), kSatellite, countryCode);
  }
  std::string Saved() const { return m_directory.Read(kChannelFile); }
  // Where a text stands in the saved file; reported when it does not.
  std::size_t Place(const std::string& text) const {
    const std::size_t place = Saved().find(text);
    EXPECT_NE(std::string::npos, place) << text;
    return place;
  }
  // Leaves a file with two channels.
  void WriteFile() const {
    const ComPtr<IZorTunedex> database = Open();
    AddMade(ListOf(database, kSatellite), kSatellite, 2);
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  // Puts something in the file's place that shows whether it is written again.
  void Replace() const { m_directory.Write(kChannelFile, "<CHANNELTABLE/>"); }

  TempDir m_directory;
};

}  // namespace

TEST_F(Storage, SavingRightAfterOpenWritesNothing) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
  WriteFile();
  const ComPtr<IZorTunedex> loaded = Open();
  Replace();
  ExpectHr(E_FAIL, loaded->SaveChannelToFile());
  EXPECT_EQ("<CHANNELTABLE/>", Saved());
}

TEST_F(Storage, AChangedChannelIsSaved) {
  WriteFile();
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfo> channel = ChannelAt(ListOf(database, kSatellite), 2);
  BOOL dirty = 1;
  ExpectHr(S_OK, channel->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
  ExpectHr(S_OK, channel->SetChannelDspName(Wide("another").Get()));
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectHr(S_OK, channel->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
  ExpectHr(S_OK, ListOf(database, kSatellite)->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
  const ComPtr<IZorTunedex> loaded = Open();
  Bstr name;
  ExpectHr(S_OK, ChannelAt(ListOf(loaded, kSatellite), 2)->GetChannelDspName(name.Receive()));
  ExpectText(OLESTR("another"), name.Get());
}

// The number stands for no index: no list can hold the channel, and no save may take it away.
TEST_F(Storage, AChannelWithTheNumberOfNoIndexStaysInTheFile) {
  const std::string other = "<Channel index=\"4294967295\" name=\"other\"/>";
  m_directory.Write(
      kChannelFile,
      "<CHANNELTABLE><Country countrycode=\"49\"><ChannelSet inputSignalType=\"64\">" + other +
          "<Channel index=\"1\" name=\"one\"/></ChannelSet></Country></CHANNELTABLE>");
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(static_cast<DWORD>(ServiceAll), &count));
  EXPECT_EQ(1U, count);
  ExpectHr(S_OK, ChannelAt(list, 1)->SetChannelName(Wide("renamed").Get()));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_NE(std::string::npos, Place("renamed"));
  EXPECT_NE(std::string::npos, Place("name=\"other\""));
}

// A save leaves its document marked, and the next one writes it again.
TEST_F(Storage, SavingAgainWritesAgain) {
  const ComPtr<IZorTunedex> database = Open();
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  const std::string saved = Saved();
  Replace();
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(saved, Saved());
  // Loading takes the mark away.
  ExpectHr(S_OK, database->LoadChannelFromFile());
  EXPECT_EQ(2U, CountOf(ListOf(database, kSatellite)));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
}

TEST_F(Storage, SettingAStorageTypeMakesTheNextSaveWrite) {
  for (const EStorageType storage : {StorageXML, StoragePreFmtXML}) {
    const TempDir directory;
    const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
    ExpectHr(S_OK, database->SetStorageType(storage));
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_TRUE(directory.Has(kChannelFile));
    EXPECT_EQ(1U, directory.Count());
  }
}

TEST_F(Storage, ARefusedStorageTypeChangesNothing) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(E_NOTIMPL, database->SetStorageType(StorageEncryptXML));
  ExpectHr(E_NOTIMPL, database->SetStorageType(StorageSQLlite));
  ExpectHr(E_FAIL, database->SetStorageType(static_cast<EStorageType>(3)));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
}

TEST_F(Storage, EmptyTableInThePreFormattedForm) {
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(kFormattedStart + std::string("</CHANNELTABLE>\r\n"), Saved());
}

// The form outlives Open and Close, the mark for saving does not.
TEST_F(Storage, AStorageTypeSetBeforeOpenHolds) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(S_OK, database->Open(PathText(m_directory.Path()).Get(), kGermany, kSatellite));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(0U, Saved().find(kFormattedStart));
  ExpectHr(S_OK, database->Close());
  EStorageType storage = StorageXML;
  ExpectHr(S_OK, database->GetStorageType(&storage));
  EXPECT_EQ(StoragePreFmtXML, storage);
}

TEST_F(Storage, TheFormMayChangeWithEverySave) {
  WriteFile();
  const ComPtr<IZorTunedex> database = Open();
  const std::string plain = Saved();
  EXPECT_EQ(std::string::npos, plain.find("\t<Country"));
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(S_OK, database->SaveChannelToFile());
  const std::string formatted = Saved();
  EXPECT_EQ(0U, formatted.find(kFormattedStart));
  EXPECT_NE(std::string::npos, formatted.find("\r\n\t<Country name=\"Germany\" countrycode=\"49\">"
                                              "\r\n\t\t<ChannelSet type=\"DVB-Satellite\" "
                                              "inputSignalType=\"64\">\r\n\t\t\t<Channel "));
  ExpectHr(S_OK, database->SetStorageType(StorageXML));
  ExpectHr(S_OK, database->SaveChannelToFile());
  // Behind the declaration, whose quotes are the platform's.
  EXPECT_EQ(plain.substr(plain.find("<CHANNELTABLE>")), Saved().substr(Place("<CHANNELTABLE>")));
  ExpectMade(ListOf(Open(), kSatellite), kSatellite, 2);
}

TEST_F(Storage, CountriesShareTheFileInOrder) {
  WriteFile();
  const ComPtr<IZorTunedex> british = Open(kUnitedKingdom);
  EXPECT_EQ(0U, CountOf(ListOf(british, kSatellite)));
  AddMade(ListOf(british, kSatellite), kSatellite, 3);
  ExpectHr(S_OK, british->SaveChannelToFile());
  EXPECT_LT(Place("countrycode=\"44\""), Place("countrycode=\"49\""));
  ExpectMade(ListOf(Open(), kSatellite), kSatellite, 2);
  ExpectMade(ListOf(Open(kUnitedKingdom), kSatellite), kSatellite, 3);
}

TEST_F(Storage, ChannelSetsStandInTheOrderOfTheirTypes) {
  const ComPtr<IZorTunedex> database = Open();
  // Saved in the order of the lists, in which DVB-T comes before DVB-S.
  AddMade(ListOf(database, InputSignalDVBTerrestrial), InputSignalDVBTerrestrial, 1);
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_LT(Place("type=\"DVB-Satellite\" inputSignalType=\"64\""),
            Place("type=\"DVB-Terrestiral\" inputSignalType=\"80\""));
}

// A country that was only looked at is not left in the file.
TEST_F(Storage, CountriesWithoutChannelsAreDropped) {
  WriteFile();
  const ComPtr<IZorTunedex> british = Open(kUnitedKingdom);
  ExpectHr(S_OK, british->SetStorageType(StorageXML));
  ExpectHr(S_OK, british->SaveChannelToFile());
  EXPECT_EQ(std::string::npos, Saved().find("countrycode=\"44\""));
  ExpectMade(ListOf(Open(), kSatellite), kSatellite, 2);
}

TEST_F(Storage, RemovedAndMovedChannelsAreSavedSo) {
  {
    const ComPtr<IZorTunedex> database = Open();
    AddMade(ListOf(database, kSatellite), kSatellite, 5);
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kSatellite);
  ExpectHr(S_OK, list->RemoveChannelInfo(ChannelAt(list, 2).Get()));
  ExpectHr(S_OK, list->MoveChannel(4, 1));
  ExpectHr(S_OK, database->SaveChannelToFile());
  const ComPtr<IZorTunedex> reopened = Open();
  const ComPtr<IChannelInfoMgr> loaded = ListOf(reopened, kSatellite);
  EXPECT_EQ(4U, CountOf(loaded));
  const UINT sources[] = {5, 1, 3, 4};
  for (UINT index = 1; index <= 4; ++index) {
    Channel expected = MakeChannel(kSatellite, sources[index - 1]);
    expected.index = index;
    ExpectChannel(expected, Fetch(ChannelAt(loaded, index)));
  }
}

TEST_F(Storage, AClearedListIsSavedEmpty) {
  WriteFile();
  const ComPtr<IZorTunedex> database = Open();
  ExpectHr(S_OK, ListOf(database, kSatellite)->Clear());
  ExpectHr(S_OK, database->SetStorageType(StorageXML));
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(0U, CountOf(ListOf(Open(), kSatellite)));
  Place("inputSignalType=\"64\"");
}

TEST_F(Storage, ValuesThatXmlEscapesSurviveThePlainForm) {
  const Bstr name = Wide("<a b='c'>\t\"&amp;\"\r\n");
  {
    const ComPtr<IZorTunedex> database = Open();
    const ComPtr<IChannelInfo> channel =
        Add(ListOf(database, kSatellite), MakeChannel(kSatellite, 1));
    ExpectHr(S_OK, channel->SetChannelDspName(name.Get()));
    ExpectHr(S_OK, channel->SetChannelName(name.Get()));
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  const ComPtr<IZorTunedex> database = Open();
  Bstr actual;
  const ComPtr<IChannelInfo> channel = ChannelAt(ListOf(database, kSatellite), 1);
  ExpectHr(S_OK, channel->GetChannelDspName(actual.Receive()));
  ExpectText(name.View(), actual.Get());
  ExpectHr(S_OK, channel->GetChannelName(actual.Receive()));
  ExpectText(name.View(), actual.Get());
}

// The pre-formatted form writes values as they are.
TEST_F(Storage, ThePreFormattedFormEscapesNothing) {
  const ComPtr<IZorTunedex> database = Open();
  const ComPtr<IChannelInfo> channel =
      Add(ListOf(database, kSatellite), MakeChannel(kSatellite, 1));
  ExpectHr(S_OK, channel->SetChannelDspName(Wide("A&B").Get()));
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(S_OK, database->SaveChannelToFile());
  Place(" nameDisplay=\"A&B\" ");
}

TEST_F(Storage, AnUnreadableFileIsKeptBesideTheNewOne) {
  for (const char* broken : {"<CHANNELTABLE>", "text", "\xFF\xFE"}) {
    const TempDir directory;
    directory.Write(kChannelFile, broken);
    const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
    EXPECT_EQ(0U, CountOf(ListOf(database, kSatellite)));
    EXPECT_EQ(1U, directory.Count());
    EXPECT_EQ(broken, directory.Read(kChannelFile));
    AddMade(ListOf(database, kSatellite), kSatellite, 1);
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(broken, directory.Read("ChanInfo.xml.unreadable"));
    EXPECT_EQ(2U, directory.Count());
    ExpectMade(ListOf(OpenDatabase(directory.Path(), kSatellite), kSatellite), kSatellite, 1);
    ExpectHr(S_OK, database->SaveChannelToFile());
    EXPECT_EQ(2U, directory.Count());
  }
}

TEST_F(Storage, AnEmptyFileIsNotWorthKeeping) {
  m_directory.Write(kChannelFile, "");
  const ComPtr<IZorTunedex> database = Open();
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_EQ(1U, m_directory.Count());
}

// What stands in the file's place stays, and only the pre-formatted form says that it failed.
TEST_F(Storage, WhatCannotBeReplacedStays) {
  std::filesystem::create_directory(m_directory.File(kChannelFile));
  const ComPtr<IZorTunedex> database = Open();
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_TRUE(std::filesystem::is_directory(m_directory.File(kChannelFile)));
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_F(Storage, SavingIntoADirectoryThatWent) {
  const std::filesystem::path gone = std::filesystem::path(m_directory.Path()) / "gone";
  std::filesystem::create_directory(gone);
  const ComPtr<IZorTunedex> database = OpenDatabase(gone, kSatellite);
  AddMade(ListOf(database, kSatellite), kSatellite, 1);
  std::filesystem::remove(gone);
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ(0U, m_directory.Count());
  // The channels are still there for another attempt.
  std::filesystem::create_directory(gone);
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectMade(ListOf(OpenDatabase(gone, kSatellite), kSatellite), kSatellite, 1);
}
