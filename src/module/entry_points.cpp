// What the library exports for its hosts and for the platform.
#include "core/module_lock.h"
#include "module/module.h"
#include "platform/lack_of_memory.h"

namespace {

/// Lack of memory leaves these entry points as a code: registration tools are no C++ programs.
template <typename Work>
HRESULT Answer(Work work) {
  return AnsweringLackOfMemory([&] { return work(Module::Get()); });
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  return Module::Get().GetClassObject(rclsid, riid, ppv);
}

STDAPI DllCanUnloadNow() { return ModuleLock::IsHeld() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
  return Answer([](Module& module) { return module.Register(RegistrationScope::Machine); });
}

STDAPI DllUnregisterServer() {
  return Answer([](Module& module) { return module.Unregister(RegistrationScope::Machine); });
}

STDAPI DllInstall(BOOL install, const OLECHAR* commandLine) {
  return Answer([&](Module& module) {
    const RegistrationScope scope = ScopeOf(commandLine);
    return install ? module.Register(scope) : module.Unregister(scope);
  });
}
