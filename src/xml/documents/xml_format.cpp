#include "xml/documents/xml_format.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/files.h"

namespace xml {
namespace {

constexpr std::string_view kHeader = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
static_assert(kHeader.size() == 40);

// These are written as an opening and a closing line also when they are empty.
constexpr std::string_view kContainers[] = {"CHANNELTABLE", "Country", "ChannelSet"};

bool IsContainer(std::string_view tag) {
  return std::find(std::begin(kContainers), std::end(kContainers), tag) != std::end(kContainers);
}

void AppendTabs(int level, std::string& text) {
  text.append(static_cast<std::size_t>(level), '\t');
}

std::size_t Utf16Units(std::string_view utf8) {
  std::size_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += (byte & 0xC0) != 0x80;
    units += byte >= 0xF0;
  }
  return units;
}

}  // namespace

HRESULT FormatElement(const dom::Element& element, int level, std::string& text) {
  std::string tag;
  HRESULT hr = element.TagName(tag);
  if (hr != S_OK) return hr;
  AppendTabs(level, text);
  text.append("<").append(tag);
  hr = element.VisitAttributes([&text](std::string_view name, std::string_view value) {
    text.append(" ").append(name).append("=\"").append(value).append("\"");
  });
  if (hr != S_OK) return hr;
  if (!element.HasChildNodes() && !IsContainer(tag)) {
    text.append("/>\r\n");
    return S_OK;
  }
  text.append(">\r\n");
  dom::Element child;
  for (hr = element.FirstChildElement(child); hr == S_OK;) {
    FormatElement(child, level + 1, text);
    dom::Element next;
    hr = child.NextSiblingElement(next);
    child = std::move(next);
  }
  AppendTabs(level, text);
  text.append("</").append(tag).append(">\r\n");
  return S_OK;
}

HRESULT WriteFormattedFile(const std::string& path, const std::string& text) {
  // The form has room for two bytes per unit and no more; the old file must not be touched by what
  // does not fit.
  if (text.size() > 2 * Utf16Units(text)) return E_FAIL;
  files::AtomicFile file(path);
  if (!file.IsOpen() || !file.Write(kHeader) || !file.Write(text) || !file.Commit()) return E_FAIL;
  return S_OK;
}

}  // namespace xml
