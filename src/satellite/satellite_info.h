#pragma once

#include <cstdint>

#include "platform/bstr.h"
#include "satellite/indexed_record.h"
#include "satellite/transponder_info_mgr.h"

/// One satellite. It owns its two transponder lists as members: a list that was handed out lives
/// exactly as long as its satellite, whatever its count says.
class CSatelliteInfo : public IndexedRecord<CSatelliteInfo, ISatelliteInfo> {
 public:
  CSatelliteInfo();
  ~CSatelliteInfo() override;

  HRESULT STDMETHODCALLTYPE GetOrbitalPosition(BOOL* pWestLongitude, LONG* pLongitude) override;
  HRESULT STDMETHODCALLTYPE SetOrbitalPosition(BOOL WestLongitude, LONG Longitude) override;
  HRESULT STDMETHODCALLTYPE GetAzimuth(LONG* plAzimuth) override;
  HRESULT STDMETHODCALLTYPE SetAzimuth(LONG lAzimuth) override;
  HRESULT STDMETHODCALLTYPE GetElevation(LONG* plElevation) override;
  HRESULT STDMETHODCALLTYPE SetElevation(LONG lElevation) override;
  HRESULT STDMETHODCALLTYPE GetName(BSTR* pbstrName) override;
  HRESULT STDMETHODCALLTYPE SetName(BSTR bstrName) override;
  HRESULT STDMETHODCALLTYPE GetID(BSTR* pbstrID) override;
  HRESULT STDMETHODCALLTYPE SetID(BSTR bstrID) override;
  HRESULT STDMETHODCALLTYPE GetRegion(ESatRegion* pRegion) override;
  HRESULT STDMETHODCALLTYPE SetRegion(ESatRegion Region) override;
  HRESULT STDMETHODCALLTYPE GetDivision(ESatDivision* pDivision) override;
  HRESULT STDMETHODCALLTYPE GetTransponderMgr(ESatFreqBand SatFreqBand,
                                              ITransponderInfoMgr** ppMgr) override;
  HRESULT STDMETHODCALLTYPE SetDivision(ESatDivision Division) override;

 private:
  std::int16_t m_west = 0;
  LONG m_longitude = 0;
  LONG m_azimuth = -1;
  LONG m_elevation = -1;
  Bstr m_name;
  Bstr m_id;
  ESatRegion m_region = RegionUnknown;
  ESatDivision m_division = SatcoDX_Unknown;
  // Hosts cannot end them: the constructor marks them as owned.
  CTransponderInfoMgr m_cBand;
  CTransponderInfoMgr m_kuBand;
};
