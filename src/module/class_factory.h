#pragma once

#include <atomic>

#include "platform/com.h"

/// The class object of CLSID_ZorTunedex. Its own references do not keep the library loaded.
class CClassFactory final : public IClassFactory {
 public:
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

  std::atomic<ULONG> m_count{1};
};
