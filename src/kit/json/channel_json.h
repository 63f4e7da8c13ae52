// A channel as JSON.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "kit/model/channel.h"
#include "kit/model/field_value.h"
#include "kit/model/narrow_text.h"

namespace zortunedex::kit::channel_json {

/// Null for nothing.
nlohmann::ordered_json ToJson(const FieldValue& value);

/// The twelve values that a record answers for itself.
nlohmann::ordered_json Summary(const Channel& channel);

/// Attributes of the station block by name: those of Channel and ElementStreams on the first level,
/// the stream lists and Components as arrays, SatelliteParams as an object. Numbers are signed, as
/// the file has them; satellite parameters with a word are that word.
nlohmann::ordered_json Block(const Channel& channel, InputSignalType signal,
                             const NarrowText& narrow);

/// The summary, with the block as its last member.
nlohmann::ordered_json Whole(const Channel& channel, InputSignalType signal,
                             const NarrowText& narrow);

}  // namespace zortunedex::kit::channel_json
