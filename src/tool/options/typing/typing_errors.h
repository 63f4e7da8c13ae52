#pragma once

#include <CLI/CLI.hpp>

#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

/// What a parse that failed stumbled on: the word that is not known, the nearest one that is, and
/// what may stand there.
UsageError ExplainTyping(const CLI::App& app, const CLI::ParseError& error);

}  // namespace zortunedex::kit::tool
