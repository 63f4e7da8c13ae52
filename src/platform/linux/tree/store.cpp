#include "platform/linux/tree/store.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "platform/lack_of_memory.h"

namespace domtree {
namespace {

constexpr std::size_t kMostInline = std::numeric_limits<std::uint16_t>::max();
constexpr std::size_t kLongestValue =
    std::numeric_limits<std::uint32_t>::max() - Attribute::kBlockHeader;

std::size_t BlockRoom(std::string_view value) {
  return Pool::RoomOf(Attribute::kBlockHeader + value.size());
}

/// The value may stand in the block already.
void WriteBlock(char* block, std::string_view value) {
  const auto length = static_cast<std::uint32_t>(value.size());
  std::memmove(block + Attribute::kBlockHeader, value.data(), value.size());
  std::memcpy(block, &length, sizeof(length));
}

}  // namespace

void Store::Abandon() {
  m_document = nullptr;
  // Without holders the pool's end is the end of every node.
  if (m_users.load(std::memory_order_acquire) > 1) {
    while (Node* child = m_root.m_first) {
      Unlink(*child);
      if (!child->IsHeld()) Free(*child);
    }
  }
  DropUser();
}

void Store::LetGo(Node& node) {
  if (node.m_parent == nullptr) Free(node);
  DropUser();
}

void Store::DropUser() {
  if (m_users.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

Node& Store::NewNode(Kind kind, NameId name, std::size_t attributes) {
  const std::size_t room = std::clamp<std::size_t>(attributes, 1, kMostInline);
  Node* node = new (m_pool.Allocate(Node::SizeWith(room))) Node(*this, kind, name);
  node->m_room = static_cast<std::uint16_t>(room);
  return *node;
}

Node* Store::NewElement(dom::Name name) {
  const NameId id = m_names.InternPlain(name);
  if (id == kNoName) return nullptr;
  // Room for what the smallest of the files' elements have, at least.
  constexpr std::size_t kUsualAttributes = 4;
  const std::size_t room = std::max<std::size_t>(kUsualAttributes, m_names.UsualAttributes(id));
  Node& element = NewNode(Kind::Element, id, room);
  element.m_ascends = true;
  return &element;
}

Node& Store::NewLeaf(Kind kind, NameId target, std::string_view text) {
  Node& leaf = NewNode(kind, target, 1);
  Append(leaf, kNoName, text);
  return leaf;
}

void Store::Insert(Node& parent, Node& child, Node* before) {
  if (before == &child) before = child.m_next;
  Unlink(child);
  child.m_parent = &parent;
  child.m_next = before;
  if (parent.m_first == nullptr) {
    child.m_previous = &child;
    parent.m_first = &child;
    return;
  }
  Node*& previous = before ? before->m_previous : parent.m_first->m_previous;
  child.m_previous = previous;
  (before == parent.m_first ? parent.m_first : previous->m_next) = &child;
  previous = &child;
}

void Store::Unlink(Node& node) {
  if (node.m_parent == nullptr) return;
  Node& parent = *node.m_parent;
  Node*& after = node.m_next ? node.m_next->m_previous : parent.m_first->m_previous;
  (parent.m_first == &node ? parent.m_first : node.m_previous->m_next) = node.m_next;
  after = node.m_previous;
  node.m_parent = node.m_previous = node.m_next = nullptr;
  if (parent.m_first == nullptr) parent.m_spaceAtEnd = false;
}

void Store::Free(Node& root) {
  Node* node = &root;
  for (;;) {
    if (Node* child = node->m_first) {
      node->m_first = child->m_next;
      child->m_previous = child->m_next = nullptr;
      if (child->IsHeld()) {
        child->m_parent = nullptr;
      } else {
        node = child;
      }
      continue;
    }
    Node* const parent = node->m_parent;
    Delete(*node);
    if (parent == nullptr) return;
    node = parent;
  }
}

void Store::Delete(Node& node) {
  std::for_each_n(node.Attributes(), node.m_count, [this](const Attribute& a) { Discard(a); });
  if (node.m_isOutgrown) {
    m_pool.Free(node.Attributes(), node.Elsewhere()->capacity * sizeof(Attribute));
  }
  m_pool.Free(&node, Node::SizeWith(node.m_room));
}

void Store::Grow(Node& element) {
  const std::uint32_t capacity = element.Capacity();
  if (capacity > std::numeric_limits<std::uint32_t>::max() / 2) throw std::bad_alloc();
  const std::uint32_t larger = std::max(4U, 2 * capacity);
  // One element of very many attributes is no example for others.
  constexpr std::uint32_t kMostUsual = 16;
  if (element.IsElement()) {
    m_names.NoteAttributes(element.Name(), static_cast<std::uint8_t>(std::min(larger, kMostUsual)));
  }
  auto* attributes = static_cast<Attribute*>(m_pool.Allocate(larger * sizeof(Attribute)));
  std::uninitialized_copy_n(element.Attributes(), element.m_count, attributes);
  if (element.m_isOutgrown) m_pool.Free(element.Attributes(), capacity * sizeof(Attribute));
  new (element.Elsewhere()) Node::Outgrown{attributes, larger};
  element.m_isOutgrown = true;
}

void Store::Assign(Attribute& attribute, std::string_view value) {
  const std::string_view old = attribute.Value(m_file.Data());
  if (old == value) return;
  if (attribute.IsPooled() && BlockRoom(old) == BlockRoom(value)) {
    WriteBlock(attribute.Block(), value);
    return;
  }
  const Attribute before = attribute;
  Make(&attribute, attribute.Name(), value);
  Discard(before);
}

void Store::MakeOutside(Attribute* place, NameId name, std::string_view value) {
  if (value.size() <= Attribute::kInline) {
    new (place) Attribute(Attribute::Inline(name, value));
    return;
  }
  if (value.size() > kLongestValue) throw std::bad_alloc();
  char* block = static_cast<char*>(m_pool.Allocate(Attribute::kBlockHeader + value.size()));
  WriteBlock(block, value);
  new (place) Attribute(Attribute::Pooled(name, block));
}

void Store::Discard(const Attribute& attribute) noexcept {
  if (!attribute.IsPooled()) return;
  const std::string_view text = attribute.Value(m_file.Data());
  m_pool.Free(attribute.Block(), Attribute::kBlockHeader + text.size());
}

}  // namespace domtree
