#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/linux/tree/large_memory.h"

namespace domtree {

/// A whole file in memory, a zero byte behind it.
class FileBytes {
 public:
  /// What the parser can count.
  static constexpr std::size_t kLargest = 0x7FFFFFFE;

  /// False for what is no regular file, cannot be read or is larger than kLargest.
  /// Raises std::bad_alloc.
  bool Read(const std::string& path);
  /// Replaces the bytes by a copy of others. False when these are more than kLargest. Raises
  /// std::bad_alloc.
  bool Assign(std::string_view bytes);
  void Reset() { *this = FileBytes(); }

  const char* Data() const { return m_bytes.get(); }
  std::size_t Size() const { return m_size; }
  /// True when so many bytes of the file stand at `text`.
  bool Holds(const char* text, std::size_t count) const {
    const std::uintptr_t offset =
        reinterpret_cast<std::uintptr_t>(text) - reinterpret_cast<std::uintptr_t>(m_bytes.get());
    return offset < m_size && count <= m_size - offset;
  }

 private:
  Bytes m_bytes;
  std::size_t m_size = 0;
};

}  // namespace domtree
