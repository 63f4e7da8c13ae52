// Channels as a playlist for players.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange::m3u {

/// Leaves out channels that have no address (L401). Failure where none can have one.
void Write(const ExportRequest& request, Output& output, Losses& losses);

/// The playlist's channels with what stands in their lines; what an address holds is for players.
std::vector<Channel> ReadBack(const Output& output, const ExportRequest& request);

}  // namespace zortunedex::kit::interchange::m3u
