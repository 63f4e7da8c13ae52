#pragma once

#include "kit/history/change.h"
#include "tool/options/options.h"

namespace commands {

/// How the command line wants changes to be made.
history::ChangeSettings SettingsOf(const Options& options);

/// Runs a command that changes the directory: on a copy, whose result is recorded and takes the
/// place of the files as a whole or not at all. What the command prints is printed when its change
/// is made; a dry run prints what would change instead.
void RunChange(const Options& options, void (*run)(const Options& options));

}  // namespace commands
