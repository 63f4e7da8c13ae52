#pragma once

#include <nlohmann/json_fwd.hpp>

#include "kit/merge/merge_report.h"

namespace zortunedex::kit::merge {

/// What PlanJson tells, as a value.
nlohmann::ordered_json PlanDocument(const MergePlan& plan, PlanKind kind);

}  // namespace zortunedex::kit::merge
