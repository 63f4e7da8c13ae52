#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "platform/linux/tree/store.h"

namespace domtree {

/// What document handles share: the tree that is the document's contents now.
class SharedDocument {
 public:
  /// An empty document, or one around a tree whose document is gone; the caller's is the one
  /// reference. Raises std::bad_alloc.
  static SharedDocument* Create();
  static SharedDocument* Of(Store& store);
  SharedDocument(const SharedDocument&) = delete;
  SharedDocument& operator=(const SharedDocument&) = delete;

  void AddRef() { m_references.fetch_add(1, std::memory_order_relaxed); }
  void Release();

  Store& Contents() const { return *m_store; }
  /// Replaces the contents by the file's; false, and no contents, when that cannot be read. Raises
  /// std::bad_alloc, and then leaves the contents.
  bool Load(const std::string& path);
  /// False when the document cannot be written; the old file is then as it was.
  bool Save(const std::string& path) const;

 private:
  /// Takes over the use that the caller has of the store.
  explicit SharedDocument(Store* store) : m_store(store) { store->SetDocument(this); }
  ~SharedDocument() { m_store->Abandon(); }
  void Replace(Store* store);

  std::atomic<std::uint32_t> m_references{1};
  Store* m_store;
};

}  // namespace domtree
