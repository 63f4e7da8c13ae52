#include "satellite/transponder_info.h"

#include "satellite/satellite_records.h"

namespace {

ComPtr<ITransponderInfo> MakeTransponder() {
  ComPtr<ITransponderInfo> record;
  ExpectHr(S_OK, CTransponderInfo::CreateInstance(record.Receive()));
  return record;
}

}  // namespace

TEST(TransponderInfo, EveryField) {
  const ComPtr<ITransponderInfo> made = MakeTransponder();
  ITransponderInfo* record = made.Get();
  CheckText(record, &ITransponderInfo::GetName, &ITransponderInfo::SetName);
  CheckField(record, &ITransponderInfo::GetCarrierFrequency, &ITransponderInfo::SetCarrierFrequency,
             0, {1, 0xFFFFFFFF});
  CheckField(record, &ITransponderInfo::GetPolarisation, &ITransponderInfo::SetPolarisation,
             BDA_POLARISATION_NOT_SET,
             {BDA_POLARISATION_CIRCULAR_R, static_cast<Polarisation>(99)});
  CheckField(record, &ITransponderInfo::GetSymbolRate, &ITransponderInfo::SetSymbolRate, 0,
             {INT32_MAX, INT32_MIN, 27500});
  CheckField(record, &ITransponderInfo::GetInnerFECRate, &ITransponderInfo::SetInnerFECRate,
             BDA_BCC_RATE_NOT_SET, {BDA_BCC_RATE_9_10, static_cast<BinaryConvolutionCodeRate>(99)});
  CheckField(record, &ITransponderInfo::GetModulationType, &ITransponderInfo::SetModulationType,
             BDA_MOD_NOT_SET, {BDA_MOD_8PSK, static_cast<ModulationType>(-99)});
  CheckField(record, &ITransponderInfo::GetSpectralInversion,
             &ITransponderInfo::SetSpectralInversion, BDA_SPECTRAL_INVERSION_NOT_SET,
             {BDA_SPECTRAL_INVERSION_INVERTED, static_cast<SpectralInversion>(99)});
  CheckField(record, &ITransponderInfo::GetIndex, &ITransponderInfo::SetIndex, 0, {0xFFFFFFFF, 3});
  CheckDirty(record);
}

TEST(TransponderInfo, FieldsAreTheirOwn) {
  const ComPtr<ITransponderInfo> record = MakeTransponder();
  record->SetName(Wide("name").Get());
  record->SetCarrierFrequency(11);
  record->SetPolarisation(BDA_POLARISATION_LINEAR_V);
  record->SetSymbolRate(12);
  record->SetInnerFECRate(BDA_BCC_RATE_5_6);
  record->SetModulationType(BDA_MOD_QPSK);
  record->SetSpectralInversion(BDA_SPECTRAL_INVERSION_NORMAL);
  record->SetIndex(13);
  record->SetDirty(14);
  Bstr name;
  DWORD frequency = 0;
  Polarisation polarisation = BDA_POLARISATION_NOT_SET;
  LONG number = 0;
  BinaryConvolutionCodeRate rate = BDA_BCC_RATE_NOT_SET;
  ModulationType modulation = BDA_MOD_NOT_SET;
  SpectralInversion inversion = BDA_SPECTRAL_INVERSION_NOT_SET;
  UINT index = 0;
  record->GetName(name.Receive());
  ExpectText(OLESTR("name"), name.Get());
  record->GetCarrierFrequency(&frequency);
  EXPECT_EQ(11U, frequency);
  record->GetPolarisation(&polarisation);
  EXPECT_EQ(BDA_POLARISATION_LINEAR_V, polarisation);
  record->GetSymbolRate(&number);
  EXPECT_EQ(12, number);
  record->GetInnerFECRate(&rate);
  EXPECT_EQ(BDA_BCC_RATE_5_6, rate);
  record->GetModulationType(&modulation);
  EXPECT_EQ(BDA_MOD_QPSK, modulation);
  record->GetSpectralInversion(&inversion);
  EXPECT_EQ(BDA_SPECTRAL_INVERSION_NORMAL, inversion);
  record->GetIndex(&index);
  EXPECT_EQ(13U, index);
  record->GetDirty(&number);
  EXPECT_EQ(14, number);
}
