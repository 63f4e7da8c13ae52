// The block of DVB-S.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/streams.h"

namespace station_blocks {

inline constexpr Field kDvbsChannel[] = {
    {"name", 608, 336, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"networkName", 352, 256, Form::Text},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"freqOffset", 0, 0, Form::Number, Source::OffsetFrequency},
    {"serviceType", 0, 4},
    {"serviceID", 4, 4},
    {"PcrPID", 8, 4},
    {"TSID", 0, 0, Form::Number, Source::TransportStream},
    {"ONID", 12, 4},
    {"CA", 948, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"runningStatus", 944, 4},
};
inline constexpr Field kDvbsStreams[] = {
    {"videoStream", 16, 4},         {"numOfVideoStreams", 20, 4},
    {"audioStream", 184, 4},        {"numOfAudioStreams", 188, 4},
    {"teletextStream", 1256, 4},    {"numOfTeletextStreams", 1260, 4},
    {"subtitleStream", 1344, 4},    {"numOfSubtitleStreams", 1348, 4},
    {"numOfDsmccStreams", 1432, 4}, {"numOfMhpAitStreams", 2332, 4},
};
inline constexpr StreamList kDvbsLists[] = {
    {"VideoStream", 20, 24, 16, kStreamSize},
    {"AudioStream", 188, 192, 16, kStreamSize},
    {"TeletextStream", 1260, 1264, 8, kStreamSize},
    {"SubtitleStream", 1348, 1352, 8, kStreamSize},
    {"DsmccStream", 1432, 1436, 16, kDataStreamSize},
    {"MhpAitStream", 2332, 2336, 8, kDataStreamSize},
};
inline constexpr Field kDvbsSatelliteParams[] = {
    {"polarisation", 952, 4, Form::Polarisation},
    {"westPosition", 956, 4},
    {"azimuth", 960, 4},
    {"elevation", 964, 4},
    {"orbitalPosition", 968, 4},
    {"symbolRate", 972, 4},
    {"innerFECRate", 976, 4, Form::FecRate},
    {"modulation", 980, 4, Form::Modulation},
    {"spectralInversion", 996, 4, Form::SpectralInversion},
    {"DiSEqC_Msg", 1000, 256, Form::Text},
    {"LNB_LowFreq", 984, 4},
    {"LNB_HighFreq", 988, 4},
    {"LNB_SwitchFreq", 992, 4},
};
inline constexpr Layout kDvbs = {2784,       kDvbsChannel, kDvbsStreams,
                                 kDvbsLists, nullptr,      kDvbsSatelliteParams};
static_assert(check::Fits(kDvbs));

}  // namespace station_blocks
