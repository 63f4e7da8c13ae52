#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace domtree {

/// A whole file in memory, a zero byte behind it.
class FileBytes {
 public:
  /// What the parser can count.
  static constexpr std::size_t kLargest = 0x7FFFFFFE;

  /// False for what is no regular file, cannot be read or is larger than kLargest.
  /// Raises std::bad_alloc.
  bool Read(const std::string& path);
  void Reset() { *this = FileBytes(); }

  const char* Data() const { return m_bytes.get(); }
  std::size_t Size() const { return m_size; }
  bool Holds(const char* text) const {
    return std::less_equal<>()(m_bytes.get(), text) && std::less<>()(text, m_bytes.get() + m_size);
  }

 private:
  std::unique_ptr<char[]> m_bytes;
  std::size_t m_size = 0;
};

}  // namespace domtree
