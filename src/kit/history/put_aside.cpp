#include "kit/history/put_aside.h"

#include <filesystem>
#include <optional>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "kit/history/snapshots/file_set.h"
#include "platform/host.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace history {
namespace {

constexpr char kEnd[] = ".unreadable";

std::string FreePath(const std::string& file) {
  std::error_code error;
  for (unsigned number = 1;; ++number) {
    std::string path = file + kEnd;
    if (number > 1) path += "." + std::to_string(number);
    if (!fs::exists(fs::symlink_status(whole_file::PathOf(path), error))) return path;
  }
}

}  // namespace

PutAside::PutAside(const std::string& scratch) {
  for (const std::string& name : NamesIn(scratch)) {
    const std::string_view file = data_files::PutAsideOf(name);
    if (file.empty()) continue;
    std::optional<std::string> bytes = whole_file::Read(whole_file::PathOf(PathOf(scratch, name)));
    if (bytes) m_files.push_back({std::string(file), *std::move(bytes)});
  }
}

void PutAside::CarryTo(const std::string& directory) {
  for (const File& file : m_files) {
    const std::string path = FreePath(PathOf(directory, file.name));
    std::string cause;
    if (!host::WriteNewFile(path, file.bytes, cause)) {
      TakeBack();
      throw Failure{E_FAIL, "the unreadable " + file.name +
                                " could not be kept beside the new one: " + cause +
                                "; nothing was changed"};
    }
    m_paths.push_back(path);
  }
}

void PutAside::TakeBack() const {
  std::string ignored;
  for (const std::string& path : m_paths) host::RemoveFile(path, ignored);
}

}  // namespace history

}  // namespace zortunedex::kit
