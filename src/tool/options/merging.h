// How the command line wants a scan to be merged.
#pragma once

#include <string>

#include "kit/merge/merge.h"

namespace zortunedex::kit::tool {

struct MergingOptions {
  merge::MergePolicy policy;
  std::string base;       ///< a file, or "none"; empty: what the last merge left in the history
  bool exitCode = false;  ///< end with status 3 when something would change
};

}  // namespace zortunedex::kit::tool
