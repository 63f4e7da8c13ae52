// A layout with rows that are read alone and rows that are written alone, six numbers in a row.
#pragma once

#include "core/station_blocks.h"

inline constexpr station_blocks::Field kOneWayChannel[] = {
    {"both", 0, 4},
    {"read", 4, 4, station_blocks::Form::Number, station_blocks::Source::Block,
     station_blocks::Use::ReadOnly},
    {"written", 8, 4, station_blocks::Form::Number, station_blocks::Source::Block,
     station_blocks::Use::WriteOnly},
};
inline constexpr station_blocks::Field kOneWayStreams[] = {
    {"both", 12, 4},
    {"read", 16, 4, station_blocks::Form::Number, station_blocks::Source::Block,
     station_blocks::Use::ReadOnly},
    {"written", 20, 4, station_blocks::Form::Number, station_blocks::Source::Block,
     station_blocks::Use::WriteOnly},
};
inline constexpr station_blocks::Layout kOneWayLayout = {24, kOneWayChannel, kOneWayStreams,
                                                         {}, nullptr,        {}};
