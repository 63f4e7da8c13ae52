// From an empty directory to a file with channels of every kind, and back.
#include <algorithm>

#include "contract/database.h"
#include "contract/stations.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr UINT kCount = 5;

class Journey : public testing::TestWithParam<EStorageType> {
 protected:
  void FillAndSave() const {
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kBlockTypes[0]);
    ExpectHr(S_OK, database->SetStorageType(GetParam()));
    for (const InputSignalType signalType : kBlockTypes) {
      AddMade(ListOf(database, signalType), signalType, kCount);
    }
    ExpectHr(S_OK, database->SaveChannelToFile());
    for (const InputSignalType signalType : kBlockTypes) {
      ExpectMade(ListOf(database, signalType), signalType, kCount);
    }
    ExpectHr(S_OK, database->Close());
  }

  // The saved file behind its declaration, whose quotes are the platform's.
  std::string Saved() const {
    const std::string file = m_directory.Read("ChanInfo.xml");
    return file.substr(std::min(file.size(), file.find("<CHANNELTABLE>")));
  }
  void SaveAgain(InputSignalType signalType) const {
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), signalType);
    ExpectHr(S_OK, database->SetStorageType(GetParam()));
    ExpectHr(S_OK, ListOf(database, signalType)->SetDirty(1));
    ExpectHr(S_OK, database->SaveChannelToFile());
  }

  TempDir m_directory;
};

INSTANTIATE_TEST_SUITE_P(Forms, Journey, testing::Values(StorageXML, StoragePreFmtXML));

}  // namespace

TEST_P(Journey, EveryTypeComesBack) {
  FillAndSave();
  for (const InputSignalType signalType : kBlockTypes) {
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), signalType);
    ExpectMade(ListOf(database, signalType), signalType, kCount);
  }
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_P(Journey, OneDatabaseForAllTypes) {
  FillAndSave();
  const ComPtr<IZorTunedex> database = NewDatabase();
  const Bstr directory = PathText(m_directory.Path());
  for (const InputSignalType signalType : kBlockTypes) {
    ExpectHr(S_OK, database->Open(directory.Get(), kGermany, signalType));
    ExpectMade(ListOf(database, signalType), signalType, kCount);
    ExpectHr(S_OK, database->Close());
  }
}

// What was loaded and is saved again is the same file, byte for byte, whatever was loaded.
TEST_P(Journey, SavingWhatWasLoadedChangesNothing) {
  FillAndSave();
  std::string saved = Saved();
  for (const InputSignalType signalType : kBlockTypes) {
    SaveAgain(signalType);
    if (signalType == InputSignalDVBSatellite) {
      // The streams are written afresh, behind what is there: the first time they change places
      // with the satellite parameters.
      EXPECT_FALSE(saved == Saved());
      EXPECT_EQ(saved.size(), Saved().size());
      saved = Saved();
      SaveAgain(signalType);
    }
    EXPECT_TRUE(saved == Saved()) << signalType;
    const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), signalType);
    ExpectMade(ListOf(database, signalType), signalType, kCount);
  }
}

TEST_P(Journey, LookingNavigatingAndSortingAfterALoad) {
  FillAndSave();
  constexpr InputSignalType kType = InputSignalDVBTerrestrial;
  const ComPtr<IZorTunedex> database = OpenDatabase(m_directory.Path(), kType);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, kType);
  ComPtr<IChannelInfo> found;
  ExpectHr(S_OK, list->GetChannelInfoByNo(1003, found.Receive()));
  EXPECT_EQ(3U, Fetch(found).index);
  Station probe = MakeChannel(kType, 4).station;
  probe.info.pbInformation = probe.block.data();
  ExpectHr(S_OK, list->GetChannelInfoByStation(&probe.info, found.Receive()));
  EXPECT_EQ(4U, Fetch(found).index);
  probe.info.lTSID += 1;
  ExpectHr(E_FAIL, list->GetChannelInfoByStation(&probe.info, found.Receive()));
  UINT next = 0;
  // Favourites are the channels whose index is no multiple of three.
  ExpectHr(S_OK, list->FindNextChannel(2, &next, kAllServices, 1, 0));
  EXPECT_EQ(4U, next);
  ExpectHr(S_OK, list->FindPreChannel(1, &next, kAllServices, 1, 1));
  EXPECT_EQ(5U, next);
  ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 0));
  EXPECT_EQ((std::vector<UINT>{5, 4, 3, 2, 1}), IndexesOf(list));
  ExpectHr(S_OK, database->SetStorageType(GetParam()));
  ExpectHr(S_OK, database->SaveChannelToFile());
  const ComPtr<IZorTunedex> sorted = OpenDatabase(m_directory.Path(), kType);
  ExpectHr(S_OK, ListOf(sorted, kType)->GetChannelInfoByIndex(1, found.Receive()));
  Channel expected = MakeChannel(kType, kCount);
  expected.index = 1;
  ExpectChannel(expected, Fetch(found));
}
