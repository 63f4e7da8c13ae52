// The values of a channel as bytes and numbers, wherever they live.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "kit/model/channel.h"
#include "kit/model/field_value.h"

namespace zortunedex::kit::merge {

/// The channel with a block of the layout's size.
Channel Whole(Channel channel, const station_blocks::Layout& layout);

// Of whole channels:

std::uint32_t NumberIn(const Channel& channel, const station_blocks::Field& row);
void SetNumber(Channel& channel, const station_blocks::Field& row, std::uint32_t value);

bool IsText(const station_blocks::Field& row);
bool IsSame(const Channel& a, const Channel& b, const station_blocks::Field& row);
void Copy(const Channel& from, const station_blocks::Field& row, Channel& to);

/// Entries of a list that count, at most as many as it has room for.
std::size_t CountIn(const Channel& channel, std::size_t countOffset, std::size_t capacity);
const BYTE* EntryIn(const Channel& channel, const station_blocks::StreamList& list,
                    std::size_t entry);

using Utf8Of = std::function<std::string(std::string_view narrow)>;

/// A value as it is shown. `row` of an entry counts from `place`.
FieldValue ShownValue(const BYTE* place, const station_blocks::Field& row, const Utf8Of& utf8);
FieldValue ShownValue(const Channel& channel, const station_blocks::Field& row, const Utf8Of& utf8);

/// The display name that a record of such a station fills in by itself.
WideText FilledName(const Channel& channel, InputSignalType signal);

}  // namespace zortunedex::kit::merge
