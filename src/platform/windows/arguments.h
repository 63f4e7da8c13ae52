#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/com.h"
// Behind the header above: it needs windows.h.
#include <shellapi.h>

/// See platform/arguments.h.
inline std::vector<std::wstring> WideArguments(int, char**) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> list(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  if (!list) return {};
  return {list.get(), list.get() + count};
}
