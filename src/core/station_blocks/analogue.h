// The block of analogue antenna and cable.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"

namespace station_blocks {

inline constexpr Field kAnalogChannel[] = {
    {"name", 20, 80, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"physicalChannel", 0, 0, Form::Number, Source::PhysicalChannel},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"freqOffset", 0, 0, Form::Number, Source::OffsetFrequency},
    {"vbiSrvFlag", 16, 4},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
    {"CNI0", 6, 2},
    {"CNI1", 8, 2},
    {"CNI2", 10, 2},
    {"CNI3", 12, 2},
};
inline constexpr Layout kAnalog = {100, kAnalogChannel, {}, {}, nullptr, {}};
static_assert(check::Fits(kAnalog));

}  // namespace station_blocks
