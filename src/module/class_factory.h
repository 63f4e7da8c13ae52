#pragma once

#include <atomic>

#include "platform/com.h"

/// The class object of one class. Its own references do not keep the library loaded.
class CClassFactory final : public IClassFactory {
 public:
  /// Makes an instance, alone or as part of an outer object, and asks it for an interface.
  using Creator = HRESULT (*)(IUnknown* outer, REFIID riid, void** ppv);

  explicit CClassFactory(Creator create) : m_create(create) {}
  CClassFactory(const CClassFactory&) = delete;
  CClassFactory& operator=(const CClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  /// E_POINTER for a null out-pointer. With an outer object only IID_IUnknown may be asked for,
  /// else CLASS_E_NOAGGREGATION.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                           void** ppvObject) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) override;

 private:
  ~CClassFactory() = default;

  const Creator m_create;
  std::atomic<ULONG> m_count{1};
};
