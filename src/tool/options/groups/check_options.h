#pragma once

#include "tool/options/groups/option_helpers.h"

namespace zortunedex::kit::tool {

/// check and repair.
void AddCheckCommands(CLI::App& app, Options& options);

}  // namespace zortunedex::kit::tool
