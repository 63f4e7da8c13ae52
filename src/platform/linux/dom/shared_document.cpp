#include "platform/linux/dom/shared_document.h"

#include <utility>

#include "platform/files.h"
#include "platform/linux/markup/parser.h"
#include "platform/linux/markup/writer.h"

namespace domtree {

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
  FileBytes file;
  NewStore store;
  if (file.Read(path)) store = Parse(std::move(file));
  const bool isRead = store != nullptr;
  Replace(isRead ? store.release() : new Store);
  return isRead;
}

bool SharedDocument::Save(const std::string& path) const {
  files::AtomicFile file(path);
  return Writer(*m_store, file).Write() && file.Commit();
}

}  // namespace domtree
