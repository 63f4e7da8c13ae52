// What every fuzzer needs: its entry point, and a check that ends the run with a report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "platform/com.h"

/// The fuzzer's work on one input; each *_fuzzer.cpp defines it.
void Fuzz(const BYTE* data, std::size_t size);

/// Ends the run as a finding when a promise does not hold.
inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: a promise does not hold\n", file, line);
  std::abort();
}
