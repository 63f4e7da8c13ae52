// How a finished temporary file takes its target's place.
#pragma once

#include <string>

#include "platform/windows/files/file_handle.h"

namespace placing {

/// What becomes of a file that stands in the target's place.
enum class Existing { Replace, Keep };

/// A directory or a file that must not be written cannot be replaced.
bool IsReplaceable(const std::wstring& target);

/// Makes the temporary file durable, gives it the attributes and access list of what it replaces,
/// and moves it. False leaves the target as it was, and the temporary file to its maker.
bool PutInPlace(FileHandle file, const std::wstring& temporary, const std::wstring& target,
                Existing existing);

}  // namespace placing
