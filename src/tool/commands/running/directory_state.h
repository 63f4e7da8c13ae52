#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <utility>

#include "tool/options/options.h"

namespace zortunedex::kit::tool {

/// What the files were that a command may change: to tell, when it could not finish, whether it had
/// changed one.
class DirectoryState {
 public:
  explicit DirectoryState(const Options& options);
  bool HasChanged() const { return Look() != m_before; }

 private:
  using Files =
      std::map<std::filesystem::path, std::pair<std::uintmax_t, std::filesystem::file_time_type>>;

  Files Look() const;

  std::filesystem::path m_folder;
  Files m_before;
};

}  // namespace zortunedex::kit::tool
