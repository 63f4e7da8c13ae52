#include "xml/elements/xml_nodes.h"

#include <cstdio>
#include <string_view>
#include <utility>

#include "platform/dom_path.h"

namespace xml {

HRESULT GetAttrInt(const dom::Element& element, dom::Name name, LONG* value) {
  if (!element || name.text == nullptr || value == nullptr) return E_POINTER;
  *value = 0;
  std::int32_t number = 0;
  const HRESULT hr = element.GetInt(name, number);
  if (hr == S_OK) *value = number;
  return hr;
}

DWORD AttrUnsigned(const dom::Element& element, dom::Name name) {
  return static_cast<DWORD>(AttrInt(element, name));
}

HRESULT GetAttrText(const dom::Element& element, dom::Name name, TextBuffer& buffer) {
  if (!element || name.text == nullptr) return E_POINTER;
  return element.GetNarrow(name, buffer, sizeof(buffer));
}

HRESULT SetAttr(const dom::Element& element, dom::Name name, LONG value) {
  if (!element || name.text == nullptr) return E_POINTER;
  return element.SetInt(name, value);
}

HRESULT SetAttr(const dom::Element& element, dom::Name name, BSTR value) {
  if (!element || name.text == nullptr) return E_POINTER;
  return element.SetWide(name, value);
}

std::string KeyPath(const char* path, const char* key, LONG value) {
  char text[256];
  std::snprintf(text, sizeof(text), "%s[@%s='%d']", path, key, static_cast<int>(value));
  return text;
}

std::string Below(std::string path, const char* next) { return std::move(path.append(next + 1)); }

HRESULT SourceElement(REFIID riid, IUnknown* pUnknown, dom::Element& element) {
  if (!(riid == dom::kIidNode) && !(riid == dom::kIidElement)) return E_NOTIMPL;
  if (pUnknown == nullptr) return E_INVALIDARG;
  return dom::Element::From(pUnknown, element);
}

HRESULT InsertSorted(const dom::Element& parent, const dom::Element& child, const char* path,
                     const char* key, LONG value) {
  if (!parent || !child) return E_POINTER;
  dom::ElementList siblings;
  if (parent.Select(path, siblings) == S_OK) {
    for (LONG i = 0; i < siblings.Count(); ++i) {
      dom::Element sibling;
      if (siblings.Item(i, sibling) != S_OK) continue;
      if (AttrInt(sibling, key) > value) return parent.InsertBefore(child, sibling);
    }
  }
  return parent.AppendChild(child);
}

HRESULT CreateElementFor(const dom::Element& parent, dom::Name name, dom::Element& out) {
  return parent && name.text != nullptr ? parent.CreateElement(name, out) : E_POINTER;
}

HRESULT AppendNew(const dom::Element& parent, dom::Name name, dom::Element& child) {
  dom::Element created;
  HRESULT hr = CreateElementFor(parent, name, created);
  if (hr == S_OK) hr = parent.AppendChild(created);
  if (hr == S_OK) child = std::move(created);
  return hr;
}

HRESULT SelectChildren(const dom::Element& parent, const char* path, dom::ElementList& children) {
  return parent ? parent.Select(path, children) : E_POINTER;
}

HRESULT GetChild(const dom::ElementList& children, LONG position, dom::Element* child) {
  if (child == nullptr || position < 0) return E_POINTER;
  if (position >= children.Count()) return E_INVALIDARG;
  return children.Item(position, *child) == S_OK ? S_OK : E_FAIL;
}

HRESULT CountChildren(const dom::Element& parent, const char* path, LONG* count) {
  if (!parent || count == nullptr) return E_POINTER;
  *count = 0;
  dom::ElementList children;
  const HRESULT hr = SelectChildren(parent, path, children);
  *count = children.Count();
  return hr;
}

HRESULT FindChild(const dom::Element& parent, const char* path, dom::Element* child) {
  if (!parent || path == nullptr || child == nullptr) return E_POINTER;
  const std::string_view name = dom::NameInPath(path);
  if (name.empty()) return E_INVALIDARG;
  dom::Element found;
  HRESULT hr = parent.FirstChildElement(found);
  while (hr == S_OK && !found.HasTag(name.data())) {
    dom::Element next;
    hr = found.NextSiblingElement(next);
    found = std::move(next);
  }
  *child = std::move(found);
  return hr;
}

HRESULT GetChild(const dom::Element& parent, const char* path, LONG position, dom::Element* child) {
  if (!parent || child == nullptr || position < 0) return E_POINTER;
  dom::ElementList children;
  const HRESULT hr = SelectChildren(parent, path, children);
  return FAILED(hr) ? E_FAIL : GetChild(children, position, child);
}

HRESULT RemoveAllChildren(const dom::Element& parent, const char* path) {
  if (!parent || path == nullptr) return E_POINTER;
  const std::string_view name = dom::NameInPath(path);
  if (name.empty()) return E_INVALIDARG;
  HRESULT hr = S_OK;
  dom::Element child;
  parent.FirstChildElement(child);
  while (child) {
    dom::Element next;
    child.NextSiblingElement(next);
    if (child.HasTag(name.data())) hr = parent.RemoveChild(child);
    child = std::move(next);
  }
  return hr;
}

}  // namespace xml
