#pragma once

#include <string>

#include "platform/com.h"

namespace type_registration {

/// Address of a function of OLE Automation by its name; null where the system lacks it.
using Finder = void* (*)(const char* name);
void* FindAutomation(const char* name);

/// Registers a type library for all users, or for this one where OLE Automation has
/// RegisterTypeLibForUser: systems that lack it register for all.
HRESULT Register(ITypeLib* types, std::wstring path, std::wstring helpDirectory, bool forUser,
                 Finder find = FindAutomation);

/// The same the other way round, with UnRegisterTypeLibForUser.
HRESULT Unregister(ITypeLib* types, bool forUser, Finder find = FindAutomation);

}  // namespace type_registration
