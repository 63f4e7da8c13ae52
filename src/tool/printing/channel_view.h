// Printing channels.
#pragma once

#include <vector>

#include "kit/model/channel.h"
#include "kit/selection/channel_field.h"

namespace zortunedex::kit::tool::channel_view {

/// A table of the twelve values that the record answers.
void PrintTable(const std::vector<Channel>& channels);
/// A table of these fields, under their names.
void PrintTable(const std::vector<Channel>& channels, const std::vector<ChannelField>& fields,
                const NarrowText& narrow);
/// Everything, the block's attributes as well: a paragraph for every channel.
void PrintWhole(const std::vector<Channel>& channels, InputSignalType signal,
                const NarrowText& narrow);
/// An array with everything.
void PrintJson(const std::vector<Channel>& channels, InputSignalType signal,
               const NarrowText& narrow);

}  // namespace zortunedex::kit::tool::channel_view
