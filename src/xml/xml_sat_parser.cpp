#include "xml/xml_sat_parser.h"

#include "xml/xml_nodes.h"

HRESULT CXmlSatParser::CountSatellites(const dom::Element& table, LONG* count) {
  return xml::CountChildren(table, "./Satellite", count);
}

HRESULT CXmlSatParser::CountTransponders(const dom::Element& band, LONG* count) {
  return xml::CountChildren(band, "./Transponder", count);
}

HRESULT CXmlSatParser::CountLNBs(const dom::Element& table, LONG* count) {
  return xml::CountChildren(table, "./LNB", count);
}

HRESULT CXmlSatParser::GetSatellite(const dom::Element& table, LONG position,
                                    dom::Element* element) {
  return xml::GetChild(table, "./Satellite", position, element);
}

HRESULT CXmlSatParser::GetTransponder(const dom::Element& band, LONG position,
                                      dom::Element* element) {
  return xml::GetChild(band, "./Transponder", position, element);
}

HRESULT CXmlSatParser::GetLNB(const dom::Element& table, LONG position, dom::Element* element) {
  return xml::GetChild(table, "./LNB", position, element);
}

HRESULT CXmlSatParser::GetBandElement(ESatFreqBand band, const dom::Element& satellite,
                                      dom::Element* element) {
  if (!satellite || element == nullptr) return E_POINTER;
  const char* path = nullptr;
  if (band == SatFreqBand_CBand) path = "./C-Band";
  if (band == SatFreqBand_KuBand) path = "./Ku-Band";
  if (path == nullptr) return E_FAIL;
  return satellite.SelectSingle(path, *element) == S_OK ? S_OK : E_FAIL;
}
