// What a check and a repair found, for programs. Indented by two blanks, UTF-8, no line feed at the
// end.
#pragma once

#include <string>
#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/repair.h"

namespace zortunedex::kit::check {

/// {"tunedex":"check","version":1,"findings":[{"code","severity","file","line","column","path",
/// "attribute","value","text","repair","option"}]}; null for what does not apply.
std::string CheckJson(const std::vector<Finding>& findings);

/// {"tunedex":"repair","version":1,"dryRun","repaired":[...],"left":[...]}, of such findings.
std::string RepairJson(const Repaired& result, bool isTrial);

}  // namespace zortunedex::kit::check
