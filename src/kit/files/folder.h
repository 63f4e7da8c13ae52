#pragma once

#include <string>
#include <vector>

namespace zortunedex::kit {

/// Names of what stands in a directory, as UTF-8; none for one that cannot be read.
std::vector<std::string> NamesIn(const std::string& directory);

}  // namespace zortunedex::kit
