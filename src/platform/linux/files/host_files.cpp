#include "platform/files.h"
#include "platform/host.h"
#include "platform/linux/files/file_copy.h"
#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/files/temporary_file.h"

namespace host {

bool ReplaceFile(const std::string& path, std::string_view bytes) {
  files::AtomicFile file(path);
  return file.Write(bytes) && file.Commit();
}

bool WriteNewFile(const std::string& path, std::string_view bytes) {
  const std::string directory = DirectoryOf(path);
  temporary_file::RemoveAbandoned(directory);
  std::string temporary;
  FileDescriptor file = temporary_file::Create(directory, 0666, temporary);
  if (!file.IsOpen()) return false;
  const Removal ofTemporary{temporary};
  if (!WriteAll(file.Get(), bytes) || fsync(file.Get()) != 0) return false;
  if (!MoveToFree(temporary, path)) return false;
  const bool isKept = file.Close() && SyncDirectory(directory);
  if (!isKept) unlink(path.c_str());
  return isKept;
}

}  // namespace host
