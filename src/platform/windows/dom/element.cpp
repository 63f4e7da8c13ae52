// Elements over MSXML 3.0: the handle, the tree around it and what paths select.
#include <algorithm>

#include "platform/dom.h"
#include "platform/dom_path.h"
#include "platform/text.h"
#include "platform/windows/dom/msxml.h"

namespace dom {
namespace {

HRESULT FirstElementFrom(ComPtr<IXMLDOMNode> node, Element& out) {
  while (node) {
    if (SUCCEEDED(Element::From(node.Get(), out))) return S_OK;
    ComPtr<IXMLDOMNode> next;
    const HRESULT hr = node->get_nextSibling(next.Receive());
    if (FAILED(hr)) return hr;
    node = std::move(next);
  }
  return S_FALSE;
}

}  // namespace

Element::Element(const Element& other) : m_node(other.m_node), m_hint(other.m_hint) {
  if (m_node) m_node->AddRef();
}

HRESULT Element::From(IUnknown* node, Element& out) {
  out = Element();
  if (node == nullptr) return E_INVALIDARG;
  ComPtr<IXMLDOMElement> element;
  const HRESULT hr = node->QueryInterface(kIidElement, reinterpret_cast<void**>(element.Receive()));
  if (FAILED(hr) || !element) return E_INVALIDARG;
  out.m_node = element.Detach();
  return S_OK;
}

Element Element::Attach(IUnknown* node) {
  const auto held = ComPtr<IUnknown>::Attach(node);
  Element result;
  From(node, result);
  return result;
}

ULONG Element::Release() {
  IUnknown* old = std::exchange(m_node, nullptr);
  return old ? old->Release() : 0;
}

HRESULT Element::TagName(std::string& name) const {
  if (!m_node) return E_INVALIDARG;
  Bstr tag;
  const HRESULT hr = msxml::ElementOf(m_node)->get_tagName(tag.Receive());
  if (hr == S_OK) name = text::ToUtf8(tag.View());
  return hr;
}

bool Element::HasTag(Name expected) const {
  const std::string_view name(expected.text);
  Bstr tag;
  if (!m_node || msxml::ElementOf(m_node)->get_tagName(tag.Receive()) != S_OK) return false;
  const WideView wide = tag.View();
  return std::equal(
      wide.begin(), wide.end(), name.begin(), name.end(),
      [](OLECHAR unit, char byte) { return unit == static_cast<unsigned char>(byte); });
}

HRESULT Element::OwnerDocument(Document& out) const {
  out.Close();
  if (!m_node) return E_INVALIDARG;
  ComPtr<IXMLDOMDocument> document;
  const HRESULT hr = msxml::ElementOf(m_node)->get_ownerDocument(document.Receive());
  if (FAILED(hr)) return hr;
  if (!document) return S_FALSE;
  return document->QueryInterface(msxml::kIidDocument2, &out.m_document);
}

HRESULT Element::SelectSingle(const char* path, Element& out) const {
  if (!m_node || path == nullptr || !Path::Parse(path)) return E_INVALIDARG;
  ComPtr<IXMLDOMNode> node;
  const HRESULT hr =
      msxml::ElementOf(m_node)->selectSingleNode(text::FromNarrow(path).Get(), node.Receive());
  // Only now: `out` may be this very handle.
  out = Element();
  if (FAILED(hr)) return hr;
  return node ? From(node.Get(), out) : S_FALSE;
}

HRESULT Element::Select(const char* path, ElementList& out) const {
  out = ElementList();
  if (!m_node || path == nullptr || !Path::Parse(path)) return E_INVALIDARG;
  ComPtr<IXMLDOMNodeList> list;
  HRESULT hr = msxml::ElementOf(m_node)->selectNodes(text::FromNarrow(path).Get(), list.Receive());
  LONG count = 0;
  if (SUCCEEDED(hr)) hr = list->get_length(&count);
  if (FAILED(hr) || count <= 0) return hr;
  // MSXML's own list may follow later changes of the tree; this one does not.
  out.m_items = new IUnknown*[static_cast<std::size_t>(count)];
  while (out.m_count < count) {
    ComPtr<IXMLDOMNode> node;
    Element element;
    if (list->nextNode(node.Receive()) != S_OK || From(node.Get(), element) != S_OK) break;
    out.m_items[out.m_count++] = std::exchange(element.m_node, nullptr);
  }
  return out.m_count == count ? S_OK : E_FAIL;
}

HRESULT Element::CreateElement(Name name, Element& out) const {
  Document document;
  const HRESULT hr = OwnerDocument(document);
  return hr == S_OK ? document.CreateElement(name.text, out) : hr;
}

HRESULT Element::AppendChild(const Element& child) const {
  if (!m_node || !child) return E_INVALIDARG;
  ComPtr<IXMLDOMNode> appended;
  return msxml::ElementOf(m_node)->appendChild(msxml::ElementOf(child.m_node), appended.Receive());
}

HRESULT Element::InsertBefore(const Element& child, const Element& before) const {
  if (!before) return AppendChild(child);
  if (!m_node || !child) return E_INVALIDARG;
  const msxml::Variant reference(before.m_node);
  ComPtr<IXMLDOMNode> inserted;
  return msxml::ElementOf(m_node)->insertBefore(msxml::ElementOf(child.m_node), reference.Get(),
                                                inserted.Receive());
}

HRESULT Element::RemoveChild(const Element& child) const {
  if (!m_node || !child) return E_INVALIDARG;
  ComPtr<IXMLDOMNode> removed;
  return msxml::ElementOf(m_node)->removeChild(msxml::ElementOf(child.m_node), removed.Receive());
}

bool Element::HasChildNodes() const {
  VARIANT_BOOL hasAny = VARIANT_FALSE;
  return m_node && msxml::ElementOf(m_node)->hasChildNodes(&hasAny) == S_OK &&
         hasAny == VARIANT_TRUE;
}

HRESULT Element::FirstChildElement(Element& out) const {
  if (!m_node) return E_INVALIDARG;
  ComPtr<IXMLDOMNode> child;
  const HRESULT hr = msxml::ElementOf(m_node)->get_firstChild(child.Receive());
  out = Element();
  return FAILED(hr) ? hr : FirstElementFrom(std::move(child), out);
}

HRESULT Element::NextSiblingElement(Element& out) const {
  if (!m_node) return E_INVALIDARG;
  ComPtr<IXMLDOMNode> sibling;
  const HRESULT hr = msxml::ElementOf(m_node)->get_nextSibling(sibling.Receive());
  out = Element();
  return FAILED(hr) ? hr : FirstElementFrom(std::move(sibling), out);
}

HRESULT Element::VisitChildren(const ChildVisitor& visit) const {
  if (!m_node) return E_INVALIDARG;
  Element child;
  HRESULT hr = FirstChildElement(child);
  for (; hr == S_OK; hr = child.NextSiblingElement(child)) visit(child);
  return FAILED(hr) ? hr : S_OK;
}

HRESULT Element::AppendFilled(Name name, const ChildVisitor& fill) const {
  Element child;
  const HRESULT hr = CreateElement(name, child);
  if (hr != S_OK) return hr;
  fill(child);
  return AppendChild(child);
}

ElementList::~ElementList() {
  for (LONG i = 0; i < m_count; ++i) m_items[i]->Release();
  delete[] m_items;
}

HRESULT ElementList::Item(LONG position, Element& out) const {
  out = Element();
  if (position < 0 || position >= m_count) return S_FALSE;
  return Element::From(m_items[position], out);
}

}  // namespace dom
