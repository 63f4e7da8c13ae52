#include "satellite/lnb_info_mgr.h"

#include "platform/bstr.h"
#include "xml/codecs/satellite_elements.h"

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::CreateLNBInfo(ILNBInfo** ppInfo) {
  return CLNBInfo::CreateInstance(ppInfo);
}

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::AddLNBInfo(ILNBInfo* pInfo) { return AddRecord(pInfo); }

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::RemoveLNBInfo(ILNBInfo* pInfo) {
  const HRESULT hr = RemoveRecord(pInfo);
  if (SUCCEEDED(hr)) Renumber(Numbering::FromFront);
  return hr;
}

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::GetLNBCount(UINT* pnCount) { return CountRecords(pnCount); }

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::GetLNBInfoByIndex(UINT nIndex, ILNBInfo** ppInfo) {
  return FindByIndex(nIndex, ppInfo);
}

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::GetLNBInfoByType(BSTR Type, ILNBInfo** ppInfo) {
  if (ppInfo == nullptr) return E_POINTER;
  const Bstr type = Bstr::Copy(Type);
  return FindByText(&ILNBInfo::GetType, type.Get(), ppInfo);
}

HRESULT CLNBInfoMgr::Renumber(Numbering from) { return NumberRecords(from); }

HRESULT CLNBInfoMgr::LoadRecord(const dom::Element& element, LONG position, Loaded& loaded) {
  ComPtr<ILNBInfo> record;
  const HRESULT hr = CreateLNBInfo(record.Receive());
  return FAILED(hr) ? hr : LoadInFileOrder(record, xml::LNBElementIO, element, position, loaded);
}
