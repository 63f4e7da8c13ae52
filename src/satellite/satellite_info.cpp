#include "satellite/satellite_info.h"

#include <cstring>

#include "satellite/fields.h"

CSatelliteInfo::CSatelliteInfo() {
  for (CTransponderInfoMgr* list : {&m_cBand, &m_kuBand}) {
    list->SetOwned(true);
    list->Open();
  }
}

CSatelliteInfo::~CSatelliteInfo() {
  m_cBand.Close();
  m_kuBand.Close();
}

// The flag is a 16-bit one on both ways: hosts pass -1 or 1, and read it into a variable that they
// have zeroed, of which the upper half stays theirs.
HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetOrbitalPosition(BOOL* pWestLongitude,
                                                             LONG* pLongitude) {
  if (pWestLongitude == nullptr || pLongitude == nullptr) return E_POINTER;
  std::memcpy(pWestLongitude, &m_west, sizeof(m_west));
  *pLongitude = m_longitude;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetOrbitalPosition(BOOL WestLongitude, LONG Longitude) {
  m_west = static_cast<std::int16_t>(WestLongitude & 0xFFFF);
  m_longitude = Longitude;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetTransponderMgr(ESatFreqBand SatFreqBand,
                                                            ITransponderInfoMgr** ppMgr) {
  if (ppMgr == nullptr) return E_POINTER;
  CTransponderInfoMgr* list = nullptr;
  if (SatFreqBand == SatFreqBand_CBand) list = &m_cBand;
  if (SatFreqBand == SatFreqBand_KuBand) list = &m_kuBand;
  if (list == nullptr) return SatFreqBand == SatFreqBand_KaBand ? E_NOTIMPL : E_FAIL;
  *ppMgr = list;
  // The result is the list's new count, 2 or more: hosts test for a negative result only.
  return static_cast<HRESULT>(list->AddRef());
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetAzimuth(LONG* plAzimuth) {
  return fields::Get(m_azimuth, plAzimuth);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetAzimuth(LONG lAzimuth) {
  return fields::Set(m_azimuth, lAzimuth);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetElevation(LONG* plElevation) {
  return fields::Get(m_elevation, plElevation);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetElevation(LONG lElevation) {
  return fields::Set(m_elevation, lElevation);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetName(BSTR* pbstrName) {
  return fields::Get(m_name, pbstrName);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetName(BSTR bstrName) {
  return fields::Set(m_name, bstrName);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetID(BSTR* pbstrID) {
  return fields::Get(m_id, pbstrID);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetID(BSTR bstrID) { return fields::Set(m_id, bstrID); }

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetRegion(ESatRegion* pRegion) {
  return fields::Get(m_region, pRegion);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetRegion(ESatRegion Region) {
  return fields::Set(m_region, Region);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::GetDivision(ESatDivision* pDivision) {
  return fields::Get(m_division, pDivision);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfo::SetDivision(ESatDivision Division) {
  return fields::Set(m_division, Division);
}
