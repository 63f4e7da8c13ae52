#pragma once

#include <string>
#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/subject/channel_tree.h"

namespace zortunedex::kit::check {

/// ZT002, ZT003: whether a file that was put aside has channels that the file lacks. Its damages
/// have to be mended already. `current` is null where the file is missing or cannot be read.
Finding CheckPutAside(const markup::Document& aside, const markup::Document* current,
                      const std::string& name, const std::string& target);

}  // namespace zortunedex::kit::check
