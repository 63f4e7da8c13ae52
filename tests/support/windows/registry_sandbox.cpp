#include "support/registry_sandbox.h"

#include <windows.h>

#include <stdexcept>

struct RegistrySandbox::Place {
  HKEY key = nullptr;
};

namespace {
constexpr wchar_t kPlace[] = L"Software\\ZorTunedexTest";
}

RegistrySandbox::RegistrySandbox() : m_place(std::make_unique<Place>()) {
  RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
  if (RegCreateKeyExW(HKEY_CURRENT_USER, kPlace, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                      &m_place->key, nullptr) != ERROR_SUCCESS ||
      RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_place->key) != ERROR_SUCCESS) {
    throw std::runtime_error("no registry to test with");
  }
}

RegistrySandbox::~RegistrySandbox() {
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  RegCloseKey(m_place->key);
  RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
}
