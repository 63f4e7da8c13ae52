// Whether a channel's display name is the user's.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// The display name that a record of such a station fills in by itself.
WideText FilledName(const Channel& channel, const ListContext& context);
/// True where the display name is that, or empty: none of the user's own.
bool IsFilledName(const Channel& channel, const ListContext& context);

}  // namespace zortunedex::kit::interchange
