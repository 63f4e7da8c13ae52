#pragma once

#include <array>

#include "core/gen_com_obj.h"
#include "platform/dom.h"
#include "platform/lack_of_memory.h"
#include "satellite/record_loading.h"

/// The satellites of up to four dishes. Unlike the lists of the catalogue it can save itself. It is
/// a member of the database object and never destroyed through Release.
///
/// A list that was loaded keeps its element true to itself: clearing and removing strip the
/// assignments of all four dishes from it. Only the reference counts are safe for concurrent use.
class CDishSatInfoMgr : public CGenComObj<CDishSatInfoMgr, IDishSatInfoMgr> {
 public:
  CDishSatInfoMgr() = default;
  ~CDishSatInfoMgr() override;

  HRESULT STDMETHODCALLTYPE Open() override;
  HRESULT STDMETHODCALLTYPE Close() override;
  HRESULT STDMETHODCALLTYPE Clear() override;
  HRESULT STDMETHODCALLTYPE Load(REFIID riid, IUnknown* pUnknown) override;
  HRESULT STDMETHODCALLTYPE Save(REFIID riid, IUnknown* pUnknown) override;
  HRESULT STDMETHODCALLTYPE CreateDishSatInfo(IDishSatInfo** ppInfo) override;
  HRESULT STDMETHODCALLTYPE AddDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) override;
  HRESULT STDMETHODCALLTYPE RemoveDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) override;
  HRESULT STDMETHODCALLTYPE GetDishSatCount(UINT* pnCount, UINT DishNum) override;
  HRESULT STDMETHODCALLTYPE GetDishSatInfoByIndex(IDishSatInfo** ppInfo, UINT DishNum,
                                                  UINT nIndex) override;
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override;
  HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) override;

  /// Undoes opening and loading when its own scope is left by an exception.
  auto PutBackWhenRaised() { return PutBack(m_dishes, m_element, m_dirty); }

  /// Numbers one dish's assignments 1, 2, 3, ... from the front, or from the back when not
  /// `ascending`. E_FAIL for a dish above 3. Removing calls it through the object's table, where it
  /// stands behind the destructor, so that a derived class can replace it.
  virtual HRESULT Renumber(bool ascending, UINT dishNum);

 private:
  using Dish = RecordList<IDishSatInfo>;
  using Loaded = NewRecords<IDishSatInfo>;

  HRESULT LoadFrom(const dom::Element& setting);
  HRESULT LoadRecord(const dom::Element& element, LONG position, Loaded& loaded);
  HRESULT SaveTo(const dom::Element& setting);
  static HRESULT SaveDish(const dom::Element& element, const Dish& dish);
  void StripElement() const;

  std::array<Dish, 4> m_dishes;
  dom::Element m_element;
  LONG m_dirty = 0;
};
