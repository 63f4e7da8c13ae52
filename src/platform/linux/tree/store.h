#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/linux/tree/file_bytes.h"
#include "platform/linux/tree/names.h"
#include "platform/linux/tree/node.h"
#include "platform/linux/tree/pool.h"

namespace domtree {

class SharedDocument;

/// Levels of elements that a file may have; the parser refuses more, and so does the writer.
inline constexpr std::uint32_t kDeepest = 256;

/// What stands in front of the document: nothing, or the XML declaration.
enum class Declaration : std::uint8_t { None, Plain, Standalone, NotStandalone };

/// One tree and everything that its nodes point to. It lives as long as its document or somebody
/// outside holds one of its nodes. Functions that need memory raise std::bad_alloc and then leave
/// the tree as it was.
class Store {
 public:
  /// The one user of a new store is its document.
  Store() : m_names(m_pool), m_root(*this, Kind::Document, kNoName) {}
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  void AddUser() { m_users.fetch_add(1, std::memory_order_relaxed); }
  /// The document's farewell: frees the tree but for nodes that are held from outside. Those become
  /// roots of their own, with what is below them.
  void Abandon();
  /// Called when the last reference from outside on a node went.
  void LetGo(Node& node);

  /// Null when the document that the tree was made for is gone or has other contents now.
  SharedDocument* Document() const { return m_document; }
  void SetDocument(SharedDocument* document) { m_document = document; }

  Node& Root() { return m_root; }
  const Node& Root() const { return m_root; }
  /// The document element; null when there is none.
  Node* RootElement() const { return Node::ElementFrom(m_root.First()); }
  Names& GetNames() { return m_names; }
  const Names& GetNames() const { return m_names; }
  Declaration GetDeclaration() const { return m_declaration; }
  void SetDeclaration(Declaration declaration) { m_declaration = declaration; }

  /// Values may point into these bytes.
  FileBytes& File() { return m_file; }
  const FileBytes& File() const { return m_file; }

  /// A node without a parent, with room for so many attributes.
  Node& NewNode(Kind kind, NameId name, std::size_t attributes = 0);
  /// An element of a plain name with room for as many attributes as others of the name came to
  /// have; null for any other name.
  Node* NewElement(dom::Name name);
  /// A node that is no element, with its text.
  Node& NewLeaf(Kind kind, NameId target, std::string_view text);
  /// Puts a node in front of a child of `parent` or, with none, behind the last one. It leaves its
  /// old place first. It must not hold `parent`.
  void Insert(Node& parent, Node& child, Node* before);
  /// Makes the node a root of its own.
  void Unlink(Node& node);

  void Append(Node& element, NameId name, std::string_view value) {
    if (element.m_count == element.Capacity()) Grow(element);
    element.m_ascends = element.m_ascends && element.LacksSurely(name);
    Make(element.Attributes() + element.m_count, name, value);
    ++element.m_count;
  }
  void Assign(Attribute& attribute, std::string_view value);

 private:
  ~Store() = default;
  void DropUser();
  /// Frees a root and what is below it, but for what is held.
  void Free(Node& root);
  void Delete(Node& node);
  /// Makes an attribute where it is to stand: one that is handed over is put together in memory,
  /// and fetching it from there makes the processor wait.
  void Make(Attribute* place, NameId name, std::string_view value) {
    if (!m_file.Holds(value.data(), value.size())) return MakeOutside(place, name, value);
    new (place)
        Attribute(Attribute::InFile(name, static_cast<std::uint32_t>(value.data() - m_file.Data()),
                                    static_cast<std::uint32_t>(value.size())));
  }
  /// The same for a value that is no part of the file.
  void MakeOutside(Attribute* place, NameId name, std::string_view value);
  void Discard(const Attribute& attribute) noexcept;
  void Grow(Node& element);

  Pool m_pool;
  Names m_names;
  FileBytes m_file;
  Node m_root;
  SharedDocument* m_document = nullptr;
  /// The document, and every node that is held from outside.
  std::atomic<std::uint32_t> m_users{1};
  Declaration m_declaration = Declaration::None;
};

inline std::string_view Node::ValueOf(const Attribute& attribute) const {
  return attribute.Value(m_store->File().Data());
}

struct StoreEnd {
  void operator()(Store* store) const { store->Abandon(); }
};
/// A store that no document has yet.
using NewStore = std::unique_ptr<Store, StoreEnd>;

}  // namespace domtree
