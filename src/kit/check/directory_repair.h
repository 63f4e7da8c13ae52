#pragma once

#include "kit/check/repair.h"
#include "kit/history/change.h"

namespace zortunedex::kit::check {

/// Repairs a directory, with its lock. What is done to the data files is one change of its history,
/// which undoing takes back; then what was put aside and tells nothing any more goes into the
/// history's folder, and what saves left over is removed. A trial tells the same and does nothing.
/// Failure as for Repair and history::MakeChange; also when all is repaired but for a file that
/// cannot be removed.
Repaired RepairDirectory(const history::ChangeSettings& change, const RepairSettings& settings);

}  // namespace zortunedex::kit::check
