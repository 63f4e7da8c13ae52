// Measures the library beside libxml2 and libdvbv5 and prints one table.
//
// Usage: zortunedex_bench [--check] [--no-memory] [option of Google Benchmark ...]
//   --check      exit status 1 when a ratio is not what it is wanted to be
//   --no-memory  times alone
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/peak_memory.h"
#include "bench/report.h"

namespace {

// What stands in front of the caller's own options, which then win.
char* const kDefaults[] = {
    const_cast<char*>("--benchmark_repetitions=5"),
    const_cast<char*>("--benchmark_enable_random_interleaving=true"),
    const_cast<char*>("--benchmark_min_time=0.1"),
};

void MeasurePeaks(bench::Report& report) {
  for (const UINT count : report.Counts("Load/ZorTunedex")) {
    for (const char* work : {"load", "sax", "tree", "dvb", "save", "save-preformatted"}) {
      const auto bytes = bench::MeasurePeak(work, bench::Workspace::Of(count));
      if (bytes) report.AddPeak(work, count, static_cast<double>(*bytes));
    }
  }
}

// Takes an option of ours out of the arguments.
bool Take(std::vector<char*>& arguments, const std::string& option) {
  return std::erase_if(arguments, [&](const char* argument) { return option == argument; }) != 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  if (argc == 5 && std::string(argv[1]) == "--peak") {
    const auto count = static_cast<UINT>(std::strtoul(argv[3], nullptr, 10));
    bench::RunForPeak(argv[2], bench::Workspace(argv[4], count));
    return 0;
  }
  const bool check = Take(arguments, "--check");
  const bool memory = !Take(arguments, "--no-memory");
  arguments.insert(arguments.begin() + 1, std::begin(kDefaults), std::end(kDefaults));
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  bench::Report report;
  benchmark::RunSpecifiedBenchmarks(&report);
  if (memory) MeasurePeaks(report);
  const bool good = report.Print();
  return check && !good ? 1 : 0;
}
