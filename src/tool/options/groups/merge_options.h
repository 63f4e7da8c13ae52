#pragma once

#include "tool/options/groups/option_helpers.h"

namespace zortunedex::kit::tool {

/// The commands that hold a list against a scan or another list.
void AddMergeCommands(CLI::App* channels, Options& options);

}  // namespace zortunedex::kit::tool
