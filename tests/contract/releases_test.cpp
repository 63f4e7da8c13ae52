// One Release too many on a list that another object owns: the list stays, and so does the host.
#include <vector>

#include "contract/catalogue.h"
#include "contract/database.h"

namespace {

/// Gives up the reference that came with the pointer, and twice one that never was the host's.
template <typename I>
void ReleaseTooOften(I* list) {
  EXPECT_EQ(1U, list->Release());
  EXPECT_EQ(0U, list->Release());
  EXPECT_EQ(0U, list->Release());
}

class Releases : public testing::Test {
 protected:
  Releases() {
    m_directory.Write(kCatalogueFile, kCatalogue);
    m_database = OpenDatabase(m_directory.Path(), kSatellite);
    ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
};

}  // namespace

TEST_F(Releases, ListsOfTheDatabase) {
  ISatelliteInfoMgr* satellites = nullptr;
  ILNBInfoMgr* lnbs = nullptr;
  IDishSatInfoMgr* dishes = nullptr;
  for (int round = 0; round < 2; ++round) {
    // The counts are those of a host that gave back what it had.
    ExpectHr(2, m_database->GetSatelliteInfoMgr(&satellites));
    ExpectHr(2, m_database->GetLNBInfoMgr(&lnbs));
    ExpectHr(2, m_database->GetDishSatInfoMgr(&dishes));
    ReleaseTooOften(satellites);
    ReleaseTooOften(lnbs);
    ReleaseTooOften(dishes);
  }
  EXPECT_EQ(2U, CountOf(SatellitesOf(m_database)));
  EXPECT_EQ(2U, CountOf(LnbsOf(m_database)));
  ExpectHr(S_OK, m_database->Close());
}

TEST_F(Releases, TransponderListsOfASatellite) {
  const ComPtr<ISatelliteInfo> satellite = SatelliteAt(SatellitesOf(m_database), 0);
  for (const ESatFreqBand band : {SatFreqBand_CBand, SatFreqBand_KuBand}) {
    ITransponderInfoMgr* list = nullptr;
    ExpectHr(2, satellite->GetTransponderMgr(band, &list));
    ReleaseTooOften(list);
    ExpectHr(2, satellite->GetTransponderMgr(band, &list));
    UINT count = 4711;
    ExpectHr(S_OK, list->GetTransponderCount(&count));
    EXPECT_EQ(band == SatFreqBand_KuBand ? 2U : 0U, count);
    list->Release();
  }
}

TEST_F(Releases, ChannelLists) {
  for (const InputSignalType signalType : kListedTypes) {
    IChannelInfoMgr* list = nullptr;
    ExpectHr(S_OK, m_database->GetChannelInfoMgr(signalType, &list));
    ReleaseTooOften(list);
    EXPECT_EQ(list, ListOf(m_database, signalType).Get());
    ExpectRefCount(2, ListOf(m_database, signalType).Get());
  }
  const ComPtr<IChannelInfoMgr> kept = ListOf(m_database, kTerrestrial);
  ExpectHr(S_OK, m_database->Close());
  // From here on it is the host's alone, and goes with its last reference.
  ExpectRefCount(1, kept.Get());
}

TEST_F(Releases, PresetLists) {
  m_directory.Write(
      "PreSetChannelInfo.xml",
      "<T><Country countrycode='81'><ChannelSet inputSignalType='176'>"
      "<Area AreaIndex='0'><SubArea SubAreaIndex='0'/></Area></ChannelSet></Country></T>");
  const ComPtr<IZorTunedex> database =
      OpenDatabase(m_directory.Path(), InputSignalISDBTerrestrialOneSeg);
  IChannelInfoMgr* list = nullptr;
  for (int round = 0; round < 2; ++round) {
    ExpectHr(S_OK, database->GetPresetChannelMgr(0, 0, &list));
    ReleaseTooOften(list);
    EXPECT_EQ(0U, CountOf(ComPtr<IChannelInfoMgr>(list)));
  }
  ComPtr<IChannelInfoMgr> kept;
  ExpectHr(S_OK, database->GetPresetChannelMgr(0, 0, kept.Receive()));
  ExpectRefCount(2, kept.Get());
  ExpectHr(S_OK, database->GetPresetChannelMgr(0, 0, &list));
  ExpectRefCount(1, kept.Get());
  list->Release();
}
