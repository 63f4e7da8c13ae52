// What a channel of a playlist is known by.
#pragma once

#include <string>

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange::m3u {

/// "S19.2E-1-1107-17500", "T-8468-770-1", "A33-2.1", "DMB-e1234567-181280": the identifiers that
/// receivers tell services of its signal type apart by. Empty where they are all 0.
std::string IdentityOf(const Channel& channel, const ListContext& context);
/// The network, transport stream and service of it, "1-1107-17500", as editors of lists have them;
/// empty for signal types without these.
std::string TripletOf(const Channel& channel, const ListContext& context);

}  // namespace zortunedex::kit::interchange::m3u
