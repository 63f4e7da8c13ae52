#include "platform/linux/files/file_copy.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>

#include "platform/linux/files/file_descriptor.h"

std::string DirectoryOf(const std::string& path) {
  const std::size_t separator = path.rfind('/');
  if (separator == std::string::npos) return ".";
  return path.substr(0, separator == 0 ? 1 : separator);
}

void KeepOwnerAndMode(int handle, const struct stat& old) {
  bool isOwnerKept = fchown(handle, old.st_uid, old.st_gid) == 0;
  bool isGroupKept = isOwnerKept;
  if (!isOwnerKept) isGroupKept = fchown(handle, static_cast<uid_t>(-1), old.st_gid) == 0;
  struct stat now {};
  if (fstat(handle, &now) == 0) {
    isOwnerKept = now.st_uid == old.st_uid;
    isGroupKept = now.st_gid == old.st_gid;
  }
  mode_t mode = old.st_mode & 07777U;
  if (!isOwnerKept || !isGroupKept) mode &= 0777U;
  if (!isGroupKept) mode &= 0707U | (mode & 07U) << 3;
  // Where this fails the file keeps the mode that it was made with: its owner's alone.
  static_cast<void>(fchmod(handle, mode));
}

bool MoveToFree(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // The file system cannot do both at once: the name is taken first.
  const FileDescriptor taken(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!taken.IsOpen()) return false;
  if (rename(from.c_str(), to.c_str()) == 0) return true;
  const int error = errno;
  unlink(to.c_str());
  errno = error;
  return false;
}

bool SyncDirectory(const std::string& directory) {
  const FileDescriptor handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return !handle.IsOpen() || fsync(handle.Get()) == 0 || errno != EIO;
}
