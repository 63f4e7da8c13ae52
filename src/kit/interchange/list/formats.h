// The formats that lists leave and enter in.
#pragma once

#include <string_view>

#include "kit/interchange/format.h"

namespace zortunedex::kit::interchange {

/// All of them.
std::span<const Format> Formats();
/// By its name; null when there is none.
const Format* FindFormat(std::string_view name);

}  // namespace zortunedex::kit::interchange
