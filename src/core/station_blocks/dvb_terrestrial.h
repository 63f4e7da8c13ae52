// The block of DVB-T. The attributes of Channel are those of DVB-S at the same places.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/dvb_satellite.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/streams.h"

namespace station_blocks {

inline constexpr Field kDvbtStreams[] = {
    {"videoStream", 16, 4},          {"numOfVideoStreams", 20, 4},
    {"audioStream", 184, 4},         {"numOfAudioStreams", 188, 4},
    {"teletextStream", 952, 4},      {"numOfTeletextStreams", 956, 4},
    {"subtitleStream", 1040, 4},     {"numOfSubtitleStreams", 1044, 4},
    {"dsmccStream", 1128, 4},        {"numOfDsmccStreams", 1132, 4},
    {"numOfMhpAitStreams", 2032, 4},
};
inline constexpr StreamList kDvbtLists[] = {
    {"VideoStream", 20, 24, 16, kStreamSize},
    {"AudioStream", 188, 192, 16, kStreamSize},
    {"TeletextStream", 956, 960, 8, kStreamSize},
    {"SubtitleStream", 1044, 1048, 8, kStreamSize},
    {"DsmccStream", 1132, 1136, 16, kDataStreamSize},
    {"MhpAitStream", 2032, 2036, 8, kDataStreamSize},
};
inline constexpr Layout kDvbt = {2484, kDvbsChannel, kDvbtStreams, kDvbtLists, nullptr, {}};
static_assert(check::Fits(kDvbt));

}  // namespace station_blocks
