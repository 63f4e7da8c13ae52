#include "kit/files/data_files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "kit/files/whole_file.h"
#include "kit/reading/readable.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace data_files {
namespace {

[[noreturn]] void RefuseToRead(std::string_view name, const std::string& cause) {
  throw UnreadableFile{E_FAIL, std::string(name) + " cannot be read: " + cause};
}

}  // namespace

const std::optional<std::string>& BytesOf(const Files& files, std::string_view name) {
  static const std::optional<std::string> kNone;
  const auto found = files.find(name);
  return found == files.end() ? kNone : found->second;
}

bool IsDataFile(std::string_view name) {
  return std::ranges::find(kDataFiles, name) != std::end(kDataFiles);
}

std::string_view PutAsideOf(std::string_view name) {
  for (const std::string_view file : kDataFiles) {
    if (!name.starts_with(file)) continue;
    const std::string_view rest = name.substr(file.size());
    if (rest == ".unreadable") return file;
    constexpr std::string_view kNumbered = ".unreadable.";
    const bool isNumbered =
        rest.starts_with(kNumbered) && rest.size() > kNumbered.size() &&
        rest.substr(kNumbered.size()).find_first_not_of("0123456789") == std::string_view::npos;
    if (isNumbered) return file;
  }
  return {};
}

std::string PathOf(const std::string& directory, std::string_view name) {
  const std::u8string path =
      (whole_file::PathOf(directory) / whole_file::PathOf(std::string(name))).u8string();
  return {path.begin(), path.end()};
}

std::optional<std::string> ReadAt(const std::string& utf8, std::string_view name) {
  const fs::path path = whole_file::PathOf(utf8);
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

Files ReadDataFiles(const std::string& directory) {
  Files files;
  for (const std::string_view name : kDataFiles) {
    files[std::string(name)] = ReadAt(PathOf(directory, name), name);
  }
  return files;
}

void WriteCopy(const std::string& path, std::string_view name, std::string_view bytes) {
  std::ofstream file(whole_file::PathOf(path), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.flush()) return;
  throw Failure{E_FAIL, std::string(name) + " cannot be copied to a temporary directory"};
}

}  // namespace data_files

}  // namespace zortunedex::kit
