#pragma once

#include <cstddef>
#include <string_view>

namespace domtree {

/// Attributes that one element of a file may have. The parser compares each with all in front of
/// it; the files' own elements have about 25.
inline constexpr std::size_t kMostAttributes = 1024;

/// False when a start tag of the text (UTF-8) has more than kMostAttributes attributes. What is not
/// well-formed may be answered either way.
bool IsWithinAttributeBound(std::string_view text);

}  // namespace domtree
