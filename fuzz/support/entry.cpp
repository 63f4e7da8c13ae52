#include "support/fuzz.h"

// Every input counts, the empty one too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Fuzz(data, size);
  return 0;
}
