// For host programs: the way to the class object, the same on both targets, without registration.
//
//   const Component component;   // outlives whatever comes from it
//   component.GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, ...);
//
// Windows: an object makes COM ready for the thread that it is made on (multithreaded, unless the
// thread is in an apartment already) and is destroyed there. GetClassObject loads ZorTunedex.dll
// from the program's own directory, once for the process; where it is not there, the answer is
// HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND). Link ole32, oleaut32 and uuid.
// Linux: the program is linked with the library, and the call is DllGetClassObject.
#pragma once

#ifdef _WIN32
#include "platform/windows/component.h"
#else
#include "platform/linux/component.h"
#endif
