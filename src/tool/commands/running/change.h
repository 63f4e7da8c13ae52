#pragma once

#include "kit/history/change.h"
#include "tool/options/options.h"

namespace zortunedex::kit::tool::commands {

/// How the command line wants changes to be made.
history::ChangeSettings SettingsOf(const Options& options);

/// What a dry run prints.
enum class Trial {
  Differences,  ///< what would change in the files
  OwnOutput,    ///< what the command prints, which says it itself
};

/// Runs a command that changes the directory: on a copy, whose result is recorded and takes the
/// place of the files as a whole or not at all. What the command prints is printed when its change
/// is made.
void RunChange(const Options& options, void (*run)(const Options& options), Trial trial);

}  // namespace zortunedex::kit::tool::commands
