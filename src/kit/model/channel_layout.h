// What the file holds of a channel, by its signal type.
#pragma once

#include "kit/model/channel.h"

namespace zortunedex::kit {

/// Layout of a signal type. Failure for a type whose channels the file cannot hold.
const station_blocks::Layout& LayoutOf(InputSignalType signal);

/// A channel of that type in which nothing is set: the satellite parameters are NotSet, everything
/// else is zero.
Channel EmptyChannel(const station_blocks::Layout& layout);

inline constexpr std::size_t kComponentNameLimit = 7;

/// Most bytes that a text may have to come back whole from the file.
std::size_t TextLimit(const station_blocks::Field& field);

}  // namespace zortunedex::kit
