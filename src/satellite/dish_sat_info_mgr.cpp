#include "satellite/dish_sat_info_mgr.h"

#include <new>

#include "satellite/dish_sat_info.h"
#include "xml/dish_sat_element.h"
#include "xml/dish_sat_index.h"
#include "xml/element_paths.h"
#include "xml/xml_nodes.h"
#include "xml/xml_usr_conf_parser.h"

CDishSatInfoMgr::~CDishSatInfoMgr() {
  m_element = dom::Element();
  for (Dish& dish : m_dishes) dish.ReleaseAll();
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::Open() { return Close(); }

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::Close() {
  // The element goes first, so that closing never strips the document.
  m_element = dom::Element();
  Clear();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::Clear() {
  SetDirty(0);
  for (Dish& dish : m_dishes) dish.ReleaseAll();
  StripElement();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::Load(REFIID riid, IUnknown* pUnknown) {
  return AnsweringLackOfMemory([=, this] {
    dom::Element setting;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, setting);
    return FAILED(hr) ? hr : LoadFrom(setting);
  });
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::Save(REFIID riid, IUnknown* pUnknown) {
  return AnsweringLackOfMemory([=, this] {
    dom::Element setting;
    const HRESULT hr = xml::SourceElement(riid, pUnknown, setting);
    return FAILED(hr) ? hr : SaveTo(setting);
  });
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::CreateDishSatInfo(IDishSatInfo** ppInfo) {
  return CDishSatInfo::CreateInstance(ppInfo);
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::AddDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) {
  if (pInfo == nullptr) return E_POINTER;
  if (DishNum >= m_dishes.size()) return E_FAIL;
  try {
    const HRESULT hr = m_dishes[DishNum].Add(pInfo);
    if (FAILED(hr)) return hr;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  SetDirty(1);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::RemoveDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) {
  if (pInfo == nullptr) return E_POINTER;
  if (DishNum >= m_dishes.size()) return E_FAIL;
  m_dishes[DishNum].Remove(pInfo);
  Renumber(true, DishNum);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::GetDishSatCount(UINT* pnCount, UINT DishNum) {
  if (pnCount == nullptr) return E_POINTER;
  if (DishNum >= m_dishes.size()) return E_FAIL;
  *pnCount = m_dishes[DishNum].Count();
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::GetDishSatInfoByIndex(IDishSatInfo** ppInfo,
                                                                 UINT DishNum, UINT nIndex) {
  if (ppInfo == nullptr) return E_POINTER;
  if (DishNum >= m_dishes.size()) return E_FAIL;
  return m_dishes[DishNum].FindByIndex(nIndex, ppInfo);
}

// The list's own flag only: assignments are not asked.
HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::GetDirty(LONG* plDirty) {
  if (plDirty == nullptr) return E_POINTER;
  *plDirty = m_dirty;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::SetDirty(LONG lDirty) {
  m_dirty = lDirty;
  return S_OK;
}

HRESULT CDishSatInfoMgr::Renumber(bool ascending, UINT dishNum) {
  if (dishNum >= m_dishes.size()) return E_FAIL;
  m_dishes[dishNum].Renumber(ascending);
  SetDirty(1);
  StripElement();
  return S_OK;
}

// What is there stays. A dish without an element is an empty one. Assignments of all the dishes are
// added, or of none.
HRESULT CDishSatInfoMgr::LoadFrom(const dom::Element& setting) {
  const PutBack before(m_dishes, m_element);
  if (setting.Get() != m_element.Get()) m_element = setting;
  HRESULT hr = S_OK;
  for (UINT dishNum = 0; dishNum < m_dishes.size(); ++dishNum) {
    dom::Element element;
    if (CXmlUsrConfParser::GetDish(setting, dishNum, &element) != S_OK) continue;
    dom::ElementList elements;
    const HRESULT selected = xml::SelectChildren(element, xml::paths::kDishSat, elements);
    hr = FAILED(selected)
             ? selected
             : LoadElements(elements, m_dishes[dishNum], hr,
                            [this](const dom::Element& record, LONG position, Loaded& loaded) {
                              return LoadRecord(record, position, loaded);
                            });
  }
  SetDirty(0);
  return hr;
}

HRESULT CDishSatInfoMgr::LoadRecord(const dom::Element& element, LONG position, Loaded& loaded) {
  ComPtr<IDishSatInfo> record;
  const HRESULT hr = CreateDishSatInfo(record.Receive());
  return FAILED(hr) ? hr : LoadNumbered(record, xml::DishSatElementIO, element, position, loaded);
}

// Elements that no assignment has any more stay: only clearing and removing take them out.
HRESULT CDishSatInfoMgr::SaveTo(const dom::Element& setting) {
  HRESULT hr = S_OK;
  for (UINT dishNum = 0; dishNum < m_dishes.size(); ++dishNum) {
    const Dish& dish = m_dishes[dishNum];
    if (dish.Count() == 0) continue;
    dom::Element element;
    hr = CXmlUsrConfParser::GetDish(setting, dishNum, &element);
    if (SUCCEEDED(hr)) hr = SaveDish(element, dish);
  }
  SetDirty(0);
  return hr;
}

HRESULT CDishSatInfoMgr::SaveDish(const dom::Element& element, const Dish& dish) {
  HRESULT hr = S_OK;
  xml::DishSatIndex elements(element);
  for (std::size_t position = 0; const ComPtr<IDishSatInfo> record = dish.At(position);
       ++position) {
    dom::Element sat;
    hr = elements.FindOrCreate(record.Get(), sat);
    if (FAILED(hr)) continue;
    hr = xml::DishSatElementIO(sat, record.Get(), xml::Direction::Write);
    record->SetDirty(0);
  }
  return hr;
}

void CDishSatInfoMgr::StripElement() const {
  if (const dom::Element setting = m_element) CXmlUsrConfParser::RemoveAllDishSats(setting);
}
