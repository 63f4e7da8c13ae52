// The library as a file: where it was loaded from, what it carries, and what only the platform can
// register. Also where the platform tells that it was loaded and is about to go.
#pragma once

#include <string>

#include "platform/com.h"

namespace library {

/// Full path of the file that this code was loaded from, as UTF-8. Empty when it cannot be told.
std::string Path();

/// The registry script that the library carries. Empty when there is none.
std::string RegistryScript();

/// Registers the type library that the library carries, for all users or for this one. Linux has no
/// type libraries: S_OK.
HRESULT RegisterTypeLibrary(bool forUser);
HRESULT UnregisterTypeLibrary(bool forUser);

/// Implemented by the module. Windows calls them when the process loads the library, before any
/// entry point, and when it goes. On Linux nobody has to: its statics come and go with it.
void OnAttach();
void OnDetach();

}  // namespace library
