// The arguments of a program, whatever its code page.
#pragma once

#include <exception>
#include <filesystem>
#include <vector>

#include "api/zortunedex/error.hpp"
#include "platform/arguments.h"

namespace zortunedex {

/// The arguments of main as paths, the program's name first. Raises an error for one that is no
/// text.
inline std::vector<std::filesystem::path> arguments(int argc, char** argv) {
  try {
    const auto wide = WideArguments(argc, argv);
    return {wide.begin(), wide.end()};
  } catch (const std::exception& raised) {
    throw error(E_INVALIDARG, "read", "the arguments", raised.what());
  }
}

}  // namespace zortunedex
