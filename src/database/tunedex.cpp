#include "database/tunedex.h"

#include "platform/com_error.h"
#include "platform/com_ptr.h"
#include "platform/files.h"
#include "platform/lack_of_memory.h"

CTunedex::CTunedex(IUnknown* outer) : Aggregatable(outer, IID_IZorTunedex) {
  m_satellites.SetOwned(true);
  m_lnbs.SetOwned(true);
  m_dishes.SetOwned(true);
}

HRESULT CTunedex::CreateInstance(IUnknown* outer, REFIID riid, void** ppv) {
  return AnsweringLackOfMemory([=, &riid] {
    const auto object = new CTunedex(outer);
    const ComPtr<IUnknown> own = ComPtr<IUnknown>::Attach(object->OwnUnknown());
    const HRESULT hr = object->FinalConstruct();
    return FAILED(hr) ? hr : own->QueryInterface(riid, ppv);
  });
}

std::string CTunedex::PathOf(const char* fileName) const {
  return files::PathFromWide(m_directory) + fileName;
}

HRESULT CTunedex::Open(BSTR bstrDir, DWORD dwCountryCode, InputSignalType SignalType) {
  return AnsweringLackOfMemory([=, this]() -> HRESULT {
    const WideView directory(bstrDir ? bstrDir : OLESTR(""), SysStringLen(bstrDir));
    // A file passes for a directory here; its documents then load as empty ones.
    if (directory.empty() || !files::Exists(files::PathFromWide(directory))) return E_INVALIDARG;
    return OpenDirectory(directory, dwCountryCode, SignalType);
  });
}

HRESULT CTunedex::OpenDirectory(WideView directory, DWORD countryCode, InputSignalType signalType) {
  const PutBack place(m_signalType, m_directory, m_countryCode);
  const auto channelFile = m_channelFile.PutBackWhenRaised();
  const auto satelliteFile = m_satelliteFile.PutBackWhenRaised();
  const auto settingsFile = m_settingsFile.PutBackWhenRaised();
  const auto presetFile = m_presetFile.PutBackWhenRaised();
  const auto dishes = m_dishes.PutBackWhenRaised();
  m_signalType = signalType;
  m_directory = directory;
  if (directory.back() != files::kSeparator) m_directory += files::kSeparator;
  m_countryCode = countryCode;
  return OpenDocuments();
}

HRESULT CTunedex::OpenDocuments() {
  HRESULT hr = m_channelFile.Open(PathOf("ChanInfo.xml"));
  if (FAILED(hr)) return hr;
  UINT lists = 0;
  m_channelLists.Count(&lists);
  const WhenRaised destroyNew([this, lists] {
    if (lists == 0) m_channelLists.DestroyAll();
  });
  m_channelLists.CreateAll();
  m_satelliteFile.Open(PathOf("SatelliteInfo.xml"));
  hr = m_settingsFile.Open(PathOf("UserSettings.xml"));
  if (SUCCEEDED(hr)) hr = LoadUserSettings();
  // For one-segment alone; a missing file is no failure.
  LoadPresets();
  // The last step that lack of memory can end: it loads all channels or none.
  LoadChannels();
  return FAILED(hr) ? hr : S_OK;
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

HRESULT CTunedex::LoadChannelFromFile() {
  return AnsweringLackOfMemory([this] { return LoadChannels(); });
}

HRESULT CTunedex::LoadChannels() {
  const auto channelFile = m_channelFile.PutBackWhenRaised();
  HRESULT hr = m_channelFile.Load();
  if (FAILED(hr)) return hr;
  dom::Element country;
  hr = RaiseLackOfMemory(m_channelFile.FindOrCreateCountry(m_countryCode, &country));
  if (SUCCEEDED(hr)) m_channelLists.LoadOne(country, m_signalType);
  return hr;
}

HRESULT CTunedex::SaveChannelToFile() {
  return AnsweringLackOfMemory([this] { return SaveChannels(); });
}

HRESULT CTunedex::SaveChannels() {
  dom::Element country;
  HRESULT hr = m_channelFile.FindOrCreateCountry(m_countryCode, &country);
  if (FAILED(hr)) return hr;
  hr = m_channelLists.SaveAll(country);
  if (FAILED(hr) && !m_channelFile.IsDirty()) return hr;
  m_channelFile.SetDirty(true);
  return m_channelFile.Save();
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
