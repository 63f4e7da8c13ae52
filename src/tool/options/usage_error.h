#pragma once

#include <string>

#include "kit/failure.h"

namespace zortunedex::kit::tool {

/// The command line makes no sense: exit status 2.
struct UsageError : InvalidArgument {
  using InvalidArgument::InvalidArgument;
  UsageError(const std::string& message, std::string helped)
      : InvalidArgument(message), command(std::move(helped)) {}

  std::string command;  ///< whose help tells more; empty: that of all
};

}  // namespace zortunedex::kit::tool
