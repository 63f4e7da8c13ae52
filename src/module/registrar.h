// Runs registry scripts.
#pragma once

#include "module/registry_script.h"

/// For whom a component is registered. For one user, what a script says of HKEY_CLASSES_ROOT goes
/// to Software\Classes of HKEY_CURRENT_USER.
enum class RegistrationScope { Machine, User };

/// Runs registry scripts. The first step that fails ends a run, and its code is the answer; what
/// was written by then stays.
class Registrar {
 public:
  explicit Registrar(RegistrationScope scope) : m_scope(scope) {}

  HRESULT Register(const RegistryScript& script) const;

  /// Takes out what the script wrote; what is missing is no error. S_FALSE when a key had to stay
  /// because a foreign one stands below it; the script's own values are gone from it then.
  HRESULT Unregister(const RegistryScript& script) const;

 private:
  struct Place;

  Place PlaceOf(const RegistryScript::Block& block) const;

  RegistrationScope m_scope;
};
