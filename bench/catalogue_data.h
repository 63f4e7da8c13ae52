// The satellite catalogue that loading is measured with: one satellite for about 67 transponders, a
// sixth of them in the C band, and 50 LNB types.
#pragma once

#include <filesystem>
#include <string>

#include "core/interfaces.h"

namespace bench {

inline constexpr UINT kLnbTypes = 50;

constexpr UINT SatellitesFor(UINT transponders) { return transponders * 3 / 200; }

/// SatelliteInfo.xml with so many transponders, one element a line.
std::string MakeCatalogueFile(UINT transponders, UINT satellites);

/// A directory with such a file, made at first use; it goes with the program.
const std::filesystem::path& CatalogueDirectory(UINT transponders);

inline std::filesystem::path CatalogueFile(const std::filesystem::path& directory) {
  return directory / "SatelliteInfo.xml";
}

}  // namespace bench
