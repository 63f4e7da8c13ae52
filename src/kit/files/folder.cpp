#include "kit/files/folder.h"

#include <filesystem>

#include "kit/files/whole_file.h"

namespace zortunedex::kit {

std::vector<std::string> NamesIn(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator(whole_file::PathOf(directory), error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::u8string name = entry->path().filename().u8string();
    names.emplace_back(name.begin(), name.end());
  }
  return names;
}

}  // namespace zortunedex::kit
