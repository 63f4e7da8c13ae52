// Channels out of the settings of receivers with Enigma2.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// A folder of settings, or one file "lamedb" of the fourth or fifth form. Services stand in the
/// order of the bouquets, those of none behind them. Failure for what holds no such file.
ImportResult ReadEnigma2(const Input& input, const ImportRequest& request, Losses& losses);

}  // namespace zortunedex::kit::interchange
