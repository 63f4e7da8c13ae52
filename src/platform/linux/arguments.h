#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/com.h"

/// See platform/arguments.h.
inline std::vector<std::u16string> WideArguments(int argc, char** argv) {
  std::vector<std::u16string> result;
  for (int i = 0; i < argc; ++i) result.push_back(std::filesystem::path(argv[i]).u16string());
  return result;
}
