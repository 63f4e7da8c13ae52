#include "platform/linux/tree/node.h"

#include <cstring>

#include "platform/dom.h"
#include "platform/linux/tree/store.h"

namespace domtree {
namespace {

const void* TableOf(const IUnknown* object) {
  const void* table = nullptr;
  std::memcpy(&table, static_cast<const void*>(object), sizeof(table));
  return table;
}

}  // namespace

bool Node::Is(const IUnknown* object) {
  static const void* const table = [] {
    const Node pattern;
    return TableOf(&pattern);
  }();
  return TableOf(object) == table;
}

HRESULT Node::QueryInterface(REFIID riid, void** ppvObject) {
  if (ppvObject == nullptr) return E_POINTER;
  *ppvObject = nullptr;
  const bool isElement = riid == dom::kIidElement && IsElement();
  if (!isElement && riid != dom::kIidNode && riid != IID_IUnknown) return E_NOINTERFACE;
  AddRef();
  *ppvObject = static_cast<IUnknown*>(this);
  return S_OK;
}

ULONG Node::AddRef() {
  const std::uint32_t before = m_references.fetch_add(1, std::memory_order_relaxed);
  if (before == 0) m_store->AddUser();
  return before + 1;
}

ULONG Node::Release() {
  const std::uint32_t left = m_references.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (left == 0) m_store->LetGo(*this);
  return left;
}

Attribute* Node::FindAttribute(NameId name) const {
  Attribute* const first = Attributes();
  for (std::uint32_t i = 0; i < m_count; ++i) {
    if (first[i].Name() == name) return first + i;
  }
  return nullptr;
}

}  // namespace domtree
