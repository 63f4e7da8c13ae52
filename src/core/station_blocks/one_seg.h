// The block of ISDB-T one-segment.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/streams.h"

namespace station_blocks {

inline constexpr Field kOneSegChannel[] = {
    {"name", 608, 80, Form::Base64, Source::Name},
    {"nameDisplay", 0, 0, Form::Base64, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 2572, 4, Form::Number, Source::PhysicalChannel},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"Frequency", 0, 0, Form::Number, Source::Frequency},
    {"NetworkID", 12, 4},
    {"ServiceID", 4, 4},
};
inline constexpr Field kOneSegStreams[] = {
    {"videoStream", 16, 4},          {"numOfVideoStreams", 20, 4},
    {"audioStream", 184, 4},         {"numOfAudioStreams", 188, 4},
    {"teletextStream", 1040, 4},     {"numOfTeletextStreams", 1044, 4},
    {"subtitleStream", 1128, 4},     {"numOfSubtitleStreams", 1132, 4},
    {"dsmccStream", 1216, 4},        {"numOfDsmccStreams", 1220, 4},
    {"numOfMhpAitStreams", 2120, 4},
};
inline constexpr StreamList kOneSegLists[] = {
    {"VideoStream", 20, 24, 16, kStreamSize},
    {"AudioStream", 188, 192, 16, kStreamSize},
    {"TeletextStream", 1044, 1048, 8, kStreamSize},
    {"SubtitleStream", 1132, 1136, 8, kStreamSize},
    {"DsmccStream", 1220, 1224, 16, kDataStreamSize},
    {"MhpAitStream", 2120, 2124, 8, kDataStreamSize},
};
inline constexpr Layout kOneSeg = {2580, kOneSegChannel, kOneSegStreams, kOneSegLists, nullptr, {}};
static_assert(check::Fits(kOneSeg));

}  // namespace station_blocks
