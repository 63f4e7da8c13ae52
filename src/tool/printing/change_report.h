#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "kit/history/comparison/changes.h"
#include "kit/history/recording.h"

namespace zortunedex::kit::tool {

/// A line for each change: "49 DVBSatellite: channel 5 ProSieben: moved from 7". Nothing for none.
void PrintChanges(const std::vector<history::Change>& changes);

nlohmann::ordered_json ChangesJson(const std::vector<history::Change>& changes);

/// What a change would do that was not made.
void PrintDryRun(const history::Difference& difference, bool json);

}  // namespace zortunedex::kit::tool
