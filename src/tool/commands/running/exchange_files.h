// The files that lists leave and enter in.
#pragma once

#include "kit/interchange/format.h"

namespace zortunedex::kit::tool {

/// A file or a folder. Failure for what is not there.
interchange::Input ReadInput(const std::string& path);
/// Failure for a folder where the format has none.
void RequireFile(const interchange::Input& input, const interchange::Format& format,
                 const std::string& path);

/// Writes the file, or the files of a folder that is made where it is not there: each as a whole or
/// not at all. Where one of them cannot be written the others are put back. Without a path the file
/// is printed.
void WriteOutputFiles(const interchange::Output& output, const std::string& path, bool isFolder);

}  // namespace zortunedex::kit::tool
