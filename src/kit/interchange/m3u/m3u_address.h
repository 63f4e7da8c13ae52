// Where a player finds a channel.
#pragma once

#include "kit/interchange/format.h"
#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange::m3u {

/// Failure for braces around what is no name of a value, and where there is neither a template nor
/// a host for channels without an address of their own.
void RequireAddresses(const ExportRequest& request);

/// Of the template, of a SAT>IP server, or the channel's own. Empty for a channel that has none: a
/// server of that kind knows DVB-S and DVB-T.
std::string AddressOf(const Channel& channel, const Service& service, const ExportRequest& request);

}  // namespace zortunedex::kit::interchange::m3u
