#pragma once

#include <nlohmann/json_fwd.hpp>

#include "kit/interchange/loss_report.h"

namespace zortunedex::kit::interchange {

/// What LossJson tells, as a value.
nlohmann::ordered_json LossDocument(const LossReport& report);

}  // namespace zortunedex::kit::interchange
