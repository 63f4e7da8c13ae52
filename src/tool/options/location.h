// Where the command line says that things are.
#pragma once

#include "kit/model/database.h"
#include "tool/options/options.h"

namespace zortunedex::kit::tool {

/// Takes what was not given from the environment: TUNEDEX_DIR, TUNEDEX_COUNTRY, TUNEDEX_SIGNAL.
/// Raises UsageError for a value that is none.
void TakeEnvironment(Options& options);

/// Looks whether the directory and the country are there, and takes the country and the signal type
/// that are still missing from ChanInfo.xml where it has one fitting channel set alone. Raises
/// UsageError, and UnreadableFile where the file has to be asked and cannot be read.
void CompleteLocation(Options& options);

/// A command that needs a country and a signal type has both.
Location LocationOf(const Options& options);

/// Where the satellites of a directory are: any country will do.
Location SatelliteLocation(const Options& options);

}  // namespace zortunedex::kit::tool
