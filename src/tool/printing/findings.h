#pragma once

#include <string>
#include <vector>

#include "kit/check/findings/finding.h"

namespace zortunedex::kit::tool {

/// A line for each.
void PrintFindings(const std::vector<check::Finding>& findings);

/// "2 errors, 1 warning"; "nothing" for none.
std::string FindingCounts(const std::vector<check::Finding>& findings);

}  // namespace zortunedex::kit::tool
