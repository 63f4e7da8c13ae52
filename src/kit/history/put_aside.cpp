#include "kit/history/put_aside.h"

#include <filesystem>
#include <optional>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "kit/history/file_set.h"
#include "platform/host.h"

namespace fs = std::filesystem;

namespace history {
namespace {

constexpr char kEnd[] = ".unreadable";

}  // namespace

PutAside::PutAside(const std::string& scratch, const std::string& directory) {
  for (const std::string& name : NamesIn(scratch)) {
    const std::size_t end = name.find(kEnd);
    if (end == std::string::npos || !IsDataFile(name.substr(0, end))) continue;
    const std::optional<std::string> bytes =
        whole_file::Read(whole_file::PathOf(PathOf(scratch, name)));
    if (bytes) Carry(PathOf(directory, name.substr(0, end)), *bytes);
  }
}

void PutAside::TakeBack() const {
  std::string ignored;
  for (const std::string& path : m_paths) host::RemoveFile(path, ignored);
}

void PutAside::Carry(const std::string& file, const std::string& bytes) {
  std::string path;
  std::error_code error;
  for (unsigned number = 1; path.empty(); ++number) {
    std::string free = file + kEnd;
    if (number > 1) free += "." + std::to_string(number);
    if (!fs::exists(fs::symlink_status(whole_file::PathOf(free), error))) path = free;
  }
  std::string cause;
  if (!host::WriteNewFile(path, bytes, cause)) {
    TakeBack();
    throw Failure{E_FAIL, "what cannot be read could not be kept beside the new file: " + cause +
                              "; nothing was changed"};
  }
  m_paths.push_back(path);
}

}  // namespace history
