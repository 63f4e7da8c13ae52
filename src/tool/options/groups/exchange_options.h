#pragma once

#include "tool/options/groups/option_helpers.h"

namespace zortunedex::kit::tool {

/// The commands that lists leave and enter with.
void AddExchangeCommands(CLI::App* channels, Options& options);
/// UsageError when one of these commands lacks something, or has an option that its format does not
/// take.
void CompleteExchangeOptions(const Options& options);

/// --format with the name of a format, and --position, for a file that is read as a scan.
void AddScanFormat(CLI::App* app, Options& options);
void AddPosition(CLI::App* app, Options& options);
/// --file-unit.
void AddFileUnit(CLI::App* app, Options& options);
/// UsageError for an option that was given and that the format does not take.
void RequireTaken(const Options& options, const interchange::Format& format);

}  // namespace zortunedex::kit::tool
