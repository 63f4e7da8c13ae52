#include "xml/files/xml_preset_channel_parser.h"

#include <string>

#include "platform/com_error.h"
#include "xml/codecs/channel_codec.h"
#include "xml/elements/element_paths.h"
#include "xml/elements/xml_nodes.h"
#include "xml/files/xml_chan_parser.h"
#include "xml/lookup/channel_element_index.h"

namespace {

using ChannelReader = CXmlPreSetChannelParser::ChannelReader;

namespace paths = xml::paths;

constexpr LONG kCountryCode = 81;

// Below a country.
std::string SetPath() {
  return xml::KeyPath(paths::kChannelSet, "inputSignalType", InputSignalISDBTerrestrialOneSeg);
}

std::string AreaPath(LONG lArea) { return xml::KeyPath(paths::kArea, "AreaIndex", lArea); }

std::string SubAreaPath(LONG lSubArea) {
  return xml::KeyPath(paths::kSubArea, "SubAreaIndex", lSubArea);
}

std::string SubAreaPath(LONG lArea, LONG lSubArea) {
  return xml::Below(AreaPath(lArea), SubAreaPath(lSubArea).c_str());
}

HRESULT CopyName(const dom::Element& element, CHAR* buffer) {
  if (!element) return E_POINTER;
  return element.GetNarrow("name", buffer, xml::kTextSize);
}

HRESULT AppendSubArea(const dom::Element& area, LONG lSubArea, const CHAR* name) {
  return xml::AppendNew(area, paths::NameOf(paths::kSubArea), [=](const dom::Element& created) {
    xml::SetAttr(created, "SubAreaIndex", lSubArea);
    created.SetNarrow("name", name);
  });
}

// A channel that cannot be read or written is left out; lack of memory is raised.
void CopyChannel(const dom::Element& source, ChannelReader read,
                 xml::ChannelElementIndex& elements) {
  ComPtr<IChannelInfo> record;
  const HRESULT hr = read(source, InputSignalISDBTerrestrialOneSeg, record);
  if (FAILED(RaiseLackOfMemory(hr))) return;
  dom::Element target;
  if (elements.FindOrCreate(record.Get(), target) != S_OK) return;
  xml::CodeChannel(target, record.Get(), xml::Direction::Write);
}

// The source may be a channel set itself, or a country.
void CopyChannels(const dom::Element& source, ChannelReader read, const dom::Element& target) {
  LONG count = 0;
  CXmlChanParser::CountChannels(source, &count);
  const std::string path =
      count == 0 ? xml::Below(SetPath(), paths::kChannel) : std::string(paths::kChannel);
  xml::ChannelElementIndex elements(target);
  xml::ForEachChild(source, path.c_str(),
                    [&](const dom::Element& channel) { CopyChannel(channel, read, elements); });
}

void RenumberSubAreas(const dom::Element& area) {
  xml::ForEachChild(area, paths::kSubArea, [number = LONG{0}](const dom::Element& subArea) mutable {
    xml::SetAttr(subArea, "SubAreaIndex", number++);
  });
}

}  // namespace

HRESULT CXmlPreSetChannelParser::GetPresetChannelSet(dom::Element* set) const {
  if (set == nullptr) return E_POINTER;
  *set = dom::Element();
  dom::Element root;
  if (GetRoot(root) != S_OK) return E_FAIL;
  const std::string path =
      xml::Below(xml::KeyPath(paths::kCountry, "countrycode", kCountryCode), SetPath().c_str());
  const HRESULT hr = root.SelectSingle(path.c_str(), *set);
  return FAILED(hr) ? hr : S_OK;
}

HRESULT CXmlPreSetChannelParser::RequirePresetChannelSet(dom::Element& set) const {
  const HRESULT hr = GetPresetChannelSet(&set);
  return hr == S_OK && !set ? E_FAIL : hr;
}

HRESULT CXmlPreSetChannelParser::SelectArea(LONG lArea, dom::Element& area) const {
  dom::Element set;
  const HRESULT hr = RequirePresetChannelSet(set);
  return hr == S_OK ? set.SelectSingle(AreaPath(lArea).c_str(), area) : hr;
}

HRESULT CXmlPreSetChannelParser::SelectSubArea(LONG lArea, LONG lSubArea,
                                               dom::Element& subArea) const {
  dom::Element set;
  const HRESULT hr = RequirePresetChannelSet(set);
  return hr == S_OK ? set.SelectSingle(SubAreaPath(lArea, lSubArea).c_str(), subArea) : hr;
}

HRESULT CXmlPreSetChannelParser::GetAreaCount(LONG* plArea) const {
  if (plArea == nullptr) return E_INVALIDARG;
  *plArea = 0;
  dom::Element set;
  const HRESULT hr = RequirePresetChannelSet(set);
  return hr == S_OK ? xml::CountChildren(set, paths::kArea, plArea) : hr;
}

