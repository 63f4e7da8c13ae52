#include "kit/check/subject/files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"

namespace fs = std::filesystem;

namespace check {
namespace {

void Take(const std::string& directory, const std::string& name, Files& files) {
  const fs::path path = whole_file::PathOf(directory) / whole_file::PathOf(name);
  std::error_code error;
  if (!fs::exists(fs::status(path, error))) {
    files[name];
    return;
  }
  std::optional<std::string> bytes = whole_file::Read(path);
  if (!bytes) throw Failure{E_FAIL, name + " cannot be read"};
  files[name] = std::move(bytes);
}

}  // namespace

const std::string* BytesOf(const Files& files, std::string_view name) {
  const auto found = files.find(name);
  return found == files.end() || !found->second ? nullptr : &*found->second;
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

Files ReadFiles(const std::string& directory) {
  std::error_code error;
  if (!fs::is_directory(whole_file::PathOf(directory), error)) {
    throw Failure{E_INVALIDARG, "cannot open the directory " + directory};
  }
  Files files;
  for (const std::string_view name : kDataFiles) Take(directory, std::string(name), files);
  for (const std::string& name : NamesIn(directory)) {
    if (!PutAsideOf(name).empty()) Take(directory, name, files);
  }
  return files;
}

void Write(const Files& files, const std::string& directory) {
  for (const std::string_view name : kDataFiles) {
    const std::string* bytes = BytesOf(files, name);
    if (bytes == nullptr) continue;
    std::ofstream file(whole_file::PathOf(directory) / std::string(name), std::ios::binary);
    file.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    if (!file.flush()) throw Failure{E_FAIL, "a temporary file cannot be written"};
  }
}

}  // namespace check
