// Changes of a directory that meet a fault, in this process or in one of its own.
#pragma once

#include <string>

#include "reliability/disk_faults.h"

namespace zortunedex::kit {

enum class Operation {
  Change,  ///< of two files
  Merge,   ///< of the channels and of the scan that the next merge is told changes by
  Undo,
  Repair,
  DieWithLock,  ///< the process ends while it holds the directory's lock
};

/// Does it, and raises what it raises.
void Operate(const std::string& directory, Operation operation);

/// Does it in a process of its own, which meets the fault at that call. What the process ended
/// with: 0 when it was done, 1 when it was refused; -1 when there was none.
int StatusOfKilledChange(const std::string& directory, Operation operation,
                         disk_faults::Fault fault, int position);

/// What such a process does, and its status.
int RunFaultyChange(const std::string& directory, Operation operation, disk_faults::Fault fault,
                    int position);

}  // namespace zortunedex::kit
