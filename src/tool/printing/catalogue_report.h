// What became of a folder of transponder tables, for the user.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "kit/satellites/catalogue_report.h"

namespace zortunedex::kit::tool {

/// One line for every file, for every reason and for every kind of value, on standard error.
void PrintWarnings(const CatalogueReport& report);
/// Members leftOut, twoPositions and notHeld.
void AddTo(nlohmann::ordered_json& object, const CatalogueReport& report);

}  // namespace zortunedex::kit::tool
