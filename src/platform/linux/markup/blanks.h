#pragma once

#include <string_view>

namespace domtree {

/// What XML takes for white space.
inline constexpr std::string_view kBlanks = " \t\r\n";

}  // namespace domtree