HRESULT CXmlPreSetChannelParser::GetSubAreaCount(LONG lArea, LONG* plSubArea) const {
  if (plSubArea == nullptr) return E_INVALIDARG;
  *plSubArea = 0;
  dom::Element set;
  const HRESULT hr = RequirePresetChannelSet(set);
  if (hr != S_OK) return hr;
  const std::string path = xml::Below(AreaPath(lArea), paths::kSubArea);
  return xml::CountChildren(set, path.c_str(), plSubArea);
}

HRESULT CXmlPreSetChannelParser::GetAreaNameByIndex(LONG lArea, CHAR* pArea) const {
  if (pArea == nullptr) return E_INVALIDARG;
  dom::Element area;
  const HRESULT hr = SelectArea(lArea, area);
  return FAILED(hr) ? hr : CopyName(area, pArea);
}

HRESULT CXmlPreSetChannelParser::GetSubAreaNameByIndex(LONG lArea, LONG lSubArea,
                                                       CHAR* pSubArea) const {
  if (pSubArea == nullptr) return E_INVALIDARG;
  dom::Element subArea;
  const HRESULT hr = SelectSubArea(lArea, lSubArea, subArea);
  return FAILED(hr) ? hr : CopyName(subArea, pSubArea);
}

HRESULT CXmlPreSetChannelParser::SetArea(LONG lArea, LONG lSubArea) {
  m_area = lArea;
  m_subArea = lSubArea;
  dom::Element set;
  HRESULT hr = GetPresetChannelSet(&set);
  if (hr != S_OK) return hr;
  hr = xml::SetAttr(set, "Area", lArea);
  return FAILED(hr) ? hr : xml::SetAttr(set, "SubArea", lSubArea);
}

HRESULT CXmlPreSetChannelParser::GetArea(LONG* plArea, LONG* plSubArea) {
  if (plArea == nullptr || plSubArea == nullptr) return E_INVALIDARG;
  dom::Element set;
  GetPresetChannelSet(&set);
  // Without a set both stay as they are, an attribute that is missing reads as 0.
  if (SUCCEEDED(xml::GetAttrInt(set, "Area", &m_area))) {
    xml::GetAttrInt(set, "SubArea", &m_subArea);
  }
  // Hosts take the two for unsigned 16-bit numbers: the upper halves are dropped, here alone.
  m_area &= 0xFFFF;
  m_subArea &= 0xFFFF;
  *plArea = m_area;
  *plSubArea = m_subArea;
  return S_OK;
}

HRESULT CXmlPreSetChannelParser::GetSubArea(LONG lArea, LONG lSubArea,
                                            dom::Element* subArea) const {
  if (subArea == nullptr) return E_POINTER;
  *subArea = dom::Element();
  const HRESULT hr = SelectSubArea(lArea, lSubArea, *subArea);
  return FAILED(hr) ? hr : S_OK;
}

HRESULT CXmlPreSetChannelParser::GetSelectedSubArea(dom::Element* subArea) const {
  return GetSubArea(m_area, m_subArea, subArea);
}

HRESULT CXmlPreSetChannelParser::GetCustomerArea(LONG& lArea, dom::Element& area) const {
  LONG count = 0;
  const HRESULT hr = GetAreaCount(&count);
  if (FAILED(hr)) return hr;
  lArea = count - 1;
  return SelectArea(lArea, area);
}

HRESULT CXmlPreSetChannelParser::PrepareCustomerList(LONG lIndex, const CHAR* szSubArea,
                                                     dom::Element& list) const {
  LONG lArea = 0;
  dom::Element area;
  HRESULT hr = GetCustomerArea(lArea, area);
  if (hr != S_OK) return hr;
  LONG count = 0;
  hr = GetSubAreaCount(lArea, &count);
  if (hr != S_OK) return hr;
  if (SelectSubArea(lArea, lIndex, list) == S_OK) return list.SetNarrow("name", szSubArea);
  // New lists get the next free number, not the one that was asked for.
  hr = AppendSubArea(area, count, szSubArea);
  return hr == S_OK ? SelectSubArea(lArea, lIndex, list) : hr;
}

HRESULT CXmlPreSetChannelParser::SaveCustomerChannelList(const dom::Element& source, LONG lIndex,
                                                         const CHAR* szSubArea,
                                                         ChannelReader read) {
  if (!source || szSubArea == nullptr) return E_INVALIDARG;
  dom::Element list;
  if (PrepareCustomerList(lIndex, szSubArea, list) != S_OK) return E_FAIL;
  CopyChannels(source, read, list);
  // Whether the file could be written is deliberately not told; callers have always been told S_OK.
  RaiseLackOfMemory(SaveFile());
  return S_OK;
}

HRESULT CXmlPreSetChannelParser::DeleteCustomerChannelList(LONG lIndex) {
  LONG lArea = 0;
  dom::Element area;
  HRESULT hr = GetCustomerArea(lArea, area);
  if (hr != S_OK) return hr;
  dom::Element list;
  hr = area.SelectSingle(SubAreaPath(lIndex).c_str(), list);
  if (hr != S_OK) return hr;
  hr = area.RemoveChild(list);
  if (hr != S_OK) return hr;
  RenumberSubAreas(area);
  return SaveFile();
}
