// The presets and customer lists of one-segment reception.
#include <new>

#include "core/tunedex.h"
#include "platform/com_error.h"
#include "platform/com_ptr.h"

HRESULT CTunedex::LoadPresetOneSegChannelInfo() try {
  if (m_signalType != InputSignalISDBTerrestrialOneSeg) return E_FAIL;
  const HRESULT hr = m_presetFile.Open(PathOf("PreSetChannelInfo.xml"));
  return FAILED(hr) ? hr : m_presetFile.Load();
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetAreaCount(LONG* plArea) try {
  return m_presetFile.GetAreaCount(plArea);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetAreaNameByIndex(LONG lArea, CHAR* pArea) try {
  return m_presetFile.GetAreaNameByIndex(lArea, pArea);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetSubAreaCount(LONG lArea, LONG* plSubArea) try {
  return m_presetFile.GetSubAreaCount(lArea, plSubArea);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetSubAreaNameByIndex(LONG lArea, LONG lSubArea, CHAR* pSubArea) try {
  return m_presetFile.GetSubAreaNameByIndex(lArea, lSubArea, pSubArea);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::SetArea(LONG lArea, LONG lSubArea) try {
  const HRESULT selected = m_presetFile.SetArea(lArea, lSubArea);
  if (m_signalType != InputSignalISDBTerrestrialOneSeg) return selected;
  // What the document made of the selection is deliberately not told: from here on the result is
  // the list's. The load also takes the selection out of the document again.
  RaiseLackOfMemory(LoadPresetOneSegChannelInfo());
  dom::Element subArea;
  HRESULT hr = m_presetFile.GetSelectedSubArea(&subArea);
  // Without presets there is nothing to put in the place of the user's channels: they stay.
  if (FAILED(hr)) return hr;
  ComPtr<IChannelInfoMgr> list;
  hr = m_channelLists.Get(InputSignalISDBTerrestrialOneSeg, list.Receive());
  if (FAILED(hr)) return hr;
  list->Clear();
  RaiseLackOfMemory(list->Load(dom::kIidNode, subArea.Get()));
  hr = list->SetDirty(1);
  RaiseLackOfMemory(SaveChannelToFile());
  return hr;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetArea(LONG* plArea, LONG* plSubArea) try {
  return m_presetFile.GetArea(plArea, plSubArea);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::SaveCustomerChannelList(LONG lIndex, const CHAR* szSubArea) try {
  dom::Element country;
  const HRESULT hr = m_channelFile.FindOrCreateCountry(m_countryCode, &country);
  if (FAILED(hr)) return hr;
  if (m_signalType == InputSignalISDBTerrestrialOneSeg) {
    RaiseLackOfMemory(m_presetFile.SaveCustomerChannelList(country, lIndex, szSubArea));
  }
  // Deliberately the country element's remaining reference count and not the outcome of the store.
  return static_cast<HRESULT>(country.Release());
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::DeleteCustomerChannelList(LONG lIndex) try {
  return m_presetFile.DeleteCustomerChannelList(lIndex);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetPresetChannelMgr(LONG lArea, LONG lSubArea,
                                      IChannelInfoMgr** ppChannelMgr) try {
  return m_presetFile.GetPresetChannelMgr(lArea, lSubArea, ppChannelMgr);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}
