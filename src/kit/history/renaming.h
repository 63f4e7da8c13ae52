#pragma once

#include <string>
#include <vector>

#include "kit/history/snapshots/file_set.h"

namespace zortunedex::kit::history {

/// A file that gets the name that it is looked for by.
struct Renaming {
  std::string from;
  std::string to;
};

/// Names that are given in the course of a change. A history knows files by the names that they
/// are looked for by, and nothing of other ones.
class Renamings {
 public:
  /// Of files of the directory; nothing is renamed yet.
  Renamings(std::string directory, std::vector<Renaming> wanted)
      : m_directory(std::move(directory)), m_wanted(std::move(wanted)) {}

  /// The files as if they were renamed.
  FileSet ReadFiles() const;
  /// Renames them. Failure when one cannot be; those before it have their old names again.
  void Make();
  /// Gives those that were renamed their old names.
  void TakeBack();

 private:
  std::string m_directory;
  std::vector<Renaming> m_wanted;
  std::vector<Renaming> m_made;
};

}  // namespace zortunedex::kit::history
