#pragma once

#include <string>
#include <vector>

#include "kit/history/comparison/changes.h"
#include "kit/model/channel.h"

namespace zortunedex::kit::history {

/// What differs between two texts of ChanInfo.xml, list by list. Nothing for texts that hold the
/// same channels, and for one that cannot be read.
std::vector<Change> ChannelChanges(const std::string& from, const std::string& to);

/// For each channel of `to` the place in `from` of what it was; -1 for a new one. One is what has
/// everything but its index, else its station, else its names, else its index.
std::vector<int> Origins(const std::vector<Channel>& from, const std::vector<Channel>& to,
                         InputSignalType signal);

/// True where every place has what it had by its station or its names, however else it changed.
bool KeepTheirPlaces(const std::vector<Channel>& from, const std::vector<Channel>& to,
                     InputSignalType signal);

/// Marks what left the order of the rest: of the places that are not below 0, all but a longest
/// ascending row of them.
std::vector<bool> OutOfOrder(const std::vector<int>& places);

}  // namespace zortunedex::kit::history
