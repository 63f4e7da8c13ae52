#pragma once

#include "tool/options/groups/option_helpers.h"

/// The commands that hold a list against a scan or another list.
void AddMergeCommands(CLI::App* channels, Options& options);
