#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "platform/files.h"
#include "platform/host.h"
#include "platform/linux/files/file_copy.h"
#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/files/temporary_file.h"

namespace host {
namespace {

/// Says why the last call failed; to be asked before anything is cleaned up.
bool Told(bool isDone, std::string& cause) {
  if (!isDone) cause = std::generic_category().message(errno);
  return isDone;
}

/// True where both names lead to one file.
bool AreOne(const std::string& a, const std::string& b) {
  struct stat first {};
  struct stat second {};
  return lstat(a.c_str(), &first) == 0 && lstat(b.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

/// Two names of one file that letters of either case make are one name; of two links to a file both
/// stay.
bool MoveName(const std::string& from, const std::string& to) {
  if (MoveToFree(from, to)) return true;
  if (errno != EEXIST) return false;
  if (AreOne(from, to)) return rename(from.c_str(), to.c_str()) == 0;
  errno = EEXIST;
  return false;
}

}  // namespace

bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& cause) {
  files::AtomicFile file(path);
  return Told(file.Write(bytes) && file.Commit(), cause);
}

bool ReplaceFile(const std::string& path, std::string_view bytes) {
  std::string cause;
  return ReplaceFile(path, bytes, cause);
}

bool WriteNewFile(const std::string& path, std::string_view bytes, std::string& cause) {
  const std::string directory = DirectoryOf(path);
  temporary_file::RemoveAbandoned(directory);
  std::string temporary;
  FileDescriptor file = temporary_file::Create(directory, 0666, temporary);
  if (!Told(file.IsOpen(), cause)) return false;
  const Removal ofTemporary{temporary};
  if (!Told(WriteAll(file.Get(), bytes) && fsync(file.Get()) == 0, cause)) return false;
  if (!Told(MoveToFree(temporary, path), cause)) return false;
  const bool isKept = Told(file.Close() && SyncDirectory(directory), cause);
  if (!isKept) unlink(path.c_str());
  return isKept;
}

bool WriteNewFile(const std::string& path, std::string_view bytes) {
  std::string cause;
  return WriteNewFile(path, bytes, cause);
}

bool RemoveFile(const std::string& path, std::string& cause) {
  if (unlink(path.c_str()) != 0) return Told(errno == ENOENT, cause);
  return Told(SyncDirectory(DirectoryOf(path)), cause);
}

bool RenameFile(const std::string& from, const std::string& to, std::string& cause) {
  if (!Told(MoveName(from, to), cause)) return false;
  const bool isKept = Told(SyncDirectory(DirectoryOf(to)), cause);
  if (!isKept) MoveName(to, from);
  return isKept;
}

bool MakeFolder(const std::string& path, std::string& cause) {
  struct stat found {};
  if (stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode)) return true;
  const std::string parent = DirectoryOf(path);
  const bool isKnown = stat(parent.c_str(), &found) == 0;
  const mode_t mode = isKnown ? found.st_mode & 0777U : 0777U;
  if (mkdir(path.c_str(), mode) != 0) {
    const int error = errno;
    // Somebody else may have been first.
    if (error == EEXIST && stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode)) return true;
    errno = error == EEXIST ? ENOTDIR : error;
    return Told(false, cause);
  }
  return Told(SyncDirectory(parent), cause);
}

}  // namespace host
