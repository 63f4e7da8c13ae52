#pragma once

#include "satellite/catalogue_list.h"
#include "satellite/transponder_info.h"
#include "xml/elements/element_paths.h"

/// The transponders of one band of one satellite, in the order of the file. It is a member of its
/// satellite and never destroyed through Release.
class CTransponderInfoMgr
    : public CatalogueList<CTransponderInfoMgr, ITransponderInfoMgr, CTransponderInfo> {
 public:
  static constexpr auto& kPath = xml::paths::kTransponder;

  HRESULT STDMETHODCALLTYPE CreateTransponderInfo(ITransponderInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE AddTransponderInfo(ITransponderInfo* pInfo) override;
  HRESULT STDMETHODCALLTYPE RemoveTransponderInfo(ITransponderInfo* pInfo) override;
  HRESULT STDMETHODCALLTYPE GetTransponderCount(UINT* pnCount) override;
  HRESULT STDMETHODCALLTYPE GetTransponderInfoByIndex(UINT nIndex,
                                                      ITransponderInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE GetTransponderInfoByName(BSTR* pName,
                                                     ITransponderInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE MoveTransponder(UINT nOldIndex, UINT nNewIndex) override;
  HRESULT STDMETHODCALLTYPE SortTransponder(ESortType SortType, BOOL bAscending) override;
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override;

 private:
  friend class CatalogueList<CTransponderInfoMgr, ITransponderInfoMgr, CTransponderInfo>;
  HRESULT LoadRecord(const dom::Element& element, LONG position, Loaded& loaded);
};
