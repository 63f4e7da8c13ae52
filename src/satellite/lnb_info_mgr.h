#pragma once

#include "satellite/catalogue_list.h"
#include "satellite/lnb_info.h"
#include "xml/elements/element_paths.h"

/// The known LNB types. It is a member of the database object and never destroyed through Release.
class CLNBInfoMgr : public CatalogueList<CLNBInfoMgr, ILNBInfoMgr, CLNBInfo> {
 public:
  static constexpr auto& kPath = xml::paths::kLNB;

  HRESULT STDMETHODCALLTYPE CreateLNBInfo(ILNBInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE AddLNBInfo(ILNBInfo* pInfo) override;
  HRESULT STDMETHODCALLTYPE RemoveLNBInfo(ILNBInfo* pInfo) override;
  HRESULT STDMETHODCALLTYPE GetLNBCount(UINT* pnCount) override;
  HRESULT STDMETHODCALLTYPE GetLNBInfoByIndex(UINT nIndex, ILNBInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE GetLNBInfoByType(BSTR Type, ILNBInfo** ppInfo) override;

  /// Removing calls it, from the front, through the object's table, where it stands behind the
  /// destructor, so that a derived class can replace it.
  virtual HRESULT Renumber(Numbering from);

 private:
  friend class CatalogueList<CLNBInfoMgr, ILNBInfoMgr, CLNBInfo>;
  HRESULT LoadRecord(const dom::Element& element, LONG position, Loaded& loaded);
};
