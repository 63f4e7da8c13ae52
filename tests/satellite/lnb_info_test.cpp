#include "satellite/lnb_info.h"

#include "satellite/satellite_records.h"

namespace {

ComPtr<ILNBInfo> MakeLNB() {
  ComPtr<ILNBInfo> record;
  ExpectHr(S_OK, CLNBInfo::CreateInstance(record.Receive()));
  return record;
}

}  // namespace

TEST(LnbInfo, EveryField) {
  const ComPtr<ILNBInfo> made = MakeLNB();
  ILNBInfo* record = made.Get();
  CheckField(record, &ILNBInfo::GetIndex, &ILNBInfo::SetIndex, 0, {0xFFFFFFFF, 3});
  CheckText(record, &ILNBInfo::GetType, &ILNBInfo::SetType);
  CheckField(record, &ILNBInfo::GetLowFreq, &ILNBInfo::SetLowFreq, 0, {0xFFFFFFFF, 9750});
  CheckField(record, &ILNBInfo::GetHighFreq, &ILNBInfo::SetHighFreq, 0, {0xFFFFFFFF, 10600});
  CheckField(record, &ILNBInfo::GetSwitchFreq, &ILNBInfo::SetSwitchFreq, 0, {0xFFFFFFFF, 11700});
  CheckDirty(record);
}

TEST(LnbInfo, FieldsAreTheirOwn) {
  const ComPtr<ILNBInfo> record = MakeLNB();
  record->SetIndex(11);
  record->SetType(Wide("type").Get());
  record->SetLowFreq(12);
  record->SetHighFreq(13);
  record->SetSwitchFreq(14);
  record->SetDirty(15);
  UINT index = 0;
  Bstr type;
  DWORD frequency = 0;
  LONG dirty = 0;
  record->GetIndex(&index);
  EXPECT_EQ(11U, index);
  record->GetType(type.Receive());
  ExpectText(OLESTR("type"), type.Get());
  record->GetLowFreq(&frequency);
  EXPECT_EQ(12U, frequency);
  record->GetHighFreq(&frequency);
  EXPECT_EQ(13U, frequency);
  record->GetSwitchFreq(&frequency);
  EXPECT_EQ(14U, frequency);
  record->GetDirty(&dirty);
  EXPECT_EQ(15, dirty);
}
