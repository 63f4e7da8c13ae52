#include "platform/windows/files/file_handle.h"

#include <algorithm>

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20;

DWORD BlockOf(std::size_t size) { return static_cast<DWORD>(std::min(size, kBlock)); }

}  // namespace

bool FileHandle::Write(std::string_view bytes) const {
  while (!bytes.empty()) {
    DWORD written = 0;
    if (!WriteFile(m_handle, bytes.data(), BlockOf(bytes.size()), &written, nullptr)) return false;
    if (written == 0) return false;
    bytes.remove_prefix(written);
  }
  return true;
}

bool FileHandle::Read(char* buffer, std::size_t size, std::size_t& count) const {
  DWORD read = 0;
  if (!ReadFile(m_handle, buffer, BlockOf(size), &read, nullptr)) return false;
  count = read;
  return true;
}
