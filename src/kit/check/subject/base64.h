// Base64 as the library reads it, and as it should be.
#pragma once

#include <string>
#include <string_view>

namespace zortunedex::kit::check::base64 {

/// Whole groups of the standard alphabet with their padding, and nothing else.
bool IsProper(std::string_view text);

/// What the library makes of any text: characters outside of the alphabet count as zero bits.
std::string Decode(std::string_view text);

}  // namespace zortunedex::kit::check::base64
