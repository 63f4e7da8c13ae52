// The catalogue of satellites and LNB types.
#include "contract/catalogue.h"
#include "contract/database.h"

namespace {

using S = ISatelliteInfo;
using T = ITransponderInfo;
using L = ILNBInfo;

class SatelliteCatalogue : public testing::Test {
 protected:
  void Load(const std::string& bytes = kCatalogue) {
    m_directory.Write(kCatalogueFile, bytes);
    m_database = OpenDatabase(m_directory.Path(), kSatellite);
    ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  }
  ComPtr<ISatelliteInfoMgr> Satellites() { return SatellitesOf(m_database); }
  ComPtr<ILNBInfoMgr> Lnbs() { return LnbsOf(m_database); }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
};

}  // namespace

TEST_F(SatelliteCatalogue, ListGettersAnswerTheCount) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ComPtr<ISatelliteInfoMgr> satellites;
  ComPtr<ISatelliteInfoMgr> again;
  ComPtr<ILNBInfoMgr> lnbs;
  ComPtr<IDishSatInfoMgr> dishes;
  ExpectHr(2, database->GetSatelliteInfoMgr(satellites.Receive()));
  ExpectHr(3, database->GetSatelliteInfoMgr(again.Receive()));
  ExpectHr(2, database->GetLNBInfoMgr(lnbs.Receive()));
  ExpectHr(2, database->GetDishSatInfoMgr(dishes.Receive()));
  EXPECT_EQ(satellites.Get(), again.Get());
  again.Reset();
  ExpectRefCount(2, satellites.Get());
  // Opening and closing keeps the lists.
  ExpectHr(S_OK, database->Open(PathText(m_directory.Path()).Get(), kGermany, kSatellite));
  ExpectHr(S_OK, database->Close());
  EXPECT_EQ(satellites.Get(), SatellitesOf(database).Get());
  EXPECT_EQ(lnbs.Get(), LnbsOf(database).Get());
  EXPECT_EQ(dishes.Get(), DishesOf(database).Get());
}

TEST_F(SatelliteCatalogue, OpenDoesNotLoadIt) {
  m_directory.Write(kCatalogueFile, kCatalogue);
  m_database = OpenDatabase(m_directory.Path(), kSatellite);
  EXPECT_EQ(0U, CountOf(Satellites()));
  EXPECT_EQ(0U, CountOf(Lnbs()));
}

