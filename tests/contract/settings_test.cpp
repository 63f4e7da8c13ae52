// The user's dishes, from assignment to restart.
#include <algorithm>

#include "contract/catalogue.h"
#include "contract/database.h"

namespace {

using D = IDishSatInfo;

class Settings : public testing::Test {
 protected:
  /// A new database, as after a restart.
  void Restart(InputSignalType signalType = kSatellite) {
    m_database.Reset();
    m_database = OpenDatabase(m_directory.Path(), signalType);
  }
  void Restart(const std::string& settings) {
    m_directory.Write(kSettingsFile, settings);
    Restart();
  }
  ComPtr<IDishSatInfoMgr> Dishes() { return DishesOf(m_database); }
  void Save() { ExpectHr(S_OK, m_database->SaveUserSettingsToFile()); }
  std::string File() { return m_directory.Read(kSettingsFile); }

  /// How often the saved file holds a text.
  std::size_t Times(const std::string& text) {
    const std::string file = File();
    std::size_t times = 0;
    for (std::size_t at = file.find(text); at != std::string::npos; at = file.find(text, at + 1)) {
      ++times;
    }
    return times;
  }
  std::size_t Sats() { return Times("<SAT "); }
  std::vector<UINT> Counts() {
    std::vector<UINT> counts;
    for (UINT dish = 0; dish < 4; ++dish) counts.push_back(CountOf(Dishes(), dish));
    return counts;
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
};

using PerDish = std::vector<UINT>;

}  // namespace

// A catalogue is loaded, satellites go on dishes with the frequencies of an LNB, and all is found
// again.
TEST_F(Settings, FromTheCatalogueToARestart) {
  m_directory.Write(kCatalogueFile, kCatalogue);
  Restart();
  ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  ComPtr<ILNBInfo> lnb;
  ExpectHr(S_OK, LnbsOf(m_database)->GetLNBInfoByType(Wide("Universal").Get(), lnb.Receive()));
  for (UINT position = 0; position < 2; ++position) {
    const ComPtr<ISatelliteInfo> satellite = SatelliteAt(SatellitesOf(m_database), position);
    const Bstr id = TextOf(satellite, &ISatelliteInfo::GetID);
    Assign(Dishes(), position * 2, id.Get(), "Ku", ValueOf(lnb, &ILNBInfo::GetLowFreq),
           ValueOf(lnb, &ILNBInfo::GetHighFreq), ValueOf(lnb, &ILNBInfo::GetSwitchFreq));
  }
  EXPECT_EQ(1, ValueOf(Dishes(), &IDishSatInfoMgr::GetDirty));
  Save();
  EXPECT_EQ(0, ValueOf(Dishes(), &IDishSatInfoMgr::GetDirty));
  Restart();
  EXPECT_EQ((PerDish{1, 0, 1, 0}), Counts());
  ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  for (UINT position = 0; position < 2; ++position) {
    const ComPtr<D> assignment = AssignmentAt(Dishes(), position * 2, 0);
    BSTR id = TextOf(assignment, &D::GetID).Release();
    ComPtr<ISatelliteInfo> satellite;
    ExpectHr(S_OK, SatellitesOf(m_database)->GetSatInfoByID(&id, satellite.Receive()));
    EXPECT_EQ(position, ValueOf(satellite, &ISatelliteInfo::GetIndex));
    ExpectText(OLESTR("Ku"), TextOf(assignment, &D::GetBand).Get());
    EXPECT_EQ(9750U, ValueOf(assignment, &D::GetLowFreq));
    EXPECT_EQ(10600U, ValueOf(assignment, &D::GetHighFreq));
    EXPECT_EQ(11700U, ValueOf(assignment, &D::GetSwitchFreq));
    EXPECT_EQ(0, ValueOf(assignment, &D::GetDirty));
  }
  EXPECT_EQ(0, ValueOf(Dishes(), &IDishSatInfoMgr::GetDirty));
  EXPECT_EQ(kCatalogue, m_directory.Read(kCatalogueFile));
  EXPECT_EQ(2U, m_directory.Count());
}

TEST_F(Settings, AMissingFileIsFourEmptyDishes) {
  Restart();
  EXPECT_EQ((PerDish{0, 0, 0, 0}), Counts());
  EXPECT_EQ(0U, m_directory.Count()) << "opening writes nothing";
  Assign(Dishes(), 0, Wide("S13").Get());
  Save();
  EXPECT_EQ(1U, Sats());
  EXPECT_EQ(1U, Times("<DISH_1>"));
  for (const char* empty : {"<DISH_2/>", "<DISH_3/>", "<DISH_4/>"}) EXPECT_EQ(1U, Times(empty));
  EXPECT_EQ(1U, Times("LNB_Low=\"9750\" LNB_High=\"10600\" LNB_Switch=\"11700\""));
}

TEST_F(Settings, AnUnreadableFileIsKept) {
  const std::string bytes = "<USER_SETTINGS><SAT_SETTING>";
  Restart(bytes);
  EXPECT_EQ((PerDish{0, 0, 0, 0}), Counts());
  EXPECT_EQ(bytes, File());
  EXPECT_EQ(1U, m_directory.Count());
  Assign(Dishes(), 3, Wide("S13").Get());
  Save();
  EXPECT_EQ(bytes, m_directory.Read(std::string(kSettingsFile) + ".unreadable"));
  Restart();
  EXPECT_EQ((PerDish{0, 0, 0, 1}), Counts());
  Save();
  EXPECT_EQ(2U, m_directory.Count());
}

TEST_F(Settings, SavedTwiceIsThereOnce) {
  Restart();
  Assign(Dishes(), 1, Wide("a").Get());
  Assign(Dishes(), 1, Wide("b").Get());
  Save();
  const std::string before = File();
  Save();
  EXPECT_EQ(before, File());
  Restart();
  Save();
  EXPECT_EQ(2U, Sats());
}

// Saving never deletes: the old element stays beside the new one.
TEST_F(Settings, AChangedAssignmentIsANewOne) {
  Restart();
  const ComPtr<D> assignment = Assign(Dishes(), 0, Wide("a").Get());
  Save();
  ExpectHr(S_OK, assignment->SetLowFreq(5150));
  Save();
  EXPECT_EQ(2U, Sats());
  EXPECT_EQ(1U, Times("LNB_Low=\"9750\""));
  EXPECT_EQ(1U, Times("LNB_Low=\"5150\""));
  Restart();
  EXPECT_EQ((PerDish{2, 0, 0, 0}), Counts());
}

// After a removal all that is left is written afresh.
TEST_F(Settings, ARemovedAssignmentGoes) {
  Restart(
      "<U><SAT_SETTING><DISH_1><SAT id='a'/><SAT id='b'/></DISH_1><DISH_2><SAT id='c'/>"
      "</DISH_2></SAT_SETTING></U>");
  EXPECT_EQ((PerDish{2, 1, 0, 0}), Counts());
  ExpectHr(S_OK, Dishes()->RemoveDishSatInfo(AssignmentAt(Dishes(), 0, 0).Get(), 0));
  Save();
  EXPECT_EQ(2U, Sats());
  EXPECT_EQ(0U, Times("id=\"a\""));
  Restart();
  EXPECT_EQ((PerDish{1, 1, 0, 0}), Counts());
  ExpectText(OLESTR("b"), TextOf(AssignmentAt(Dishes(), 0, 0), &D::GetID).Get());
}

TEST_F(Settings, AClearedListIsSavedEmpty) {
  Restart();
  for (UINT dish = 0; dish < 4; ++dish) Assign(Dishes(), dish, Wide("a").Get());
  Save();
  EXPECT_EQ(4U, Sats());
  Restart();
  ExpectHr(S_OK, Dishes()->Clear());
  Save();
  EXPECT_EQ(0U, Sats());
  EXPECT_EQ(1U, Times("<DISH_4/>"));
}

TEST_F(Settings, UnusualIds) {
  std::vector<Bstr> ids;
  for (const char* id : {"\"", "&", "<>", "a b", "", "]", "%s%n", " x "}) ids.push_back(Wide(id));
  ids.push_back(Bstr(WideView(OLESTR("\u00E9"))));
  ids.push_back(Wide(std::string(150, 'i')));
  for (const Bstr& id : ids) {
    TempDir directory;
    ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
    Assign(DishesOf(database), 2, id.Get());
    for (int times = 0; times < 2; ++times) {
      ExpectHr(S_OK, database->SaveUserSettingsToFile());
      database = OpenDatabase(directory.Path(), kSatellite);
      ASSERT_EQ(1U, CountOf(DishesOf(database), 2));
      ExpectText(id.View(), TextOf(AssignmentAt(DishesOf(database), 2, 0), &D::GetID).Get());
    }
  }
}

TEST_F(Settings, AnApostropheIsWrittenAnewEveryTime) {
  Restart();
  Assign(Dishes(), 0, Wide("it's").Get());
  for (std::size_t times = 1; times <= 3; ++times) {
    Save();
    EXPECT_EQ(times, Sats());
  }
  Restart();
  EXPECT_EQ((PerDish{3, 0, 0, 0}), Counts());
  ExpectText(OLESTR("it's"), TextOf(AssignmentAt(Dishes(), 0, 2), &D::GetID).Get());
}

// Written whole, read as far as the buffer goes, and never found again.
TEST_F(Settings, AnIdOf300Characters) {
  const std::string id(300, 'i');
  Restart();
  Assign(Dishes(), 0, Wide(id).Get());
  Save();
  Save();
  EXPECT_EQ(2U, Times("id=\"" + id + "\""));
  Restart();
  EXPECT_EQ((PerDish{2, 0, 0, 0}), Counts());
  ExpectText(Wide(id.substr(0, 259)).View(), TextOf(AssignmentAt(Dishes(), 0, 0), &D::GetID).Get());
}

TEST_F(Settings, MissingDoubledAndUnorderedDishes) {
  Restart(
      "<U><SAT_SETTING><DISH_4><SAT id='d'/></DISH_4><DISH_2><SAT id='b1'/></DISH_2><DISH_2>"
      "<SAT id='b2'/></DISH_2></SAT_SETTING><SAT_SETTING><DISH_1><SAT id='a'/></DISH_1>"
      "</SAT_SETTING></U>");
  EXPECT_EQ((PerDish{0, 1, 0, 1}), Counts());
  ExpectText(OLESTR("b1"), TextOf(AssignmentAt(Dishes(), 1, 0), &D::GetID).Get());
  // Empty dishes need no element. What had not all five values is not found again.
  Save();
  EXPECT_EQ(6U, Sats());
  // One that has something to save does, and nothing is written without it.
  const std::string before = File();
  Assign(Dishes(), 1, Wide("b3").Get());
  const ComPtr<D> lost = Assign(Dishes(), 2, Wide("c").Get());
  ExpectHr(S_OK, Dishes()->RemoveDishSatInfo(AssignmentAt(Dishes(), 3, 0).Get(), 3));
  ExpectHr(E_FAIL, m_database->SaveUserSettingsToFile());
  EXPECT_EQ(before, File());
  ExpectHr(S_OK, Dishes()->RemoveDishSatInfo(lost.Get(), 2));
  Save();
  EXPECT_EQ(1U, Times("id=\"b1\"") + Times("id=\"d\""));
  EXPECT_EQ(1U, Times("id=\"b2\"")) << "the second dish of a name is nobody's";
}

TEST_F(Settings, NoDishesAtAll) {
  for (const char* settings : {"<U/>", "<U><SAT_SETTING/></U>", "<U><Other/></U>"}) {
    Restart(settings);
    EXPECT_EQ((PerDish{0, 0, 0, 0}), Counts());
    Save();
    EXPECT_EQ(1U, Times("<SAT_SETTING/>")) << File();
    EXPECT_EQ(0U, Times("DISH_"));
    const std::string before = File();
    Assign(Dishes(), 0, Wide("a").Get());
    ExpectHr(E_FAIL, m_database->SaveUserSettingsToFile());
    EXPECT_EQ(before, File());
  }
}

TEST_F(Settings, AMissingBandIsTheId) {
  Restart("<U><SAT_SETTING><DISH_1><SAT id='S13'/></DISH_1></SAT_SETTING></U>");
  ExpectText(OLESTR("S13"), TextOf(AssignmentAt(Dishes(), 0, 0), &D::GetBand).Get());
  // Saved, it is another assignment than the one in the file.
  Save();
  EXPECT_EQ(2U, Sats());
}

TEST_F(Settings, FrequenciesAreSignedInTheFile) {
  Restart();
  Assign(Dishes(), 0, Wide("a").Get(), "C", 0xFFFFFFFF, 0x80000000, 1);
  Save();
  Save();
  EXPECT_EQ(1U, Times("LNB_Low=\"-1\" LNB_High=\"-2147483648\" LNB_Switch=\"1\""));
  Restart();
  const ComPtr<D> assignment = AssignmentAt(Dishes(), 0, 0);
  EXPECT_EQ(0xFFFFFFFFU, ValueOf(assignment, &D::GetLowFreq));
  EXPECT_EQ(0x80000000U, ValueOf(assignment, &D::GetHighFreq));
}

// The file is read for every type, and its dishes for DVB-S alone.
TEST_F(Settings, OtherSignalTypes) {
  const std::string settings = "<U><SAT_SETTING><DISH_1><SAT id='a'/></DISH_1></SAT_SETTING></U>";
  m_directory.Write(kSettingsFile, settings);
  for (const InputSignalType signalType : kListedTypes) {
    Restart(signalType);
    EXPECT_EQ(signalType == kSatellite ? 1U : 0U, CountOf(Dishes(), 0));
    ExpectHr(S_OK, m_database->LoadUserSettingsFromFile());
    EXPECT_EQ(signalType == kSatellite ? 1U : 0U, CountOf(Dishes(), 0));
  }
  Restart(InputSignalFMRadio);
  Assign(Dishes(), 0, Wide("b").Get());
  Save();
  EXPECT_EQ(2U, Sats()) << "saving asks for no type";
}

TEST_F(Settings, LoadedAgainItIsAsInTheFile) {
  Restart();
  Assign(Dishes(), 0, Wide("a").Get());
  Save();
  Assign(Dishes(), 0, Wide("b").Get());
  ExpectHr(S_OK, m_database->LoadUserSettingsFromFile());
  EXPECT_EQ((PerDish{1, 0, 0, 0}), Counts());
  EXPECT_EQ(0, ValueOf(Dishes(), &IDishSatInfoMgr::GetDirty));
  ExpectHr(S_OK, m_database->Open(PathText(m_directory.Path()).Get(), kGermany, kSatellite));
  EXPECT_EQ((PerDish{1, 0, 0, 0}), Counts()) << "opened once more, not added once more";
}

TEST_F(Settings, StorageTypeLeavesThemAlone) {
  Restart();
  Assign(Dishes(), 0, Wide("a&b").Get());
  Save();
  const std::string before = File();
  for (const EStorageType storage : {StoragePreFmtXML, StorageXML}) {
    ExpectHr(S_OK, m_database->SetStorageType(storage));
    EXPECT_EQ(before, File());
    Save();
    EXPECT_EQ(before, File());
  }
  Assign(Dishes(), 1, Wide("c").Get());
  ExpectHr(S_OK, m_database->SetStorageType(StoragePreFmtXML));
  Save();
  EXPECT_EQ(2U, Sats()) << "choosing a form holds nothing back here";
  EXPECT_EQ(1U, Times("a&amp;b"));
}

TEST_F(Settings, BeforeOpenAndAfterClose) {
  ComPtr<IZorTunedex> database = NewDatabase();
  ExpectHr(E_FAIL, database->LoadUserSettingsFromFile());
  ExpectHr(E_FAIL, database->SaveUserSettingsToFile());
  Restart();
  const ComPtr<IDishSatInfoMgr> dishes = Dishes();
  const ComPtr<D> held = Assign(dishes, 0, Wide("a").Get());
  ExpectHr(S_OK, m_database->Close());
  EXPECT_EQ(0U, CountOf(dishes, 0));
  ExpectRefCount(1, held.Get());
  ExpectHr(E_FAIL, m_database->LoadUserSettingsFromFile());
  ExpectHr(E_FAIL, m_database->SaveUserSettingsToFile());
  EXPECT_EQ(0U, m_directory.Count());
}

TEST_F(Settings, CloseSavesNothing) {
  Restart();
  Assign(Dishes(), 0, Wide("a").Get());
  Save();
  const std::string before = File();
  ExpectHr(S_OK, m_database->Close());
  EXPECT_EQ(before, File());
}

// A plain save answers success whatever came of it.
TEST_F(Settings, AFailedSaveIsNotReported) {
  Restart();
  std::filesystem::create_directory(m_directory.File(kSettingsFile));
  Assign(Dishes(), 0, Wide("a").Get());
  Save();
  EXPECT_TRUE(std::filesystem::is_directory(m_directory.File(kSettingsFile)));
}
