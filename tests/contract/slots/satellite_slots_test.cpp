// The order of the methods of the satellite model: every slot is called and does what its method
// does.
#include "contract/catalogue.h"
#include "contract/slots/slots.h"

namespace {

class SatelliteSlots : public testing::Test {
 protected:
  SatelliteSlots() {
    m_directory.Write(kCatalogueFile, kCatalogue);
    m_database = OpenDatabase(m_directory.Path(), kSatellite);
    ExpectHr(S_OK, m_database->LoadSatInfoFromFile());
  }

  template <typename T>
  void ExpectGet(IUnknown* object, std::size_t slot, T expected) {
    T actual{};
    ExpectHr(S_OK, CallSlot(object, slot, &actual));
    EXPECT_EQ(expected, actual) << "slot " << slot;
    ExpectHr(E_POINTER, CallSlot(object, slot, static_cast<T*>(nullptr)));
  }
  /// A getter and the setter behind it (or elsewhere): the old value, then a new one.
  template <typename T>
  void ExpectPair(IUnknown* object, std::size_t getter, T before, T after, std::size_t setter = 0) {
    ExpectGet(object, getter, before);
    ExpectHr(S_OK, CallSlot(object, setter != 0 ? setter : getter + 1, after));
    ExpectGet(object, getter, after);
  }
  void ExpectTextPair(IUnknown* object, std::size_t getter, const char* before) {
    Bstr text;
    ExpectHr(S_OK, CallSlot(object, getter, text.Receive()));
    ExpectText(Wide(before).View(), text.Get());
    const Bstr after = Wide("slot " + std::to_string(getter));
    ExpectHr(S_OK, CallSlot(object, getter + 1, after.Get()));
    ExpectHr(S_OK, CallSlot(object, getter, text.Receive()));
    ExpectText(after.View(), text.Get());
    ExpectHr(E_POINTER, CallSlot(object, getter, static_cast<BSTR*>(nullptr)));
  }
  static void ExpectUnknown(IUnknown* object, const IID& iid) {
    void* answer = nullptr;
    ExpectHr(S_OK, CallSlot(object, 0, &iid, &answer));
    EXPECT_EQ(static_cast<void*>(object), answer);
    const ULONG count = CallSlot<ULONG>(object, 1);
    EXPECT_EQ(count - 1, CallSlot<ULONG>(object, 2));
    EXPECT_EQ(count - 2, CallSlot<ULONG>(object, 2));
  }
  /// IUnknown, Load, Save and the creation of a record: the same slots in all lists.
  template <typename I>
  void ExpectListStart(IUnknown* list, const IID& iid) {
    ExpectUnknown(list, iid);
    ExpectHr(E_NOTIMPL, CallSlot(list, 6, &iid, static_cast<IUnknown*>(nullptr)));
    ExpectHr(E_NOTIMPL, CallSlot(list, 7, &iid, static_cast<IUnknown*>(nullptr)));
    ComPtr<I> record;
    ExpectHr(S_OK, CallSlot(list, 8, record.Receive()));
    ExpectRefCount(1, record.Get());
    ExpectHr(E_POINTER, CallSlot(list, 8, static_cast<I**>(nullptr)));
  }
  /// Open, Close and Clear in the slots 3 to 5: each empties.
  template <typename I>
  void ExpectEmptied(IUnknown* list, UINT (*count)(IUnknown*)) {
    for (const std::size_t slot : {3U, 4U, 5U}) {
      ComPtr<I> record;
      ExpectHr(S_OK, CallSlot(list, 8, record.Receive()));
      ExpectHr(S_OK, CallSlot(list, 9, record.Get()));
      EXPECT_LT(0U, count(list)) << slot;
      ExpectHr(S_OK, CallSlot(list, slot));
      EXPECT_EQ(0U, count(list)) << slot;
      ExpectRefCount(1, record.Get());
    }
  }

