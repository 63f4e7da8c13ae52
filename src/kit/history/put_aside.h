#pragma once

#include <string>
#include <vector>

namespace zortunedex::kit::history {

/// What was put aside in a copy of a directory: NAME.unreadable, NAME.unreadable.2, ...
class PutAside {
 public:
  explicit PutAside(const std::string& scratch);

  /// Carries it over to the directory, under names that are free there. Failure when that cannot be
  /// done; nothing is left of it then.
  void CarryTo(const std::string& directory);
  /// Removes it there again: the files are in their old place still.
  void TakeBack() const;

 private:
  struct File {
    std::string name;  ///< of the data file
    std::string bytes;
  };

  std::vector<File> m_files;
  std::vector<std::string> m_paths;
};

}  // namespace zortunedex::kit::history
