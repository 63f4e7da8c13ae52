#pragma once

#include <string>
#include <vector>

namespace history {

/// Carries what was put aside in a copy of a directory (NAME.unreadable, NAME.unreadable.2, ...)
/// over to it, under names that are free there. Failure when that cannot be done; nothing is left
/// of it then.
class PutAside {
 public:
  PutAside(const std::string& scratch, const std::string& directory);

  /// Removes them again: the files are in their old place still.
  void TakeBack() const;

 private:
  void Carry(const std::string& file, const std::string& bytes);

  std::vector<std::string> m_paths;
};

}  // namespace history
