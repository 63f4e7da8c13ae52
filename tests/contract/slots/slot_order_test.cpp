// The place of every method in the tables that interfaces.h declares. What a host compiled long ago
// calls by its number must stay where it is.
#include <gtest/gtest.h>

#include <cstring>

#include "core/interfaces.h"

namespace {

// Both targets' compilers keep a pointer to a virtual method as one more than its place in bytes.
template <typename Method>
std::size_t SlotOf(Method method) {
  std::uintptr_t place = 0;
  std::memcpy(&place, &method, sizeof(place));
  EXPECT_EQ(1U, place % sizeof(void*)) << "not a virtual method";
  return place / sizeof(void*);
}

// The methods stand in the order of the arguments, from the first slot behind IUnknown's.
template <typename... Methods>
void ExpectInOrder(const char* name, Methods... methods) {
  std::size_t expected = 3;
  const auto check = [&](std::size_t actual) { EXPECT_EQ(expected++, actual) << name; };
  (check(SlotOf(methods)), ...);
}

}  // namespace

TEST(SlotOrder, IUnknown) {
  // One header adds an overload that is no method of the table.
  using Query = HRESULT (STDMETHODCALLTYPE IUnknown::*)(REFIID, void**);
  EXPECT_EQ(0U, SlotOf(static_cast<Query>(&IUnknown::QueryInterface)));
  EXPECT_EQ(1U, SlotOf(&IUnknown::AddRef));
  EXPECT_EQ(2U, SlotOf(&IUnknown::Release));
}

TEST(SlotOrder, Channels) {
  using C = IChannelInfo;
  ExpectInOrder("IChannelInfo", &C::GetSignalType, &C::SetSignalType, &C::GetServiceType,
                &C::SetServiceType, &C::GetChannelNo, &C::SetChannelNo, &C::GetChannelIndex,
                &C::SetChannelIndex, &C::GetChannelName, &C::SetChannelName, &C::GetChannelDspName,
                &C::SetChannelDspName, &C::GetChannelFreq, &C::SetChannelFreq,
                &C::GetChannelOffsetFreq, &C::SetChannelOffsetFreq, &C::GetStationInfo,
                &C::SetStationInfo, &C::GetFavor, &C::SetFavor, &C::GetLock, &C::SetLock,
                &C::GetDirty, &C::SetDirty, &C::IsScrambled, &C::GetMhp);
  using M = IChannelInfoMgr;
  ExpectInOrder("IChannelInfoMgr", &M::Open, &M::Close, &M::Clear, &M::Load, &M::Save,
                &M::GetSignalType, &M::SetSignalType, &M::CreateChannelInfo, &M::AddChannelInfo,
                &M::RemoveChannelInfo, &M::GetChannelCount, &M::GetChannelInfoByNo,
                &M::GetChannelInfoByIndex, &M::GetChannelInfoByStation, &M::FindPreChannel,
                &M::FindNextChannel, &M::GetDirty, &M::SetDirty, &M::MoveChannel, &M::SortChannel);
}

TEST(SlotOrder, Transponders) {
  using T = ITransponderInfo;
  ExpectInOrder("ITransponderInfo", &T::GetName, &T::SetName, &T::GetCarrierFrequency,
                &T::SetCarrierFrequency, &T::GetPolarisation, &T::SetPolarisation,
                &T::GetSymbolRate, &T::SetSymbolRate, &T::GetInnerFECRate, &T::SetInnerFECRate,
                &T::GetModulationType, &T::SetModulationType, &T::GetSpectralInversion,
                &T::SetSpectralInversion, &T::GetIndex, &T::SetIndex, &T::GetDirty, &T::SetDirty);
  using M = ITransponderInfoMgr;
  ExpectInOrder("ITransponderInfoMgr", &M::Open, &M::Close, &M::Clear, &M::Load, &M::Save,
                &M::CreateTransponderInfo, &M::AddTransponderInfo, &M::RemoveTransponderInfo,
                &M::GetTransponderCount, &M::GetTransponderInfoByIndex,
                &M::GetTransponderInfoByName, &M::MoveTransponder, &M::SortTransponder,
                &M::GetDirty, &M::SetDirty);
}