TEST_F(SatelliteCatalogue, EveryValue) {
  Load();
  ASSERT_EQ(2U, CountOf(Satellites()));
  const ComPtr<S> east = SatelliteAt(Satellites(), 0);
  ExpectText(OLESTR("East 19.2"), TextOf(east, &S::GetName).Get());
  ExpectText(OLESTR("S19.2E"), TextOf(east, &S::GetID).Get());
  BOOL west = 0;
  LONG longitude = 0;
  ExpectHr(S_OK, east->GetOrbitalPosition(&west, &longitude));
  EXPECT_EQ(0, west);
  EXPECT_EQ(192, longitude);
  EXPECT_EQ(171, ValueOf(east, &S::GetAzimuth));
  EXPECT_EQ(34, ValueOf(east, &S::GetElevation));
  EXPECT_EQ(RegionEurope, ValueOf(east, &S::GetRegion));
  EXPECT_EQ(SatcoDX_1, ValueOf(east, &S::GetDivision));
  EXPECT_EQ(0, ValueOf(east, &S::GetDirty));
  const ComPtr<S> other = SatelliteAt(Satellites(), 1);
  ExpectHr(S_OK, other->GetOrbitalPosition(&west, &longitude));
  EXPECT_EQ(0, west) << "the file has no side";
  EXPECT_EQ(-300, longitude);
  EXPECT_EQ(0, ValueOf(other, &S::GetAzimuth));

  const ComPtr<ITransponderInfoMgr> ku = TranspondersOf(east, SatFreqBand_KuBand);
  EXPECT_EQ(2U, CountOf(ku));
  EXPECT_EQ(0U, CountOf(TranspondersOf(east, SatFreqBand_CBand)));
  ComPtr<T> transponder;
  ExpectHr(S_OK, ku->GetTransponderInfoByIndex(0, transponder.Receive()));
  ExpectText(OLESTR("11.494 H"), TextOf(transponder, &T::GetName).Get());
  EXPECT_EQ(11494U, ValueOf(transponder, &T::GetCarrierFrequency));
  EXPECT_EQ(22000, ValueOf(transponder, &T::GetSymbolRate));
  EXPECT_EQ(BDA_POLARISATION_LINEAR_H, ValueOf(transponder, &T::GetPolarisation));
  EXPECT_EQ(BDA_BCC_RATE_2_3, ValueOf(transponder, &T::GetInnerFECRate));
  EXPECT_EQ(BDA_MOD_QPSK, ValueOf(transponder, &T::GetModulationType));
  EXPECT_EQ(BDA_SPECTRAL_INVERSION_AUTOMATIC, ValueOf(transponder, &T::GetSpectralInversion));
  ExpectHr(S_OK, ku->GetTransponderInfoByIndex(1, transponder.Receive()));
  EXPECT_EQ(BDA_MOD_NOT_SET, ValueOf(transponder, &T::GetModulationType)) << "8PSK is no word";

  ASSERT_EQ(2U, CountOf(Lnbs()));
  ComPtr<L> lnb;
  ExpectHr(S_OK, Lnbs()->GetLNBInfoByType(Wide("Universal").Get(), lnb.Receive()));
  EXPECT_EQ(0U, ValueOf(lnb, &L::GetIndex));
  EXPECT_EQ(9750U, ValueOf(lnb, &L::GetLowFreq));
  EXPECT_EQ(10600U, ValueOf(lnb, &L::GetHighFreq));
  EXPECT_EQ(11700U, ValueOf(lnb, &L::GetSwitchFreq));
  ExpectHr(S_OK, Lnbs()->GetLNBInfoByIndex(1, lnb.Receive()));
  EXPECT_EQ(0U, ValueOf(lnb, &L::GetHighFreq));
  EXPECT_EQ(0, ValueOf(Satellites(), &ISatelliteInfoMgr::GetDirty));
  EXPECT_EQ(0, ValueOf(Lnbs(), &ILNBInfoMgr::GetDirty));
}

// The file's index places a satellite, its position in the file is the number it then has.
TEST_F(SatelliteCatalogue, OrderAndNumbers) {
  Load();
  ComPtr<S> stranger;
  ExpectHr(S_OK, Satellites()->CreateSatelliteInfo(stranger.Receive()));
  ExpectHr(S_OK, Satellites()->RemoveSatelliteInfo(stranger.Detach()));
  ExpectText(OLESTR("S30W"), TextOf(SatelliteAt(Satellites(), 1), &S::GetID).Get());
  ExpectText(OLESTR("S19.2E"), TextOf(SatelliteAt(Satellites(), 2), &S::GetID).Get());
  EXPECT_EQ(1, ValueOf(Satellites(), &ISatelliteInfoMgr::GetDirty));
}

TEST_F(SatelliteCatalogue, LoadedAgainItIsAsInTheFile) {
  Load();
  ExpectHr(S_OK, Satellites()->RemoveSatelliteInfo(SatelliteAt(Satellites(), 0).Get()));
  ExpectHr(S_OK, Lnbs()->Clear());
  ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  EXPECT_EQ(2U, CountOf(Satellites()));
  EXPECT_EQ(2U, CountOf(Lnbs()));
  EXPECT_EQ(kCatalogue, m_directory.Read(kCatalogueFile));
}

