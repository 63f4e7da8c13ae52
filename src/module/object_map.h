// The classes that the library makes.
#pragma once

#include "module/registrar.h"
#include "platform/com.h"

/// One class that a host can create by its identifier.
struct ObjectEntry {
  CLSID clsid;
  /// Writes the registry entries of the class.
  HRESULT (*writeEntries)(RegistrationScope scope);
  /// Takes them out again; answers as Registrar::Unregister.
  HRESULT (*removeEntries)(RegistrationScope scope);
  /// Makes an instance, alone or as part of an outer object, and asks it for an interface.
  HRESULT (*createInstance)(IUnknown* outer, REFIID riid, void** ppv);
};

extern const ObjectEntry kObjectMap[1];
