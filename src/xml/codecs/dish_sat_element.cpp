#include "xml/codecs/dish_sat_element.h"

#include "xml/elements/carry_text.h"
#include "xml/elements/xml_nodes.h"

namespace xml {

namespace {

HRESULT ReadDishSat(const dom::Element& element, IDishSatInfo* dishSat) {
  CarryText texts(element);
  dishSat->SetID(texts.Wide("id").Get());
  dishSat->SetBand(texts.Wide("band").Get());
  dishSat->SetLowFreq(AttrUnsigned(element, "LNB_Low"));
  dishSat->SetHighFreq(AttrUnsigned(element, "LNB_High"));
  return dishSat->SetSwitchFreq(AttrUnsigned(element, "LNB_Switch"));
}

HRESULT WriteDishSat(const dom::Element& element, IDishSatInfo* dishSat) {
  Bstr id;
  Bstr band;
  DWORD low = 0;
  DWORD high = 0;
  DWORD switchFreq = 0;
  HRESULT hr = dishSat->GetID(id.Receive());
  if (SUCCEEDED(hr)) hr = dishSat->GetBand(band.Receive());
  if (SUCCEEDED(hr)) hr = dishSat->GetLowFreq(&low);
  if (SUCCEEDED(hr)) hr = dishSat->GetHighFreq(&high);
  if (SUCCEEDED(hr)) hr = dishSat->GetSwitchFreq(&switchFreq);
  if (FAILED(hr)) return hr;
  SetAttr(element, "id", id.Get());
  SetAttr(element, "band", band.Get());
  SetAttr(element, "LNB_Low", static_cast<LONG>(low));
  SetAttr(element, "LNB_High", static_cast<LONG>(high));
  return SetAttr(element, "LNB_Switch", static_cast<LONG>(switchFreq));
}

}  // namespace

HRESULT DishSatElementIO(const dom::Element& element, IDishSatInfo* dishSat, Direction direction) {
  if (!element || dishSat == nullptr) return E_POINTER;
  return direction == Direction::Read ? ReadDishSat(element, dishSat)
                                      : WriteDishSat(element, dishSat);
}

}  // namespace xml
