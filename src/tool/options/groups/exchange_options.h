#pragma once

#include "tool/options/groups/option_helpers.h"

/// The commands that lists leave and enter with.
void AddExchangeCommands(CLI::App* channels, Options& options);
/// UsageError when one of these commands lacks something, or has an option that its format does not
/// take.
void CompleteExchangeOptions(const Options& options);
