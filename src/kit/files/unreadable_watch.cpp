#include "kit/files/unreadable_watch.h"

#include <filesystem>

#include "kit/files/file_scan.h"

namespace {

std::size_t CountUnreadable(const std::string& directory, const std::string& file) {
  const std::u8string start(file.begin(), file.end());
  std::size_t count = 0;
  std::error_code error;
  const std::filesystem::path path = file_scan::ChannelFile(directory).parent_path();
  for (auto entry = std::filesystem::directory_iterator(path, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::u8string name = entry->path().filename().u8string();
    count += name.starts_with(start + u8".unreadable");
  }
  return count;
}

}  // namespace

UnreadableWatch::UnreadableWatch(const std::string& directory, const std::string& file)
    : m_directory(directory), m_file(file), m_before(CountUnreadable(directory, file)) {}

bool UnreadableWatch::PutAside() const { return CountUnreadable(m_directory, m_file) != m_before; }

void UnreadableWatch::Report(const TakeNote& note) const {
  if (!PutAside()) return;
  Tell(note, "the old " + m_file + " could not be read and was kept beside the new one");
}
