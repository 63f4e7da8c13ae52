// Making a catalogue of transponder tables.
#pragma once

#include <string>

#include "kit/satellites/catalogue.h"
#include "kit/satellites/catalogue_report.h"

namespace zortunedex::kit {

/// The satellites of a folder of tables from west to east, and the LNB types that are sold. What
/// cannot be used is left out and reported. Raises a Failure when the folder cannot be read.
SatelliteCatalogue CatalogueOfTables(const std::string& folder, CatalogueReport& report);

/// The catalogue as the bytes of a SatelliteInfo.xml. Raises a Failure unless the library reads
/// back what was meant.
std::string CheckedXml(const SatelliteCatalogue& catalogue);

}  // namespace zortunedex::kit
