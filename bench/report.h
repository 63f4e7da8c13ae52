#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/interfaces.h"

namespace bench {

/// Collects the times of the benchmarks and prints one table of them, with ratios of what was
/// measured in the same run and what they are wanted to be. Of every benchmark the shortest time
/// counts: what else the machine does makes times longer, never shorter.
class Report : public benchmark::BenchmarkReporter {
 public:
  struct Row {
    const char* name;
    const char* title;
  };

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Bytes of the peak memory of a work; see MeasurePeak.
  void AddPeak(const std::string& work, UINT count, double bytes) {
    m_peaks[{work, count}] = bytes;
  }
  /// The numbers of channels or transponders that a benchmark was run with.
  std::vector<UINT> Counts(const std::string& benchmark) const;
  /// False when a ratio is missing or not what it is wanted to be; those of memory may be missing
  /// when none was measured.
  bool Print() const;

 private:
  using Key = std::pair<std::string, UINT>;
  using Values = std::map<Key, double>;

  static void KeepLeast(Values& values, const Key& key, const Run& run, const char* counter,
                        double mean);
  static std::optional<double> RatioOf(const Values& values, const Key& a, const Key& b);
  std::optional<double> RelativePeak(const std::string& work) const;
  static void PrintValues(const Row& row, std::span<const UINT> counts, const Values& values,
                          std::string (*text)(double));
  void PrintChannels() const;
  void PrintCatalogue() const;
  void PrintPresets() const;
  void PrintTool() const;
  /// A ratio of processor times.
  bool PrintWorks(const char* title, const Key& a, const Key& b, double limit) const;
  bool PrintLoadingRatios() const;
  bool PrintSavingRatios() const;
  bool PrintListRatios() const;
  bool PrintPresetRatios() const;
  bool PrintToolRatios() const;

  Values m_times;
  Values m_works;
  Values m_peaks;
};

}  // namespace bench
