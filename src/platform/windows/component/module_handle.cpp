#include "platform/windows/component/module_handle.h"

#include "platform/library.h"

namespace {

// Null in a program that is linked with the objects: no handle then means the program.
HINSTANCE g_module = nullptr;

}  // namespace

HMODULE OwnModule() { return g_module; }

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    g_module = instance;
    DisableThreadLibraryCalls(instance);
    library::OnAttach();
  } else if (reason == DLL_PROCESS_DETACH) {
    library::OnDetach();
  }
  return TRUE;
}
