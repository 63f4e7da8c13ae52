#pragma once

#include "kit/interchange/loss_report.h"

namespace zortunedex::kit::tool {

/// A line a code on standard error.
void PrintLosses(const interchange::LossReport& report);

}  // namespace zortunedex::kit::tool
