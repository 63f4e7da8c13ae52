#pragma once

#include <vector>

#include "core/interfaces.h"
#include "platform/com_ptr.h"

namespace chan_sort {

using Records = std::vector<ComPtr<IChannelInfo>>;

/// Ascending by channel number.
void ByNumber(Records& records);

/// By number, then by service type in the given direction, then the combined pass.
void ByServiceType(Records& records, BOOL ascending);

}  // namespace chan_sort
