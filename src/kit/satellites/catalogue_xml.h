#pragma once

#include <string>

#include "kit/satellites/catalogue.h"

namespace zortunedex::kit {

/// The catalogue as the bytes of a SatelliteInfo.xml: indented with tabs, CR LF, every attribute
/// there (a missing text would read as the one in front of it).
std::string CatalogueXml(const SatelliteCatalogue& catalogue);

}  // namespace zortunedex::kit
