// The block of ATSC antenna and cable.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/streams.h"

namespace station_blocks {

inline constexpr Field kAtscChannel[] = {
    {"name", 192, 336, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"majorChannel", 4, 4},
    {"minorChannel", 8, 4},
    {"serviceType", 0, 4},
    {"programNumber", 12, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
};
inline constexpr Field kAtscStreams[] = {
    {"videoStream", 16, 4},
    {"numOfVideoStreams", 20, 4},
    {"audioStream", 104, 4},
    {"numOfAudioStreams", 108, 4},
};
inline constexpr StreamList kAtscLists[] = {
    {"VideoStream", 20, 24, 8, kStreamSize},
    {"AudioStream", 108, 112, 8, kStreamSize},
};
inline constexpr Layout kAtsc = {528, kAtscChannel, kAtscStreams, kAtscLists, nullptr, {}};
static_assert(check::Fits(kAtsc));

}  // namespace station_blocks
