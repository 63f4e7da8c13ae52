// The block of FM radio.
#pragma once

#include "core/station_blocks/check.h"
#include "core/station_blocks/layout.h"

namespace station_blocks {

inline constexpr Field kFmRadioChannel[] = {
    {"name", 12, 80, Form::Text, Source::Name},
    {"nameDisplay", 0, 0, Form::Text, Source::DisplayName},
    {"index", 0, 0, Form::Number, Source::Index},
    {"freq", 0, 0, Form::Number, Source::Frequency},
    {"favor", 0, 0, Form::Number, Source::Favorite},
    {"lock", 0, 0, Form::Number, Source::Lock},
};
inline constexpr Layout kFmRadio = {92, kFmRadioChannel, {}, {}, nullptr, {}};
static_assert(check::Fits(kFmRadio));

}  // namespace station_blocks
