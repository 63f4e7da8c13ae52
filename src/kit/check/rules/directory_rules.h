// What is wrong with the files of a directory as files.
#pragma once

#include <string>
#include <vector>

#include "kit/check/findings/finding.h"

namespace zortunedex::kit::check {

/// ZT004, ZT009: files left over, names in other letters, links, files that are write-protected.
std::vector<Finding> CheckNames(const std::string& directory);

}  // namespace zortunedex::kit::check
