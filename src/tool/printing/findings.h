#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "kit/check/finding.h"

/// The finding with all its keys; null for what does not apply.
nlohmann::ordered_json ToJson(const check::Finding& finding);
nlohmann::ordered_json ToJson(const std::vector<check::Finding>& findings);

/// A line for each.
void PrintFindings(const std::vector<check::Finding>& findings);

/// "2 errors, 1 warning"; "nothing" for none.
std::string CountText(const std::vector<check::Finding>& findings);
