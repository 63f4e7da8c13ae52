// Which of the global options a command takes, given or from elsewhere.
#pragma once

#include <string>

namespace zortunedex::kit::tool {

enum class Need {
  No,        ///< the command does not look at it
  Taken,     ///< it is taken where it is known
  Required,  ///< without it the command line makes no sense
};

struct Needs {
  Need directory = Need::No;
  Need country = Need::No;
  Need signal = Need::No;
};

Needs NeedsOf(const std::string& command);

/// A paragraph for the command's help; empty where it needs nothing.
std::string NeedsHelp(const std::string& command);

}  // namespace zortunedex::kit::tool
