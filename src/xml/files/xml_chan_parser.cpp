#include "xml/files/xml_chan_parser.h"

#include <string>

#include "countries/country_code.h"
#include "platform/text.h"
#include "xml/documents/xml_format.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"
#include "xml/lookup/channel_element_index.h"

namespace {

namespace paths = xml::paths;

// Written for people to read, never looked up. The types that have no text have no codec either.
const char* SignalTypeText(InputSignalType signalType) {
  switch (signalType) {
    case InputSignalAnalogAntenna:
      return "Antenna";
    case InputSignalAnalogCable:
      return "Cable";
    case InputSignalFMRadio:
      return "FM-RADIO";
    case InputSignalATSCAntenna:
      return "ATSC-Antenna";
    case InputSignalATSCCable:
      return "ATSC-Cable";
    // Misspelt in every file there is, and kept.
    case InputSignalDVBTerrestrial:
      return "DVB-Terrestiral";
    case InputSignalDVBSatellite:
      return "DVB-Satellite";
    case InputSignalTDMBMobile:
      return "T-DMB";
    case InputSignalISDBTerrestrialOneSeg:
      return "ISDBT_OneSeg";
    default:
      return "";
  }
}

HRESULT CreateCountry(const dom::Element& root, DWORD countryCode, dom::Element* country) {
  dom::Element created;
  HRESULT hr = xml::CreateElementFor(root, paths::NameOf(paths::kCountry), created);
  if (hr != S_OK) return hr;
  char name[xml::kTextSize] = {};
  CCountryCode().GetNameByCode(countryCode, name);
  created.SetNarrow("name", name);
  const LONG key = static_cast<LONG>(countryCode);
  xml::SetAttr(created, "countrycode", key);
  hr = xml::InsertSorted(root, created, paths::kCountry, "countrycode", key);
  if (hr == S_OK) *country = std::move(created);
  return hr;
}

HRESULT CreateChannelSet(const dom::Element& country, InputSignalType signalType,
                         dom::Element* set) {
  dom::Element created;
  HRESULT hr = xml::CreateElementFor(country, paths::NameOf(paths::kChannelSet), created);
  if (hr != S_OK) return hr;
  created.SetNarrow("type", SignalTypeText(signalType));
  xml::SetAttr(created, "inputSignalType", static_cast<LONG>(signalType));
  hr = xml::InsertSorted(country, created, paths::kChannelSet, "inputSignalType", signalType);
  if (hr == S_OK) *set = std::move(created);
  return hr;
}

}  // namespace

HRESULT CXmlChanParser::Load() {
  if (!Doc()) return E_FAIL;
  const auto putBack = PutBackWhenRaised();
  bool success = false;
  HRESULT hr = LoadFile(success);
  // A missing or broken file is an empty table.
  if (!success) hr = RaiseLackOfMemory(CreateNewDocument());
  SetDirty(false);
  return hr;
}

HRESULT CXmlChanParser::CreateNewDocument() {
  dom::Element root;
  return CreateRoot("CHANNELTABLE", root);
}

HRESULT CXmlChanParser::Save() {
  if (!Doc()) return E_FAIL;
  if (!IsDirty()) return S_FALSE;
  dom::Element root;
  if (GetRoot(root) == S_OK) RemoveEmptyCountries();
  if (IsPreFormatted()) {
    std::string text;
    const HRESULT hr = xml::FormatElement(root, 0, text);
    return hr == S_OK ? SaveFormattedFile(text) : hr;
  }
  // The outcome of a plain save is deliberately not reported; callers have always been told S_OK.
  RaiseLackOfMemory(SaveFile());
  return S_OK;
}

HRESULT CXmlChanParser::FindOrCreateCountry(DWORD countryCode, dom::Element* country) {
  if (country == nullptr) return E_POINTER;
  dom::Element root;
  if (GetRoot(root) != S_OK) return E_FAIL;
  const std::string path =
      xml::KeyPath(paths::kCountry, "countrycode", static_cast<LONG>(countryCode));
  if (root.SelectSingle(path.c_str(), *country) == S_OK) return S_OK;
  return CreateCountry(root, countryCode, country);
}

HRESULT CXmlChanParser::RemoveEmptyCountries() {
  dom::Element root;
  if (GetRoot(root) != S_OK) return E_FAIL;
  HRESULT removed = S_OK;
  const HRESULT hr = xml::ForEachChild(root, paths::kCountry, [&](const dom::Element& country) {
    dom::Element set;
    if (country.SelectSingle(paths::kChannelSet, set) != S_OK) removed = root.RemoveChild(country);
  });
  return hr == S_OK ? removed : hr;
}

HRESULT CXmlChanParser::FindChannelSet(const dom::Element& country, InputSignalType signalType,
                                       dom::Element* set, bool create) {
  if (!country) return E_POINTER;
  if (set == nullptr) return E_FAIL;
  const std::string path = xml::KeyPath(paths::kChannelSet, "inputSignalType", signalType);
  if (country.SelectSingle(path.c_str(), *set) == S_OK) return S_OK;
  return create ? CreateChannelSet(country, signalType, set) : E_FAIL;
}

HRESULT CXmlChanParser::CountChannels(const dom::Element& set, LONG* count) {
  return xml::CountChildren(set, paths::kChannel, count);
}

HRESULT CXmlChanParser::GetChannelElement(const dom::Element& set, LONG position,
                                          dom::Element* channel) {
  const HRESULT hr = xml::GetChild(set, paths::kChannel, position, channel);
  return hr == E_INVALIDARG ? E_FAIL : hr;
}

HRESULT CXmlChanParser::FindOrCreateChannelElement(const dom::Element& set,
                                                   IChannelInfo* channelInfo,
                                                   dom::Element* channel) {
  if (!set || channelInfo == nullptr || channel == nullptr) return E_POINTER;
  return xml::ChannelElementIndex(set).FindOrCreate(channelInfo, *channel);
}

HRESULT CXmlChanParser::RemoveAllChannels(const dom::Element& set) {
  return xml::RemoveAllChildren(set, paths::kChannel);
}
