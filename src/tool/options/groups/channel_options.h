// The part of the command line that speaks of channels.
#pragma once

#include "tool/options/options.h"

namespace CLI {
class App;
}

namespace zortunedex::kit::tool {

void AddChannelCommands(CLI::App& app, Options& options);
/// UsageError when one of these commands lacks something.
void CompleteChannelOptions(const Options& options);
/// UsageError for a field that the signal type has not, and where that type or the country is
/// missing: before anything is opened.
void RequireFieldsOfSignal(const Options& options);

}  // namespace zortunedex::kit::tool
