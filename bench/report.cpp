#include "bench/report.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "bench/timing.h"
#include "bench/workspace.h"
#include "core/station_blocks.h"

namespace bench {
namespace {

constexpr UINT kCounts[] = {1000, 10000, 100000};
constexpr UINT kMiddle = 10000;
constexpr UINT kLarge = 100000;

constexpr UINT kCatalogues[] = {2000, 20000, 200000};
constexpr UINT kCatalogue = 20000;
constexpr UINT kPresets[] = {2, 20, 200};
constexpr UINT kPreset = 20;

constexpr Report::Row kTimes[] = {
    {"Load/ZorTunedex", "load"},
    {"Load/SaxPass", "  libxml2 SAX2 pass alone"},
    {"Load/XmlTree", "  libxml2 tree"},
    {"Load/Dvbv5", "  libdvbv5"},
    {"Save/First", "save, first"},
    {"Save/Again", "save, again"},
    {"Save/PreFormatted", "save, pre-formatted"},
    {"Save/BytesAlone", "  the bytes alone, as durably"},
    {"Save/Dvbv5", "  libdvbv5, not durable"},
    {"Add/Ascending", "add, ascending"},
    {"Add/Descending", "add, descending"},
    {"Add/Random", "add, in no order"},
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

constexpr Report::Row kPeaks[] = {
    {"load", "load"},
    {"sax", "  file and libxml2 SAX2 pass"},
    {"tree", "  file and libxml2 tree"},
    {"dvb", "  libdvbv5"},
    {"save", "fill and save"},
    {"save-preformatted", "fill and save, pre-formatted"},
};

constexpr Report::Row kCatalogueTimes[] = {
    {"Catalogue/Load", "load"},
    {"Catalogue/SaxPass", "  libxml2 SAX2 pass alone"},
};

constexpr Report::Row kCataloguePeaks[] = {
    {"catalogue", "peak memory of load"},
    {"catalogue-sax", "  of file and libxml2 SAX2 pass"},
};

constexpr Report::Row kPresetTimes[] = {
    {"Presets/Load", "load of the file"},       {"Presets/Count", "count of every area"},
    {"Presets/Name", "name of every sub-area"}, {"Presets/List", "list of a sub-area"},
    {"Presets/Select", "select a sub-area"},    {"Presets/Store", "store as a customer list"},
};

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

void PrintHeader(const char* title, const UINT (&counts)[3]) {
  std::printf("\n%-34s", title);
  for (const UINT count : counts) std::printf("%14u", count);
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
    const Key key(run.run_name.function_name, count);
    const auto iterations = static_cast<double>(run.iterations);
    KeepLeast(m_times, key, run, kBestTime, run.real_accumulated_time / iterations);
    KeepLeast(m_works, key, run, kBestWork, run.cpu_accumulated_time / iterations);
  }
  if (!runs.empty()) std::fprintf(stderr, "  %s\n", runs.front().run_name.str().c_str());
}

void Report::KeepLeast(Values& values, const Key& key, const Run& run, const char* counter,
                       double mean) {
  const auto found = run.counters.find(counter);
  const double seconds = found != run.counters.end() ? found->second.value : mean;
  const auto known = values.emplace(key, seconds).first;
  known->second = std::min(known->second, seconds);
}

std::vector<UINT> Report::Counts(const std::string& benchmark) const {
  std::set<UINT> counts;
  for (const auto& [key, seconds] : m_times) {
    if (key.first == benchmark) counts.insert(key.second);
  }
  return {counts.begin(), counts.end()};
}

void Report::PrintValues(const Row& row, const UINT (&counts)[3], const Values& values,
                         std::string (*text)(double)) {
  std::printf("%-34s", row.title);
  for (const UINT count : counts) {
    const auto found = values.find({row.name, count});
    std::printf("%14s", found != values.end() ? text(found->second).c_str() : "-");
  }
  std::printf("\n");
}

void Report::PrintChannels() const {
  PrintHeader("Shortest time, for channels", kCounts);
  for (const Row& row : kTimes) PrintValues(row, kCounts, m_times, TimeText);
  PrintHeader("Peak memory", kCounts);
  for (const Row& row : kPeaks) PrintValues(row, kCounts, m_peaks, SizeText);
  std::printf("%-34s", "  (the file and the blocks)");
  for (const UINT count : kCounts) {
    const auto found = m_peaks.find({"load", count});
    std::printf("%14s", found != m_peaks.end() ? SizeText(Necessary(count)).c_str() : "-");
  }
  std::printf("\n");
}

void Report::PrintCatalogue() const {
  PrintHeader("Satellite catalogue, transponders", kCatalogues);
  for (const Row& row : kCatalogueTimes) PrintValues(row, kCatalogues, m_times, TimeText);
  for (const Row& row : kCataloguePeaks) PrintValues(row, kCatalogues, m_peaks, SizeText);
}

void Report::PrintPresets() const {
  PrintHeader("Presets, channels of a sub-area", kPresets);
  for (const Row& row : kPresetTimes) PrintValues(row, kPresets, m_times, TimeText);
}

std::optional<double> Report::RatioOf(const Values& values, const Key& a, const Key& b) {
  const auto first = values.find(a);
  const auto second = values.find(b);
  if (first == values.end() || second == values.end()) return std::nullopt;
  return first->second / second->second;
}

std::optional<double> Report::RelativePeak(const std::string& work) const {
  const auto found = m_peaks.find({work, kMiddle});
  if (found == m_peaks.end()) return std::nullopt;
  return found->second / Necessary(kMiddle);
}

bool Report::Print() const {
  PrintChannels();
  PrintCatalogue();
  PrintPresets();
  const Key load("Load/ZorTunedex", kMiddle);
  const Key save("Save/First", kMiddle);
  std::printf("\n%-56s%8s%10s\n", "Ratio, at 10000 channels where nothing else is said", "is",
              "at most");
  // Loading waits for nothing, and its processor time is the same however busy the machine is.
  bool good = PrintRatio("load / SAX2 pass (processor time)",
                         RatioOf(m_works, load, {"Load/SaxPass", kMiddle}), 3.5);
  good &= PrintRatio("load / libdvbv5's load (processor time)",
                     RatioOf(m_works, load, {"Load/Dvbv5", kMiddle}), 1.5);
  good &= PrintRatio("load, 100000 / 10000 (processor time)",
                     RatioOf(m_works, {load.first, kLarge}, load), 12);
  good &= PrintRatio("first save / libdvbv5's save",
                     RatioOf(m_times, save, {"Save/Dvbv5", kMiddle}), 5);
  good &=
      PrintRatio("first save, 100000 / 10000", RatioOf(m_times, {save.first, kLarge}, save), 12);
  good &= PrintRatio("first save / libdvbv5's save (processor time)",
                     RatioOf(m_works, save, {"Save/Dvbv5", kMiddle}), 5);
  good &= PrintRatio("peak of load / file and blocks", RelativePeak("load"), 2.5);
  good &= PrintRatio("peak of fill and save / file and blocks", RelativePeak("save"), 2.5);
  const Key catalogue("Catalogue/Load", kCatalogue);
  good &= PrintRatio("catalogue load / SAX2 pass (processor time)",
                     RatioOf(m_works, catalogue, {"Catalogue/SaxPass", kCatalogue}), 3.5);
  good &= PrintRatio("catalogue load, 200000 / 20000 (processor time)",
                     RatioOf(m_works, {catalogue.first, 10 * kCatalogue}, catalogue), 12);
  for (const auto& [name, title] :
       {std::pair("Presets/List", "preset list, 200 / 20 channels"),
        std::pair("Presets/Select", "selection, 200 / 20 channels"),
        std::pair("Presets/Store", "customer list, 200 / 20 channels")}) {
    good &= PrintRatio((std::string(title) + " (processor time)").c_str(),
                       RatioOf(m_works, {name, 10 * kPreset}, {name, kPreset}), 12);
  }
  return good;
}

}  // namespace bench
