// The file that new content goes to before it takes its name. Its owner keeps it locked, so that
// what a killed process left behind can be told from what another process is writing right now.
#pragma once

#include <string>

#include "platform/linux/files/file_descriptor.h"

namespace temporary_file {

/// Makes a new, locked file in a directory and names it in `path`. Not open when none can be made.
FileDescriptor Create(const std::string& directory, unsigned mode, std::string& path);

/// Removes the temporary files of processes that are no more. What cannot be locked, or not even
/// opened, is left alone.
void RemoveAbandoned(const std::string& directory);

}  // namespace temporary_file
