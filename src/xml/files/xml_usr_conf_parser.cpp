#include "xml/files/xml_usr_conf_parser.h"

#include <iterator>

#include "xml/elements/xml_nodes.h"
#include "xml/lookup/dish_sat_index.h"

namespace {

namespace paths = xml::paths;

static_assert(std::size(paths::kDishes) == CXmlUsrConfParser::kDishCount);

// E_FAIL for whatever else than lack of memory goes wrong.
HRESULT AppendNew(const dom::Element& parent, const char* path, dom::Element& child) {
  const HRESULT hr = RaiseLackOfMemory(xml::AppendNew(parent, paths::NameOf(path), child));
  return hr == S_OK ? S_OK : E_FAIL;
}

}  // namespace

HRESULT CXmlUsrConfParser::Load() {
  if (!Doc()) return E_FAIL;
  const auto putBack = PutBackWhenRaised();
  bool success = false;
  LoadFile(success);
  if (!success) RaiseLackOfMemory(CreateNewDocument());
  SetDirty(false);
  return S_OK;
}

HRESULT CXmlUsrConfParser::CreateNewDocument() {
  dom::Element root;
  HRESULT hr = CreateRoot("USER_SETTINGS", root);
  if (hr != S_OK) return hr;
  dom::Element setting;
  hr = AppendNew(root, paths::kSatSetting, setting);
  for (const char* path : paths::kDishes) {
    dom::Element dish;
    if (hr == S_OK) hr = AppendNew(setting, path, dish);
  }
  return hr;
}

HRESULT CXmlUsrConfParser::GetDish(const dom::Element& setting, UINT dish, dom::Element* element) {
  if (!setting || element == nullptr) return E_POINTER;
  if (dish >= kDishCount) return E_FAIL;
  return xml::FindChild(setting, paths::kDishes[dish], element) == S_OK ? S_OK : E_FAIL;
}

HRESULT CXmlUsrConfParser::CountDishSats(const dom::Element& dish, LONG* count) {
  return xml::CountChildren(dish, paths::kDishSat, count);
}

HRESULT CXmlUsrConfParser::GetDishSat(const dom::Element& dish, LONG position,
                                      dom::Element* element) {
  return xml::GetChild(dish, paths::kDishSat, position, element);
}

HRESULT CXmlUsrConfParser::FindOrCreateDishSat(const dom::Element& dish, IDishSatInfo* dishSat,
                                               dom::Element* element) {
  if (element == nullptr) return E_POINTER;
  return xml::DishSatIndex(dish).FindOrCreate(dishSat, *element);
}

HRESULT CXmlUsrConfParser::RemoveAllDishSats(const dom::Element& setting) {
  if (!setting) return E_POINTER;
  HRESULT hr = S_OK;
  for (UINT dish = 0; dish < kDishCount; ++dish) {
    dom::Element element;
    hr = GetDish(setting, dish, &element);
    if (hr == S_OK) hr = xml::RemoveAllChildren(element, paths::kDishSat);
  }
  return hr;
}
