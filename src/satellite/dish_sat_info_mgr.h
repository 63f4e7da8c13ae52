#pragma once

#include "satellite/bound_list.h"
#include "satellite/dish_sat_info.h"

/// The satellites of up to four dishes. Unlike the lists of the catalogue it can save itself. It is
/// a member of the database object and never destroyed through Release.
class CDishSatInfoMgr : public BoundList<CDishSatInfoMgr, IDishSatInfoMgr, CDishSatInfo, 4> {
 public:
  CDishSatInfoMgr() = default;
  ~CDishSatInfoMgr() override { LetGo(); }

  HRESULT STDMETHODCALLTYPE CreateDishSatInfo(IDishSatInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE AddDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) override;
  HRESULT STDMETHODCALLTYPE RemoveDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) override;
  HRESULT STDMETHODCALLTYPE GetDishSatCount(UINT* pnCount, UINT DishNum) override;
  HRESULT STDMETHODCALLTYPE GetDishSatInfoByIndex(IDishSatInfo** ppInfo, UINT DishNum,
                                                  UINT nIndex) override;

  /// One dish's assignments; E_FAIL for a dish above 3. Removing calls it, from the front, through
  /// the object's table, where it stands behind the destructor, so that a derived class can replace
  /// it.
  virtual HRESULT Renumber(Numbering from, UINT dishNum);

 private:
  friend class BoundList<CDishSatInfoMgr, IDishSatInfoMgr, CDishSatInfo, 4>;
  HRESULT LoadFrom(const dom::Element& setting);
  static void StripElement(const dom::Element& setting);
  HRESULT LoadRecord(const dom::Element& element, LONG position, Loaded& loaded);
  HRESULT SaveTo(const dom::Element& setting);
  static HRESULT SaveDish(const dom::Element& element, const Part& dish);
};
