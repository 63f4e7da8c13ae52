#include "core/tunedex.h"

#include <new>

#include "platform/com_error.h"
#include "platform/com_ptr.h"
#include "platform/files.h"

HRESULT CTunedex::CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
  const auto object = new (std::nothrow) CTunedex(outer);
  if (object == nullptr) return E_OUTOFMEMORY;
  const ComPtr<IUnknown> own = ComPtr<IUnknown>::Attach(object->OwnUnknown());
  const HRESULT hr = object->FinalConstruct();
  return FAILED(hr) ? hr : own->QueryInterface(riid, ppv);
}

void CTunedex::SetDirectory(BSTR directory) {
  std::basic_string<OLECHAR> path(directory, SysStringLen(directory));
  if (path.back() != files::kSeparator) path += files::kSeparator;
  m_directory = Bstr(path);
}

std::string CTunedex::PathOf(const char* fileName) const {
  return files::PathFromText(m_directory.View()) + fileName;
}

HRESULT CTunedex::Open(BSTR bstrDir, DWORD dwCountryCode, InputSignalType SignalType) try {
  const WideView directory(bstrDir ? bstrDir : OLESTR(""), SysStringLen(bstrDir));
  // A file passes for a directory here; its documents then load as empty ones.
  if (directory.empty() || !files::Exists(files::PathFromText(directory))) return E_INVALIDARG;
  m_signalType = SignalType;
  SetDirectory(bstrDir);
  m_countryCode = dwCountryCode;
  HRESULT hr = m_channelFile.Open(PathOf("ChanInfo.xml"));
  if (FAILED(hr)) return hr;
  m_channelLists.CreateAll();
  RaiseLackOfMemory(LoadChannelFromFile());
  RaiseLackOfMemory(m_satelliteFile.Open(PathOf("SatelliteInfo.xml")));
  hr = m_settingsFile.Open(PathOf("UserSettings.xml"));
  if (SUCCEEDED(hr)) hr = LoadUserSettingsFromFile();
  // For one-segment alone; a missing file is no failure.
  RaiseLackOfMemory(LoadPresetOneSegChannelInfo());
  return FAILED(hr) ? hr : S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::Close() {
  m_channelFile.Close();
  m_channelLists.DestroyAll();
  m_satelliteFile.Close();
  m_satellites.Close();
  m_lnbs.Close();
  m_settingsFile.Close();
  m_dishes.Close();
  return S_OK;
}

HRESULT CTunedex::GetChannelInfoMgr(InputSignalType SignalType,
                                    IChannelInfoMgr** ppChannelInfoMgr) {
  return m_channelLists.Get(SignalType, ppChannelInfoMgr);
}

HRESULT CTunedex::LoadChannelFromFile() try {
  HRESULT hr = m_channelFile.Load();
  if (FAILED(hr)) return hr;
  dom::Element country;
  hr = m_channelFile.FindOrCreateCountry(m_countryCode, &country);
  if (SUCCEEDED(hr)) m_channelLists.LoadOne(country, m_signalType);
  return hr;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::SaveChannelToFile() try {
  dom::Element country;
  HRESULT hr = m_channelFile.FindOrCreateCountry(m_countryCode, &country);
  if (FAILED(hr)) return hr;
  hr = m_channelLists.SaveAll(country);
  if (FAILED(hr) && !m_channelFile.IsDirty()) return hr;
  m_channelFile.SetDirty(true);
  return m_channelFile.Save();
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CTunedex::GetStorageType(EStorageType* pStorageType) {
  *pStorageType = m_storageType;
  return S_OK;
}

HRESULT CTunedex::SetStorageType(EStorageType StorageType) {
  if (StorageType == StorageEncryptXML || StorageType == StorageSQLlite) return E_NOTIMPL;
  if (StorageType != StorageXML && StorageType != StoragePreFmtXML) return E_FAIL;
  m_channelFile.SetPreFormatted(StorageType == StoragePreFmtXML);
  m_satelliteFile.SetPreFormatted(StorageType != StorageXML);
  m_storageType = StorageType;
  // The next save rewrites the file in the chosen form even when it is the one it has.
  m_channelFile.SetDirty(true);
  return S_OK;
}
