// What the stand-ins for a platform's system calls ask.
#pragma once

#include "reliability/disk_faults.h"

namespace disk_faults {

/// Counts a call; true when it is the chosen one, or follows it and the fault stays.
bool IsHit();

/// Adds a call to the order, within a scope.
void Note(char call);

/// The fault of the scope.
Fault Chosen();

/// True when the chosen call is the last one of its process.
bool EndsProcess();

}  // namespace disk_faults
