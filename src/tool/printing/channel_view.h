// Printing channels.
#pragma once

#include <vector>

#include "kit/model/channel.h"
#include "kit/model/narrow_text.h"

namespace channel_view {

/// The twelve values that a list shows: a table, or an array of objects.
void Print(const std::vector<Channel>& channels, bool json);
/// Everything: the block's attributes as well.
void PrintWhole(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                bool json);

}  // namespace channel_view
