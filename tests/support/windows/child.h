#pragma once

#include <string>

/// What this program ends with when it is started with a command line (ASCII); -1 when it cannot
/// be.
int StatusOfThisProgram(const std::string& command);
