#include "satellite/satellite_info.h"

#include "satellite/satellite_records.h"

namespace {

class SatelliteInfo : public testing::Test {
 protected:
  SatelliteInfo() { ExpectHr(S_OK, CSatelliteInfo::CreateInstance(m_record.Receive())); }

  /// What the getter makes of a variable that the host has set to `before`.
  std::uint32_t West(std::uint32_t before = 0) {
    BOOL west = static_cast<BOOL>(before);
    LONG longitude = 77;
    ExpectHr(S_OK, m_record->GetOrbitalPosition(&west, &longitude));
    return static_cast<std::uint32_t>(west);
  }

  ComPtr<ISatelliteInfo> m_record;
};

}  // namespace

TEST_F(SatelliteInfo, Numbers) {
  ISatelliteInfo* record = m_record.Get();
  const std::vector<LONG> numbers = {0, 1, -1, INT32_MIN, INT32_MAX};
  CheckField(record, &ISatelliteInfo::GetAzimuth, &ISatelliteInfo::SetAzimuth, -1, numbers);
  CheckField(record, &ISatelliteInfo::GetElevation, &ISatelliteInfo::SetElevation, -1, numbers);
  CheckField(record, &ISatelliteInfo::GetIndex, &ISatelliteInfo::SetIndex, 0, {1, 0xFFFFFFFF, 0});
  CheckField(record, &ISatelliteInfo::GetRegion, &ISatelliteInfo::SetRegion, RegionUnknown,
             {RegionAmerica, static_cast<ESatRegion>(99), static_cast<ESatRegion>(-3)});
  CheckField(record, &ISatelliteInfo::GetDivision, &ISatelliteInfo::SetDivision, SatcoDX_Unknown,
             {SatcoDX_9, static_cast<ESatDivision>(10), static_cast<ESatDivision>(-3)});
  CheckDirty(record);
}

TEST_F(SatelliteInfo, Texts) {
  CheckText(m_record.Get(), &ISatelliteInfo::GetName, &ISatelliteInfo::SetName);
  CheckText(m_record.Get(), &ISatelliteInfo::GetID, &ISatelliteInfo::SetID);
}

TEST_F(SatelliteInfo, FieldsAreTheirOwn) {
  ISatelliteInfo* record = m_record.Get();
  record->SetOrbitalPosition(1, 11);
  record->SetAzimuth(12);
  record->SetElevation(13);
  record->SetIndex(14);
  record->SetName(Wide("name").Get());
  record->SetID(Wide("id").Get());
  record->SetRegion(RegionAsia);
  record->SetDivision(SatcoDX_7);
  record->SetDirty(15);
  BOOL west = 0;
  LONG number = 0;
  UINT index = 0;
  Bstr text;
  ESatRegion region = RegionUnknown;
  ESatDivision division = SatcoDX_Unknown;
  record->GetOrbitalPosition(&west, &number);
  EXPECT_EQ(1, west);
  EXPECT_EQ(11, number);
  record->GetAzimuth(&number);
  EXPECT_EQ(12, number);
  record->GetElevation(&number);
  EXPECT_EQ(13, number);
  record->GetIndex(&index);
  EXPECT_EQ(14U, index);
  record->GetName(text.Receive());
  ExpectText(OLESTR("name"), text.Get());
  record->GetID(text.Receive());
  ExpectText(OLESTR("id"), text.Get());
  record->GetRegion(&region);
  EXPECT_EQ(RegionAsia, region);
  record->GetDivision(&division);
  EXPECT_EQ(SatcoDX_7, division);
  record->GetDirty(&number);
  EXPECT_EQ(15, number);
}

