#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/com.h"
#include "platform/linux/tree/attribute.h"
#include "platform/linux/tree/names.h"

namespace domtree {

class Store;

enum class Kind : std::uint8_t { Document, Element, Text, Cdata, Comment, Instruction };

/// One node of a tree. The references counted are those from outside; the tree holds its nodes
/// without counting. Made, linked and freed by the store alone.
class Node final : public IUnknown {
 public:
  /// True when `object` is a node of this library.
  static bool Is(const IUnknown* object);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  Store& Owner() const { return *m_store; }
  bool IsElement() const { return m_kind == Kind::Element; }
  Kind GetKind() const { return m_kind; }
  /// Of an element its tag, of a processing instruction its target.
  NameId Name() const { return m_name; }
  /// Of a node that is no element.
  std::string_view Text() const { return ValueOf(At(0)); }

  Node* Parent() const { return m_parent; }
  Node* First() const { return m_first; }
  Node* Last() const { return m_first ? m_first->m_previous : nullptr; }
  Node* Next() const { return m_next; }
  /// The sibling in front; null for the first one.
  Node* Previous() const { return m_parent->m_first == this ? nullptr : m_previous; }
  /// This node when it is an element, else the next sibling that is one; null when there is none.
  static Node* ElementFrom(Node* node) {
    while (node && !node->IsElement()) node = node->m_next;
    return node;
  }

  std::uint32_t AttributeCount() const { return m_count; }
  Attribute& At(std::uint32_t position) const { return Attributes()[position]; }
  std::string_view ValueOf(const Attribute& attribute) const;
  /// Null when there is none.
  Attribute* FindAttribute(NameId name) const;
  /// True only when there is none; the last one tells.
  bool LacksSurely(NameId name) const {
    return m_count == 0 || (m_ascends && At(m_count - 1).Name() < name);
  }

  /// White space stood in front of the node, or in front of an element's end tag, in the file.
  bool HasSpaceBefore() const { return m_spaceBefore; }
  bool HasSpaceAtEnd() const { return m_spaceAtEnd; }
  void SetSpaceBefore(bool space) { m_spaceBefore = space; }
  void SetSpaceAtEnd(bool space) { m_spaceAtEnd = space; }

 private:
  friend class Store;

  /// What stands behind a node instead of its attributes when these have outgrown their place.
  struct Outgrown {
    Attribute* attributes;
    std::uint32_t capacity;
  };

  Node() = default;
  Node(Store& store, Kind kind, NameId name) : m_store(&store), m_name(name), m_kind(kind) {}

  /// Bytes of a node with room for so many attributes.
  static std::size_t SizeWith(std::size_t room) {
    return sizeof(Node) + std::max(sizeof(Outgrown), room * sizeof(Attribute));
  }
  Outgrown* Elsewhere() const { return reinterpret_cast<Outgrown*>(const_cast<Node*>(this) + 1); }
  Attribute* Attributes() const {
    if (m_isOutgrown) return Elsewhere()->attributes;
    return reinterpret_cast<Attribute*>(const_cast<Node*>(this) + 1);
  }
  /// Attributes that fit where they are.
  std::uint32_t Capacity() const { return m_isOutgrown ? Elsewhere()->capacity : m_room; }
  bool IsHeld() const { return m_references.load(std::memory_order_acquire) != 0; }

  Store* m_store = nullptr;
  Node* m_parent = nullptr;
  Node* m_first = nullptr;
  /// The first sibling's is the last one; null without a parent.
  Node* m_previous = nullptr;
  Node* m_next = nullptr;
  std::atomic<std::uint32_t> m_references{0};
  NameId m_name = kNoName;
  std::uint32_t m_count = 0;
  /// Attributes that fit behind the node.
  std::uint16_t m_room = 0;
  Kind m_kind = Kind::Document;
  bool m_spaceBefore : 1 = false;
  bool m_spaceAtEnd : 1 = false;
  bool m_isOutgrown : 1 = false;
  /// The attributes' names are known to ascend, as those of elements that are made alike do.
  bool m_ascends : 1 = false;
};
static_assert(sizeof(Node) == 64);

}  // namespace domtree
