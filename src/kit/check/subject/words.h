#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/station_blocks.h"

namespace zortunedex::kit::check::words {

/// Value that the library reads of a word; nothing for one that it does not know, for which it
/// stores 0.
std::optional<std::int32_t> Read(station_blocks::Form form, std::string_view word);

/// The word that is meant by one in wrong capitals; null where there is none.
const char* Meant(station_blocks::Form form, std::string_view word);

/// True for what is read as something else than it says.
bool IsLost(station_blocks::Form form, std::string_view word);

}  // namespace zortunedex::kit::check::words
