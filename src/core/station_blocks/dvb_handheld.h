// The block of DVB-H.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/streams.h"

namespace station_blocks {

inline constexpr Field kDvbhChannel[] = {
    {"name", 448, 424, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"networkName", 192, 256, Form::Text},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"freqOffset", 0, 0, Form::Number, Source::OffsetFrequency},
    {"serviceType", 0, 4},
    {"serviceID", 4, 4},
    {"PcrPID", 8, 4},
    {"TSID", 0, 0, Form::Number, Source::TransportStream},
    {"ONID", 12, 4},
    {"CA", 876, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"runningStatus", 872, 4},
    {"VideoIP", 880, 64, Form::Text},
    {"VideoPort", 944, 4},
    {"VideoPID", 948, 4},
    {"AudioIP", 952, 64, Form::Text},
    {"AudioPort", 1016, 4},
    {"AudioPID", 1020, 4},
    {"EsgIP", 1024, 64, Form::Text},
    {"EsgPort", 1088, 4},
    {"EsgPID", 1092, 4},
};
/// DVB-H and T-DMB have eight audio and video streams each, at the same places.
inline constexpr Field kDvbhStreams[] = {
    {"videoStream", 16, 4},
    {"numOfVideoStreams", 20, 4},
    {"audioStream", 104, 4},
    {"numOfAudioStreams", 108, 4},
};
inline constexpr StreamList kDvbhLists[] = {
    {"VideoStream", 20, 24, 8, kStreamSize},
    {"AudioStream", 108, 112, 8, kStreamSize},
};
inline constexpr Layout kDvbh = {1096, kDvbhChannel, kDvbhStreams, kDvbhLists, nullptr, {}};
static_assert(check::Fits(kDvbh));

}  // namespace station_blocks
