// This program's own operator new. In a file of its own: where the compiler sees what is inside, it
// takes its pairs of new and free for mistakes.
#include "channels/failing_new.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr int kNever = std::numeric_limits<int>::max();
thread_local int left = kNever;

}  // namespace

FailAfter::FailAfter(int count) { left = count; }
FailAfter::~FailAfter() { left = kNever; }

void* operator new(std::size_t size) {
  if (left == 0) throw std::bad_alloc();
  if (left != kNever) --left;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
