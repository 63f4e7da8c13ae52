#include "satellite/lnb_info_mgr.h"

#include "platform/bstr.h"
#include "satellite/find_by_text.h"
#include "satellite/lnb_info.h"
#include "xml/satellite_elements.h"

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::CreateLNBInfo(ILNBInfo** ppInfo) {
  return CLNBInfo::CreateInstance(ppInfo);
}

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::AddLNBInfo(ILNBInfo* pInfo) { return AddRecord(pInfo); }

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::RemoveLNBInfo(ILNBInfo* pInfo) {
  if (pInfo == nullptr) return E_POINTER;
  TakeOut(pInfo);
  Renumber(true);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::GetLNBCount(UINT* pnCount) { return CountRecords(pnCount); }

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::GetLNBInfoByIndex(UINT nIndex, ILNBInfo** ppInfo) {
  return FindByIndex(nIndex, ppInfo);
}

HRESULT STDMETHODCALLTYPE CLNBInfoMgr::GetLNBInfoByType(BSTR Type, ILNBInfo** ppInfo) {
  if (ppInfo == nullptr) return E_POINTER;
  const Bstr type = Bstr::Copy(Type);
  return FindByText(Records(), &ILNBInfo::GetType, type.Get(), ppInfo);
}

HRESULT CLNBInfoMgr::Renumber(bool ascending) {
  NumberRecords(ascending);
  return S_OK;
}

HRESULT CLNBInfoMgr::LoadRecord(const dom::Element& element, LONG position, Loaded& loaded) {
  ComPtr<ILNBInfo> record;
  const HRESULT hr = CreateLNBInfo(record.Receive());
  return FAILED(hr) ? hr : LoadNumbered(record, xml::LNBElementIO, element, position, loaded);
}
