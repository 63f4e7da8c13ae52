#include "satellite/dish_sat_info.h"

#include "satellite/satellite_records.h"

namespace {

ComPtr<IDishSatInfo> MakeDishSat() {
  ComPtr<IDishSatInfo> record;
  ExpectHr(S_OK, CDishSatInfo::CreateInstance(record.Receive()));
  return record;
}

}  // namespace

TEST(DishSatInfo, EveryField) {
  const ComPtr<IDishSatInfo> made = MakeDishSat();
  IDishSatInfo* record = made.Get();
  CheckField(record, &IDishSatInfo::GetIndex, &IDishSatInfo::SetIndex, 0, {0xFFFFFFFF, 3});
  CheckText(record, &IDishSatInfo::GetID, &IDishSatInfo::SetID);
  CheckText(record, &IDishSatInfo::GetBand, &IDishSatInfo::SetBand);
  CheckField(record, &IDishSatInfo::GetLowFreq, &IDishSatInfo::SetLowFreq, 0, {0xFFFFFFFF, 9750});
  CheckField(record, &IDishSatInfo::GetHighFreq, &IDishSatInfo::SetHighFreq, 0,
             {0xFFFFFFFF, 10600});
  CheckField(record, &IDishSatInfo::GetSwitchFreq, &IDishSatInfo::SetSwitchFreq, 0,
             {0xFFFFFFFF, 11700});
  CheckDirty(record);
}

TEST(DishSatInfo, FieldsAreTheirOwn) {
  const ComPtr<IDishSatInfo> record = MakeDishSat();
  record->SetIndex(11);
  record->SetID(Wide("id").Get());
  record->SetBand(Wide("band").Get());
  record->SetLowFreq(12);
  record->SetHighFreq(13);
  record->SetSwitchFreq(14);
  record->SetDirty(15);
  UINT index = 0;
  Bstr text;
  DWORD frequency = 0;
  LONG dirty = 0;
  record->GetIndex(&index);
  EXPECT_EQ(11U, index);
  record->GetID(text.Receive());
  ExpectText(OLESTR("id"), text.Get());
  record->GetBand(text.Receive());
  ExpectText(OLESTR("band"), text.Get());
  record->GetLowFreq(&frequency);
  EXPECT_EQ(12U, frequency);
  record->GetHighFreq(&frequency);
  EXPECT_EQ(13U, frequency);
  record->GetSwitchFreq(&frequency);
  EXPECT_EQ(14U, frequency);
  record->GetDirty(&dirty);
  EXPECT_EQ(15, dirty);
}
