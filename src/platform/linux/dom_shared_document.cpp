#include "platform/linux/dom_shared_document.h"

#include <memory>
#include <new>
#include <utility>

#include "platform/files.h"
#include "platform/linux/dom_parser.h"
#include "platform/linux/dom_writer.h"

namespace domtree {
namespace {

struct StoreEnd {
  void operator()(Store* store) const { store->Abandon(); }
};
/// A store that no document has yet.
using NewStore = std::unique_ptr<Store, StoreEnd>;

}  // namespace

SharedDocument* SharedDocument::Create() {
  NewStore store(new Store);
  SharedDocument* document = new SharedDocument(store.get());
  static_cast<void>(store.release());
  return document;
}

SharedDocument* SharedDocument::Of(Store& store) {
  if (SharedDocument* document = store.Document()) {
    document->AddRef();
    return document;
  }
  SharedDocument* document = new SharedDocument(&store);
  store.AddUser();
  return document;
}

void SharedDocument::Release() {
  if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

void SharedDocument::Replace(Store* store) {
  store->SetDocument(this);
  std::exchange(m_store, store)->Abandon();
}

bool SharedDocument::Load(const std::string& path) {
  // The old contents go first: two large trees need not fit at once.
  Replace(new Store);
  try {
    NewStore store(new Store);
    if (!store->File().Read(path) || !Parse(*store)) return false;
    Replace(store.release());
    return true;
  } catch (const std::bad_alloc&) {
    // A file that memory does not suffice for is one that cannot be read.
    return false;
  }
}

bool SharedDocument::Save(const std::string& path) const {
  files::AtomicFile file(path);
  return Writer(*m_store, file).Write() && file.Commit();
}

}  // namespace domtree
