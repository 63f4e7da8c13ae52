// The platform's type descriptions in the words of the header.
#pragma once

#include <oaidl.h>

#include <functional>
#include <string>

#include "platform/com_ptr.h"

/// Name of a type, a method or a variable.
std::string NameOf(ITypeInfo* info, MEMBERID member = MEMBERID_NIL);

/// "UINT*" for a pointer to VT_UINT, a user-defined type by its name, and so on. BOOL and LONG are
/// one and the same to a type library: both are "LONG".
std::string TypeOf(ITypeInfo* info, const TYPEDESC& type);

/// The same for a type as the header writes it.
std::string TypeOf(const std::string& declared);

TYPEATTR AttributesOf(ITypeInfo* info);

/// Calls `look` with a description of every method or of every variable.
void EachFunction(ITypeInfo* info, const std::function<void(const FUNCDESC&)>& look);
void EachVariable(ITypeInfo* info, const std::function<void(const VARDESC&)>& look);
