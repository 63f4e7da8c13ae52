#include "platform/linux/file_copy.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/linux/file_descriptor.h"

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

bool SyncDirectory(const std::string& directory) {
  const FileDescriptor handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return !handle.IsOpen() || fsync(handle.Get()) == 0 || errno != EIO;
}
