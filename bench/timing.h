#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

#include "core/interfaces.h"

namespace bench {

inline UINT CountOf(const benchmark::State& state) { return static_cast<UINT>(state.range(0)); }

/// Runs one piece of work and counts its time alone: what stands around it in the loop is not
/// measured. For benchmarks with manual time.
template <typename Work>
void Measure(benchmark::State& state, Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  state.SetIterationTime(elapsed.count());
}

inline void AllSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Arg(100000);
}

/// All sizes, with the time that Measure takes.
inline void AllSizesMeasured(benchmark::internal::Benchmark* benchmark) {
  AllSizes(benchmark);
  benchmark->UseManualTime();
}

}  // namespace bench
