#include "kit/check/subject/files.h"

#include <filesystem>

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"

namespace zortunedex::kit::check {

Files ReadPutAside(const std::string& directory) {
  Files files;
  for (const std::string& name : NamesIn(directory)) {
    if (PutAsideOf(name).empty()) continue;
    files[name] = data_files::ReadAt(data_files::PathOf(directory, name), name);
  }
  return files;
}

Files ReadFiles(const std::string& directory) {
  std::error_code error;
  if (!std::filesystem::is_directory(whole_file::PathOf(directory), error)) {
    throw Failure{E_INVALIDARG, "cannot open the directory " + directory};
  }
  Files files = data_files::ReadDataFiles(directory);
  files.merge(ReadPutAside(directory));
  return files;
}

}  // namespace zortunedex::kit::check
