#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <system_error>

#include "platform/host.h"
#include "platform/linux/files/file_descriptor.h"

namespace host {

FileLock::FileLock(const std::string& path, std::string& cause) {
  int handle = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  // Another user's file can be locked without the right to write it.
  if (handle < 0 && errno == EACCES) handle = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (handle < 0) cause = std::generic_category().message(errno);
  m_handle = handle;
}

FileLock::~FileLock() { FileDescriptor(static_cast<int>(m_handle)).Close(); }

bool FileLock::Take() {
  int result = -1;
  do {
    result = flock(static_cast<int>(m_handle), LOCK_EX | LOCK_NB);
  } while (result != 0 && errno == EINTR);
  return result == 0 || errno != EWOULDBLOCK;
}

}  // namespace host
