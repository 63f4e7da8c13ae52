#pragma once

#include <string>
#include <vector>

#include "tool/options/groups/option_helpers.h"

namespace zortunedex::kit::tool {

/// What every changing command takes.
void AddHistoryGlobals(CLI::App& app, Options& options);
/// undo, redo and the commands of the history.
void AddHistoryCommands(CLI::App& app, Options& options);
/// UsageError when these commands got what makes no sense.
void CompleteHistoryOptions(const Options& options);

/// The words of a command line without the program's name and the options that all commands take,
/// quoted as a POSIX shell wants them.
std::string TypedCommand(const CLI::App& app, const std::vector<std::string>& arguments);

}  // namespace zortunedex::kit::tool
