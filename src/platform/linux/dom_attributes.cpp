// Attributes of elements.
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/dom.h"
#include "platform/linux/code_page.h"
#include "platform/linux/dom_handles.h"
#include "platform/linux/dom_namespaces.h"
#include "platform/linux/dom_store.h"
#include "platform/linux/utf8.h"
#include "platform/text.h"

namespace dom {
namespace {

using domtree::Attribute;
using domtree::IsAscii;
using domtree::Names;
using domtree::Node;
using domtree::NodeOf;

struct Place {
  Attribute* attribute = nullptr;
  /// kNoName also where the attribute stood where it was expected.
  domtree::NameId name = domtree::kNoName;
};

/// Where an attribute stands, at best where `hint` expects it, which then moves on.
Place Find(const Node& node, std::string_view name, std::uint32_t& hint) {
  const Names& names = node.Owner().GetNames();
  if (hint < node.AttributeCount()) {
    Attribute& expected = node.At(hint);
    if (names.Text(expected.Name()) == name) {
      ++hint;
      return {&expected, domtree::kNoName};
    }
  }
  const domtree::NameId id = names.Find(name);
  Attribute* const found = id == domtree::kNoName ? nullptr : node.FindAttribute(id);
  if (found) hint = static_cast<std::uint32_t>(found - &node.At(0)) + 1;
  return {found, id};
}

/// Calls `use` with an attribute's value; S_FALSE when there is no such attribute.
template <typename Use>
HRESULT Read(IUnknown* unknown, const char* name, std::uint32_t& hint, Use use) {
  if (unknown == nullptr || name == nullptr) return E_INVALIDARG;
  const Node& node = NodeOf(unknown);
  const Attribute* attribute = Find(node, name, hint).attribute;
  if (attribute == nullptr) return S_FALSE;
  use(node.ValueOf(*attribute));
  return S_OK;
}

HRESULT Write(IUnknown* unknown, std::string_view name, std::uint32_t& hint,
              std::string_view value) {
  Node& node = NodeOf(unknown);
  Names& names = node.Owner().GetNames();
  const Place place = Find(node, name, hint);
  // Another meaning of a prefix would change or break the names that have it.
  if (domtree::IsNamespaceDeclaration(name)) return E_INVALIDARG;
  if (place.attribute) {
    node.Owner().Assign(*place.attribute, value);
    return S_OK;
  }
  const domtree::NameId id = place.name != domtree::kNoName && names.IsPlain(place.name)
                                 ? place.name
                                 : names.InternPlain(name);
  if (id == domtree::kNoName) return E_INVALIDARG;
  node.Owner().Append(node, id, value);
  hint = node.AttributeCount();
  return S_OK;
}

}  // namespace

HRESULT Element::GetInt(const char* name, std::int32_t& value) const {
  return Read(m_node, name, m_hint, [&](std::string_view text) { value = text::ToInt(text); });
}

HRESULT Element::GetNarrow(const char* name, char* buffer, std::size_t size) const {
  if (buffer == nullptr) return E_INVALIDARG;
  return Read(m_node, name, m_hint, [&](std::string_view text) {
    const CodePage* page = CodePage::Current();
    if (page == nullptr || IsAscii(text)) {
      text::CopyCut(text, buffer, size);
    } else {
      domtree::Guarded([&] {
        text::CopyCut(page->Encode(utf8::ToWide(text)), buffer, size);
        return S_OK;
      });
    }
  });
}

HRESULT Element::GetText(const char* name, Bstr& value) const {
  return Read(m_node, name, m_hint, [&](std::string_view text) { value = text::FromUtf8(text); });
}

HRESULT Element::GetUtf8(const char* name, std::string& value) const {
  return domtree::Guarded(
      [&] { return Read(m_node, name, m_hint, [&](std::string_view text) { value = text; }); });
}

HRESULT Element::SetInt(const char* name, std::int32_t value) const {
  if (m_node == nullptr || name == nullptr) return E_INVALIDARG;
  char text[12];
  const std::to_chars_result end = std::to_chars(text, text + sizeof(text), value);
  return domtree::Guarded([&] {
    return Write(m_node, name, m_hint, {text, static_cast<std::size_t>(end.ptr - text)});
  });
}

HRESULT Element::SetText(const char* name, BSTR value) const {
  if (m_node == nullptr || name == nullptr) return E_INVALIDARG;
  return domtree::Guarded([&] {
    const WideView wide(value ? value : OLESTR(""), SysStringLen(value));
    return Write(m_node, name, m_hint, text::ToUtf8(wide));
  });
}

HRESULT Element::SetNarrow(const char* name, std::string_view value) const {
  if (m_node == nullptr || name == nullptr) return E_INVALIDARG;
  return domtree::Guarded([&] {
    if (IsAscii(value)) return Write(m_node, name, m_hint, value);
    return Write(m_node, name, m_hint, text::ToUtf8(text::FromNarrow(value).View()));
  });
}

HRESULT Element::VisitAttributes(const AttributeVisitor& visit) const {
  if (m_node == nullptr || !visit) return E_INVALIDARG;
  const Node& node = NodeOf(m_node);
  const Names& names = node.Owner().GetNames();
  for (std::uint32_t i = 0; i < node.AttributeCount(); ++i) {
    const Attribute& attribute = node.At(i);
    visit(names.Text(attribute.Name()), node.ValueOf(attribute));
  }
  return S_OK;
}

}  // namespace dom
