#pragma once

#include <unistd.h>

#include <string_view>
#include <utility>

/// Owns one open file.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int handle) : m_handle(handle) {}
  FileDescriptor(FileDescriptor&& other) noexcept : m_handle(std::exchange(other.m_handle, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
  }
  ~FileDescriptor() { Close(); }

  bool IsOpen() const { return m_handle >= 0; }
  int Get() const { return m_handle; }
  int Release() { return std::exchange(m_handle, -1); }
  /// False when the system reports that something written before is lost.
  bool Close() { return m_handle < 0 || close(Release()) == 0; }

 private:
  int m_handle = -1;
};

/// Writes everything, however often the system stops half-way. False at the first error.
bool WriteAll(int handle, std::string_view bytes);

/// Reads up to `size` bytes; negative at an error.
ssize_t ReadSome(int handle, char* buffer, std::size_t size);
