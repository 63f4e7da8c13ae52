// A catalogue and settings as a host reads and writes them.
#pragma once

#include <string>

#include "contract/database.h"
#include "support/expect.h"
#include "support/temp_dir.h"

inline constexpr char kCatalogueFile[] = "SatelliteInfo.xml";
inline constexpr char kSettingsFile[] = "UserSettings.xml";

/// Two satellites in the order of the file and the other way round by their index, and two LNB
/// types.
inline constexpr char kCatalogue[] =
    "<?xml version='1.0' encoding='utf-8'?>\n"
    "<SATELLITES>\n"
    "  <SAT_TABLE>\n"
    "    <Satellite pos='192' name='East 19.2' id='S19.2E' region='Europe' division='1'"
    " azimuthe='171' elevation='34' index='1'>\n"
    "      <C-Band/>\n"
    "      <Ku-Band>\n"
    "        <Transponder name='11.494 H' freq='11494' polarisation='LinearH' symbolRate='22000'"
    " innerFECRate='2/3' modulation='QPSK' spectralInversion='automatic'/>\n"
    "        <Transponder name='11.362 H' freq='11362' polarisation='LinearH' symbolRate='22000'"
    " innerFECRate='2/3' modulation='8PSK' spectralInversion='automatic'/>\n"
    "      </Ku-Band>\n"
    "    </Satellite>\n"
    "    <Satellite pos='-300' name='West 30.0' id='S30W' region='Atlantic' division='9' "
    "index='0'>\n"
    "      <C-Band>\n"
    "        <Transponder name='3.730 L' freq='3730' polarisation='CircularL' "
    "symbolRate='30000'/>\n"
    "      </C-Band>\n"
    "    </Satellite>\n"
    "  </SAT_TABLE>\n"
    "  <LNB_TABLE>\n"
    "    <LNB type='Universal' lowFreq='9750' highFreq='10600' switchFreq='11700'/>\n"
    "    <LNB type='C-Band' lowFreq='5150'/>\n"
    "  </LNB_TABLE>\n"
    "</SATELLITES>\n";

inline ComPtr<ISatelliteInfoMgr> SatellitesOf(const ComPtr<IZorTunedex>& database) {
  ComPtr<ISatelliteInfoMgr> list;
  EXPECT_LE(2, database->GetSatelliteInfoMgr(list.Receive()));
  return list;
}
inline ComPtr<ILNBInfoMgr> LnbsOf(const ComPtr<IZorTunedex>& database) {
  ComPtr<ILNBInfoMgr> list;
  EXPECT_LE(2, database->GetLNBInfoMgr(list.Receive()));
  return list;
}
inline ComPtr<IDishSatInfoMgr> DishesOf(const ComPtr<IZorTunedex>& database) {
  ComPtr<IDishSatInfoMgr> list;
  EXPECT_LE(2, database->GetDishSatInfoMgr(list.Receive()));
  return list;
}

inline UINT CountOf(const ComPtr<ISatelliteInfoMgr>& list) {
  UINT count = 4711;
  ExpectHr(S_OK, list->GetSatCount(0, RegionUnknown, SatcoDX_Unknown, &count));
  return count;
}
inline UINT CountOf(const ComPtr<ITransponderInfoMgr>& list) {
  UINT count = 4711;
  ExpectHr(S_OK, list->GetTransponderCount(&count));
  return count;
}
inline UINT CountOf(const ComPtr<ILNBInfoMgr>& list) {
  UINT count = 4711;
  ExpectHr(S_OK, list->GetLNBCount(&count));
  return count;
}
inline UINT CountOf(const ComPtr<IDishSatInfoMgr>& list, UINT dish) {
  UINT count = 4711;
  ExpectHr(S_OK, list->GetDishSatCount(&count, dish));
  return count;
}

inline ComPtr<ISatelliteInfo> SatelliteAt(const ComPtr<ISatelliteInfoMgr>& list, UINT index) {
  ComPtr<ISatelliteInfo> satellite;
  ExpectHr(S_OK,
           list->GetSatInfoByIndex(index, 0, RegionUnknown, SatcoDX_Unknown, satellite.Receive()));
  return satellite;
}
inline ComPtr<ITransponderInfoMgr> TranspondersOf(const ComPtr<ISatelliteInfo>& satellite,
                                                  ESatFreqBand band) {
  ComPtr<ITransponderInfoMgr> list;
  EXPECT_LE(2, satellite->GetTransponderMgr(band, list.Receive()));
  return list;
}
inline ComPtr<IDishSatInfo> AssignmentAt(const ComPtr<IDishSatInfoMgr>& list, UINT dish,
                                         UINT index) {
  ComPtr<IDishSatInfo> assignment;
  ExpectHr(S_OK, list->GetDishSatInfoByIndex(assignment.Receive(), dish, index));
  return assignment;
}

/// What one of an object's getters of texts answers.
template <typename I>
Bstr TextOf(const ComPtr<I>& object, HRESULT (STDMETHODCALLTYPE I::*getter)(BSTR*)) {
  Bstr text;
  ExpectHr(S_OK, (object.Get()->*getter)(text.Receive()));
  return text;
}
/// The same for a number or an enumeration.
template <typename I, typename T>
T ValueOf(const ComPtr<I>& object, HRESULT (STDMETHODCALLTYPE I::*getter)(T*)) {
  T value{};
  ExpectHr(S_OK, (object.Get()->*getter)(&value));
  return value;
}

/// One more satellite on a dish.
inline ComPtr<IDishSatInfo> Assign(const ComPtr<IDishSatInfoMgr>& list, UINT dish, BSTR id,
                                   const char* band = "Ku", DWORD low = 9750, DWORD high = 10600,
                                   DWORD switchFreq = 11700) {
  ComPtr<IDishSatInfo> assignment;
  ExpectHr(S_OK, list->CreateDishSatInfo(assignment.Receive()));
  ExpectHr(S_OK, assignment->SetID(id));
  ExpectHr(S_OK, assignment->SetBand(Wide(band).Get()));
  ExpectHr(S_OK, assignment->SetLowFreq(low));
  ExpectHr(S_OK, assignment->SetHighFreq(high));
  ExpectHr(S_OK, assignment->SetSwitchFreq(switchFreq));
  ExpectHr(S_OK, assignment->SetIndex(CountOf(list, dish)));
  ExpectHr(S_OK, list->AddDishSatInfo(assignment.Get(), dish));
  return assignment;
}
