#pragma once

#include "kit/model/channel_table.h"

namespace merge {

/// Tells one scan from another, whatever the order and the indexes of its channels, and whatever is
/// favourite or locked there.
std::uint64_t FingerprintOf(const ChannelTable& scan);

}  // namespace merge
