#include "tool/commands/running/output_file.h"

#include <filesystem>

#include "kit/failure.h"
#include "kit/files/whole_file.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

void RequireFree(const std::string& path, bool force) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(whole_file::PathOf(path), error);
  if (!fs::exists(status)) return;
  if (!force) throw Failure{E_FAIL, path + " is there already; --force replaces it"};
  if (fs::is_directory(fs::status(whole_file::PathOf(path), error))) {
    throw Failure{E_INVALIDARG, path + " is a folder"};
  }
}

void WriteOutput(const std::string& path, std::string_view bytes, bool force) {
  RequireFree(path, force);
  force ? whole_file::Replace(path, bytes) : whole_file::WriteNew(path, bytes);
}

}  // namespace zortunedex::kit::tool
