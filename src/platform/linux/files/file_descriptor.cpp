#include "platform/linux/files/file_descriptor.h"

#include <cerrno>

bool WriteAll(int handle, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(handle, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

ssize_t ReadSome(int handle, char* buffer, std::size_t size) {
  ssize_t count = -1;
  do {
    count = read(handle, buffer, size);
  } while (count < 0 && errno == EINTR);
  return count;
}
