// The four entry points of the library.
#include <mutex>
#include <new>

#include "core/interfaces.h"
#include "core/module_lock.h"
#include "module/class_factory.h"
#include "platform/com_ptr.h"

namespace {

// Made at the first request for the class and kept until the library goes.
class FactoryCache {
 public:
  HRESULT Get(REFIID riid, void** ppv) {
    ComPtr<IClassFactory> factory;
    {
      const std::lock_guard<std::mutex> guard(m_mutex);
      if (!m_factory) {
        m_factory = ComPtr<IClassFactory>::Attach(new (std::nothrow) CClassFactory);
      }
      factory = m_factory;
    }
    return factory ? factory->QueryInterface(riid, ppv) : E_OUTOFMEMORY;
  }

 private:
  std::mutex m_mutex;
  ComPtr<IClassFactory> m_factory;
};

FactoryCache g_factoryCache;

}  // namespace

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  return rclsid == CLSID_ZorTunedex ? g_factoryCache.Get(riid, ppv) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return ModuleLock::IsHeld() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return E_NOTIMPL; }

STDAPI DllUnregisterServer() { return E_NOTIMPL; }
