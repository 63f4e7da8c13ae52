// The part of the command line that speaks of channels.
#pragma once

#include "tool/options/options.h"

namespace CLI {
class App;
}

void AddChannelCommands(CLI::App& app, Options& options);
/// UsageError when one of these commands lacks something.
void CompleteChannelOptions(const Options& options);
