#pragma once

#include <string>

#include "platform/com.h"
#include "platform/windows/files/file_handle.h"

namespace temporary_file {

/// Makes a new file of a short, unused name in a directory (given with its separator). `name` is
/// its whole path. Not open when none can be made.
FileHandle Create(const std::wstring& directory, std::wstring& name);

/// Removes the temporary files of processes that are no more. Directories of other machines are
/// left alone: their processes cannot be asked.
void RemoveAbandoned(const std::wstring& directory);

/// Gives the new file the attributes and the access list of the one that it is to replace, as far
/// as this process may.
void KeepAccess(const std::wstring& old, const std::wstring& fresh);

}  // namespace temporary_file
