// COM types on Windows: the platform's own headers, with the macros that would collide taken away.
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
