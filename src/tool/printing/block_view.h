// The attributes of a station block.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "kit/model/channel.h"
#include "kit/text/narrow_text.h"

namespace block_view {

/// Attributes by name: those of Channel and ElementStreams on the first level, the stream lists and
/// Components as arrays, SatelliteParams as an object. Numbers are signed, as the file has them;
/// satellite parameters with a word are that word.
nlohmann::ordered_json ToJson(const Channel& channel, InputSignalType signal,
                              const NarrowText& narrow);

/// The same, one line for every attribute and list entry, in the form that --set takes.
std::string ToText(const nlohmann::ordered_json& block);

}  // namespace block_view
