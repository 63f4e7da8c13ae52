#include "module/module.h"

#include <algorithm>
#include <new>

#include "core/interfaces.h"
#include "module/class_factory.h"
#include "platform/library.h"

Module& Module::Get() {
  static Module module;
  return module;
}

void Module::Terminate() {
  const std::lock_guard<std::mutex> guard(m_mutex);
  for (ComPtr<IClassFactory>& factory : m_factories) factory.Reset();
}

ComPtr<IClassFactory> Module::FactoryOf(std::size_t index) {
  const std::lock_guard<std::mutex> guard(m_mutex);
  ComPtr<IClassFactory>& factory = m_factories[index];
  if (!factory) {
    factory = ComPtr<IClassFactory>::Attach(new (std::nothrow)
                                                CClassFactory(kObjectMap[index].createInstance));
  }
  return factory;
}

HRESULT Module::GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  const auto entry = std::find_if(std::begin(kObjectMap), std::end(kObjectMap),
                                  [&](const ObjectEntry& each) { return each.clsid == rclsid; });
  if (entry == std::end(kObjectMap)) return CLASS_E_CLASSNOTAVAILABLE;
  const auto index = static_cast<std::size_t>(entry - std::begin(kObjectMap));
  const ComPtr<IClassFactory> factory = FactoryOf(index);
  return factory ? factory->QueryInterface(riid, ppv) : E_OUTOFMEMORY;
}

HRESULT Module::Register(RegistrationScope scope) {
  for (const ObjectEntry& entry : kObjectMap) {
    const HRESULT hr = entry.writeEntries(scope);
    if (FAILED(hr)) return hr;
  }
  return library::RegisterTypeLibrary(scope == RegistrationScope::User);
}

HRESULT Module::Unregister(RegistrationScope scope) {
  bool isForeignLeft = false;
  for (const ObjectEntry& entry : kObjectMap) {
    const HRESULT hr = entry.removeEntries(scope);
    if (FAILED(hr)) return hr;
    isForeignLeft = isForeignLeft || hr == S_FALSE;
  }
  const HRESULT hr = library::UnregisterTypeLibrary(scope == RegistrationScope::User);
  return hr == S_OK && isForeignLeft ? S_FALSE : hr;
}

RegistrationScope ScopeOf(const OLECHAR* commandLine) {
  static constexpr std::string_view kUser = "user";
  std::string word;
  for (const OLECHAR* next = commandLine; next != nullptr; ++next) {
    const OLECHAR unit = *next;
    if (unit > ' ') {
      // What is no letter of the word stands for itself; other characters for a mark that is none.
      const OLECHAR small = unit >= 'A' && unit <= 'Z' ? static_cast<OLECHAR>(unit + 0x20) : unit;
      word += small < 0x80 ? static_cast<char>(small) : '?';
      continue;
    }
    if (word == kUser) return RegistrationScope::User;
    if (unit == 0) break;
    word.clear();
  }
  return RegistrationScope::Machine;
}

namespace library {

// The classes have no set-up of their own; the module itself is made ready.
void OnAttach() { Module::Get(); }

void OnDetach() { Module::Get().Terminate(); }

}  // namespace library
