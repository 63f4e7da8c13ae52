#include "kit/history/snapshots/file_set.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "kit/reading/readable.h"

namespace fs = std::filesystem;

namespace history {
namespace {

constexpr std::array<std::string_view, 4> kDataFiles = {"ChanInfo.xml", "PreSetChannelInfo.xml",
                                                        "SatelliteInfo.xml", "UserSettings.xml"};
constexpr std::string_view kBaseStart = "base-";
constexpr std::string_view kBaseEnd = ".json";

bool IsNameLetter(char letter) {
  return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= 'a' && letter <= 'z') || letter == '-';
}

[[noreturn]] void RefuseToRead(const std::string& name, const std::string& cause) {
  throw UnreadableFile{E_FAIL, name + " cannot be read: " + cause};
}

}  // namespace

bool IsDataFile(std::string_view name) {
  return std::find(kDataFiles.begin(), kDataFiles.end(), name) != kDataFiles.end();
}

bool IsBase(std::string_view name) {
  if (!name.starts_with(kBaseStart) || !name.ends_with(kBaseEnd)) return false;
  name.remove_suffix(kBaseEnd.size());
  return std::all_of(name.begin(), name.end(), IsNameLetter);
}

std::string PathOf(const std::string& directory, const std::string& name) {
  const fs::path folder = whole_file::PathOf(directory);
  const std::u8string path = (IsBase(name) ? folder / kFolder / name : folder / name).u8string();
  return {path.begin(), path.end()};
}

std::optional<std::string> ReadFile(const std::string& directory, const std::string& name) {
  const fs::path path = whole_file::PathOf(PathOf(directory, name));
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return std::nullopt;
  if (!fs::exists(status)) RefuseToRead(name, error.message());
  if (fs::is_directory(status)) RefuseToRead(name, "it is a folder");
  if (!fs::is_regular_file(status)) RefuseToRead(name, "it is no file");
  errno = 0;
  std::optional<std::string> bytes = whole_file::Read(path);
  if (!bytes) {
    RefuseToRead(name, errno == 0 ? "it is not to be had" : std::generic_category().message(errno));
  }
  return bytes;
}

FileSet ReadFiles(const std::string& directory) {
  FileSet files;
  for (const std::string_view name : kDataFiles) {
    files[std::string(name)] = ReadFile(directory, std::string(name));
  }
  for (const std::string& name : NamesIn(PathOf(directory, kFolder))) {
    if (IsBase(name)) files[name] = ReadFile(directory, name);
  }
  return files;
}

void CopyFiles(const FileSet& files, const std::string& directory) {
  std::error_code error;
  fs::create_directory(whole_file::PathOf(directory) / kFolder, error);
  for (const auto& [name, bytes] : files) {
    if (!bytes) continue;
    std::ofstream file(whole_file::PathOf(PathOf(directory, name)), std::ios::binary);
    file.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    if (!file.flush()) throw Failure{E_FAIL, name + " cannot be copied to a temporary directory"};
  }
}

const std::optional<std::string>& BytesOf(const FileSet& files, const std::string& name) {
  static const std::optional<std::string> kNone;
  const auto found = files.find(name);
  return found == files.end() ? kNone : found->second;
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
