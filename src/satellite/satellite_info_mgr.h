#pragma once

#include "satellite/catalogue_list.h"
#include "satellite/satellite_info.h"
#include "xml/elements/element_paths.h"

/// The satellite catalogue. It is a member of the database object and never destroyed through
/// Release.
class CSatelliteInfoMgr
    : public CatalogueList<CSatelliteInfoMgr, ISatelliteInfoMgr, CSatelliteInfo> {
 public:
  static constexpr auto& kPath = xml::paths::kSatellite;

  HRESULT STDMETHODCALLTYPE CreateSatelliteInfo(ISatelliteInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE AddSatelliteInfo(ISatelliteInfo* pInfo) override;
  HRESULT STDMETHODCALLTYPE RemoveSatelliteInfo(ISatelliteInfo* pInfo) override;
  HRESULT STDMETHODCALLTYPE GetSatCount(DWORD dwCountryCode, ESatRegion Region,
                                        ESatDivision Division, UINT* pnCount) override;
  HRESULT STDMETHODCALLTYPE GetSatInfoByIndex(UINT nIndex, DWORD dwCountryCode, ESatRegion Region,
                                              ESatDivision Division,
                                              ISatelliteInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE GetSatInfoByName(BSTR Name, ISatelliteInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE GetSatInfoByID(BSTR* pID, ISatelliteInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE MoveSat(UINT nOldIndex, UINT nNewIndex) override;
  HRESULT STDMETHODCALLTYPE SortSat(ESortType SortType, BOOL bAscending) override;
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override;

 private:
  friend class CatalogueList<CSatelliteInfoMgr, ISatelliteInfoMgr, CSatelliteInfo>;
  HRESULT LoadRecord(const dom::Element& element, LONG position, Loaded& loaded);
};
