// Attributes of elements.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/dom.h"
#include "platform/linux/dom/handles.h"
#include "platform/linux/text/code_page.h"
#include "platform/linux/text/utf8.h"
#include "platform/linux/tree/store.h"
#include "platform/text.h"

namespace dom {
namespace {

using domtree::Attribute;
using domtree::IsAscii;
using domtree::Names;
using domtree::Node;
using domtree::NodeOf;

/// The attribute that stands where `hint` expects it, which then moves on; null for another one.
inline Attribute* FindExpected(const Node& node, Name name, std::uint32_t& hint) {
  if (hint >= node.AttributeCount()) return nullptr;
  Attribute& expected = node.At(hint);
  if (!node.Owner().GetNames().Is(expected.Name(), name)) return nullptr;
  ++hint;
  return &expected;
}

/// The attribute wherever it stands; the next one is then expected behind it.
inline Attribute* Find(const Node& node, domtree::NameId name, std::uint32_t& hint) {
  if (name == domtree::kNoName || node.LacksSurely(name)) return nullptr;
  Attribute* const found = node.FindAttribute(name);
  if (found) hint = static_cast<std::uint32_t>(found - &node.At(0)) + 1;
  return found;
}

/// The name in front of that place: of an attribute or of the element.
domtree::NameId NameBefore(const Node& node, std::uint32_t hint) {
  const std::uint32_t place = std::min(hint, node.AttributeCount());
  return place == 0 ? node.Name() : node.At(place - 1).Name();
}

/// Calls `use` with an attribute's value; S_FALSE when there is no such attribute.
template <typename Use>
HRESULT Read(IUnknown* unknown, Name name, std::uint32_t& hint, Use use) {
  if (unknown == nullptr || name.text == nullptr) return E_INVALIDARG;
  const Node& node = NodeOf(unknown);
  const Attribute* attribute = FindExpected(node, name, hint);
  if (!attribute) attribute = Find(node, node.Owner().GetNames().Find(name.text), hint);
  if (!attribute) return S_FALSE;
  use(node.ValueOf(*attribute));
  return S_OK;
}

constexpr std::size_t kShortText = 256;

/// The text's bytes when it is short and ASCII, as most are: no need of memory for them.
bool CopyAscii(WideView wide, char (&buffer)[kShortText]) {
  if (wide.size() > kShortText) return false;
  unsigned all = 0;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    all |= wide[i];
    buffer[i] = static_cast<char>(wide[i]);
  }
  return all < 0x80;
}

HRESULT Write(IUnknown* unknown, Name name, std::uint32_t& hint, std::string_view value) {
  Node& node = NodeOf(unknown);
  domtree::Store& store = node.Owner();
  Names& names = store.GetNames();
  Attribute* attribute = FindExpected(node, name, hint);
  domtree::NameId id =
      attribute ? attribute->Name() : names.FindAfter(NameBefore(node, hint), name);
  if (!attribute) attribute = Find(node, id, hint);
  if (!attribute && id == domtree::kNoName) id = names.InternPlain(std::string_view(name.text));
  if (id == domtree::kNoName || (!attribute && !names.IsPlain(id))) return E_INVALIDARG;
  // Another meaning of a prefix would change or break the names that have it.
  if (names.IsDeclaration(id)) return E_INVALIDARG;
  if (attribute) {
    store.Assign(*attribute, value);
    return S_OK;
  }
  store.Append(node, id, value);
  hint = node.AttributeCount();
  return S_OK;
}

constexpr std::int32_t kMostDigits = 99'999'999;

/// Most numbers: their digits are put together in a register. Digits that were stored one by one
/// and are then fetched as one word make the processor wait.
HRESULT WriteShort(IUnknown* unknown, Name name, std::uint32_t& hint, std::int32_t value) {
  auto rest = static_cast<std::uint32_t>(value);
  std::uint64_t digits = 0;
  std::size_t count = 0;
  do {
    digits = digits << 8 | ('0' + rest % 10);
    rest /= 10;
    ++count;
  } while (rest != 0);
  char text[sizeof(digits)];
  std::memcpy(text, &digits, sizeof(digits));
  return Write(unknown, name, hint, {text, count});
}

}  // namespace

HRESULT Element::GetInt(Name name, std::int32_t& value) const {
  return Read(m_node, name, m_hint, [&](std::string_view text) { value = text::ToInt(text); });
}

HRESULT Element::GetNarrow(Name name, char* buffer, std::size_t size) const {
  if (buffer == nullptr) return E_INVALIDARG;
  return Read(m_node, name, m_hint, [&](std::string_view text) {
    const CodePage* page = CodePage::Current();
    if (page == nullptr || IsAscii(text)) {
      text::CopyCut(text, buffer, size);
    } else {
      text::CopyCut(page->Encode(utf8::ToWide(text)), buffer, size);
    }
  });
}

HRESULT Element::GetWide(Name name, Bstr& value) const {
  return Read(m_node, name, m_hint, [&](std::string_view text) { value = text::FromUtf8(text); });
}

HRESULT Element::GetUtf8(Name name, std::string& value) const {
  return Read(m_node, name, m_hint, [&](std::string_view text) { value = text; });
}

HRESULT Element::SetInt(Name name, std::int32_t value) const {
  if (m_node == nullptr || name.text == nullptr) return E_INVALIDARG;
  if (value >= 0 && value <= kMostDigits) return WriteShort(m_node, name, m_hint, value);
  char text[12];
  const std::to_chars_result end = std::to_chars(text, text + sizeof(text), value);
  return Write(m_node, name, m_hint, {text, static_cast<std::size_t>(end.ptr - text)});
}

HRESULT Element::SetWide(Name name, BSTR value) const {
  if (m_node == nullptr || name.text == nullptr) return E_INVALIDARG;
  const WideView wide(value ? value : OLESTR(""), SysStringLen(value));
  char ascii[kShortText];
  if (CopyAscii(wide, ascii)) return Write(m_node, name, m_hint, {ascii, wide.size()});
  return Write(m_node, name, m_hint, text::ToUtf8(wide));
}

HRESULT Element::SetNarrow(Name name, std::string_view value) const {
  if (m_node == nullptr || name.text == nullptr) return E_INVALIDARG;
  if (IsAscii(value)) return Write(m_node, name, m_hint, value);
  return Write(m_node, name, m_hint, text::ToUtf8(text::FromNarrow(value).View()));
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
