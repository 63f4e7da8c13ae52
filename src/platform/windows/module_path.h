#pragma once

#include <string>

#include "platform/com.h"

/// Full path of a loaded file, of the program for null. Empty when it cannot be told.
inline std::wstring ModulePath(HMODULE module) {
  constexpr std::size_t kLongestPath = 32768;
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    if (path.size() >= kLongestPath) return {};
    path.resize(path.size() * 2);
  }
}
