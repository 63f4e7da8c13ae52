// What transponder tables know that a list lacks.
#pragma once

#include <string>
#include <vector>

#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange {

/// The transponders of a folder of tables, one file a satellite, as a catalogue is made of them.
/// Files that are no table and entries that cannot be used are passed over. Raises a Failure for a
/// folder that cannot be read, and for one without a single transponder.
std::vector<Tuning> ReadTuningTables(const std::string& folder);

}  // namespace zortunedex::kit::interchange
