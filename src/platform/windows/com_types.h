// COM types on Windows: the platform's own headers, with the macros that would collide taken away.
// bdatypes.h is among them for its tuning enumerations, which core/interfaces.h has too: so a host
// may include it before or after. With ZORTUNEDEX_OWN_TUNING_TYPES it is left out, and those of
// core/interfaces.h count; the library is built that way, since theirs may hold any 32-bit value.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>
#include <windows.h>
// Behind windows.h, whose types it takes for granted.
#ifndef ZORTUNEDEX_OWN_TUNING_TYPES
#include <bdatypes.h>
#endif
