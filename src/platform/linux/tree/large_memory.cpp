#include "platform/linux/tree/large_memory.h"

#include <sys/mman.h>

#include <cstdint>
#include <limits>
#include <new>

namespace domtree {
namespace {

/// The small pages of every processor that the system runs on go into this without a rest.
constexpr std::size_t kStep = std::size_t{64} * 1024;

std::size_t RoundedUp(std::size_t size) { return (size + kStep - 1) / kStep * kStep; }

}  // namespace

void* MapLarge(std::size_t size) {
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() - kLargePage - kStep;
  if (size > kMost) throw std::bad_alloc();
  size = RoundedUp(size);
  // More than that, so that a large page begins in it; what stands around goes back.
  void* const mapped =
      mmap(nullptr, size + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) throw std::bad_alloc();
  char* const first = static_cast<char*>(mapped);
  const std::size_t ahead = (0 - reinterpret_cast<std::uintptr_t>(first)) % kLargePage;
  char* const memory = first + ahead;
  if (ahead != 0) munmap(first, ahead);
  munmap(memory + size, kLargePage - ahead);
  // Where this is refused small pages serve.
  madvise(memory, size, MADV_HUGEPAGE);
  return memory;
}

void UnmapLarge(void* memory, std::size_t size) noexcept { munmap(memory, RoundedUp(size)); }

Bytes NewBytes(std::size_t size) {
  if (size < kLargePage) return Bytes(new char[size]);
  return Bytes(static_cast<char*>(MapLarge(size)), BytesEnd{size});
}

}  // namespace domtree
