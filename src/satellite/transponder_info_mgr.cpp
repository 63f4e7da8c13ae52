#include "satellite/transponder_info_mgr.h"

#include "platform/bstr.h"
#include "xml/codecs/satellite_elements.h"

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::CreateTransponderInfo(ITransponderInfo** ppInfo) {
  return CTransponderInfo::CreateInstance(ppInfo);
}

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::AddTransponderInfo(ITransponderInfo* pInfo) {
  return AddRecord(pInfo);
}

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::RemoveTransponderInfo(ITransponderInfo* pInfo) {
  const HRESULT hr = RemoveRecord(pInfo);
  return FAILED(hr) ? hr : NumberRecords(Numbering::FromFront);
}

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::GetTransponderCount(UINT* pnCount) {
  return CountRecords(pnCount);
}

HRESULT STDMETHODCALLTYPE
CTransponderInfoMgr::GetTransponderInfoByIndex(UINT nIndex, ITransponderInfo** ppInfo) {
  return FindByIndex(nIndex, ppInfo);
}

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::GetTransponderInfoByName(BSTR* pName,
                                                                        ITransponderInfo** ppInfo) {
  if (pName == nullptr) return E_POINTER;
  // The caller hands its text over, also when nothing is found; its variable is left as it was.
  const Bstr name = Bstr::Attach(*pName);
  if (ppInfo == nullptr) return E_POINTER;
  return FindByText(&ITransponderInfo::GetName, name.Get(), ppInfo);
}

// Transponders keep the order of the file: there is no moving and no sorting.
HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::MoveTransponder(UINT, UINT) { return E_NOTIMPL; }

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::SortTransponder(ESortType, BOOL) {
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CTransponderInfoMgr::GetDirty(LONG* plDirty) {
  return GetDirtyOfAll(plDirty);
}

HRESULT CTransponderInfoMgr::LoadRecord(const dom::Element& element, LONG position,
                                        Loaded& loaded) {
  ComPtr<ITransponderInfo> record;
  const HRESULT hr = CreateTransponderInfo(record.Receive());
  return FAILED(hr) ? hr
                    : LoadInFileOrder(record, xml::TransponderElementIO, element, position, loaded);
}
