// The files that lists leave and enter in.
#pragma once

#include <string>

#include "kit/interchange/format.h"
#include "kit/notes.h"

namespace zortunedex::kit::interchange {

/// The bytes of a file, or a way to the files of a folder; the path is UTF-8. Failure for what is
/// not there.
Input ReadInput(const std::string& path);
/// Failure for a folder where the format has none.
void RequireFile(const Input& input, const Format& format, const std::string& path);

/// Writes the file at the path (UTF-8), or the files of a folder that is made where it is not
/// there: each as a whole or not at all, in the place of what stands there. Failure where one of
/// them cannot be written; the others are put back then, and what cannot be is noted.
void WriteFiles(const Output& output, const std::string& path, bool isFolder,
                const TakeNote& note = {});

}  // namespace zortunedex::kit::interchange
