#pragma once

#include <string>

#include "platform/com.h"
#include "platform/windows/module_path.h"

namespace component {

/// Of the running program, with the separator.
inline std::wstring ProgramDirectory() {
  const std::wstring path = ModulePath(nullptr);
  return path.substr(0, path.find_last_of(L"\\/") + 1);
}

/// The library beside the program, loaded at the first call and never unloaded. Null when there is
/// none.
inline HMODULE Library() {
  static const HMODULE library = LoadLibraryW((ProgramDirectory() + L"ZorTunedex.dll").c_str());
  return library;
}

/// Null when there is no library.
template <typename Function>
Function* EntryPoint(const char* name) {
  if (Library() == nullptr) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(Library(), name)));
}

inline HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  const auto function =
      EntryPoint<HRESULT __stdcall(REFCLSID, REFIID, void**)>("DllGetClassObject");
  return function ? function(rclsid, riid, ppv) : HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND);
}

}  // namespace component

/// See platform/component.h. Linking to DllGetClassObject is no way: several of the system's import
/// libraries have a function of that name, and it is theirs.
class Component {
 public:
  Component() : m_isPrepared(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;
  ~Component() {
    if (m_isPrepared) CoUninitialize();
  }

  HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const {
    return component::GetClassObject(rclsid, riid, ppv);
  }

 private:
  bool m_isPrepared;
};
