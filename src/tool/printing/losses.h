#pragma once

#include "kit/interchange/loss_report.h"

/// A line a code on standard error.
void PrintLosses(const interchange::LossReport& report);
