// The part of the command line that speaks of batches.
#pragma once

#include "tool/options/options.h"

namespace CLI {
class App;
}

namespace zortunedex::kit::tool {

void AddBatchCommand(CLI::App& app, Options& options);
/// Reads the batch and parses every line of it. UsageError that names the first line that is no
/// command, and when the batch cannot be read.
void CompleteBatchOptions(Options& options);
/// Gives the lines the country and the signal type that are known by now. UsageError that names the
/// first line that makes no sense with them.
void CompleteBatchForSignal(Options& options);

}  // namespace zortunedex::kit::tool
