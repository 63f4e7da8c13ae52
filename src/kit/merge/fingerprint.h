#pragma once

#include "kit/model/channel_table.h"

namespace zortunedex::kit::merge {

/// The same for channels that differ in nothing but index, favourite mark and lock.
std::uint64_t HashOf(const Channel& channel);

/// An order in which only such channels are equal.
bool IsContentBefore(const Channel& a, const Channel& b);

/// Tells one scan from another, whatever the order and the indexes of its channels, and whatever is
/// favourite or locked there.
std::uint64_t FingerprintOf(const ChannelTable& scan);

}  // namespace zortunedex::kit::merge
