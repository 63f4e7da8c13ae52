#pragma once

#include "core/interfaces.h"
#include "xml/documents/xml_document.h"
#include "xml/elements/element_paths.h"

/// UserSettings.xml: below a document element of any name SAT_SETTING / DISH_1 to DISH_4 / SAT.
class CXmlUsrConfParser : public CXmlDocument {
 public:
  static constexpr UINT kDishCount = 4;

  /// Loads the file; a missing or unreadable one becomes the skeleton. E_FAIL without a document,
  /// else S_OK.
  HRESULT Load();
  /// Adds the declaration, the document element and its four empty dishes to an empty document.
  HRESULT CreateNewDocument();
  /// As CXmlDocument::SaveWhenClean. Nothing marks this document dirty, so every save writes.
  HRESULT Save() { return SaveWhenClean(); }

  /// The first SAT_SETTING below the document element, appended where it is missing. E_FAIL without
  /// a document or a document element; E_POINTER for null, after the element was made.
  HRESULT GetSatSetting(dom::Element* setting) {
    return FindOrAppend(xml::paths::kSatSetting, setting);
  }

  /// The element of a dish, 0 to 3. E_FAIL for a greater number and for one that the file lacks:
  /// dishes are made with the skeleton only.
  static HRESULT GetDish(const dom::Element& setting, UINT dish, dom::Element* element);
  static HRESULT CountDishSats(const dom::Element& dish, LONG* count);
  /// The SAT at a 0-based position: E_POINTER for a negative one, E_INVALIDARG past the end.
  static HRESULT GetDishSat(const dom::Element& dish, LONG position, dom::Element* element);
  /// The first SAT with the assignment's five values, or a new one at the dish's end. E_POINTER for
  /// null, and then nothing is made.
  static HRESULT FindOrCreateDishSat(const dom::Element& dish, IDishSatInfo* dishSat,
                                     dom::Element* element);
  /// Empties the dishes that are there; the result is that of the last removal.
  static HRESULT RemoveAllDishSats(const dom::Element& setting);
};
