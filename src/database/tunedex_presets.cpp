// The presets and customer lists of one-segment reception.
#include "channels/channel_loading.h"
#include "database/tunedex.h"
#include "platform/com_error.h"
#include "platform/lack_of_memory.h"

HRESULT CTunedex::LoadPresetOneSegChannelInfo() {
  return AnsweringLackOfMemory([this] { return LoadPresets(); });
}

HRESULT CTunedex::LoadPresets() {
  if (m_signalType != InputSignalISDBTerrestrialOneSeg) return E_FAIL;
  const auto presetFile = m_presetFile.PutBackWhenRaised();
  const HRESULT hr = m_presetFile.Open(PathOf("PreSetChannelInfo.xml"));
  return FAILED(hr) ? hr : m_presetFile.Load();
}

HRESULT CTunedex::GetAreaCount(LONG* plArea) {
  return AnsweringLackOfMemory([=, this] { return m_presetFile.GetAreaCount(plArea); });
}

HRESULT CTunedex::GetAreaNameByIndex(LONG lArea, CHAR* pArea) {
  return AnsweringLackOfMemory([=, this] { return m_presetFile.GetAreaNameByIndex(lArea, pArea); });
}

HRESULT CTunedex::GetSubAreaCount(LONG lArea, LONG* plSubArea) {
  return AnsweringLackOfMemory(
      [=, this] { return m_presetFile.GetSubAreaCount(lArea, plSubArea); });
}

HRESULT CTunedex::GetSubAreaNameByIndex(LONG lArea, LONG lSubArea, CHAR* pSubArea) {
  return AnsweringLackOfMemory(
      [=, this] { return m_presetFile.GetSubAreaNameByIndex(lArea, lSubArea, pSubArea); });
}

HRESULT CTunedex::SetArea(LONG lArea, LONG lSubArea) {
  return AnsweringLackOfMemory([=, this] { return SelectArea(lArea, lSubArea); });
}

HRESULT CTunedex::SelectArea(LONG lArea, LONG lSubArea) {
  const HRESULT selected = m_presetFile.SetArea(lArea, lSubArea);
  if (m_signalType != InputSignalISDBTerrestrialOneSeg) return selected;
  // What the document made of the selection is deliberately not told: from here on the result is
  // the list's. The load also takes the selection out of the document again.
  LoadPresets();
  dom::Element subArea;
  HRESULT hr = m_presetFile.GetSelectedSubArea(&subArea);
  // Without presets there is nothing to put in the place of the user's channels: they stay.
  if (FAILED(hr)) return hr;
  hr = m_channelLists.Reload(InputSignalISDBTerrestrialOneSeg, subArea);
  if (SUCCEEDED(hr)) RaiseLackOfMemory(SaveChannels());
  return hr;
}

HRESULT CTunedex::GetArea(LONG* plArea, LONG* plSubArea) {
  return AnsweringLackOfMemory([=, this] { return m_presetFile.GetArea(plArea, plSubArea); });
}

HRESULT CTunedex::SaveCustomerChannelList(LONG lIndex, const CHAR* szSubArea) {
  return AnsweringLackOfMemory([=, this] {
    dom::Element country;
    const HRESULT hr = m_channelFile.FindOrCreateCountry(m_countryCode, &country);
    if (FAILED(hr)) return hr;
    if (m_signalType == InputSignalISDBTerrestrialOneSeg) {
      RaiseLackOfMemory(
          m_presetFile.SaveCustomerChannelList(country, lIndex, szSubArea, LoadChannel));
    }
    // Deliberately the country element's remaining reference count and not the outcome of the
    // store.
    return static_cast<HRESULT>(country.Release());
  });
}

HRESULT CTunedex::DeleteCustomerChannelList(LONG lIndex) {
  return AnsweringLackOfMemory(
      [=, this] { return m_presetFile.DeleteCustomerChannelList(lIndex); });
}

HRESULT CTunedex::GetPresetChannelMgr(LONG lArea, LONG lSubArea, IChannelInfoMgr** ppChannelMgr) {
  return AnsweringLackOfMemory(
      [=, this] { return m_presetList.Make(m_presetFile, lArea, lSubArea, ppChannelMgr); });
}
