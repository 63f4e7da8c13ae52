#include "kit/history/renaming.h"

#include "kit/failure.h"
#include "platform/host.h"

namespace zortunedex::kit::history {

FileSet Renamings::ReadFiles() const {
  FileSet files = history::ReadFiles(m_directory);
  for (const Renaming& one : m_wanted) files[one.to] = ReadFile(m_directory, one.from);
  return files;
}

void Renamings::Make() {
  for (const Renaming& one : m_wanted) {
    std::string cause;
    if (host::RenameFile(PathOf(m_directory, one.from), PathOf(m_directory, one.to), cause)) {
      m_made.push_back(one);
      continue;
    }
    TakeBack();
    throw Failure{E_FAIL, one.from + " cannot be renamed: " + cause + "; nothing was changed"};
  }
}

void Renamings::TakeBack() {
  for (; !m_made.empty(); m_made.pop_back()) {
    std::string ignored;
    const Renaming& one = m_made.back();
    host::RenameFile(PathOf(m_directory, one.to), PathOf(m_directory, one.from), ignored);
  }
}

}  // namespace zortunedex::kit::history
