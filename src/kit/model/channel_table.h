#pragma once

#include <vector>

#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace zortunedex::kit {

/// The channels of one country and signal type by value, wherever they came from.
struct ChannelTable {
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
  std::vector<Channel> channels;  ///< in list order, with the indexes that the file gave them
};

/// The table that a data directory has at that place; empty channels where it has none. Raises a
/// Failure when the directory cannot be opened.
ChannelTable ReadTable(const Location& location);

}  // namespace zortunedex::kit
