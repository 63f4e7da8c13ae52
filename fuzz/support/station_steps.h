#pragma once

#include "core/interfaces.h"
#include "support/input.h"

/// Calls one of a record's setters or getters with values from the input.
void StepStation(Input& input, IChannelInfo* channel);

/// Ends the run when the station that a record hands out is not what it promises.
void RequireSoundStation(IChannelInfo* channel);