  TempDir m_directory;
  ComPtr<IZorTunedex> m_database;
};

UINT Asked(IUnknown* list, std::size_t slot) {
  UINT count = 4711;
  ExpectHr(S_OK, CallSlot(list, slot, &count));
  return count;
}

}  // namespace

TEST_F(SatelliteSlots, Satellite) {
  const ComPtr<ISatelliteInfo> made = SatelliteAt(SatellitesOf(m_database), 0);
  IUnknown* satellite = made.Get();
  ExpectUnknown(satellite, IID_ISatelliteInfo);
  BOOL west = 7;
  LONG longitude = 0;
  ExpectHr(S_OK, CallSlot(satellite, 3, &west, &longitude));
  EXPECT_EQ(0, west);
  EXPECT_EQ(192, longitude);
  ExpectHr(S_OK, CallSlot(satellite, 4, BOOL{1}, LONG{300}));
  ExpectHr(S_OK, CallSlot(satellite, 3, &west, &longitude));
  EXPECT_EQ(1, west);
  EXPECT_EQ(300, longitude);
  ExpectPair<LONG>(satellite, 5, 171, 21);
  ExpectPair<LONG>(satellite, 7, 34, 22);
  ExpectPair<UINT>(satellite, 9, 0, 23);
  ExpectTextPair(satellite, 11, "East 19.2");
  ExpectTextPair(satellite, 13, "S19.2E");
  ExpectPair(satellite, 15, RegionEurope, RegionAsia);
  // The transponders stand between the two methods of the division.
  ExpectPair(satellite, 17, SatcoDX_1, SatcoDX_8, 19);
  ComPtr<ITransponderInfoMgr> list;
  ExpectHr(2, CallSlot(satellite, 18, SatFreqBand_KuBand, list.Receive()));
  EXPECT_EQ(2U, CountOf(list));
  ExpectPair<LONG>(satellite, 20, 0, 24);
}

TEST_F(SatelliteSlots, SatelliteList) {
  const ComPtr<ISatelliteInfoMgr> made = SatellitesOf(m_database);
  IUnknown* list = made.Get();
  ExpectListStart<ISatelliteInfo>(list, IID_ISatelliteInfoMgr);
  UINT count = 0;
  ExpectHr(S_OK, CallSlot(list, 11, DWORD{0}, RegionEurope, SatcoDX_9, &count));
  EXPECT_EQ(1U, count);
  ComPtr<ISatelliteInfo> found;
  ExpectHr(S_OK,
           CallSlot(list, 12, UINT{1}, DWORD{0}, RegionUnknown, SatcoDX_Unknown, found.Receive()));
  ExpectText(OLESTR("S30W"), TextOf(found, &ISatelliteInfo::GetID).Get());
  ExpectHr(S_OK, CallSlot(list, 13, Wide("East 19.2").Get(), found.Receive()));
  BSTR id = Wide("S30W").Release();
  ExpectHr(S_OK, CallSlot(list, 14, &id, found.Receive()));
  ExpectText(OLESTR("West 30.0"), TextOf(found, &ISatelliteInfo::GetName).Get());
  ExpectHr(E_NOTIMPL, CallSlot(list, 15, UINT{0}, UINT{1}));
  ExpectHr(E_NOTIMPL, CallSlot(list, 16, SortSatByName, BOOL{1}));
  ExpectPair<LONG>(list, 17, 0, 31);
  ExpectHr(S_OK, CallSlot(list, 10, found.Get()));
  EXPECT_EQ(1U, CountOf(made));
  ExpectEmptied<ISatelliteInfo>(list, [](IUnknown* asked) {
    UINT answer = 4711;
    ExpectHr(S_OK, CallSlot(asked, 11, DWORD{0}, RegionUnknown, SatcoDX_Unknown, &answer));
    return answer;
  });
}

