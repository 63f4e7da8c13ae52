// Checks that report the caller's line.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <source_location>
#include <string>

#include "platform/bstr.h"
#include "platform/com.h"

inline std::string HrText(HRESULT hr) {
  char text[16];
  std::snprintf(text, sizeof(text), "0x%08X", static_cast<unsigned>(hr));
  return text;
}

inline void ExpectHr(HRESULT expected, HRESULT actual,
                     std::source_location where = std::source_location::current()) {
  if (expected == actual) return;
  ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
      << "expected " << HrText(expected) << ", got " << HrText(actual);
}

/// The number of references that are held on an object.
inline void ExpectRefCount(ULONG expected, IUnknown* object,
                           std::source_location where = std::source_location::current()) {
  object->AddRef();
  const ULONG actual = object->Release();
  if (expected == actual) return;
  ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
      << "expected " << expected << " references, got " << actual;
}

/// Wide text of ASCII, for expectations.
inline Bstr Wide(std::string_view ascii) {
  std::basic_string<OLECHAR> wide(ascii.begin(), ascii.end());
  return Bstr(WideView(wide));
}

inline void ExpectText(WideView expected, BSTR actual,
                       std::source_location where = std::source_location::current()) {
  const WideView text(actual ? actual : OLESTR(""), SysStringLen(actual));
  if (expected == text) return;
  const auto narrow = [](WideView view) {
    std::string result;
    for (const OLECHAR unit : view) {
      char code[8];
      std::snprintf(code, sizeof(code), unit < 0x80 ? "%c" : "\\u%04X",
                    static_cast<unsigned>(unit));
      result += code;
    }
    return result;
  };
  ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
      << "expected \"" << narrow(expected) << "\", got \"" << narrow(text) << "\"";
}