TEST_F(SatelliteCatalogue, OtherSignalTypesHaveNone) {
  m_directory.Write(kCatalogueFile, kCatalogue);
  for (const InputSignalType signalType : kListedTypes) {
    if (signalType == kSatellite) continue;
    m_database = OpenDatabase(m_directory.Path(), signalType);
    ExpectHr(S_FALSE, m_database->LoadSatInfoFromFile());
    EXPECT_EQ(0U, CountOf(Satellites()));
    // Nothing was loaded that could be saved.
    ExpectHr(E_FAIL, m_database->SaveSatInfoToFile());
  }
  // The type is asked before everything else.
  ExpectHr(S_FALSE, NewDatabase()->LoadSatInfoFromFile());
}

TEST_F(SatelliteCatalogue, ReopenedForAnotherType) {
  Load();
  ExpectHr(S_OK,
           m_database->Open(PathText(m_directory.Path()).Get(), kGermany, InputSignalFMRadio));
  ExpectHr(S_FALSE, m_database->LoadSatInfoFromFile());
  EXPECT_EQ(2U, CountOf(Satellites())) << "opening leaves the catalogue alone";
}

TEST_F(SatelliteCatalogue, MissingAndMalformedFiles) {
  Load();
  for (const char* bytes : {"", "no xml", "<SATELLITES><SAT_TABLE></SATELLITES>"}) {
    m_directory.Write(kCatalogueFile, bytes);
    ExpectHr(E_FAIL, m_database->LoadSatInfoFromFile());
    EXPECT_EQ(bytes, m_directory.Read(kCatalogueFile));
    EXPECT_EQ(2U, CountOf(Satellites())) << "the lists stay as they were";
    EXPECT_EQ(2U, CountOf(Lnbs()));
    EXPECT_EQ(2U, CountOf(TranspondersOf(SatelliteAt(Satellites(), 0), SatFreqBand_KuBand)));
    ExpectHr(E_FAIL, m_database->SaveSatInfoToFile());
  }
  std::filesystem::remove(m_directory.File(kCatalogueFile));
  ExpectHr(E_FAIL, m_database->LoadSatInfoFromFile());
  EXPECT_EQ(2U, CountOf(Satellites()));
  EXPECT_EQ(0U, m_directory.Count());
  // The lists can still be worked with.
  ExpectHr(S_OK, Satellites()->Clear());
  ExpectHr(S_OK, Lnbs()->Clear());
  m_directory.Write(kCatalogueFile, kCatalogue);
  ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  EXPECT_EQ(2U, CountOf(Satellites()));
}

TEST_F(SatelliteCatalogue, WithoutTables) {
  Load("<Anything/>");
  EXPECT_EQ(0U, CountOf(Satellites()));
  EXPECT_EQ(0U, CountOf(Lnbs()));
  ExpectHr(E_NOTIMPL, m_database->SaveSatInfoToFile());
  EXPECT_EQ("<Anything/>", m_directory.Read(kCatalogueFile));
  Load("<Anything><LNB_TABLE><LNB type='only'/></LNB_TABLE></Anything>");
  EXPECT_EQ(0U, CountOf(Satellites()));
  EXPECT_EQ(1U, CountOf(Lnbs()));
}

TEST_F(SatelliteCatalogue, IsNeverSaved) {
  Load();
  SatelliteAt(Satellites(), 0)->SetName(Wide("changed").Get());
  ExpectHr(E_NOTIMPL, m_database->SaveSatInfoToFile());
  for (const EStorageType storage : {StoragePreFmtXML, StorageXML}) {
    ExpectHr(S_OK, m_database->SetStorageType(storage));
    ExpectHr(E_NOTIMPL, m_database->SaveSatInfoToFile());
  }
  ExpectHr(S_OK, Satellites()->Clear());
  ExpectHr(E_NOTIMPL, m_database->SaveSatInfoToFile());
  EXPECT_EQ(kCatalogue, m_directory.Read(kCatalogueFile));
  EXPECT_EQ(1U, m_directory.Count());
  ExpectHr(E_FAIL, NewDatabase()->SaveSatInfoToFile());
}

