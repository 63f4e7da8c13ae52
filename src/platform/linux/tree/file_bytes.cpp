#include "platform/linux/tree/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

#include "platform/linux/files/file_descriptor.h"

namespace domtree {

bool FileBytes::Read(const std::string& path) {
  Reset();
  // A pipe without a writer must not stop the open.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.IsOpen() && errno == ENOMEM) throw std::bad_alloc();
  struct stat state {};
  if (!file.IsOpen() || fstat(file.Get(), &state) != 0 || !S_ISREG(state.st_mode)) return false;
  const auto size = static_cast<std::size_t>(state.st_size);
  if (size > kLargest) return false;
  m_bytes = NewBytes(size + 1);
  while (m_size < size) {
    const ssize_t count = read(file.Get(), m_bytes.get() + m_size, size - m_size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    m_size += static_cast<std::size_t>(count);
  }
  m_bytes[m_size] = '\0';
  return true;
}

bool FileBytes::Assign(std::string_view bytes) {
  if (bytes.size() > kLargest) return false;
  Bytes copy = NewBytes(bytes.size() + 1);
  std::copy(bytes.begin(), bytes.end(), copy.get());
  copy[bytes.size()] = '\0';
  m_bytes = std::move(copy);
  m_size = bytes.size();
  return true;
}

}  // namespace domtree
