// What the satellite list has of its own.
#include "satellite/satellite_info_mgr.h"

#include "satellite/lists.h"
#include "support/wine.h"

namespace {

class SatelliteInfoMgr : public ListTest<Satellites> {
 protected:
  ComPtr<ISatelliteInfo> AddedAs(UINT index, const char* name, const char* id,
                                 ESatRegion region = RegionUnknown,
                                 ESatDivision division = SatcoDX_Unknown) {
    const ComPtr<ISatelliteInfo> record = Added(index);
    if (name != nullptr) record->SetName(Wide(name).Get());
    if (id != nullptr) record->SetID(Wide(id).Get());
    record->SetRegion(region);
    record->SetDivision(division);
    return record;
  }
  UINT CountOf(DWORD country, ESatRegion region, ESatDivision division) {
    UINT count = 4711;
    ExpectHr(S_OK, List().GetSatCount(country, region, division, &count));
    return count;
  }
  ComPtr<ISatelliteInfo> ByName(const char* name) {
    ComPtr<ISatelliteInfo> found;
    const Bstr text = name != nullptr ? Wide(name) : Bstr();
    const HRESULT hr = List().GetSatInfoByName(text.Get(), found.Receive());
    ExpectHr(found ? S_OK : E_FAIL, hr);
    return found;
  }
  /// The text is the list's from here on.
  ComPtr<ISatelliteInfo> ById(const char* id) {
    ComPtr<ISatelliteInfo> found;
    BSTR text = id != nullptr ? Wide(id).Release() : nullptr;
    const BSTR before = text;
    const HRESULT hr = List().GetSatInfoByID(&text, found.Receive());
    EXPECT_EQ(static_cast<void*>(before), static_cast<void*>(text)) << "the variable is left alone";
    ExpectHr(found ? S_OK : E_FAIL, hr);
    return found;
  }
};

/// Fails to tell what it is asked for.
class SilentSatellite : public CSatelliteInfo {
 public:
  HRESULT STDMETHODCALLTYPE GetName(BSTR*) override { return E_ACCESSDENIED; }
  HRESULT STDMETHODCALLTYPE GetID(BSTR*) override { return E_ACCESSDENIED; }
  HRESULT STDMETHODCALLTYPE GetRegion(ESatRegion*) override { return E_ACCESSDENIED; }
  HRESULT STDMETHODCALLTYPE GetDivision(ESatDivision*) override { return E_ACCESSDENIED; }
};

}  // namespace

TEST_F(SatelliteInfoMgr, CountsByRegionElseByDivision) {
  AddedAs(1, "a", "a", RegionEurope, SatcoDX_3);
  AddedAs(2, "b", "b", RegionEurope, SatcoDX_4);
  AddedAs(3, "c", "c", RegionAsia, SatcoDX_3);
  AddedAs(4, "d", "d");
  AddedAs(5, "e", "e", static_cast<ESatRegion>(99), static_cast<ESatDivision>(99));
  EXPECT_EQ(5U, CountOf(0, RegionUnknown, SatcoDX_Unknown));
  EXPECT_EQ(2U, CountOf(0, RegionEurope, SatcoDX_3)) << "a region leaves the division out";
  EXPECT_EQ(2U, CountOf(0, RegionUnknown, SatcoDX_3));
  EXPECT_EQ(1U, CountOf(0, RegionAsia, SatcoDX_9));
  EXPECT_EQ(0U, CountOf(0, RegionAmerica, SatcoDX_Unknown));
  EXPECT_EQ(0U, CountOf(0, RegionUnknown, SatcoDX_9));
  EXPECT_EQ(1U, CountOf(0, static_cast<ESatRegion>(99), SatcoDX_Unknown));
  EXPECT_EQ(1U, CountOf(0, RegionUnknown, static_cast<ESatDivision>(99)));
  // Satellites carry no country.
  EXPECT_EQ(0U, CountOf(1, RegionUnknown, SatcoDX_Unknown));
  EXPECT_EQ(0U, CountOf(49, RegionEurope, SatcoDX_3));
  EXPECT_EQ(0U, CountOf(0xFFFFFFFF, RegionUnknown, SatcoDX_3));
}

