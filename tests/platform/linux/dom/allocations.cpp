#include "support/allocations.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::atomic<std::size_t> liveBytes{0};
thread_local std::size_t leftToFailure = kNever;
thread_local bool wasRefused = false;

void* Allocate(std::size_t size) noexcept {
  if (leftToFailure == 0) {
    wasRefused = true;
    return nullptr;
  }
  if (leftToFailure != kNever) --leftToFailure;
  void* memory = std::malloc(size);
  if (memory) liveBytes += malloc_usable_size(memory);
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  liveBytes -= malloc_usable_size(memory);
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
  void* memory = Allocate(size ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size ? size : 1);
}
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

namespace allocations {

std::size_t LiveBytes() { return liveBytes; }

FailFrom::FailFrom(std::size_t position) {
  wasRefused = false;
  leftToFailure = position;
}
FailFrom::~FailFrom() { leftToFailure = kNever; }
bool FailFrom::HasFailed() const { return wasRefused; }

}  // namespace allocations
