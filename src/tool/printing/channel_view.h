// Channels as text and as JSON.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "kit/model/channel.h"
#include "kit/text/narrow_text.h"

namespace channel_view {

/// The twelve values that a list shows.
nlohmann::ordered_json ToJson(const Channel& channel);
/// A table, or an array of objects.
void Print(const std::vector<Channel>& channels, bool json);
/// Everything: the block's attributes as well.
void PrintWhole(const Channel& channel, InputSignalType signal, const NarrowText& narrow,
                bool json);

}  // namespace channel_view
