#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <vector>

#include "platform/files.h"
#include "platform/linux/files/file_copy.h"
#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/files/temporary_file.h"

namespace files {
namespace {

constexpr std::size_t kBufferSize = std::size_t{256} * 1024;
/// As many as the system follows.
constexpr int kLongestLinkChain = 40;

std::optional<std::string> ReadLink(const std::string& path) {
  std::vector<char> target(256);
  for (;;) {
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return std::nullopt;
    if (static_cast<std::size_t>(length) < target.size()) {
      return std::string(target.data(), static_cast<std::size_t>(length));
    }
    target.resize(target.size() * 2);
  }
}

/// Where the symbolic links at `path` end, also when nothing stands there yet. None: a circle.
std::optional<std::string> FollowLinks(std::string path) {
  for (int followed = 0; followed <= kLongestLinkChain; ++followed) {
    const std::optional<std::string> link = ReadLink(path);
    if (!link) return path;
    path = link->starts_with('/') ? *link : DirectoryOf(path) + "/" + *link;
  }
  return std::nullopt;
}

/// True when the target is a file that may be written, or does not exist yet.
bool MayReplace(const std::string& target, bool& isNew) {
  struct stat old {};
  isNew = stat(target.c_str(), &old) != 0;
  if (isNew) return errno == ENOENT;
  if (!S_ISREG(old.st_mode)) {
    errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
    return false;
  }
  return faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace

AtomicFile::AtomicFile(const std::string& path) {
  const std::optional<std::string> target = FollowLinks(path);
  bool isNew = false;
  if (!target || target->empty() || target->ends_with('/')) return;
  if (!MayReplace(*target, isNew)) return;
  m_target = *target;
  const std::string directory = DirectoryOf(m_target);
  // First, for the room that they may take on a full disk.
  temporary_file::RemoveAbandoned(directory);
  // An old file's content may be secret: until it has the old mode, the new one is its owner's.
  m_handle = temporary_file::Create(directory, isNew ? 0666U : 0600U, m_temporary).Release();
}

AtomicFile::~AtomicFile() {
  if (!IsOpen()) return;
  close(static_cast<int>(m_handle));
  unlink(m_temporary.c_str());
}

bool AtomicFile::IsOpen() const { return m_handle >= 0; }

bool AtomicFile::Write(std::string_view bytes) {
  if (!IsOpen() || m_failed) return false;
  if (m_buffer.size() + bytes.size() < kBufferSize) {
    m_buffer += bytes;
    return true;
  }
  const int handle = static_cast<int>(m_handle);
  m_failed = !WriteAll(handle, m_buffer) || !WriteAll(handle, bytes);
  m_buffer.clear();
  return !m_failed;
}

bool AtomicFile::Commit() {
  if (!IsOpen() || m_failed) return false;
  m_failed = true;
  const int handle = static_cast<int>(m_handle);
  if (!WriteAll(handle, m_buffer)) return false;
  m_buffer.clear();
  struct stat old {};
  if (stat(m_target.c_str(), &old) == 0) KeepOwnerAndMode(handle, old);
  if (fsync(handle) != 0) return false;
  // Nothing may fail for lack of memory once the target is replaced.
  const std::string directory = DirectoryOf(m_target);
  if (rename(m_temporary.c_str(), m_target.c_str()) != 0) return false;
  m_handle = -1;
  const bool isClosed = close(handle) == 0;
  return SyncDirectory(directory) && isClosed;
}

}  // namespace files
