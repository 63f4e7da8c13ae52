#pragma once

#include <filesystem>

#include "core/interfaces.h"

namespace bench {

inline constexpr LONG kPresetAreas = 8;
inline constexpr LONG kPresetSubAreas = 60;  // in all areas
inline constexpr LONG kPresetsInAnArea = 8;  // but for the last one
inline constexpr LONG kCustomerLists = kPresetSubAreas - (kPresetAreas - 1) * kPresetsInAnArea;

/// A directory with a PreSetChannelInfo.xml whose sub-areas have so many channels each, and as many
/// in ChanInfo.xml. Made at first use; it goes with the program.
const std::filesystem::path& PresetDirectory(UINT channels);

}  // namespace bench
