#include "database/preset_list.h"

#include "platform/com_error.h"

HRESULT PresetList::Make(const CXmlPreSetChannelParser& file, LONG lArea, LONG lSubArea,
                         IChannelInfoMgr** ppChannelMgr) {
  if (ppChannelMgr == nullptr) return E_POINTER;
  *ppChannelMgr = nullptr;
  Drop();
  dom::Element subArea;
  const HRESULT hr = file.GetSubArea(lArea, lSubArea, &subArea);
  if (FAILED(hr)) return hr;
  // No list, but S_OK, when it cannot be made: hosts look at the pointer.
  IChannelInfoMgr* list = nullptr;
  if (FAILED(CChanInfoMgr::CreateInstance(&list))) return S_OK;
  m_list = ComPtr<CChanInfoMgr>::Attach(static_cast<CChanInfoMgr*>(list));
  m_list->SetOwned(true);
  m_list->SetSignalType(InputSignalISDBTerrestrialOneSeg);
  RaiseLackOfMemory(m_list->Load(dom::kIidNode, subArea.Get()));
  m_list->AddRef();
  *ppChannelMgr = list;
  return S_OK;
}

void PresetList::Drop() {
  if (m_list) m_list->SetOwned(false);
  m_list.Reset();
}
