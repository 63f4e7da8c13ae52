#pragma once

#include <iterator>
#include <mutex>
#include <string_view>

#include "module/object_map.h"
#include "platform/com.h"
#include "platform/com_ptr.h"

/// The library as a server of classes: their class objects and their registration.
class Module {
 public:
  /// The one of this library.
  static Module& Get();

  /// Releases the class objects. The next request makes new ones.
  void Terminate();

  /// The class object, made at the first request for its class and kept from then on.
  HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

  /// Registers every class, then the type library; the first failure ends it and is the answer.
  HRESULT Register(RegistrationScope scope);

  /// The reverse, in the same order. S_FALSE when everything of ours is gone, but a foreign key
  /// below one of ours kept it.
  HRESULT Unregister(RegistrationScope scope);

 private:
  ComPtr<IClassFactory> FactoryOf(std::size_t index);

  std::mutex m_mutex;
  ComPtr<IClassFactory> m_factories[std::size(kObjectMap)];
};

/// For whom a command line of DllInstall registers: for one user when a word of it is "user" in any
/// case. Null is an empty line.
RegistrationScope ScopeOf(const OLECHAR* commandLine);
