#pragma once

#include "tool/options/option_helpers.h"

/// check and repair.
void AddCheckCommands(CLI::App& app, Options& options);
