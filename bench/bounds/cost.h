// What a piece of work costs, measured in a process of its own.
#pragma once

#include <functional>

namespace bounds {

struct Cost {
  double seconds = -1;   ///< of the processor; below 0: the work failed, or the process died
  double megabytes = 0;  ///< peak memory of the process
};

/// False for work that failed.
using Work = std::function<bool()>;

/// Makes the work in a new process, runs it there and counts its processor time alone. The memory
/// is that of both.
Cost CostOf(const std::function<Work()>& prepare);

}  // namespace bounds
