#include "kit/history/snapshots/file_set.h"

#include <algorithm>
#include <filesystem>

#include "kit/files/folder.h"
#include "kit/files/whole_file.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace history {
namespace {

constexpr std::string_view kBaseStart = "base-";
constexpr std::string_view kBaseEnd = ".json";

bool IsNameLetter(char letter) {
  return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= 'a' && letter <= 'z') || letter == '-';
}

}  // namespace

bool IsBase(std::string_view name) {
  if (!name.starts_with(kBaseStart) || !name.ends_with(kBaseEnd)) return false;
  name.remove_suffix(kBaseEnd.size());
  return std::all_of(name.begin(), name.end(), IsNameLetter);
}

std::string PathOf(const std::string& directory, const std::string& name) {
  const std::string folder = IsBase(name) ? data_files::PathOf(directory, kFolder) : directory;
  return data_files::PathOf(folder, name);
}

std::optional<std::string> ReadFile(const std::string& directory, const std::string& name) {
  return data_files::ReadAt(PathOf(directory, name), name);
}

FileSet ReadFiles(const std::string& directory) {
  FileSet files = data_files::ReadDataFiles(directory);
  for (const std::string& name : NamesIn(PathOf(directory, kFolder))) {
    if (IsBase(name)) files[name] = ReadFile(directory, name);
  }
  return files;
}

void CopyFiles(const FileSet& files, const std::string& directory) {
  std::error_code error;
  fs::create_directory(whole_file::PathOf(directory) / kFolder, error);
  for (const auto& [name, bytes] : files) {
    if (bytes) data_files::WriteCopy(PathOf(directory, name), name, *bytes);
  }
}

std::vector<std::string> Differing(const FileSet& before, const FileSet& after) {
  std::vector<std::string> names;
  for (const auto& [name, bytes] : after) {
    if (BytesOf(before, name) != bytes) names.push_back(name);
  }
  for (const auto& [name, bytes] : before) {
    if (bytes && !after.contains(name)) names.push_back(name);
  }
  return names;
}

}  // namespace history

}  // namespace zortunedex::kit
