// The object template under every record and list: reference count, interface identity,
// destruction.
#pragma once

#include <algorithm>
#include <atomic>
#include <memory>

#include "core/interface_id.h"
#include "platform/com.h"
#include "platform/lack_of_memory.h"

/// Implements IUnknown for the class `C` that implements the interface `I`; `C` derives from this
/// and has a default constructor. The count starts at 1: that reference is the owner's, also when
/// the object is a member of another one, which then calls SetOwned. Stand-alone objects come from
/// CreateInstance. Only the count is safe for concurrent use.
template <typename C, typename I>
class CGenComObj : public I {
 public:
  CGenComObj() = default;
  CGenComObj(const CGenComObj&) = delete;
  CGenComObj& operator=(const CGenComObj&) = delete;
  /// Declared here and not in the interface, so its slots stand behind the interface's methods.
  virtual ~CGenComObj() = default;

  /// A new object with one reference, the caller's. E_POINTER for null, E_OUTOFMEMORY when it
  /// cannot be made; `*object` is untouched then.
  static HRESULT CreateInstance(I** object);

  /// While another object owns this one, its count does not end its life: a Release too many
  /// answers 0 and leaves the owner's reference.
  void SetOwned(bool isOwned) { m_isOwned = isOwned; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return std::max<ULONG>(++m_count, 1); }
  ULONG STDMETHODCALLTYPE Release() override;

 private:
  std::atomic<ULONG> m_count{1};
  std::atomic<bool> m_isOwned{false};
};

template <typename C, typename I>
HRESULT CGenComObj<C, I>::CreateInstance(I** object) {
  if (object == nullptr) return E_POINTER;
  std::unique_ptr<C> made;
  HRESULT hr = AnsweringLackOfMemory([&made] {
    made = std::make_unique<C>();
    return S_OK;
  });
  if (FAILED(hr)) return hr;
  CGenComObj& base = *made;
  base.m_count = 0;
  void* found = nullptr;
  hr = base.QueryInterface(InterfaceId<I>::kValue, &found);
  if (FAILED(hr)) return hr;
  static_cast<void>(made.release());
  *object = static_cast<I*>(found);
  return hr;
}

template <typename C, typename I>
HRESULT STDMETHODCALLTYPE CGenComObj<C, I>::QueryInterface(REFIID riid, void** ppvObject) {
  if (ppvObject == nullptr) return E_POINTER;
  if (!(riid == IID_IUnknown) && !(riid == InterfaceId<I>::kValue)) {
    *ppvObject = nullptr;
    return E_NOINTERFACE;
  }
  *ppvObject = static_cast<I*>(this);
  this->AddRef();
  return S_OK;
}

template <typename C, typename I>
ULONG STDMETHODCALLTYPE CGenComObj<C, I>::Release() {
  const ULONG count = --m_count;
  if (count != 0) return count;
  // What refers back to the object while it goes counts from 1, and cannot destroy it again.
  m_count = 1;
  if (!m_isOwned) delete this;
  return 0;
}
