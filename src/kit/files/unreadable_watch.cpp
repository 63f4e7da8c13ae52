#include "kit/files/unreadable_watch.h"

#include <algorithm>

#include "kit/files/folder.h"

namespace zortunedex::kit {

namespace {

std::size_t CountUnreadable(const std::string& directory, const std::string& file) {
  const std::vector<std::string> names = NamesIn(directory);
  return static_cast<std::size_t>(std::count_if(
      names.begin(), names.end(),
      [&](const std::string& name) { return name.starts_with(file + ".unreadable"); }));
}

}  // namespace

UnreadableWatch::UnreadableWatch(const std::string& directory, const std::string& file)
    : m_directory(directory), m_file(file), m_before(CountUnreadable(directory, file)) {}

bool UnreadableWatch::PutAside() const { return CountUnreadable(m_directory, m_file) != m_before; }

void UnreadableWatch::Report(const TakeNote& note) const {
  if (!PutAside()) return;
  Tell(note, "the old " + m_file + " could not be read and was kept beside the new one");
}

}  // namespace zortunedex::kit
