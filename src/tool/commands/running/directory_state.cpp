#include "tool/commands/running/directory_state.h"

#include "kit/files/whole_file.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

DirectoryState::DirectoryState(const Options& options)
    : m_folder(options.output.empty()
                   ? whole_file::PathOf(options.directory)
                   : fs::absolute(whole_file::PathOf(options.output)).parent_path()),
      m_before(Look()) {}

DirectoryState::Files DirectoryState::Look() const {
  Files files;
  std::error_code error;
  for (auto entry = fs::directory_iterator(m_folder, error);
       !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::error_code ignored;
    if (!entry->is_regular_file(ignored)) continue;
    files[entry->path().filename()] = {entry->file_size(ignored), entry->last_write_time(ignored)};
  }
  return files;
}

}  // namespace zortunedex::kit::tool
