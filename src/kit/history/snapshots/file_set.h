// The files whose changes are recorded.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/files/data_files.h"

namespace zortunedex::kit::history {

using data_files::BytesOf;
using data_files::IsDataFile;

/// The folder beside the data files.
inline constexpr char kFolder[] = "tunedex-history";

/// The four data files are always named, the bases of merged scans (base-COUNTRY-SIGNAL.json, in
/// the history's folder) where there are any.
using FileSet = data_files::Files;

/// True for the name of a merged scan's base.
bool IsBase(std::string_view name);

/// Where a recorded file stands, as UTF-8.
std::string PathOf(const std::string& directory, const std::string& name);

/// One file, or nothing where there is none. Failure when it cannot be read.
std::optional<std::string> ReadFile(const std::string& directory, const std::string& name);
/// All of them. Failure when one cannot be read.
FileSet ReadFiles(const std::string& directory);
/// Fills an empty directory.
void CopyFiles(const FileSet& files, const std::string& directory);

/// Names of the files that differ.
std::vector<std::string> Differing(const FileSet& before, const FileSet& after);

}  // namespace zortunedex::kit::history
