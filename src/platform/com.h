// The COM vocabulary on every target: types, result codes, IUnknown, IClassFactory, BSTR and task
// memory. On Windows it is the platform's own; on Linux the port in platform/linux supplies the
// same names with the same sizes and values, so a host compiles against one set of declarations.
#pragma once

#ifdef _WIN32
#include "platform/windows/com_types.h"
#else
#include "platform/linux/com_types.h"
#endif

#include <cstdint>

static_assert(sizeof(HRESULT) == 4 && sizeof(LONG) == 4 && sizeof(BOOL) == 4);
static_assert(sizeof(ULONG) == 4 && sizeof(DWORD) == 4 && sizeof(UINT) == 4);
static_assert(sizeof(OLECHAR) == 2 && sizeof(GUID) == 16 && sizeof(VARIANT_BOOL) == 2);
static_assert(static_cast<std::uint32_t>(S_OK) == 0x00000000U);
static_assert(static_cast<std::uint32_t>(S_FALSE) == 0x00000001U);
static_assert(static_cast<std::uint32_t>(E_NOTIMPL) == 0x80004001U);
static_assert(static_cast<std::uint32_t>(E_NOINTERFACE) == 0x80004002U);
static_assert(static_cast<std::uint32_t>(E_POINTER) == 0x80004003U);
static_assert(static_cast<std::uint32_t>(E_FAIL) == 0x80004005U);
static_assert(static_cast<std::uint32_t>(E_INVALIDARG) == 0x80070057U);
static_assert(static_cast<std::uint32_t>(E_OUTOFMEMORY) == 0x8007000EU);
static_assert(static_cast<std::uint32_t>(CLASS_E_NOAGGREGATION) == 0x80040110U);
static_assert(static_cast<std::uint32_t>(CLASS_E_CLASSNOTAVAILABLE) == 0x80040111U);
