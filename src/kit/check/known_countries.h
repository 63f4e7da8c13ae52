#pragma once

#include <cstdint>

namespace zortunedex::kit::check {

/// True for the code of a country that the library knows: for Settings::knowsCountry.
bool IsCountry(std::uint32_t code);

}  // namespace zortunedex::kit::check
