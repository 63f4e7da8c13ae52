#pragma once

#include <vector>

#include "kit/satellites/catalogue.h"

namespace zortunedex::kit {

/// The LNB types that are sold for home reception. Types that choose their oscillator by the
/// polarisation have no form in the catalogue: it knows one switch frequency.
std::vector<LnbType> WellKnownLnbs();

}  // namespace zortunedex::kit
