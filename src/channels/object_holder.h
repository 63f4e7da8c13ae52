#pragma once

#include <map>

#include "platform/com.h"
#include "platform/com_ptr.h"
#include "platform/lack_of_memory.h"

/// Objects by key, in the order of the keys; holds one reference on each.
template <typename Key, typename T>
class CObjectHolder {
 public:
  CObjectHolder() = default;
  CObjectHolder(const CObjectHolder&) = delete;
  CObjectHolder& operator=(const CObjectHolder&) = delete;
  virtual ~CObjectHolder() = default;

  /// Tells the object its key as its signal type and holds it. E_FAIL for null and for a key that
  /// is taken.
  HRESULT Register(Key key, T* object) {
    if (object == nullptr || m_objects.count(key) != 0) return E_FAIL;
    object->SetSignalType(key);
    return AnsweringLackOfMemory([=, this] {
      m_objects.emplace(key, ComPtr<T>(object));
      return S_OK;
    });
  }

  /// E_FAIL when there is none.
  HRESULT Get(Key key, T** object) const {
    if (object == nullptr) return E_POINTER;
    const auto found = m_objects.find(key);
    if (found == m_objects.end()) return E_FAIL;
    *object = ComPtr<T>(found->second).Detach();
    return S_OK;
  }

  HRESULT Count(UINT* count) const {
    if (count == nullptr) return E_POINTER;
    *count = static_cast<UINT>(m_objects.size());
    return S_OK;
  }

  void ReleaseAll() { std::map<Key, ComPtr<T>>().swap(m_objects); }

 private:
  std::map<Key, ComPtr<T>> m_objects;
};