TEST_F(SatelliteInfoMgr, SilentRecordsMatchNothing) {
  const auto silent = ComPtr<ISatelliteInfo>::Attach(new SilentSatellite);
  silent->SetRegion(RegionAsia);
  silent->SetDivision(SatcoDX_1);
  ExpectHr(S_OK, List().AddSatelliteInfo(silent.Get()));
  EXPECT_EQ(1U, CountOf(0, RegionUnknown, SatcoDX_Unknown));
  EXPECT_EQ(0U, CountOf(0, RegionAsia, SatcoDX_Unknown));
  EXPECT_EQ(0U, CountOf(0, RegionUnknown, SatcoDX_1));
  EXPECT_FALSE(ByName(""));
  EXPECT_FALSE(ById(nullptr));
}

TEST_F(SatelliteInfoMgr, LookupByIndexIgnoresItsFilters) {
  const auto record = AddedAs(7, "a", "a", RegionEurope, SatcoDX_3);
  ComPtr<ISatelliteInfo> found;
  ExpectHr(S_OK, List().GetSatInfoByIndex(7, 49, RegionAsia, SatcoDX_9, found.Receive()));
  EXPECT_EQ(record.Get(), found.Get());
  ExpectHr(E_POINTER, List().GetSatInfoByIndex(7, 0, RegionUnknown, SatcoDX_Unknown, nullptr));
}

TEST_F(SatelliteInfoMgr, LookupByName) {
  AddedAs(1, "Astra", "1");
  const auto second = AddedAs(2, "Hot Bird", "2");
  AddedAs(3, "Hot Bird", "3");
  EXPECT_EQ(second.Get(), ByName("Hot Bird").Get()) << "the first in the list's order";
  ExpectRefCount(2, second.Get());
  for (const char* other : {"hot bird", "Hot Bird ", "Hot", "", "2"}) EXPECT_FALSE(ByName(other));
  EXPECT_FALSE(ByName(nullptr));
  const Bstr name = Wide("Astra");
  ExpectHr(E_POINTER, List().GetSatInfoByName(name.Get(), nullptr));
  ExpectText(OLESTR("Astra"), name.Get());
  auto* untouched = reinterpret_cast<ISatelliteInfo*>(this);
  ExpectHr(E_FAIL, List().GetSatInfoByName(Wide("none").Get(), &untouched));
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
}

TEST_F(SatelliteInfoMgr, AnUnsetTextEqualsAnEmptyOne) {
  const auto unset = AddedAs(1, nullptr, nullptr);
  EXPECT_EQ(unset.Get(), ByName("").Get());
  EXPECT_EQ(unset.Get(), ByName(nullptr).Get());
  EXPECT_EQ(unset.Get(), ById("").Get());
  EXPECT_EQ(unset.Get(), ById(nullptr).Get());
}

// That the text is freed on every path shows where leaks and double frees are looked for.
TEST_F(SatelliteInfoMgr, LookupByIdTakesTheTextOver) {
  const auto record = AddedAs(1, "name", "S19.2E");
  EXPECT_EQ(record.Get(), ById("S19.2E").Get());
  ExpectRefCount(2, record.Get());
  for (const char* other : {"s19.2e", "S19.2", "name", ""}) EXPECT_FALSE(ById(other));
  BSTR id = Wide("S19.2E").Release();
  ExpectHr(E_POINTER, List().GetSatInfoByID(&id, nullptr));
  auto* untouched = reinterpret_cast<ISatelliteInfo*>(this);
  ExpectHr(E_POINTER, List().GetSatInfoByID(nullptr, &untouched));
  id = Wide("none").Release();
  ExpectHr(E_FAIL, List().GetSatInfoByID(&id, &untouched));
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
}

TEST_F(SatelliteInfoMgr, NeitherMovedNorSorted) {
  AddedAs(1, "b", "1");
  AddedAs(2, "a", "2");
  for (int type = -1; type < 40; ++type) {
    ExpectHr(E_NOTIMPL, List().SortSat(static_cast<ESortType>(type), 1));
    ExpectHr(E_NOTIMPL, List().SortSat(static_cast<ESortType>(type), 0));
  }
  ExpectHr(E_NOTIMPL, List().SortSat(SortSatByName, 1));
  ExpectHr(E_NOTIMPL, List().MoveSat(1, 2));
  ExpectHr(E_NOTIMPL, List().MoveSat(9, 9));
  EXPECT_EQ((Texts{"b", "a"}), OrderedTexts());
}

