#include "module/class_factory.h"

#include "core/module_lock.h"

HRESULT CClassFactory::QueryInterface(REFIID riid, void** ppvObject) {
  if (ppvObject == nullptr) return E_POINTER;
  *ppvObject = nullptr;
  if (riid != IID_IUnknown && riid != IID_IClassFactory) return E_NOINTERFACE;
  *ppvObject = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG CClassFactory::AddRef() { return ++m_count; }

ULONG CClassFactory::Release() {
  const ULONG count = --m_count;
  if (count == 0) delete this;
  return count;
}

HRESULT CClassFactory::CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) {
  if (ppvObject == nullptr) return E_POINTER;
  *ppvObject = nullptr;
  if (pUnkOuter != nullptr && riid != IID_IUnknown) return CLASS_E_NOAGGREGATION;
  return m_create(pUnkOuter, riid, ppvObject);
}

HRESULT CClassFactory::LockServer(BOOL fLock) {
  if (fLock) {
    ModuleLock::Lock();
  } else {
    ModuleLock::Unlock();
  }
  return S_OK;
}
