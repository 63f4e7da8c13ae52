// A database before, while and after it is open.
#include "contract/database.h"

#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

void ExpectStorage(EStorageType expected, const ComPtr<IZorTunedex>& database,
                   std::source_location where = std::source_location::current()) {
  EStorageType actual = StorageSQLlite;
  ExpectHr(S_OK, database->GetStorageType(&actual), where);
  EXPECT_EQ(expected, actual) << where.line();
}

void ExpectClosed(const ComPtr<IZorTunedex>& database,
                  std::source_location where = std::source_location::current()) {
  for (const InputSignalType signalType : kListedTypes) {
    auto* list = reinterpret_cast<IChannelInfoMgr*>(database.Get());
    ExpectHr(E_FAIL, database->GetChannelInfoMgr(signalType, &list), where);
    EXPECT_EQ(static_cast<void*>(database.Get()), static_cast<void*>(list)) << where.line();
  }
  ExpectHr(E_POINTER, database->GetChannelInfoMgr(kTerrestrial, nullptr), where);
  ExpectHr(E_FAIL, database->LoadChannelFromFile(), where);
  ExpectHr(E_FAIL, database->SaveChannelToFile(), where);
}

}  // namespace

TEST(Database, BeforeOpen) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ExpectClosed(database);
  ExpectStorage(StorageXML, database);
  ExpectHr(S_OK, database->Close());
  ExpectHr(S_OK, database->Close());
  ExpectClosed(database);
}

TEST(Database, OpenRefusesWhatDoesNotExist) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = NewDatabase();
  ExpectHr(E_INVALIDARG, database->Open(nullptr, kGermany, kTerrestrial));
  ExpectHr(E_INVALIDARG, database->Open(Wide("").Get(), kGermany, kTerrestrial));
  const Bstr missing = PathText(std::filesystem::path(directory.Path()) / "missing");
  ExpectHr(E_INVALIDARG, database->Open(missing.Get(), kGermany, kTerrestrial));
  ExpectClosed(database);
}

TEST(Database, AFailedOpenChangesNothing) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kTerrestrial);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kTerrestrial);
  AddMade(list, kTerrestrial, 2);
  const Bstr missing = PathText(std::filesystem::path(directory.Path()) / "missing");
  ExpectHr(E_INVALIDARG, database->Open(missing.Get(), kUnitedKingdom, InputSignalFMRadio));
  ExpectHr(E_INVALIDARG, database->Open(nullptr, kUnitedKingdom, InputSignalFMRadio));
  EXPECT_EQ(list.Get(), ListOf(database, kTerrestrial).Get());
  ExpectMade(list, kTerrestrial, 2);
  // Directory, country and signal type are the old ones.
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectMade(ListOf(OpenDatabase(directory.Path(), kTerrestrial), kTerrestrial), kTerrestrial, 2);
  ExpectHr(S_OK, database->LoadChannelFromFile());
  EXPECT_EQ(4U, CountOf(list));
}

TEST(Database, OpenInAnEmptyDirectory) {
  const TempDir directory;
  for (const InputSignalType signalType : kBlockTypes) {
    const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), signalType);
    for (const InputSignalType listed : kListedTypes) {
      EXPECT_EQ(0U, CountOf(ListOf(database, listed)));
    }
  }
  EXPECT_EQ(0U, directory.Count());
}

TEST(Database, OpenTakesAnySignalTypeAndCountry) {
  const TempDir directory;
  for (const InputSignalType signalType : kUnlistedTypes) {
    const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), signalType, 0xFFFFFFFF);
    EXPECT_EQ(0U, CountOf(ListOf(database, kTerrestrial)));
  }
}

TEST(Database, DirectoryWithAndWithoutSeparatorAtItsEnd) {
  const TempDir directory;
  std::filesystem::path separated(directory.Path());
  separated += std::filesystem::path::preferred_separator;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kTerrestrial);
  AddMade(ListOf(database, kTerrestrial), kTerrestrial, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_TRUE(directory.Has("ChanInfo.xml"));
  const ComPtr<IZorTunedex> other = OpenDatabase(separated, kTerrestrial);
  ExpectMade(ListOf(other, kTerrestrial), kTerrestrial, 1);
  Add(ListOf(other, kTerrestrial), MakeChannel(kTerrestrial, 2));
  ExpectHr(S_OK, other->SaveChannelToFile());
  ExpectMade(ListOf(OpenDatabase(directory.Path(), kTerrestrial), kTerrestrial), kTerrestrial, 2);
  EXPECT_EQ(1U, directory.Count());
}

TEST(Database, DirectoryWithANameThatIsNotAscii) {
  const TempDir directory;
  const std::filesystem::path named =
      std::filesystem::path(directory.Path()) / std::filesystem::path(u"Sender \u00E9\u00FC");
  ASSERT_TRUE(std::filesystem::create_directory(named));
  const ComPtr<IZorTunedex> database = OpenDatabase(named, kTerrestrial);
  AddMade(ListOf(database, kTerrestrial), kTerrestrial, 2);
  ExpectHr(S_OK, database->SaveChannelToFile());
  EXPECT_TRUE(std::filesystem::exists(named / "ChanInfo.xml"));
  ExpectMade(ListOf(OpenDatabase(named, kTerrestrial), kTerrestrial), kTerrestrial, 2);
}

