#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "platform/host.h"

// By itself, since the reader of files that loses no byte needs nothing else of a host.
namespace host {

void PreferLargePages(void* memory, std::size_t size) {
  constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;
  if (size < kLargePage) return;
  // Whole pages; what stands around them may be somebody else's.
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t ahead = (0 - reinterpret_cast<std::uintptr_t>(memory)) % page;
  const std::size_t whole = (size - ahead) / page * page;
  madvise(static_cast<char*>(memory) + ahead, whole, MADV_HUGEPAGE);
}

}  // namespace host
