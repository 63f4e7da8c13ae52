#pragma once

#include "core/interfaces.h"
#include "xml/documents/xml_document.h"
#include "xml/elements/element_paths.h"

/// SatelliteInfo.xml: below a document element of any name SAT_TABLE / Satellite / C-Band and
/// Ku-Band / Transponder, and LNB_TABLE / LNB. The file comes with the application; no list writes
/// itself into it.
class CXmlSatParser : public CXmlDocument {
 public:
  /// S_FALSE for a file that is missing or cannot be read; the document is then empty and the dirty
  /// flag as it was. E_FAIL without a document.
  HRESULT Load() { return LoadOrEmpty(); }
  /// As CXmlDocument::SaveWhenClean.
  HRESULT Save() { return SaveWhenClean(); }

  /// The first SAT_TABLE below the document element, appended where it is missing. E_FAIL without a
  /// document or a document element; E_POINTER for null, after the element was made.
  HRESULT GetSatTable(dom::Element* table) { return FindOrAppend(xml::paths::kSatTable, table); }
  /// The same for LNB_TABLE.
  HRESULT GetLNBTable(dom::Element* table) { return FindOrAppend(xml::paths::kLNBTable, table); }

  // Children of a table or a band element. E_POINTER for null or an empty element.
  static HRESULT CountSatellites(const dom::Element& table, LONG* count);
  static HRESULT CountTransponders(const dom::Element& band, LONG* count);
  static HRESULT CountLNBs(const dom::Element& table, LONG* count);
  // The child at a 0-based position: E_POINTER for a negative one, E_INVALIDARG past the end.
  static HRESULT GetSatellite(const dom::Element& table, LONG position, dom::Element* element);
  static HRESULT GetTransponder(const dom::Element& band, LONG position, dom::Element* element);
  static HRESULT GetLNB(const dom::Element& table, LONG position, dom::Element* element);
  /// The first element of the band below a satellite. E_FAIL when there is none, as for every band
  /// but C and Ku.
  static HRESULT GetBandElement(ESatFreqBand band, const dom::Element& satellite,
                                dom::Element* element);
};