TEST_F(SatelliteCatalogue, CloseEmptiesTheLists) {
  Load();
  const ComPtr<ISatelliteInfoMgr> satellites = Satellites();
  const ComPtr<ILNBInfoMgr> lnbs = Lnbs();
  const ComPtr<S> held = SatelliteAt(satellites, 0);
  ExpectHr(S_OK, m_database->Close());
  EXPECT_EQ(0U, CountOf(satellites));
  EXPECT_EQ(0U, CountOf(lnbs));
  ExpectRefCount(1, held.Get());
  ExpectText(OLESTR("East 19.2"), TextOf(held, &S::GetName).Get());
  EXPECT_EQ(2U, CountOf(TranspondersOf(held, SatFreqBand_KuBand)));
  ExpectHr(E_FAIL, m_database->LoadSatInfoFromFile());
  ExpectHr(E_FAIL, m_database->SaveSatInfoToFile());
}

TEST_F(SatelliteCatalogue, RecordsOutliveTheirDatabase) {
  Load();
  const ComPtr<S> held = SatelliteAt(Satellites(), 1);
  m_database.Reset();
  ExpectRefCount(1, held.Get());
  const ComPtr<ITransponderInfoMgr> band = TranspondersOf(held, SatFreqBand_CBand);
  EXPECT_EQ(1U, CountOf(band));
  ComPtr<T> transponder;
  ExpectHr(S_OK, band->GetTransponderInfoByIndex(0, transponder.Receive()));
  ExpectHr(S_OK, band->RemoveTransponderInfo(transponder.Get()));
  EXPECT_EQ(0U, CountOf(band));
}

TEST_F(SatelliteCatalogue, MissingTextsTakeTheOneBefore) {
  Load("<T><SAT_TABLE><Satellite name='only a name'/></SAT_TABLE></T>");
  ExpectText(OLESTR("only a name"), TextOf(SatelliteAt(Satellites(), 0), &S::GetID).Get());
}

TEST_F(SatelliteCatalogue, LongTextsAreCut) {
  Load("<T><SAT_TABLE><Satellite name='" + std::string(300, 'n') + "' id='i'/></SAT_TABLE></T>");
  const Bstr name = TextOf(SatelliteAt(Satellites(), 0), &S::GetName);
  ExpectText(Wide(std::string(259, 'n')).View(), name.Get());
}

TEST_F(SatelliteCatalogue, LookupsByText) {
  Load();
  ComPtr<S> found;
  ExpectHr(S_OK, Satellites()->GetSatInfoByName(Wide("West 30.0").Get(), found.Receive()));
  EXPECT_EQ(1U, ValueOf(found, &S::GetIndex));
  // The text of an id is taken over.
  BSTR id = Wide("S19.2E").Release();
  ExpectHr(S_OK, Satellites()->GetSatInfoByID(&id, found.Receive()));
  EXPECT_EQ(0U, ValueOf(found, &S::GetIndex));
  id = Wide("none").Release();
  ExpectHr(E_FAIL, Satellites()->GetSatInfoByID(&id, found.Receive()));
  const ComPtr<ITransponderInfoMgr> ku =
      TranspondersOf(SatelliteAt(Satellites(), 0), SatFreqBand_KuBand);
  BSTR name = Wide("11.362 H").Release();
  ComPtr<T> transponder;
  ExpectHr(S_OK, ku->GetTransponderInfoByName(&name, transponder.Receive()));
  EXPECT_EQ(1U, ValueOf(transponder, &T::GetIndex));
}

TEST_F(SatelliteCatalogue, Counts) {
  Load();
  UINT count = 4711;
  ExpectHr(S_OK, Satellites()->GetSatCount(0, RegionEurope, SatcoDX_9, &count));
  EXPECT_EQ(1U, count);
  ExpectHr(S_OK, Satellites()->GetSatCount(0, RegionUnknown, SatcoDX_9, &count));
  EXPECT_EQ(1U, count);
  ExpectHr(S_OK, Satellites()->GetSatCount(kGermany, RegionEurope, SatcoDX_1, &count));
  EXPECT_EQ(0U, count);
  ExpectHr(E_POINTER, Satellites()->GetSatCount(0, RegionEurope, SatcoDX_1, nullptr));
}
