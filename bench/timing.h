#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>

#include "core/interfaces.h"

namespace bench {

/// Names of the counters that Measure leaves behind: the shortest time of an iteration, and the
/// least processor time of one, in seconds.
inline constexpr char kBestTime[] = "best";
inline constexpr char kBestWork[] = "work";

inline UINT CountOf(const benchmark::State& state) { return static_cast<UINT>(state.range(0)); }

/// Seconds that this process has used of its processors.
inline double WorkSoFar() {
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

inline void KeepLeast(benchmark::Counter& best, double seconds) {
  best = best == 0 ? seconds : std::min<double>(best, seconds);
}

/// Runs one piece of work and counts its time alone: what stands around it in the loop is not
/// measured. For benchmarks with manual time.
template <typename Work>
void Measure(benchmark::State& state, Work work) {
  const double workBefore = WorkSoFar();
  const auto start = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  KeepLeast(state.counters[kBestWork], WorkSoFar() - workBefore);
  KeepLeast(state.counters[kBestTime], elapsed.count());
  state.SetIterationTime(elapsed.count());
}

inline void AllSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Arg(40000)->Arg(100000);
}

/// All sizes, with the time that Measure takes.
inline void AllSizesMeasured(benchmark::internal::Benchmark* benchmark) {
  AllSizes(benchmark);
  benchmark->UseManualTime();
}

}  // namespace bench
