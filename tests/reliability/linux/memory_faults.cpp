// This program's own operator new, malloc as the library's objects call it (linked with
// --wrap=malloc), and what libxml2 allocates with.
#include "reliability/linux/memory_faults.h"

#include <libxml/xmlmemory.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

thread_local int left = -1;  // below 0: nothing fails
thread_local bool isForGood = false;
thread_local bool wasRefused = false;

bool Fails() {
  if (left < 0) return false;
  if (left > 0) {
    --left;
    return false;
  }
  wasRefused = true;
  if (!isForGood) left = -1;
  return true;
}

}  // namespace

namespace memory_faults {

Scope::Scope(int position, Lasts lasts) {
  wasRefused = false;
  isForGood = lasts == Lasts::ForGood;
  left = position;
}

Scope::~Scope() { left = -1; }

bool Scope::HasFailed() const { return wasRefused; }

}  // namespace memory_faults

extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __wrap_malloc(std::size_t size) { return Fails() ? nullptr : __real_malloc(size); }

namespace {

// Before anything is allocated by them.
[[maybe_unused]] const int parserAllocates = xmlMemSetup(
    std::free, __wrap_malloc,
    [](void* memory, std::size_t size) { return Fails() ? nullptr : std::realloc(memory, size); },
    [](const char* text) { return Fails() ? nullptr : strdup(text); });

}  // namespace

void* operator new(std::size_t size) {
  if (!Fails()) {
    if (void* memory = __real_malloc(size == 0 ? 1 : size)) return memory;
  }
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Fails() ? nullptr : __real_malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
