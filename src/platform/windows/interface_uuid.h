#pragma once

#include "platform/com.h"

#ifdef _MSC_VER
#define ZORTUNEDEX_UUID(key, type, prefix, text) key __declspec(uuid(text)) type
#else
// MinGW's __uuidof is a template, and takes numbers.
#define ZORTUNEDEX_UUID(key, type, prefix, text) \
  key type;                                      \
  ZORTUNEDEX_UUID_DECL(type, prefix##_##type)
#define ZORTUNEDEX_UUID_DECL(type, id)                                                       \
  __CRT_UUID_DECL(type, id.Data1, id.Data2, id.Data3, id.Data4[0], id.Data4[1], id.Data4[2], \
                  id.Data4[3], id.Data4[4], id.Data4[5], id.Data4[6], id.Data4[7])           \
  static_assert(true)
#endif
