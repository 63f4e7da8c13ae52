#include "tool/options/location.h"

Location LocationOf(const Options& options) {
  return {options.directory, *options.country, *options.signal};
}

Location SatelliteLocation(const Options& options) {
  return {options.directory, options.country.value_or(1), InputSignalDVBSatellite};
}
