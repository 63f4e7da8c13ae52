// Tuning parameters in words, those that the channel file lacks among them.
#pragma once

#include <string>

#include "core/interfaces.h"

namespace zortunedex::kit::interchange {

/// "NotSet", "3/4", "9/10", "8PSK"; a value that nobody has named is its number.
std::string TextOf(Polarisation polarisation);
std::string TextOf(BinaryConvolutionCodeRate fec);
std::string TextOf(ModulationType modulation);
std::string TextOf(SpectralInversion inversion);

}  // namespace zortunedex::kit::interchange
