#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "kit/check/findings/finding.h"

namespace zortunedex::kit::check {

/// The finding with all its keys; null for what does not apply.
nlohmann::ordered_json ToJson(const Finding& finding);
nlohmann::ordered_json ToJson(const std::vector<Finding>& findings);

}  // namespace zortunedex::kit::check
