// The document tree that the files live in. Windows: a thin wrap of MSXML 3.0. Linux: a compact
// tree filled by libxml2's SAX2 parser. Result codes are those of MSXML 3 on both targets:
//
//   load of a missing, empty or malformed file   S_FALSE, success flag false, no document element
//   get a missing attribute                      S_FALSE, no value
//   first match: none                            S_FALSE, null; a list of none: S_OK, length 0
//   item past the end, or negative               S_FALSE, null
//   remove a node that is not a child            E_INVALIDARG
//   null argument, or an empty handle            E_INVALIDARG
//
// Names are ASCII. A path is a chain of steps, "./A", "./A/B", each step a child element name with
// any number of predicates [@name='value'] (blanks around = allowed). A path that is no such chain,
// as one with a value that holds an apostrophe, is answered E_INVALIDARG by the seam itself: some
// implementations crash on it. A tag name with a prefix is compared as it stands.
//
// White space alone between elements is dropped on loading; comments stay and count as child nodes.
//
// Lack of memory is raised, as std::bad_alloc or ComError; what MSXML lacks may be answered
// E_OUTOFMEMORY.
//
// Documents are not safe for concurrent use; only reference counts are atomic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/bstr.h"
#include "platform/com.h"
#include "platform/dom_name.h"

namespace dom {

inline constexpr IID kIidNode = {
    0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID kIidElement = {
    0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

class Document;
class ElementList;

/// Owns one reference on an element. An element stays alive while somebody holds it, also when it
/// was removed from its parent or its document was closed.
class Element {
 public:
  Element() = default;
  Element(const Element& other);
  Element(Element&& other) noexcept
      : m_node(std::exchange(other.m_node, nullptr)), m_hint(other.m_hint) {}
  Element& operator=(Element other) noexcept {
    std::swap(m_node, other.m_node);
    std::swap(m_hint, other.m_hint);
    return *this;
  }
  ~Element() { Release(); }

  /// The element behind a pointer that a list was given. E_INVALIDARG for null and for what is not
  /// an element of this library's documents.
  static HRESULT From(IUnknown* node, Element& out);
  /// Takes over one reference on a node that is known to be an element.
  static Element Attach(IUnknown* node);

  explicit operator bool() const { return m_node != nullptr; }
  /// Borrowed; stays valid while the handle holds it.
  IUnknown* Get() const { return m_node; }
  /// Gives the reference up and answers how many the outside still holds: 0 for the last one.
  ULONG Release();

  HRESULT TagName(std::string& name) const;
  /// True when the tag, with its prefix, is this name. Takes no memory of ours.
  bool HasTag(Name name) const;
  HRESULT OwnerDocument(Document& out) const;

  /// First match of a relative path.
  HRESULT SelectSingle(const char* path, Element& out) const;
  /// All matches in document order, as they stand now.
  HRESULT Select(const char* path, ElementList& out) const;

  /// A new element of the same document, without a parent.
  HRESULT CreateElement(Name name, Element& out) const;
  HRESULT AppendChild(const Element& child) const;
  /// An empty `before` appends.
  HRESULT InsertBefore(const Element& child, const Element& before) const;
  HRESULT RemoveChild(const Element& child) const;
  /// Elements, texts and comments alike.
  bool HasChildNodes() const;
  HRESULT FirstChildElement(Element& out) const;
  HRESULT NextSiblingElement(Element& out) const;
  /// Calls `visit` with every child that is an element, in document order. The handle is lent for
  /// the call, a copy keeps the element. The children must stay where they are meanwhile.
  template <typename Visit>
  HRESULT VisitChildElements(Visit visit) const {
    return VisitChildren(std::ref(visit));
  }
  /// Makes an element, calls `fill` with it, lent as above, and appends it. What `fill` raises
  /// leaves no half of one.
  template <typename Fill>
  HRESULT AppendNew(Name name, Fill fill) const {
    return AppendFilled(name, std::ref(fill));
  }

  /// The value by the decimal rule of text::ToInt. `value` is untouched unless S_OK.
  HRESULT GetInt(Name name, std::int32_t& value) const;
  /// The value in the system's ANSI code page, terminated, cut on a character boundary to what fits
  /// `size`. The buffer is untouched unless S_OK.
  HRESULT GetNarrow(Name name, char* buffer, std::size_t size) const;
  /// The whole value; `value` is untouched unless S_OK.
  HRESULT GetWide(Name name, Bstr& value) const;
  /// The whole value as UTF-8; `value` is untouched unless S_OK.
  HRESULT GetUtf8(Name name, std::string& value) const;

  HRESULT SetInt(Name name, std::int32_t value) const;
  /// A null text is written as the empty one.
  HRESULT SetWide(Name name, BSTR value) const;
  /// Text in the thread's ANSI code page.
  HRESULT SetNarrow(Name name, std::string_view value) const;

  /// Every attribute in stored order, names and values as UTF-8 without escapes.
  using AttributeVisitor = std::function<void(std::string_view name, std::string_view value)>;
  HRESULT VisitAttributes(const AttributeVisitor& visit) const;

 private:
  /// A handle without a reference of its own.
  struct Lent;
  using ChildVisitor = std::function<void(const Element& child)>;
  HRESULT VisitChildren(const ChildVisitor& visit) const;
  HRESULT AppendFilled(Name name, const ChildVisitor& fill) const;

  IUnknown* m_node = nullptr;
  // Where the next attribute is expected: files that we wrote keep the order in which we read.
  mutable std::uint32_t m_hint = 0;
};

/// The elements that a path selected, each held.
class ElementList {
 public:
  ElementList() = default;
  ElementList(ElementList&& other) noexcept
      : m_items(std::exchange(other.m_items, nullptr)), m_count(std::exchange(other.m_count, 0)) {}
  ElementList& operator=(ElementList&& other) noexcept {
    std::swap(m_items, other.m_items);
    std::swap(m_count, other.m_count);
    return *this;
  }
  ~ElementList();

  LONG Count() const { return m_count; }
  HRESULT Item(LONG position, Element& out) const;

 private:
  friend class Element;
  IUnknown** m_items = nullptr;
  LONG m_count = 0;
};

/// Owns one reference on a document.
class Document {
 public:
  Document() = default;
  Document(const Document& other);
  Document(Document&& other) noexcept : m_document(std::exchange(other.m_document, nullptr)) {}
  Document& operator=(Document other) noexcept {
    std::swap(m_document, other.m_document);
    return *this;
  }
  ~Document() { Close(); }

  /// Makes an empty document; a failure is the platform's own.
  HRESULT Create();
  void Close();
  explicit operator bool() const { return m_document != nullptr; }

  /// Replaces the contents by the file's. S_OK with `success` true, or S_FALSE with `success` false
  /// and an empty document. Where lack of memory is raised, the contents are the old ones or none.
  HRESULT Load(const std::string& path, bool& success);
  /// Writes the document; the old file stays when that fails or when the document cannot be written
  /// as well-formed XML.
  HRESULT Save(const std::string& path) const;

  HRESULT DocumentElement(Element& out) const;
  HRESULT AppendProcessingInstruction(const char* target, const char* data) const;
  HRESULT CreateElement(const char* name, Element& out) const;
  /// The document element.
  HRESULT AppendChild(const Element& child) const;

 private:
  friend class Element;
  void* m_document = nullptr;
};

}  // namespace dom
