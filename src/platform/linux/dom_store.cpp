#include "platform/linux/dom_store.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace domtree {
namespace {

constexpr std::size_t kMostInline = std::numeric_limits<std::uint16_t>::max();
constexpr std::size_t kLongestValue = std::numeric_limits<std::uint32_t>::max();

std::size_t NodeSize(std::size_t room) { return sizeof(Node) + room * sizeof(Attribute); }

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
  const std::size_t room = attributes <= kMostInline ? attributes : 0;
  Node* node = new (m_pool.Allocate(NodeSize(room))) Node(*this, kind, name);
  node->m_room = static_cast<std::uint16_t>(room);
  node->m_capacity = static_cast<std::uint32_t>(room);
  node->m_attributes = reinterpret_cast<Attribute*>(node + 1);
  return *node;
}

Node& Store::NewLeaf(Kind kind, NameId target, std::string_view text) {
  Node& leaf = NewNode(kind, target, 1);
  Append(leaf, kNoName, text);
  return leaf;
}

void Store::Insert(Node& parent, Node& child, Node* before) {
  if (before == &child) before = child.m_next;
  if (child.m_parent) Unlink(child);
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
  std::for_each_n(node.m_attributes, node.m_count, [this](const Attribute& a) { Discard(a); });
  if (node.m_capacity > node.m_room) {
    m_pool.Free(node.m_attributes, node.m_capacity * sizeof(Attribute));
  }
  m_pool.Free(&node, NodeSize(node.m_room));
}

void Store::Append(Node& element, NameId name, std::string_view value) {
  const Attribute fresh = Make(name, value);
  if (element.m_count == element.m_capacity) {
    try {
      GrowAttributes(element);
    } catch (...) {
      Discard(fresh);
      throw;
    }
  }
  new (element.m_attributes + element.m_count) Attribute(fresh);
  ++element.m_count;
}

void Store::GrowAttributes(Node& element) {
  if (element.m_capacity > std::numeric_limits<std::uint32_t>::max() / 2) throw std::bad_alloc();
  const std::uint32_t capacity = std::max(4U, 2 * element.m_capacity);
  void* memory = m_pool.Allocate(capacity * sizeof(Attribute));
  std::memcpy(memory, element.m_attributes, element.m_count * sizeof(Attribute));
  if (element.m_capacity > element.m_room) {
    m_pool.Free(element.m_attributes, element.m_capacity * sizeof(Attribute));
  }
  element.m_attributes = static_cast<Attribute*>(memory);
  element.m_capacity = capacity;
}

void Store::Assign(Attribute& attribute, std::string_view value) {
  if (attribute.Value() == value) return;
  const bool fits = IsPooled(attribute) && value.size() > Attribute::kInline &&
                    Pool::RoomOf(value.size()) == Pool::RoomOf(attribute.length);
  if (fits) {
    std::memmove(const_cast<char*>(attribute.text), value.data(), value.size());
    attribute.length = static_cast<std::uint32_t>(value.size());
    return;
  }
  const Attribute fresh = Make(attribute.name, value);
  Discard(attribute);
  attribute = fresh;
}

Attribute Store::Make(NameId name, std::string_view value) {
  if (value.size() > kLongestValue) throw std::bad_alloc();
  Attribute fresh{name, static_cast<std::uint32_t>(value.size()), {}};
  if (value.size() <= Attribute::kInline) {
    std::copy(value.begin(), value.end(), fresh.inlineText);
  } else if (m_file.Holds(value.data())) {
    fresh.text = value.data();
  } else {
    char* text = static_cast<char*>(m_pool.Allocate(value.size()));
    std::copy(value.begin(), value.end(), text);
    fresh.text = text;
  }
  return fresh;
}

void Store::Discard(const Attribute& attribute) noexcept {
  if (IsPooled(attribute)) m_pool.Free(const_cast<char*>(attribute.text), attribute.length);
}

bool Store::IsPooled(const Attribute& attribute) const {
  return attribute.length > Attribute::kInline && !m_file.Holds(attribute.text);
}

}  // namespace domtree
