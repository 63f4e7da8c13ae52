#include "module/loaded_library.h"

HRESULT LoadedLibrary::CallPlain(const char* name) const {
  using Function = HRESULT(STDMETHODCALLTYPE*)();
  const auto function = reinterpret_cast<Function>(Find(name));
  return function ? function() : E_UNEXPECTED;
}

HRESULT LoadedLibrary::Install(bool install, const OLECHAR* commandLine) const {
  using Function = HRESULT(STDMETHODCALLTYPE*)(BOOL, const OLECHAR*);
  const auto function = reinterpret_cast<Function>(Find("DllInstall"));
  return function ? function(install, commandLine) : E_UNEXPECTED;
}

HRESULT LoadedLibrary::GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const {
  using Function = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
  const auto function = reinterpret_cast<Function>(Find("DllGetClassObject"));
  return function ? function(rclsid, riid, ppv) : E_UNEXPECTED;
}
