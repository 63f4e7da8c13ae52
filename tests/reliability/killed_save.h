#pragma once

#include "reliability/disk_faults.h"
#include "reliability/saved_files.h"

/// Puts `count` records into the directory's file in a process of its own, which meets the fault at
/// that call of the save. What the process ended with; -1 when there was none.
int StatusOfKilledSave(const SavedFile& file, const TempDir& directory, UINT count,
                       disk_faults::Fault fault, int position);