TEST_F(SatelliteInfo, OrbitalPosition) {
  BOOL west = 77;
  LONG longitude = 78;
  ExpectHr(E_POINTER, m_record->GetOrbitalPosition(nullptr, &longitude));
  ExpectHr(E_POINTER, m_record->GetOrbitalPosition(&west, nullptr));
  EXPECT_EQ(77, west);
  EXPECT_EQ(78, longitude);
  EXPECT_EQ(0U, West());
  ExpectHr(S_OK, m_record->SetOrbitalPosition(0, -1300));
  ExpectHr(S_OK, m_record->GetOrbitalPosition(&west, &longitude));
  EXPECT_EQ(-1300, longitude);
  LONG dirty = 77;
  ExpectHr(S_OK, m_record->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
}

// Half of the variable is written, half of the argument is kept.
TEST_F(SatelliteInfo, TheWestFlagIsSixteenBitsWide) {
  struct Case {
    std::uint32_t given;
    std::uint32_t low;
  };
  for (const Case& flag : {Case{0, 0}, Case{1, 1}, Case{0xFFFFFFFF, 0xFFFF}, Case{0x10000, 0},
                           Case{0x18000, 0x8000}, Case{0x12345678, 0x5678}}) {
    ExpectHr(S_OK, m_record->SetOrbitalPosition(static_cast<BOOL>(flag.given), 130));
    EXPECT_EQ(flag.low, West(0));
    EXPECT_EQ(0xABCD0000U | flag.low, West(0xABCD1234));
  }
}

TEST_F(SatelliteInfo, TransponderListsAnswerTheirCount) {
  ComPtr<ITransponderInfoMgr> first;
  ComPtr<ITransponderInfoMgr> second;
  ComPtr<ITransponderInfoMgr> ku;
  ExpectHr(2, m_record->GetTransponderMgr(SatFreqBand_CBand, first.Receive()));
  ExpectHr(3, m_record->GetTransponderMgr(SatFreqBand_CBand, second.Receive()));
  ExpectHr(2, m_record->GetTransponderMgr(SatFreqBand_KuBand, ku.Receive()));
  EXPECT_EQ(first.Get(), second.Get());
  EXPECT_NE(first.Get(), ku.Get());
  first.Reset();
  ExpectRefCount(2, second.Get());
  second.Reset();
  ExpectHr(2, m_record->GetTransponderMgr(SatFreqBand_CBand, first.Receive()));
  ExpectRefCount(1, m_record.Get());
}

TEST_F(SatelliteInfo, OtherBandsHaveNoList) {
  ExpectHr(E_POINTER, m_record->GetTransponderMgr(SatFreqBand_CBand, nullptr));
  ExpectHr(E_POINTER, m_record->GetTransponderMgr(SatFreqBand_KaBand, nullptr));
  auto* list = reinterpret_cast<ITransponderInfoMgr*>(this);
  ExpectHr(E_NOTIMPL, m_record->GetTransponderMgr(SatFreqBand_KaBand, &list));
  for (const int band : {0, 3, 5, -1, 8}) {
    ExpectHr(E_FAIL, m_record->GetTransponderMgr(static_cast<ESatFreqBand>(band), &list));
  }
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(list));
}

TEST_F(SatelliteInfo, DirtinessStaysApart) {
  ComPtr<ITransponderInfoMgr> list;
  m_record->GetTransponderMgr(SatFreqBand_KuBand, list.Receive());
  LONG dirty = 77;
  ExpectHr(S_OK, m_record->SetDirty(1));
  ExpectHr(S_OK, list->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
  ExpectHr(S_OK, m_record->SetDirty(0));
  ExpectHr(S_OK, list->SetDirty(1));
  ExpectHr(S_OK, m_record->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
}

TEST_F(SatelliteInfo, ItsTranspondersGoWithIt) {
  ComPtr<ITransponderInfo> transponder;
  {
    ComPtr<ITransponderInfoMgr> list;
    m_record->GetTransponderMgr(SatFreqBand_CBand, list.Receive());
    ExpectHr(S_OK, list->CreateTransponderInfo(transponder.Receive()));
    ExpectHr(S_OK, list->AddTransponderInfo(transponder.Get()));
  }
  ExpectRefCount(2, transponder.Get());
  m_record.Reset();
  ExpectRefCount(1, transponder.Get());
}