// The check asks only whether something is there.
TEST(Database, AFilePassesForADirectory) {
  const TempDir directory;
  directory.Write("file", "text");
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.File("file"), kTerrestrial);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kTerrestrial);
  EXPECT_EQ(0U, CountOf(list));
  AddMade(list, kTerrestrial, 1);
  ExpectHr(S_OK, database->SaveChannelToFile());
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectHr(E_FAIL, database->SaveChannelToFile());
  EXPECT_EQ("text", directory.Read("file"));
  EXPECT_EQ(1U, directory.Count());
}

// The lists stay and the file is added to them once more.
TEST(Database, OpeningTwiceDoublesTheRecords) {
  const TempDir directory;
  {
    const ComPtr<IZorTunedex> writer = OpenDatabase(directory.Path(), kTerrestrial);
    AddMade(ListOf(writer, kTerrestrial), kTerrestrial, 3);
    ExpectHr(S_OK, writer->SaveChannelToFile());
  }
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kTerrestrial);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kTerrestrial);
  ExpectMade(list, kTerrestrial, 3);
  ExpectHr(S_OK, database->Open(PathText(directory.Path()).Get(), kGermany, kTerrestrial));
  EXPECT_EQ(list.Get(), ListOf(database, kTerrestrial).Get());
  EXPECT_EQ((std::vector<UINT>{1, 1, 2, 2, 3, 3}), IndexesOf(list));
  ExpectHr(S_OK, database->LoadChannelFromFile());
  EXPECT_EQ((std::vector<UINT>{1, 1, 1, 2, 2, 2, 3, 3, 3}), IndexesOf(list));
  // After Close the lists are new ones.
  ExpectHr(S_OK, database->Close());
  ExpectHr(S_OK, database->Open(PathText(directory.Path()).Get(), kGermany, kTerrestrial));
  EXPECT_NE(list.Get(), ListOf(database, kTerrestrial).Get());
  ExpectMade(ListOf(database, kTerrestrial), kTerrestrial, 3);
}

TEST(Database, OpenLoadsTheListOfItsSignalTypeAlone) {
  const TempDir directory;
  {
    const ComPtr<IZorTunedex> writer = OpenDatabase(directory.Path(), kTerrestrial);
    AddMade(ListOf(writer, kTerrestrial), kTerrestrial, 2);
    AddMade(ListOf(writer, InputSignalFMRadio), InputSignalFMRadio, 3);
    ExpectHr(S_OK, writer->SaveChannelToFile());
  }
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), InputSignalFMRadio);
  ExpectMade(ListOf(database, InputSignalFMRadio), InputSignalFMRadio, 3);
  EXPECT_EQ(0U, CountOf(ListOf(database, kTerrestrial)));
  // A second type joins when it is opened behind the first.
  ExpectHr(S_OK, database->Open(PathText(directory.Path()).Get(), kGermany, kTerrestrial));
  ExpectMade(ListOf(database, InputSignalFMRadio), InputSignalFMRadio, 3);
  ExpectMade(ListOf(database, kTerrestrial), kTerrestrial, 2);
}

TEST(Database, CloseEmptiesAndForgets) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kTerrestrial);
  AddMade(ListOf(database, kTerrestrial), kTerrestrial, 2);
  ExpectHr(S_OK, database->Close());
  ExpectClosed(database);
  // Nothing was saved.
  EXPECT_EQ(0U, directory.Count());
  ExpectHr(S_OK, database->Close());
  ExpectHr(S_OK, database->Open(PathText(directory.Path()).Get(), kGermany, kTerrestrial));
  EXPECT_EQ(0U, CountOf(ListOf(database, kTerrestrial)));
}

TEST(Database, StorageTypes) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ExpectHr(S_OK, database->SetStorageType(StoragePreFmtXML));
  ExpectStorage(StoragePreFmtXML, database);
  ExpectHr(E_NOTIMPL, database->SetStorageType(StorageEncryptXML));
  ExpectStorage(StoragePreFmtXML, database);
  ExpectHr(E_NOTIMPL, database->SetStorageType(StorageSQLlite));
  ExpectStorage(StoragePreFmtXML, database);
  for (const int other : {3, 5, 8, -1}) {
    ExpectHr(E_FAIL, database->SetStorageType(static_cast<EStorageType>(other)));
    ExpectStorage(StoragePreFmtXML, database);
  }
  ExpectHr(S_OK, database->SetStorageType(StorageXML));
  ExpectStorage(StorageXML, database);
  // There is no document to write.
  ExpectHr(E_FAIL, database->SaveChannelToFile());
}
