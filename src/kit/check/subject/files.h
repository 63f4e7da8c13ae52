// What a check looks at of a directory.
#pragma once

#include <string>

#include "kit/files/data_files.h"

namespace zortunedex::kit::check {

using data_files::BytesOf;
using data_files::Files;
using data_files::kCatalogue;
using data_files::kChannels;
using data_files::kDataFiles;
using data_files::kPresets;
using data_files::kSettings;
using data_files::PutAsideOf;

/// What was put aside of the data files (NAME.unreadable...). Failure for a file that cannot be
/// read.
Files ReadPutAside(const std::string& directory);

/// The data files, and what was put aside of them. Failure for a directory or a file that cannot be
/// read.
Files ReadFiles(const std::string& directory);

}  // namespace zortunedex::kit::check
