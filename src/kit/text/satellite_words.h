// The words for satellites and bands on the command line, in the output and in the files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/interfaces.h"

namespace zortunedex::kit {

/// Asia, Europe, Atlantic, America or Unknown, in any letter case.
std::optional<ESatRegion> ParseRegion(std::string_view text);
/// As the file has it; Unknown for what has no word there.
std::string RegionName(ESatRegion region);
/// 1 to 9 as the file has it, else Unknown.
std::string DivisionName(ESatDivision division);

/// c or ku, C-Band or Ku-Band, in any letter case.
std::optional<ESatFreqBand> ParseBand(std::string_view text);
/// C-Band or Ku-Band, as the files have it.
const char* BandName(ESatFreqBand band);

/// "19.2E" of tenths of a degree, negative in the west.
std::string PositionText(LONG longitude);

}  // namespace zortunedex::kit
