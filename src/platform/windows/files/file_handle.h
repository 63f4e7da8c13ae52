#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/com.h"

/// Owns one file handle of the platform.
class FileHandle {
 public:
  FileHandle() = default;
  FileHandle(const std::wstring& path, DWORD access, DWORD share, DWORD disposition, DWORD flags)
      : m_handle(CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr)) {}
  FileHandle(FileHandle&& other) noexcept
      : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
  }
  ~FileHandle() { Close(); }

  /// Takes over a handle that the caller owns.
  static FileHandle Attach(HANDLE handle) {
    FileHandle result;
    result.m_handle = handle;
    return result;
  }

  bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return m_handle; }
  /// Gives the handle to the caller.
  HANDLE Release() { return std::exchange(m_handle, INVALID_HANDLE_VALUE); }
  /// False when the platform could not close it cleanly.
  bool Close() { return !IsOpen() || CloseHandle(Release()) != 0; }

  /// Everything or false.
  bool Write(std::string_view bytes) const;
  /// Up to `size` bytes, 0 at the end of the file. False when reading failed.
  bool Read(char* buffer, std::size_t size, std::size_t& count) const;

 private:
  HANDLE m_handle = INVALID_HANDLE_VALUE;
};
