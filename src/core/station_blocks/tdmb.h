// The block of T-DMB.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"
#include "core/station_blocks/streams.h"

namespace station_blocks {

inline constexpr Field kTdmbChannel[] = {
    {"name", 448, 336, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"runningStatus", 784, 4},
    {"EnsembelLab", 192, 256, Form::Text},  // the spelling of the files, kept
    {"BitRate", 792, 4},
};
// The component index is written with an underscore and looked for with a blank, which no attribute
// can hold: it reads back as 0. Files and hosts rely on it. The streams are read where a file has
// them and never written.
inline constexpr Field kTdmbStreams[] = {
    {"ServiceID", 4, 4},
    {"Component_index", 796, 4, Form::Number, Source::Block, Use::WriteOnly},
    {"Component index", 796, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfComponents", 800, 4},
    {"ServiceType", 0, 4},
    {"SubChannelID", 3176, 4},
    {"StreamType", 3180, 4},
    {"videoStream", 16, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfVideoStreams", 20, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"audioStream", 104, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfAudioStreams", 108, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"teletextStream", 3184, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfTeletextStreams", 3188, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"subtitleStream", 3272, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfSubtitleStreams", 3276, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"dsmccStream", 3360, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfDsmccStreams", 3364, 4, Form::Number, Source::Block, Use::ReadOnly},
    {"numOfMhpAitStreams", 4264, 4, Form::Number, Source::Block, Use::ReadOnly},
};
inline constexpr StreamList kTdmbLists[] = {
    {"VideoStream", 20, 24, 8, kStreamSize, Use::ReadOnly},
    {"AudioStream", 108, 112, 8, kStreamSize, Use::ReadOnly},
    {"TeletextStream", 3188, 3192, 8, kStreamSize, Use::ReadOnly},
    {"SubtitleStream", 3276, 3280, 8, kStreamSize, Use::ReadOnly},
    {"DsmccStream", 3364, 3368, 16, kDataStreamSize, Use::ReadOnly},
    {"MhpAitStream", 4264, 4268, 8, kDataStreamSize, Use::ReadOnly},
};
/// Eight components: the room of the types ends where the sub-channel identifier begins.
inline constexpr ComponentList kTdmbComponents = {800, 1064, 8, 3144, 8};
inline constexpr Layout kTdmb = {4716,       kTdmbChannel,     kTdmbStreams,
                                 kTdmbLists, &kTdmbComponents, {}};
static_assert(check::Fits(kTdmb));
static_assert(check::ComponentsFit(kTdmb, kTdmbComponents));

}  // namespace station_blocks
