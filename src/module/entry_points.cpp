// What the library exports for its hosts and for the platform.
#include "core/module_lock.h"
#include "module/module.h"
#include "platform/lack_of_memory.h"

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  *ppv = nullptr;
  return Module::Get().GetClassObject(rclsid, riid, ppv);
}

STDAPI DllCanUnloadNow() { return ModuleLock::IsHeld() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
  return AnsweringLackOfMemory([] { return Module::Get().Register(RegistrationScope::Machine); });
}

STDAPI DllUnregisterServer() {
  return AnsweringLackOfMemory([] { return Module::Get().Unregister(RegistrationScope::Machine); });
}

STDAPI DllInstall(BOOL install, const OLECHAR* commandLine) {
  return AnsweringLackOfMemory([=] {
    Module& module = Module::Get();
    const RegistrationScope scope = ScopeOf(commandLine);
    return install ? module.Register(scope) : module.Unregister(scope);
  });
}
