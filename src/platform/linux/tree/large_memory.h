#pragma once

#include <cstddef>
#include <memory>

namespace domtree {

/// What a large page has, and the least size that asking for such pages is worth.
inline constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;

/// Memory that is going to be written whole, at the beginning of a large page. The system is asked
/// for such pages: being given small ones, one by one, takes as long as reading what is put there.
/// Where it has none, small ones serve. Raises std::bad_alloc.
void* MapLarge(std::size_t size);
/// Gives back what MapLarge(size) answered.
void UnmapLarge(void* memory, std::size_t size) noexcept;

struct BytesEnd {
  /// 0: not mapped.
  std::size_t mapped = 0;
  void operator()(char* bytes) const {
    if (mapped != 0) {
      UnmapLarge(bytes, mapped);
    } else {
      delete[] bytes;
    }
  }
};
using Bytes = std::unique_ptr<char[], BytesEnd>;

/// So many bytes, mapped when they are many. Raises std::bad_alloc.
Bytes NewBytes(std::size_t size);

}  // namespace domtree
