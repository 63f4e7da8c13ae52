// The part of the command line that speaks of presets.
#pragma once

#include "tool/options/options.h"

namespace CLI {
class App;
}

namespace zortunedex::kit::tool {

void AddPresetCommands(CLI::App& app, Options& options);
/// Fills in what presets imply. Raises UsageError.
void CompletePresetOptions(Options& options);

}  // namespace zortunedex::kit::tool
