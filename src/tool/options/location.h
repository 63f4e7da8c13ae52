// Where the command line says that things are.
#pragma once

#include "kit/model/database.h"
#include "tool/options/options.h"

/// A command that needs a country and a signal type has both.
Location LocationOf(const Options& options);

/// Where the satellites of a directory are: any country will do.
Location SatelliteLocation(const Options& options);
