#include "xml/files/xml_sat_parser.h"

#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"

namespace paths = xml::paths;

HRESULT CXmlSatParser::CountSatellites(const dom::Element& table, LONG* count) {
  return xml::CountChildren(table, paths::kSatellite, count);
}

HRESULT CXmlSatParser::CountTransponders(const dom::Element& band, LONG* count) {
  return xml::CountChildren(band, paths::kTransponder, count);
}

HRESULT CXmlSatParser::CountLNBs(const dom::Element& table, LONG* count) {
  return xml::CountChildren(table, paths::kLNB, count);
}

HRESULT CXmlSatParser::GetSatellite(const dom::Element& table, LONG position,
                                    dom::Element* element) {
  return xml::GetChild(table, paths::kSatellite, position, element);
}

HRESULT CXmlSatParser::GetTransponder(const dom::Element& band, LONG position,
                                      dom::Element* element) {
  return xml::GetChild(band, paths::kTransponder, position, element);
}

HRESULT CXmlSatParser::GetLNB(const dom::Element& table, LONG position, dom::Element* element) {
  return xml::GetChild(table, paths::kLNB, position, element);
}

HRESULT CXmlSatParser::GetBandElement(ESatFreqBand band, const dom::Element& satellite,
                                      dom::Element* element) {
  if (!satellite || element == nullptr) return E_POINTER;
  const char* path = nullptr;
  if (band == SatFreqBand_CBand) path = paths::kCBand;
  if (band == SatFreqBand_KuBand) path = paths::kKuBand;
  if (path == nullptr) return E_FAIL;
  return satellite.SelectSingle(path, *element) == S_OK ? S_OK : E_FAIL;
}