TEST_F(SatelliteSlots, Transponder) {
  const ComPtr<ITransponderInfoMgr> list =
      TranspondersOf(SatelliteAt(SatellitesOf(m_database), 0), SatFreqBand_KuBand);
  ComPtr<ITransponderInfo> made;
  ExpectHr(S_OK, list->GetTransponderInfoByIndex(1, made.Receive()));
  IUnknown* transponder = made.Get();
  ExpectUnknown(transponder, IID_ITransponderInfo);
  ExpectTextPair(transponder, 3, "11.362 H");
  ExpectPair<DWORD>(transponder, 5, 11362, 41);
  ExpectPair(transponder, 7, BDA_POLARISATION_LINEAR_H, BDA_POLARISATION_CIRCULAR_R);
  ExpectPair<LONG>(transponder, 9, 22000, 42);
  ExpectPair(transponder, 11, BDA_BCC_RATE_2_3, BDA_BCC_RATE_7_8);
  ExpectPair(transponder, 13, BDA_MOD_NOT_SET, BDA_MOD_8PSK);
  ExpectPair(transponder, 15, BDA_SPECTRAL_INVERSION_AUTOMATIC, BDA_SPECTRAL_INVERSION_NORMAL);
  ExpectPair<UINT>(transponder, 17, 1, 43);
  ExpectPair<LONG>(transponder, 19, 0, 44);
}

TEST_F(SatelliteSlots, TransponderList) {
  const ComPtr<ISatelliteInfo> satellite = SatelliteAt(SatellitesOf(m_database), 0);
  const ComPtr<ITransponderInfoMgr> made = TranspondersOf(satellite, SatFreqBand_KuBand);
  IUnknown* list = made.Get();
  ExpectListStart<ITransponderInfo>(list, IID_ITransponderInfoMgr);
  ExpectGet<UINT>(list, 11, 2);
  ComPtr<ITransponderInfo> found;
  ExpectHr(S_OK, CallSlot(list, 12, UINT{0}, found.Receive()));
  ExpectText(OLESTR("11.494 H"), TextOf(found, &ITransponderInfo::GetName).Get());
  BSTR name = Wide("11.362 H").Release();
  ExpectHr(S_OK, CallSlot(list, 13, &name, found.Receive()));
  EXPECT_EQ(11362U, ValueOf(found, &ITransponderInfo::GetCarrierFrequency));
  ExpectHr(E_NOTIMPL, CallSlot(list, 14, UINT{0}, UINT{1}));
  ExpectHr(E_NOTIMPL, CallSlot(list, 15, SortTpByFrequency, BOOL{1}));
  ExpectPair<LONG>(list, 16, 0, 32);
  ExpectHr(S_OK, CallSlot(list, 10, found.Get()));
  ExpectGet<UINT>(list, 11, 1);
  ExpectEmptied<ITransponderInfo>(list, [](IUnknown* asked) { return Asked(asked, 11); });
}

TEST_F(SatelliteSlots, Lnb) {
  ComPtr<ILNBInfo> made;
  ExpectHr(S_OK, LnbsOf(m_database)->GetLNBInfoByIndex(0, made.Receive()));
  IUnknown* lnb = made.Get();
  ExpectUnknown(lnb, IID_ILNBInfo);
  ExpectPair<UINT>(lnb, 3, 0, 51);
  ExpectTextPair(lnb, 5, "Universal");
  ExpectPair<DWORD>(lnb, 7, 9750, 52);
  ExpectPair<DWORD>(lnb, 9, 10600, 53);
  ExpectPair<DWORD>(lnb, 11, 11700, 54);
  ExpectPair<LONG>(lnb, 13, 0, 55);
}

TEST_F(SatelliteSlots, LnbList) {
  const ComPtr<ILNBInfoMgr> made = LnbsOf(m_database);
  IUnknown* list = made.Get();
  ExpectListStart<ILNBInfo>(list, IID_ILNBInfoMgr);
  ExpectGet<UINT>(list, 11, 2);
  ComPtr<ILNBInfo> found;
  ExpectHr(S_OK, CallSlot(list, 12, UINT{1}, found.Receive()));
  ExpectText(OLESTR("C-Band"), TextOf(found, &ILNBInfo::GetType).Get());
  ExpectHr(S_OK, CallSlot(list, 13, Wide("Universal").Get(), found.Receive()));
  EXPECT_EQ(9750U, ValueOf(found, &ILNBInfo::GetLowFreq));
  ExpectPair<LONG>(list, 14, 0, 33);
  ExpectHr(S_OK, CallSlot(list, 10, found.Get()));
  ExpectGet<UINT>(list, 11, 1);
  ExpectEmptied<ILNBInfo>(list, [](IUnknown* asked) { return Asked(asked, 11); });
}

