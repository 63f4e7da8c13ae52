// What every file parser does with elements: read and write attributes, find children, keep
// siblings sorted by a numeric key.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "platform/dom.h"

namespace xml {

/// Room of a text attribute, its terminator included.
inline constexpr std::size_t kTextSize = 260;
using TextBuffer = char[kTextSize];

/// Sets `*value` to 0, then to the attribute's number. S_FALSE when it is missing; E_POINTER for a
/// null argument or an empty element.
HRESULT GetAttrInt(const dom::Element& element, dom::Name name, LONG* value);

/// The number alone; 0 when it is missing.
inline LONG AttrInt(const dom::Element& element, dom::Name name) {
  std::int32_t number = 0;
  element.GetInt(name, number);
  return number;
}
DWORD AttrUnsigned(const dom::Element& element, dom::Name name);

/// The attribute in the system's ANSI code page, cut to 259 bytes on a character boundary. Missing:
/// S_FALSE, and the buffer keeps what it held.
HRESULT GetAttrText(const dom::Element& element, dom::Name name, TextBuffer& buffer);

HRESULT SetAttr(const dom::Element& element, dom::Name name, LONG value);
/// A null text is written empty.
HRESULT SetAttr(const dom::Element& element, dom::Name name, BSTR value);

/// "path[@key='value']"
std::string KeyPath(const char* path, const char* key, LONG value);
/// The path that goes on with another one: "./A" and "./B" give "./A/B".
std::string Below(std::string path, const char* next);

/// The element that a list is loaded from or saved to, out of the arguments of Load and Save.
/// E_NOTIMPL for an identifier other than that of a node or an element, E_INVALIDARG for null and
/// for what is not an element of this library's documents.
HRESULT SourceElement(REFIID riid, IUnknown* pUnknown, dom::Element& element);

/// Inserts `child` before the first sibling of the path whose numeric `key` attribute is greater
/// than `value`, else appends it. A missing key reads as 0; siblings that are out of order stay so.
HRESULT InsertSorted(const dom::Element& parent, const dom::Element& child, const char* path,
                     const char* key, LONG value);

/// Makes an element in the document that `parent` belongs to. It has no parent yet.
HRESULT CreateElementFor(const dom::Element& parent, dom::Name name, dom::Element& out);

/// Makes an element and appends it to `parent`; `child` is untouched unless S_OK.
HRESULT AppendNew(const dom::Element& parent, dom::Name name, dom::Element& child);
/// The same with `fill(child)` before it is appended: what that raises leaves no half of one.
template <typename Fill>
HRESULT AppendNew(const dom::Element& parent, dom::Name name, Fill fill) {
  return parent && name.text != nullptr ? parent.AppendNew(name, std::move(fill)) : E_POINTER;
}

/// The children that a path selects, as they stand now. E_POINTER for an empty element.
HRESULT SelectChildren(const dom::Element& parent, const char* path, dom::ElementList& children);

/// The one at a 0-based position: E_POINTER for null or a negative position, E_INVALIDARG past the
/// end.
HRESULT GetChild(const dom::ElementList& children, LONG position, dom::Element* child);

/// Calls `visit(child)` for all that a path selects; the result is that of selecting them.
template <typename Visit>
HRESULT ForEachChild(const dom::Element& parent, const char* path, Visit visit) {
  dom::ElementList children;
  const HRESULT hr = SelectChildren(parent, path, children);
  for (LONG position = 0; position < children.Count(); ++position) {
    dom::Element child;
    if (GetChild(children, position, &child) == S_OK) visit(std::move(child));
  }
  return hr;
}

/// Sets `*count` to 0, then to how many children the path selects. E_POINTER for null or an empty
/// element.
HRESULT CountChildren(const dom::Element& parent, const char* path, LONG* count);

/// The first child of the path "./NAME", without memory. S_FALSE and an empty element when there is
/// none; E_INVALIDARG for any other path.
HRESULT FindChild(const dom::Element& parent, const char* path, dom::Element* child);

/// The match at a 0-based position, by the rule for lists; E_POINTER for an empty element, too.
HRESULT GetChild(const dom::Element& parent, const char* path, LONG position, dom::Element* child);

/// Removes the children of the path "./NAME" from `parent`; the result is that of the last removal.
/// E_INVALIDARG for any other path. Takes no memory: a list that has let go of a record must be
/// able to strip its element.
HRESULT RemoveAllChildren(const dom::Element& parent, const char* path);

}  // namespace xml
