// Narrow paths as the wide file calls take them.
#pragma once

#include <string>

#include "platform/com.h"

namespace wide_path {

/// The path in wide text; a long one becomes absolute and gets the prefix that lifts the limit of
/// 260 characters.
std::wstring From(const std::string& path);

/// The same for a path that is wide already.
std::wstring Lengthen(const std::wstring& path);

/// The file that a symbolic link leads to; the path itself when it is none or leads nowhere.
std::wstring Resolve(const std::wstring& path);

/// The directory with its separator (or what else ends it); empty for a bare name.
std::wstring DirectoryOf(const std::wstring& path);

}  // namespace wide_path
