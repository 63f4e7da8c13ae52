#pragma once

#include "tool/options/groups/option_helpers.h"

/// check and repair.
void AddCheckCommands(CLI::App& app, Options& options);
