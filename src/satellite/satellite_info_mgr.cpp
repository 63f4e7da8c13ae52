#include "satellite/satellite_info_mgr.h"

#include "platform/bstr.h"
#include "platform/com_error.h"
#include "xml/codecs/satellite_elements.h"
#include "xml/files/xml_sat_parser.h"

namespace {

template <typename Records, typename Accepts>
UINT CountIf(const Records& records, Accepts accepts) {
  UINT count = 0;
  for (std::size_t position = 0; const auto record = records.At(position); ++position) {
    if (accepts(record.Get())) ++count;
  }
  return count;
}

HRESULT LoadBand(const dom::Element& element, ISatelliteInfo* satellite, ESatFreqBand band) {
  ComPtr<ITransponderInfoMgr> transponders;
  HRESULT hr = satellite->GetTransponderMgr(band, transponders.Receive());
  if (FAILED(hr)) return hr;
  dom::Element bandElement;
  hr = CXmlSatParser::GetBandElement(band, element, &bandElement);
  return FAILED(hr) ? hr : transponders->Load(dom::kIidNode, bandElement.Get());
}

}  // namespace

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::CreateSatelliteInfo(ISatelliteInfo** ppInfo) {
  return CSatelliteInfo::CreateInstance(ppInfo);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::AddSatelliteInfo(ISatelliteInfo* pInfo) {
  return AddRecord(pInfo);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::RemoveSatelliteInfo(ISatelliteInfo* pInfo) {
  const HRESULT hr = RemoveRecord(pInfo);
  return FAILED(hr) ? hr : NumberRecords(Numbering::FromFront);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::GetSatCount(DWORD dwCountryCode, ESatRegion Region,
                                                         ESatDivision Division, UINT* pnCount) {
  if (pnCount == nullptr) return E_POINTER;
  *pnCount = 0;
  // Satellites carry no country, so a country selects none of them.
  if (dwCountryCode != 0) return S_OK;
  if (Region != RegionUnknown) {
    *pnCount = CountIf(All(), [=](ISatelliteInfo* record) {
      ESatRegion region = RegionUnknown;
      record->GetRegion(&region);
      return region == Region;
    });
  } else if (Division != SatcoDX_Unknown) {
    *pnCount = CountIf(All(), [=](ISatelliteInfo* record) {
      ESatDivision division = SatcoDX_Unknown;
      record->GetDivision(&division);
      return division == Division;
    });
  } else {
    *pnCount = All().Count();
  }
  return S_OK;
}

// The filters are accepted and ignored.
HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::GetSatInfoByIndex(UINT nIndex, DWORD, ESatRegion,
                                                               ESatDivision,
                                                               ISatelliteInfo** ppInfo) {
  return FindByIndex(nIndex, ppInfo);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::GetSatInfoByName(BSTR Name, ISatelliteInfo** ppInfo) {
  if (ppInfo == nullptr) return E_POINTER;
  const Bstr name = Bstr::Copy(Name);
  return FindByText(&ISatelliteInfo::GetName, name.Get(), ppInfo);
}

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::GetSatInfoByID(BSTR* pID, ISatelliteInfo** ppInfo) {
  if (pID == nullptr) return E_POINTER;
  // The caller hands its text over, also when nothing is found; its variable is left as it was.
  const Bstr id = Bstr::Attach(*pID);
  if (ppInfo == nullptr) return E_POINTER;
  return FindByText(&ISatelliteInfo::GetID, id.Get(), ppInfo);
}

// Satellites keep the order of the file: there is no moving and no sorting.
HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::MoveSat(UINT, UINT) { return E_NOTIMPL; }

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::SortSat(ESortType, BOOL) { return E_NOTIMPL; }

HRESULT STDMETHODCALLTYPE CSatelliteInfoMgr::GetDirty(LONG* plDirty) {
  return GetDirtyOfAll(plDirty);
}

HRESULT CSatelliteInfoMgr::LoadRecord(const dom::Element& element, LONG position, Loaded& loaded) {
  ComPtr<ISatelliteInfo> record;
  HRESULT hr = CreateSatelliteInfo(record.Receive());
  if (FAILED(hr)) return hr;
  hr = xml::SatelliteElementIO(element, record.Get(), xml::Direction::Read);
  if (FAILED(hr)) return hr;
  UINT key = 0;
  hr = record->GetIndex(&key);
  if (FAILED(hr)) return hr;
  // The file's index finds the place in the list; what the satellite then carries, and what later
  // ones are compared with, is its position in the file.
  const UINT index = static_cast<UINT>(position);
  record->SetIndex(index);
  loaded.push_back({record, key, index});
  RaiseLackOfMemory(LoadBand(element, record.Get(), SatFreqBand_CBand));
  // The last step for the last satellite is the result of the whole load, so a catalogue that ends
  // with a satellite without a Ku-Band answers E_FAIL although everything was loaded.
  return LoadBand(element, record.Get(), SatFreqBand_KuBand);
}
