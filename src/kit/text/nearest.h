#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zortunedex::kit {

/// The word that is most like one that is not known: by the fewest letters put in, left out,
/// replaced or swapped with their neighbour, letter case aside; or one that it begins. The first
/// one of several. Nothing when all are too far away.
std::optional<std::string> Nearest(std::string_view word, const std::vector<std::string>& known);

/// The words with commas between them.
std::string Listed(const std::vector<std::string>& words);

}  // namespace zortunedex::kit
