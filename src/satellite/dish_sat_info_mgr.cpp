#include "satellite/dish_sat_info_mgr.h"

#include <optional>

#include "xml/codecs/dish_sat_element.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"
#include "xml/files/xml_usr_conf_parser.h"
#include "xml/lookup/dish_sat_index.h"

namespace {

constexpr UINT kDishes = 4;

}  // namespace

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::CreateDishSatInfo(IDishSatInfo** ppInfo) {
  return CDishSatInfo::CreateInstance(ppInfo);
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::AddDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) {
  return AddRecord(pInfo, DishNum);
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::RemoveDishSatInfo(IDishSatInfo* pInfo, UINT DishNum) {
  const HRESULT hr = RemoveRecord(pInfo, DishNum);
  if (SUCCEEDED(hr)) Renumber(Numbering::FromFront, DishNum);
  return hr;
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::GetDishSatCount(UINT* pnCount, UINT DishNum) {
  return CountRecords(pnCount, DishNum);
}

HRESULT STDMETHODCALLTYPE CDishSatInfoMgr::GetDishSatInfoByIndex(IDishSatInfo** ppInfo,
                                                                 UINT DishNum, UINT nIndex) {
  return FindByIndex(nIndex, ppInfo, DishNum);
}

HRESULT CDishSatInfoMgr::Renumber(Numbering from, UINT dishNum) {
  return NumberRecords(from, dishNum);
}

// A dish without an element is an empty one.
HRESULT CDishSatInfoMgr::LoadFrom(const dom::Element& setting) {
  HRESULT hr = S_OK;
  for (UINT dishNum = 0; dishNum < kDishes; ++dishNum) {
    dom::Element element;
    if (CXmlUsrConfParser::GetDish(setting, dishNum, &element) != S_OK) continue;
    dom::ElementList elements;
    const HRESULT selected = xml::SelectChildren(element, xml::paths::kDishSat, elements);
    if (FAILED(selected)) {
      hr = selected;
      continue;
    }
    const std::optional<HRESULT> last = LoadElements(
        elements, At(dishNum), [this](const dom::Element& record, LONG position, Loaded& loaded) {
          return LoadRecord(record, position, loaded);
        });
    if (last) hr = *last;
  }
  SetDirty(0);
  return hr;
}

void CDishSatInfoMgr::StripElement(const dom::Element& setting) {
  CXmlUsrConfParser::RemoveAllDishSats(setting);
}

HRESULT CDishSatInfoMgr::LoadRecord(const dom::Element& element, LONG position, Loaded& loaded) {
  ComPtr<IDishSatInfo> record;
  const HRESULT hr = CreateDishSatInfo(record.Receive());
  return FAILED(hr) ? hr
                    : LoadInFileOrder(record, xml::DishSatElementIO, element, position, loaded);
}

// Elements that no assignment has any more stay: only clearing and removing take them out.
HRESULT CDishSatInfoMgr::SaveTo(const dom::Element& setting) {
  HRESULT hr = S_OK;
  for (UINT dishNum = 0; dishNum < kDishes; ++dishNum) {
    const Part& dish = At(dishNum);
    if (dish.Count() == 0) continue;
    dom::Element element;
    hr = CXmlUsrConfParser::GetDish(setting, dishNum, &element);
    if (SUCCEEDED(hr)) hr = SaveDish(element, dish);
  }
  SetDirty(0);
  return hr;
}

HRESULT CDishSatInfoMgr::SaveDish(const dom::Element& element, const Part& dish) {
  HRESULT hr = S_OK;
  xml::DishSatIndex elements(element);
  for (std::size_t position = 0; const auto record = dish.At(position); ++position) {
    dom::Element sat;
    hr = elements.FindOrCreate(record.Get(), sat);
    if (FAILED(hr)) continue;
    hr = xml::DishSatElementIO(sat, record.Get(), xml::Direction::Write);
    record->SetDirty(0);
  }
  return hr;
}
