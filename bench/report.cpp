#include "bench/report.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <tuple>

#include "bench/timing.h"
#include "bench/workspace.h"
#include "core/station_blocks.h"

namespace bench {
namespace {

constexpr UINT kCounts[] = {1000, 10000, 40000, 100000};
constexpr UINT kMiddle = 10000;
constexpr UINT kLarge = 100000;

constexpr UINT kCatalogues[] = {2000, 20000, 200000};
constexpr UINT kCatalogue = 20000;
constexpr UINT kPresets[] = {2, 20, 200};
constexpr UINT kPreset = 20;
constexpr UINT kTool[] = {10000, 40000};
constexpr UINT kToolMost = 40000;

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

constexpr Report::Row kToolTimes[] = {
    {"Tool/Open", "a host opens the list"},
    {"Tool/Check", "check"},
    {"Tool/CheckHostile", "check of as many broken ones"},
    {"Tool/OpenAndSave", "a host opens and saves the list"},
    {"Tool/List", "channels list"},
    {"Tool/Show", "channels show"},
    {"Tool/Diff", "channels diff, the same list"},
    {"Tool/DiffRenumbered", "channels diff, every service renumbered"},
    {"Tool/Lock", "channels lock"},
    {"Tool/Rename", "channels rename"},
    {"Tool/Edit", "channels edit"},
    {"Tool/OpenCatalogue", "a host loads the catalogue"},
    {"Tool/Transponders", "transponders list"},
};

// What works on two threads.
constexpr Report::Row kToolClockTimes[] = {
    {"Tool/Open", "a host opens the list"},
    {"Tool/Check", "check"},
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

void PrintHeader(const char* title, std::span<const UINT> counts) {
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
  // For who waits in front of it.
  if (isatty(STDERR_FILENO) == 0) return;
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

void Report::PrintValues(const Row& row, std::span<const UINT> counts, const Values& values,
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

void Report::PrintTool() const {
  PrintHeader("Whole processes, by processor time", kTool);
  for (const Row& row : kToolTimes) PrintValues(row, kTool, m_works, TimeText);
  PrintHeader("Whole processes, by the clock", kTool);
  for (const Row& row : kToolClockTimes) PrintValues(row, kTool, m_times, TimeText);
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

bool Report::PrintWorks(const char* title, const Key& a, const Key& b, double limit) const {
  return PrintRatio(title, RatioOf(m_works, a, b), limit);
}

bool Report::PrintLoadingRatios() const {
  const Key load("Load/ZorTunedex", kMiddle);
  const Key catalogue("Catalogue/Load", kCatalogue);
  bool good = PrintWorks("load / SAX2 pass", load, {"Load/SaxPass", kMiddle}, 3);
  good &= PrintWorks("load / libdvbv5's load", load, {"Load/Dvbv5", kMiddle}, 1.6);
  good &= PrintWorks("load, 100000 / 10000", {load.first, kLarge}, load, 15);
  good &= PrintWorks("catalogue load / SAX2 pass", catalogue, {"Catalogue/SaxPass", kCatalogue}, 5);
  good &= PrintWorks("catalogue load, 200000 / 20000", {catalogue.first, 10 * kCatalogue},
                     catalogue, 15);
  return good;
}

bool Report::PrintSavingRatios() const {
  const Key save("Save/First", kMiddle);
  bool good = PrintWorks("first save / libdvbv5's save", save, {"Save/Dvbv5", kMiddle}, 3);
  good &= PrintWorks("first save, 100000 / 10000", {save.first, kLarge}, save, 15);
  return good;
}

bool Report::PrintListRatios() const {
  const Key ascending("Add/Ascending", kMiddle);
  bool good = PrintWorks("add in ascending order, 100000 / 10000", {ascending.first, kLarge},
                         ascending, 20);
  // A scan would take 100 times as long, and longer, since a large list fits no cache.
  for (const auto& [name, title] : {std::pair("Find/ByIndex", "find by index, 100000 / 1000"),
                                    std::pair("Find/ByNumber", "find by number, 100000 / 1000")}) {
    good &= PrintWorks(title, {name, kLarge}, {name, 1000}, 50);
  }
  return good;
}

bool Report::PrintPresetRatios() const {
  bool good = true;
  for (const auto& [name, title] :
       {std::pair("Presets/List", "preset list, 200 / 20 channels"),
        std::pair("Presets/Select", "selection, 200 / 20 channels"),
        std::pair("Presets/Store", "customer list, 200 / 20 channels")}) {
    good &= PrintWorks(title, {name, 10 * kPreset}, {name, kPreset}, 15);
  }
  return good;
}

bool Report::PrintToolRatios() const {
  bool good = true;
  // The commands that change something also write a copy for the history, and their memory is the
  // system's to give: on a busy machine that takes longer than the rest.
  for (const auto& [name, title, limit] :
       {std::tuple("Tool/List", "channels list of 40000 / open and save", 3),
        std::tuple("Tool/Show", "channels show in 40000 / open and save", 3),
        std::tuple("Tool/Lock", "channels lock in 40000 / open and save", 5),
        std::tuple("Tool/Rename", "channels rename in 40000 / open and save", 5),
        std::tuple("Tool/Edit", "channels edit in 40000 / open and save", 5)}) {
    good &= PrintWorks(title, {name, kToolMost}, {"Tool/OpenAndSave", kToolMost}, limit);
  }
  const Key check("Tool/Check", kMiddle);
  const Key open("Tool/Open", kMiddle);
  good &= PrintWorks("check / load", check, open, 3);
  // Of two threads; where other work keeps the second processor it is the same as above.
  good &= PrintRatio("check / load, by the clock", RatioOf(m_times, check, open), 4);
  good &= PrintWorks("check, 40000 / 10000", {check.first, kToolMost}, check, 10);
  const Key hostile("Tool/CheckHostile", kMiddle);
  good &=
      PrintWorks("check of broken ones, 40000 / 10000", {hostile.first, kToolMost}, hostile, 10);
  const Key diff("Tool/DiffRenumbered", kMiddle);
  good &= PrintWorks("diff of renumbered ones, 40000 / 10000", {diff.first, kToolMost}, diff, 10);
  good &= PrintWorks("transponders list of 40000 / load of the catalogue",
                     {"Tool/Transponders", kToolMost}, {"Tool/OpenCatalogue", kToolMost}, 4);
  return good;
}

bool Report::Print() const {
  PrintChannels();
  PrintCatalogue();
  PrintPresets();
  PrintTool();
  std::printf("\n%-56s%8s%10s\n", "Ratio of processor times, at 10000 where nothing is said", "is",
              "at most");
  // All of one run: processor time is nearly the same however busy the machine is. What is by the
  // clock says so.
  bool good = PrintLoadingRatios();
  good &= PrintSavingRatios();
  good &= PrintListRatios();
  good &= PrintPresetRatios();
  good &= PrintToolRatios();
  if (m_peaks.empty()) return good;
  good &= PrintRatio("peak of load / file and blocks", RelativePeak("load"), 2.5);
  good &= PrintRatio("peak of fill and save / file and blocks", RelativePeak("save"), 2.5);
  return good;
}

}  // namespace bench
