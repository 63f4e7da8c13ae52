#include "bench/check.h"

#include <cstdio>
#include <cstdlib>

void bench::Check(bool condition, const char* message) {
  if (condition) return;
  std::fprintf(stderr, "zortunedex_bench: %s\n", message);
  // Without destructors the temporary files stay and can be looked at.
  std::_Exit(2);
}
