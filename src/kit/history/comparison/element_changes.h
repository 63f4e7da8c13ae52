#pragma once

#include <string_view>
#include <vector>

#include "kit/history/comparison/changes.h"

namespace zortunedex::kit::history {

/// What differs between two texts of XML, element by element: of what came or went the outermost
/// one, of what stayed its attributes. Nothing for texts that differ in form alone.
std::vector<Change> ElementChanges(std::string_view from, std::string_view to);

}  // namespace zortunedex::kit::history
