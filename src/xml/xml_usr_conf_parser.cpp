#include "xml/xml_usr_conf_parser.h"

#include "xml/dish_sat_index.h"
#include "xml/xml_nodes.h"

namespace {

constexpr const char* kDishNames[] = {"DISH_1", "DISH_2", "DISH_3", "DISH_4"};
constexpr const char* kDishPaths[] = {"./DISH_1", "./DISH_2", "./DISH_3", "./DISH_4"};

// E_FAIL for whatever else than lack of memory goes wrong.
HRESULT AppendNew(const dom::Element& parent, const char* name, dom::Element& child) {
  if (RaiseLackOfMemory(xml::CreateElementFor(parent, name, child)) != S_OK) return E_FAIL;
  return parent.AppendChild(child) == S_OK ? S_OK : E_FAIL;
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
  if (!Doc()) return E_FAIL;
  HRESULT hr = Doc().AppendProcessingInstruction("xml", "version='1.0' encoding='utf-8'");
  if (hr != S_OK) return hr;
  dom::Element root;
  hr = Doc().CreateElement("USER_SETTINGS", root);
  if (hr == S_OK) hr = Doc().AppendChild(root);
  if (hr != S_OK) return hr;
  dom::Element setting;
  hr = AppendNew(root, "SAT_SETTING", setting);
  for (const char* name : kDishNames) {
    dom::Element dish;
    if (hr == S_OK) hr = AppendNew(setting, name, dish);
  }
  return hr;
}

HRESULT CXmlUsrConfParser::GetDish(const dom::Element& setting, UINT dish, dom::Element* element) {
  if (!setting || element == nullptr) return E_POINTER;
  if (dish >= kDishCount) return E_FAIL;
  return xml::FindChild(setting, kDishPaths[dish], element) == S_OK ? S_OK : E_FAIL;
}

HRESULT CXmlUsrConfParser::CountDishSats(const dom::Element& dish, LONG* count) {
  return xml::CountChildren(dish, kDishSatPath, count);
}

HRESULT CXmlUsrConfParser::GetDishSat(const dom::Element& dish, LONG position,
                                      dom::Element* element) {
  return xml::GetChild(dish, kDishSatPath, position, element);
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
    if (hr == S_OK) hr = xml::RemoveAllChildren(element, kDishSatPath);
  }
  return hr;
}