TEST(SlotOrder, Satellites) {
  using S = ISatelliteInfo;
  // The transponder list stands between the two methods of the division.
  ExpectInOrder("ISatelliteInfo", &S::GetOrbitalPosition, &S::SetOrbitalPosition, &S::GetAzimuth,
                &S::SetAzimuth, &S::GetElevation, &S::SetElevation, &S::GetIndex, &S::SetIndex,
                &S::GetName, &S::SetName, &S::GetID, &S::SetID, &S::GetRegion, &S::SetRegion,
                &S::GetDivision, &S::GetTransponderMgr, &S::SetDivision, &S::GetDirty,
                &S::SetDirty);
  using M = ISatelliteInfoMgr;
  ExpectInOrder("ISatelliteInfoMgr", &M::Open, &M::Close, &M::Clear, &M::Load, &M::Save,
                &M::CreateSatelliteInfo, &M::AddSatelliteInfo, &M::RemoveSatelliteInfo,
                &M::GetSatCount, &M::GetSatInfoByIndex, &M::GetSatInfoByName, &M::GetSatInfoByID,
                &M::MoveSat, &M::SortSat, &M::GetDirty, &M::SetDirty);
}

TEST(SlotOrder, LnbsAndDishes) {
  using L = ILNBInfo;
  ExpectInOrder("ILNBInfo", &L::GetIndex, &L::SetIndex, &L::GetType, &L::SetType, &L::GetLowFreq,
                &L::SetLowFreq, &L::GetHighFreq, &L::SetHighFreq, &L::GetSwitchFreq,
                &L::SetSwitchFreq, &L::GetDirty, &L::SetDirty);
  using M = ILNBInfoMgr;
  ExpectInOrder("ILNBInfoMgr", &M::Open, &M::Close, &M::Clear, &M::Load, &M::Save,
                &M::CreateLNBInfo, &M::AddLNBInfo, &M::RemoveLNBInfo, &M::GetLNBCount,
                &M::GetLNBInfoByIndex, &M::GetLNBInfoByType, &M::GetDirty, &M::SetDirty);
  using D = IDishSatInfo;
  ExpectInOrder("IDishSatInfo", &D::GetIndex, &D::SetIndex, &D::GetID, &D::SetID, &D::GetBand,
                &D::SetBand, &D::GetLowFreq, &D::SetLowFreq, &D::GetHighFreq, &D::SetHighFreq,
                &D::GetSwitchFreq, &D::SetSwitchFreq, &D::GetDirty, &D::SetDirty);
  using N = IDishSatInfoMgr;
  ExpectInOrder("IDishSatInfoMgr", &N::Open, &N::Close, &N::Clear, &N::Load, &N::Save,
                &N::CreateDishSatInfo, &N::AddDishSatInfo, &N::RemoveDishSatInfo,
                &N::GetDishSatCount, &N::GetDishSatInfoByIndex, &N::GetDirty, &N::SetDirty);
}

TEST(SlotOrder, Database) {
  using Z = IZorTunedex;
  ExpectInOrder("IZorTunedex", &Z::Open, &Z::Close, &Z::GetChannelInfoMgr, &Z::LoadChannelFromFile,
                &Z::SaveChannelToFile, &Z::GetStorageType, &Z::SetStorageType,
                &Z::LoadSatInfoFromFile, &Z::SaveSatInfoToFile, &Z::GetSatelliteInfoMgr,
                &Z::GetLNBInfoMgr, &Z::LoadUserSettingsFromFile, &Z::SaveUserSettingsToFile,
                &Z::GetDishSatInfoMgr, &Z::LoadPresetOneSegChannelInfo, &Z::GetAreaCount,
                &Z::GetAreaNameByIndex, &Z::GetSubAreaCount, &Z::GetSubAreaNameByIndex, &Z::SetArea,
                &Z::GetArea, &Z::SaveCustomerChannelList, &Z::DeleteCustomerChannelList,
                &Z::GetPresetChannelMgr);
}