TEST_F(SatelliteSlots, DishAssignment) {
  const ComPtr<IDishSatInfo> made =
      Assign(DishesOf(m_database), 0, Wide("id").Get(), "band", 1, 2, 3);
  IUnknown* assignment = made.Get();
  ExpectUnknown(assignment, IID_IDishSatInfo);
  ExpectPair<UINT>(assignment, 3, 0, 61);
  ExpectTextPair(assignment, 5, "id");
  ExpectTextPair(assignment, 7, "band");
  ExpectPair<DWORD>(assignment, 9, 1, 62);
  ExpectPair<DWORD>(assignment, 11, 2, 63);
  ExpectPair<DWORD>(assignment, 13, 3, 64);
  ExpectPair<LONG>(assignment, 15, 0, 65);
}

// The out-pointers of the count and of the lookup come first.
TEST_F(SatelliteSlots, DishList) {
  const ComPtr<IDishSatInfoMgr> made = DishesOf(m_database);
  IUnknown* list = made.Get();
  ExpectListStart<IDishSatInfo>(list, IID_IDishSatInfoMgr);
  ComPtr<IDishSatInfo> record;
  ExpectHr(S_OK, CallSlot(list, 8, record.Receive()));
  record->SetIndex(6);
  ExpectHr(S_OK, CallSlot(list, 9, record.Get(), UINT{3}));
  UINT count = 4711;
  ExpectHr(S_OK, CallSlot(list, 11, &count, UINT{3}));
  EXPECT_EQ(1U, count);
  ComPtr<IDishSatInfo> found;
  ExpectHr(S_OK, CallSlot(list, 12, found.Receive(), UINT{3}, UINT{6}));
  EXPECT_EQ(record.Get(), found.Get());
  ExpectPair<LONG>(list, 13, 1, 34);
  found.Reset();
  ExpectHr(S_OK, CallSlot(list, 10, record.Get(), UINT{3}));
  EXPECT_EQ(0U, CountOf(made, 3));
  ExpectRefCount(1, record.Get());
  for (const std::size_t slot : {3U, 4U, 5U}) {
    ExpectHr(S_OK, CallSlot(list, 9, record.Get(), UINT{2}));
    ExpectHr(S_OK, CallSlot(list, slot));
    EXPECT_EQ(0U, CountOf(made, 2)) << slot;
  }
}

TEST_F(SatelliteSlots, Database) {
  IUnknown* database = m_database.Get();
  ExpectHr(S_OK, CallSlot(database, 10));
  ExpectHr(E_NOTIMPL, CallSlot(database, 11));
  ComPtr<ISatelliteInfoMgr> satellites;
  ExpectHr(2, CallSlot(database, 12, satellites.Receive()));
  EXPECT_EQ(2U, CountOf(satellites));
  ComPtr<ILNBInfoMgr> lnbs;
  ExpectHr(2, CallSlot(database, 13, lnbs.Receive()));
  EXPECT_EQ(2U, CountOf(lnbs));
  ExpectHr(S_OK, CallSlot(database, 14));
  EXPECT_FALSE(m_directory.Has(kSettingsFile));
  ExpectHr(S_OK, CallSlot(database, 15));
  EXPECT_TRUE(m_directory.Has(kSettingsFile));
  ComPtr<IDishSatInfoMgr> dishes;
  ExpectHr(2, CallSlot(database, 16, dishes.Receive()));
  EXPECT_EQ(0U, CountOf(dishes, 0));
}
