#include "bench/report.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "bench/workspace.h"
#include "core/station_blocks.h"

namespace bench {
namespace {

constexpr UINT kCounts[] = {1000, 10000, 100000};
constexpr UINT kMiddle = 10000;
constexpr UINT kLarge = 100000;

constexpr struct {
  const char* name;
  const char* title;
} kTimes[] = {
    {"Load/ZorTunedex", "load"},
    {"Load/SaxPass", "  libxml2 SAX2 pass alone"},
    {"Load/XmlTree", "  libxml2 tree"},
    {"Load/Dvbv5", "  libdvbv5"},
    {"Save/First", "save, first"},
    {"Save/Again", "save, again"},
    {"Save/PreFormatted", "save, pre-formatted"},
    {"Save/BytesAlone", "  the bytes alone, as durably"},
    {"Save/Dvbv5", "  libdvbv5, not durable"},
    {"Find/ByNumber", "find by number"},
    {"Find/ByIndex", "find by index"},
    {"Find/ByStation", "find by station"},
    {"Count/Television", "count of a service"},
    {"Walk/Television", "walk through a service"},
    {"Walk/Favourites", "walk through favourites"},
    {"Sort/ByNumber", "sort by number"},
    {"Sort/ByService", "sort by service"},
    {"Move/LastToFirst", "move the last to the front"},
};

constexpr struct {
  const char* work;
  const char* title;
} kPeaks[] = {
    {"load", "load"},
    {"sax", "  file and libxml2 SAX2 pass"},
    {"tree", "  file and libxml2 tree"},
    {"dvb", "  libdvbv5"},
    {"save", "fill and save"},
    {"save-preformatted", "fill and save, pre-formatted"},
};

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::string TimeText(double seconds) {
  char text[32];
  if (seconds < 1e-3) {
    std::snprintf(text, sizeof(text), "%.1f us", seconds * 1e6);
  } else {
    std::snprintf(text, sizeof(text), "%.2f ms", seconds * 1e3);
  }
  return text;
}

std::string SizeText(double bytes) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.1f MB", bytes / 1e6);
  return text;
}

void PrintHeader(const char* title) {
  std::printf("\n%-34s", title);
  for (const UINT count : kCounts) std::printf("%14u", count);
  std::printf("\n");
}

// What a list of so many channels cannot do without: its file's bytes and its blocks.
double Necessary(UINT count) {
  const auto bytes = std::filesystem::file_size(Workspace::Of(count).SourceFile());
  return static_cast<double>(bytes) + double{station_blocks::kDvbs.size} * count;
}

bool PrintRatio(const char* title, std::optional<double> value, double limit) {
  if (!value) {
    std::printf("%-56s%8s%10.2f  not measured\n", title, "-", limit);
    return false;
  }
  const bool good = *value <= limit;
  std::printf("%-56s%8.2f%10.2f  %s\n", title, *value, limit, good ? "ok" : "MISSED");
  return good;
}

}  // namespace

bool Report::ReportContext(const Context&) { return true; }

void Report::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred || run.iterations == 0) continue;
    const auto count = static_cast<UINT>(std::stoul(run.run_name.args));
    m_seconds[{run.run_name.function_name, count}].push_back(run.real_accumulated_time /
                                                             static_cast<double>(run.iterations));
  }
  if (!runs.empty()) std::fprintf(stderr, "  %s\n", runs.front().run_name.str().c_str());
}

std::vector<UINT> Report::Counts() const {
  std::set<UINT> counts;
  for (const auto& [key, seconds] : m_seconds) counts.insert(key.second);
  return {counts.begin(), counts.end()};
}

void Report::PrintTimes() const {
  PrintHeader("Time for this many channels");
  for (const auto& row : kTimes) {
    std::printf("%-34s", row.title);
    for (const UINT count : kCounts) {
      const auto found = m_seconds.find({row.name, count});
      const bool known = found != m_seconds.end();
      std::printf("%14s", known ? TimeText(Median(found->second)).c_str() : "-");
    }
    std::printf("\n");
  }
}

void Report::PrintPeaks() const {
  PrintHeader("Peak memory");
  for (const auto& row : kPeaks) {
    std::printf("%-34s", row.title);
    for (const UINT count : kCounts) {
      const auto found = m_peaks.find({row.work, count});
      std::printf("%14s", found != m_peaks.end() ? SizeText(found->second).c_str() : "-");
    }
    std::printf("\n");
  }
  std::printf("%-34s", "  (the file and the blocks)");
  for (const UINT count : kCounts) {
    const auto found = m_peaks.find({"load", count});
    std::printf("%14s", found != m_peaks.end() ? SizeText(Necessary(count)).c_str() : "-");
  }
  std::printf("\n");
}

bool Report::Print() const {
  PrintTimes();
  PrintPeaks();
  // Medians of the times; none when one of them is missing.
  const auto ratio = [this](const char* a, UINT countA, const char* b,
                            UINT countB) -> std::optional<double> {
    const auto first = m_seconds.find({a, countA});
    const auto second = m_seconds.find({b, countB});
    if (first == m_seconds.end() || second == m_seconds.end()) return std::nullopt;
    return Median(first->second) / Median(second->second);
  };
  const auto peak = [this](const char* work) -> std::optional<double> {
    const auto found = m_peaks.find({work, kMiddle});
    if (found == m_peaks.end()) return std::nullopt;
    return found->second / Necessary(kMiddle);
  };
  const char* const load = "Load/ZorTunedex";
  std::printf("\n%-56s%8s%10s\n", "Ratio, at 10000 channels where nothing else is said", "is",
              "at most");
  bool good = PrintRatio("load / SAX2 pass", ratio(load, kMiddle, "Load/SaxPass", kMiddle), 3.5);
  good &= PrintRatio("load / libdvbv5's load", ratio(load, kMiddle, "Load/Dvbv5", kMiddle), 1.5);
  good &= PrintRatio("first save / libdvbv5's save",
                     ratio("Save/First", kMiddle, "Save/Dvbv5", kMiddle), 5);
  good &= PrintRatio("load, 100000 / 10000", ratio(load, kLarge, load, kMiddle), 12);
  good &= PrintRatio("first save, 100000 / 10000",
                     ratio("Save/First", kLarge, "Save/First", kMiddle), 12);
  good &= PrintRatio("peak of load / file and blocks", peak("load"), 2.5);
  good &= PrintRatio("peak of fill and save / file and blocks", peak("save"), 2.5);
  return good;
}

}  // namespace bench
