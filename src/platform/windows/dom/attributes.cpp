// Attributes of elements over MSXML 3.0.
#include <string>

#include "platform/dom.h"
#include "platform/dom_path.h"
#include "platform/text.h"
#include "platform/windows/dom/msxml.h"

namespace dom {
namespace {

/// S_FALSE, and the value untouched, when the attribute is missing.
HRESULT Read(IUnknown* node, const char* name, Bstr& value) {
  if (node == nullptr || name == nullptr) return E_INVALIDARG;
  // No element has such an attribute; Wine would call it a failure.
  if (!IsQualifiedName(name)) return S_FALSE;
  msxml::Variant variant;
  const HRESULT hr =
      msxml::ElementOf(node)->getAttribute(text::FromNarrow(name).Get(), variant.Receive());
  if (FAILED(hr)) return hr;
  if (!variant.IsText()) return S_FALSE;
  value = variant.TakeText();
  return S_OK;
}

/// New attributes have plain names: Wine takes any text for a name. Declarations of prefixes stay
/// as they are, or the names that have them would change.
bool IsWritable(IUnknown* node, const char* name) {
  const std::string_view text(name);
  if (IsPlainName(text)) return text != "xmlns";
  Bstr old;
  return !text.starts_with("xmlns:") && Read(node, name, old) == S_OK;
}

HRESULT Write(IUnknown* node, const char* name, Bstr value) {
  if (node == nullptr || name == nullptr || !IsWritable(node, name)) return E_INVALIDARG;
  const msxml::Variant variant(std::move(value));
  return msxml::ElementOf(node)->setAttribute(text::FromNarrow(name).Get(), variant.Get());
}

HRESULT Visit(IXMLDOMNode* attribute, const Element::AttributeVisitor& visit) {
  Bstr name;
  msxml::Variant variant;
  HRESULT hr = attribute->get_nodeName(name.Receive());
  if (SUCCEEDED(hr)) hr = attribute->get_nodeValue(variant.Receive());
  if (FAILED(hr)) return hr;
  const Bstr value = variant.IsText() ? variant.TakeText() : Bstr();
  visit(text::ToUtf8(name.View()), text::ToUtf8(value.View()));
  return S_OK;
}

}  // namespace

HRESULT Element::GetInt(Name name, std::int32_t& value) const {
  Bstr read;
  const HRESULT hr = Read(m_node, name.text, read);
  if (hr == S_OK) value = text::ToInt(text::ToUtf8(read.View()));
  return hr;
}

HRESULT Element::GetNarrow(Name name, char* buffer, std::size_t size) const {
  if (buffer == nullptr) return E_INVALIDARG;
  Bstr read;
  const HRESULT hr = Read(m_node, name.text, read);
  if (hr == S_OK) text::CopyCut(text::ToNarrow(read.View()), buffer, size);
  return hr;
}

HRESULT Element::GetWide(Name name, Bstr& value) const { return Read(m_node, name.text, value); }

HRESULT Element::GetUtf8(Name name, std::string& value) const {
  Bstr read;
  const HRESULT hr = Read(m_node, name.text, read);
  if (hr == S_OK) value = text::ToUtf8(read.View());
  return hr;
}

// The number is made text here: the platform's conversion follows the user's locale.
HRESULT Element::SetInt(Name name, std::int32_t value) const {
  return SetNarrow(name, std::to_string(value));
}

HRESULT Element::SetWide(Name name, BSTR value) const {
  return Write(m_node, name.text, value ? Bstr::Copy(value) : Bstr(WideView()));
}

HRESULT Element::SetNarrow(Name name, std::string_view value) const {
  return Write(m_node, name.text, text::FromNarrow(value));
}

HRESULT Element::VisitAttributes(const AttributeVisitor& visit) const {
  if (!m_node) return E_INVALIDARG;
  ComPtr<IXMLDOMNamedNodeMap> map;
  HRESULT hr = msxml::ElementOf(m_node)->get_attributes(map.Receive());
  LONG count = 0;
  if (SUCCEEDED(hr) && map) hr = map->get_length(&count);
  for (LONG i = 0; SUCCEEDED(hr) && i < count; ++i) {
    ComPtr<IXMLDOMNode> attribute;
    hr = map->get_item(i, attribute.Receive());
    if (attribute) hr = Visit(attribute.Get(), visit);
  }
  return SUCCEEDED(hr) ? S_OK : hr;
}

}  // namespace dom
