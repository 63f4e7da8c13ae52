// The satellite catalogue by value.
#pragma once

#include <string>
#include <vector>

#include "api/zortunedex/satellites.hpp"
#include "kit/model/database.h"

namespace zortunedex::kit {

using Transponder = zortunedex::transponder;
using Satellite = zortunedex::satellite;
using LnbType = zortunedex::lnb_type;

struct SatelliteCatalogue {
  std::vector<Satellite> satellites;
  std::vector<LnbType> lnbs;

  std::size_t TransponderCount() const;
  /// By id, else by name: the first one. Failure that names what is there.
  const Satellite& FindSatellite(const std::string& utf8) const;
  /// Failure that names what is there.
  const LnbType& FindLnb(const std::string& utf8) const;
};

/// SatelliteInfo.xml, in the order of the file. Failure when there is none or it cannot be read.
SatelliteCatalogue ReadCatalogue(const Location& location);

}  // namespace zortunedex::kit
