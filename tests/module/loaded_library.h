#pragma once

#include <string>

#include "platform/com.h"
#include "support/registry_sandbox.h"

/// A copy of the library that a test loads from a place of its own.
class LoadedLibrary {
 public:
  /// Loads the file at a path in UTF-8.
  explicit LoadedLibrary(const std::string& path);
  /// The same; the registry is the sandbox's.
  LoadedLibrary(const std::string& path, const RegistrySandbox& sandbox);
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;
  ~LoadedLibrary();

  /// True where registering includes a type library. The platform then answers a failure of its own
  /// for unregistering one that is not registered.
  static const bool kHasTypeLibrary;

  bool IsLoaded() const { return m_module != nullptr; }
  HRESULT Register() const { return CallPlain("DllRegisterServer"); }
  HRESULT Unregister() const { return CallPlain("DllUnregisterServer"); }
  HRESULT CanUnload() const { return CallPlain("DllCanUnloadNow"); }
  HRESULT Install(bool install, const OLECHAR* commandLine) const;
  HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const;

  /// Copies the built library to a path, directories of any length included.
  static bool Copy(const std::string& path);
  /// The path in the form that a registration holds.
  static std::string Registered(const std::string& path);

 private:
  void* Find(const char* name) const;
  HRESULT CallPlain(const char* name) const;

  void* m_module = nullptr;
};