TEST_F(SatelliteInfoMgr, DirtyTranspondersDoNotCount) {
  const auto record = AddedAs(1, "a", "a");
  ExpectHr(S_OK, List().SetDirty(0));
  ComPtr<ITransponderInfoMgr> transponders;
  record->GetTransponderMgr(SatFreqBand_CBand, transponders.Receive());
  transponders->SetDirty(1);
  EXPECT_EQ(0, Dirty());
}

TEST_F(SatelliteInfoMgr, LoadsTheBandsOfEverySatellite) {
  TextDocument document(
      "<SAT_TABLE>"
      "<Satellite name='a' index='0'><C-Band><Transponder name='a1'/><Transponder name='a2'/>"
      "</C-Band><C-Band><Transponder name='second'/></C-Band></Satellite>"
      "<Satellite name='b' index='1'><Ku-Band><Transponder name='b1'/></Ku-Band>"
      "<Ka-Band><Transponder name='ka'/></Ka-Band></Satellite>"
      "</SAT_TABLE>");
  ExpectHr(S_OK, List().Load(dom::kIidNode, document.root.Get()));
  struct Case {
    UINT satellite;
    ESatFreqBand band;
    UINT count;
  };
  for (const Case& row : {Case{0, SatFreqBand_CBand, 2}, Case{0, SatFreqBand_KuBand, 0},
                          Case{1, SatFreqBand_CBand, 0}, Case{1, SatFreqBand_KuBand, 1}}) {
    ComPtr<ITransponderInfoMgr> list;
    ExpectHr(2, At(row.satellite)->GetTransponderMgr(row.band, list.Receive()));
    UINT count = 4711;
    ExpectHr(S_OK, list->GetTransponderCount(&count));
    EXPECT_EQ(row.count, count);
    LONG dirty = 4711;
    ExpectHr(S_OK, list->GetDirty(&dirty));
    EXPECT_EQ(0, dirty);
  }
  // The band's list follows its element.
  ComPtr<ITransponderInfoMgr> list;
  At(0)->GetTransponderMgr(SatFreqBand_CBand, list.Receive());
  ExpectHr(S_OK, list->Clear());
  EXPECT_EQ(1, ::Count(document.root, "./Satellite/C-Band/Transponder"));
  EXPECT_EQ(1, ::Count(document.root, "./Satellite/Ku-Band/Transponder"));
}

// The last step for the last satellite is the answer; all are loaded all the same.
TEST_F(SatelliteInfoMgr, TheResultIsThatOfTheLastKuBand) {
  struct Case {
    const char* last;
    HRESULT expected;
  };
  for (const Case& row : {Case{"<Ku-Band/>", S_OK}, Case{"<C-Band/><Ku-Band/>", S_OK},
                          Case{"<C-Band/>", E_FAIL}, Case{"", E_FAIL}}) {
    for (const std::string first : {"<Ku-Band/>", ""}) {
      TextDocument document("<T><Satellite>" + first + "</Satellite><Satellite>" + row.last +
                            "</Satellite></T>");
      ExpectHr(S_OK, List().Close());
      ExpectHr(row.expected, List().Load(dom::kIidNode, document.root.Get()));
      EXPECT_EQ(2U, Count());
      EXPECT_EQ(0, Dirty());
    }
  }
}

TEST_F(SatelliteInfoMgr, RemovedSatellitesKeepTheirTransponders) {
  TextDocument document(
      "<T><Satellite name='a'><Ku-Band><Transponder name='x'/></Ku-Band></Satellite></T>");
  ExpectHr(S_OK, List().Load(dom::kIidNode, document.root.Get()));
  const ComPtr<ISatelliteInfo> satellite = At(0);
  ExpectHr(S_OK, List().Clear());
  ComPtr<ITransponderInfoMgr> transponders;
  ExpectHr(2, satellite->GetTransponderMgr(SatFreqBand_KuBand, transponders.Receive()));
  UINT count = 0;
  ExpectHr(S_OK, transponders->GetTransponderCount(&count));
  EXPECT_EQ(1U, count);
  // Under Wine the band's element went with its satellite's.
  if (!RunsOnWine()) ExpectHr(S_OK, transponders->Clear());
}
