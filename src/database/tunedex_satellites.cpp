// The satellite catalogue and the user settings of a database.
#include "database/tunedex.h"
#include "platform/com_error.h"
#include "platform/lack_of_memory.h"

namespace {

// The list, and its new reference count in place of a result code: hosts test for a negative result
// only. The list is a member of the database, so the count never ends its life.
template <typename I, typename List>
HRESULT HandOut(List& list, I** out) {
  *out = &list;
  return static_cast<HRESULT>(list.AddRef());
}

}  // namespace

HRESULT CTunedex::LoadSatInfoFromFile() {
  return AnsweringLackOfMemory([this] { return LoadSatellites(); });
}

HRESULT CTunedex::LoadSatellites() {
  if (m_signalType != InputSignalDVBSatellite) return S_FALSE;
  const auto satelliteFile = m_satelliteFile.PutBackWhenRaised();
  const auto satelliteList = m_satellites.PutBackWhenRaised();
  const auto lnbList = m_lnbs.PutBackWhenRaised();
  HRESULT hr = m_satelliteFile.Load();
  if (FAILED(hr)) return hr;
  dom::Element satellites;
  hr = RaiseLackOfMemory(m_satelliteFile.GetSatTable(&satellites));
  if (FAILED(hr)) return hr;
  m_satellites.Open();
  RaiseLackOfMemory(m_satellites.Load(dom::kIidNode, satellites.Get()));
  dom::Element lnbs;
  hr = RaiseLackOfMemory(m_satelliteFile.GetLNBTable(&lnbs));
  if (FAILED(hr)) return hr;
  m_lnbs.Open();
  RaiseLackOfMemory(m_lnbs.Load(dom::kIidNode, lnbs.Get()));
  return S_OK;
}

// Stops at the satellite list, which never writes itself: the file stays as it is.
HRESULT CTunedex::SaveSatInfoToFile() {
  return AnsweringLackOfMemory([this] {
    dom::Element satellites;
    HRESULT hr = m_satelliteFile.GetSatTable(&satellites);
    if (SUCCEEDED(hr)) hr = m_satellites.Save(dom::kIidNode, satellites.Get());
    if (FAILED(hr)) return hr;
    dom::Element lnbs;
    hr = m_satelliteFile.GetLNBTable(&lnbs);
    if (SUCCEEDED(hr)) hr = m_lnbs.Save(dom::kIidNode, lnbs.Get());
    return FAILED(hr) ? hr : m_satelliteFile.Save();
  });
}

HRESULT CTunedex::GetSatelliteInfoMgr(ISatelliteInfoMgr** ppSatelliteInfoMgr) {
  return HandOut(m_satellites, ppSatelliteInfoMgr);
}

HRESULT CTunedex::GetLNBInfoMgr(ILNBInfoMgr** ppLNBInfoMgr) {
  return HandOut(m_lnbs, ppLNBInfoMgr);
}

HRESULT CTunedex::LoadUserSettingsFromFile() {
  return AnsweringLackOfMemory([this] { return LoadUserSettings(); });
}

HRESULT CTunedex::LoadUserSettings() {
  const auto settingsFile = m_settingsFile.PutBackWhenRaised();
  const auto dishes = m_dishes.PutBackWhenRaised();
  HRESULT hr = m_settingsFile.Load();
  if (FAILED(hr)) return hr;
  if (m_signalType != InputSignalDVBSatellite) return S_OK;
  dom::Element setting;
  hr = RaiseLackOfMemory(m_settingsFile.GetSatSetting(&setting));
  if (FAILED(hr)) return hr;
  m_dishes.Open();
  RaiseLackOfMemory(m_dishes.Load(dom::kIidNode, setting.Get()));
  return S_OK;
}

HRESULT CTunedex::SaveUserSettingsToFile() {
  return AnsweringLackOfMemory([this] {
    dom::Element setting;
    HRESULT hr = m_settingsFile.GetSatSetting(&setting);
    if (SUCCEEDED(hr)) hr = m_dishes.Save(dom::kIidNode, setting.Get());
    return FAILED(hr) ? hr : m_settingsFile.Save();
  });
}

HRESULT CTunedex::GetDishSatInfoMgr(IDishSatInfoMgr** ppDishSatInfoMgr) {
  return HandOut(m_dishes, ppDishSatInfoMgr);
}
