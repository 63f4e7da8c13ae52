#include "channels/chan_info_mgr_group.h"

#include <iterator>

#include "channels/chan_info_mgr.h"
#include "platform/com_error.h"
#include "xml/files/xml_chan_parser.h"

namespace {

constexpr InputSignalType kSignalTypes[] = {
    InputSignalAnalogAntenna, InputSignalAnalogCable,
    InputSignalFMRadio,       InputSignalATSCAntenna,
    InputSignalATSCCable,     InputSignalDVBTerrestrial,
    InputSignalDVBSatellite,  InputSignalDVBCable,
    InputSignalDVBHandheld,   InputSignalISDBTerrestrial,
    InputSignalISDBSatellite, InputSignalISDBCable,
    InputSignalTDMBMobile,    InputSignalISDBTerrestrialOneSeg,
};

// Every list of the group is made by it.
CChanInfoMgr& Ours(const ComPtr<IChannelInfoMgr>& list) {
  return static_cast<CChanInfoMgr&>(*list.Get());
}

}  // namespace

CChanInfoMgrGroup::~CChanInfoMgrGroup() { DestroyAll(); }

HRESULT CChanInfoMgrGroup::CreateAll() {
  for (const InputSignalType signalType : kSignalTypes) {
    ComPtr<IChannelInfoMgr> list;
    if (FAILED(RaiseLackOfMemory(CChanInfoMgr::CreateInstance(list.Receive())))) continue;
    list->SetSignalType(signalType);
    list->Open();
    // A list that is there already stays.
    const HRESULT hr = RaiseLackOfMemory(m_lists.Register(signalType, list.Get()));
    if (SUCCEEDED(hr)) Ours(list).SetOwned(true);
  }
  return S_OK;
}

HRESULT CChanInfoMgrGroup::DestroyAll() {
  for (const InputSignalType signalType : kSignalTypes) {
    ComPtr<IChannelInfoMgr> list;
    if (FAILED(m_lists.Get(signalType, list.Receive()))) continue;
    list->Close();
    Ours(list).SetOwned(false);
  }
  m_lists.ReleaseAll();
  return S_OK;
}

HRESULT CChanInfoMgrGroup::GetByPosition(UINT position, IChannelInfoMgr** list) const {
  if (position >= std::size(kSignalTypes)) return E_INVALIDARG;
  return m_lists.Get(kSignalTypes[position], list);
}

HRESULT CChanInfoMgrGroup::LoadOne(const dom::Element& country, InputSignalType signalType) {
  ComPtr<IChannelInfoMgr> list;
  if (FAILED(m_lists.Get(signalType, list.Receive()))) return S_OK;
  dom::Element set;
  if (FAILED(CXmlChanParser::FindChannelSet(country, signalType, &set, false))) return S_OK;
  RaiseLackOfMemory(list->Load(dom::kIidNode, set.Get()));
  return S_OK;
}

HRESULT CChanInfoMgrGroup::Reload(InputSignalType signalType, const dom::Element& set) {
  ComPtr<IChannelInfoMgr> list;
  const HRESULT hr = m_lists.Get(signalType, list.Receive());
  if (FAILED(hr)) return hr;
  // Loaded aside first: clearing takes the channels out of the document, and lack of memory could
  // not bring them back.
  ComPtr<IChannelInfoMgr> loaded;
  RaiseLackOfMemory(CChanInfoMgr::CreateInstance(loaded.Receive()));
  loaded->SetSignalType(signalType);
  RaiseLackOfMemory(loaded->Load(dom::kIidNode, set.Get()));
  list->Clear();
  Ours(list).TakeOver(Ours(loaded));
  return list->SetDirty(1);
}

HRESULT CChanInfoMgrGroup::SaveAll(const dom::Element& country) {
  UINT count = 0;
  m_lists.Count(&count);
  bool saved = false;
  for (UINT position = 0; position < count; ++position) {
    if (SaveIfDirty(position, country)) saved = true;
  }
  return saved ? S_OK : E_FAIL;
}

bool CChanInfoMgrGroup::SaveIfDirty(UINT position, const dom::Element& country) {
  ComPtr<IChannelInfoMgr> list;
  if (FAILED(GetByPosition(position, list.Receive()))) return false;
  BOOL dirty = 0;
  if (FAILED(list->GetDirty(&dirty)) || dirty == 0) return false;
  dom::Element set;
  if (FAILED(CXmlChanParser::FindChannelSet(country, kSignalTypes[position], &set, true))) {
    return false;
  }
  // A part of the list must not replace what the file holds.
  return RaiseLackOfMemory(list->Save(dom::kIidNode, set.Get())) == S_OK;
}
