#pragma once

#include "channels/stations/station_view.h"
#include "core/interfaces.h"

namespace station_match {

/// Whether two stations are the same one, as lists of that signal type tell them apart. There is no
/// tolerance. Where the block is needed, a station without one, or with one that ends too early, is
/// the same as nothing.
bool AreSame(InputSignalType listType, const StationView& a, const StationView& b);

/// The same for a channel of a list; false when it does not give its station.
bool IsOf(IChannelInfo* channelInfo, InputSignalType listType, const StationView& probe);

}  // namespace station_match
