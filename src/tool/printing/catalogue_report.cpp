#include "tool/printing/catalogue_report.h"

#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace {

const char* const kPrefix = "tunedex: catalogue build: ";

}  // namespace

void PrintWarnings(const CatalogueReport& report) {
  for (const CatalogueReport::LeftOut& file : report.files) {
    std::cerr << kPrefix << "left out " << Printable(file.file) << ": " << Printable(file.reason)
              << '\n';
  }
  std::map<std::string, std::vector<const CatalogueReport::LeftOut*>> reasons;
  for (const CatalogueReport::LeftOut& entry : report.entries)
    reasons[entry.reason].push_back(&entry);
  for (const auto& [reason, entries] : reasons) {
    std::cerr << kPrefix << "left out " << entries.size()
              << (entries.size() == 1 ? " transponder: " : " transponders: ") << Printable(reason)
              << " (" << (entries.size() == 1 ? "" : "first at ")
              << Printable(entries.front()->file) << " line " << entries.front()->line << ")\n";
  }
  for (const CatalogueReport::Positions& positions : report.twoPositions) {
    std::cerr << kPrefix << Printable(positions.file) << " is taken to be at " << positions.name
              << ", as its name says; its header says " << positions.header << '\n';
  }
  for (const auto& [what, count] : report.notHeld) {
    std::cerr << kPrefix << "the catalogue does not hold " << Printable(what) << ": " << count
              << '\n';
  }
}

void AddTo(ordered_json& object, const CatalogueReport& report) {
  ordered_json files = ordered_json::array();
  for (const CatalogueReport::LeftOut& file : report.files) {
    files.push_back({{"file", Printable(file.file)}, {"reason", file.reason}});
  }
  ordered_json entries = ordered_json::array();
  for (const CatalogueReport::LeftOut& entry : report.entries) {
    entries.push_back(
        {{"file", Printable(entry.file)}, {"line", entry.line}, {"reason", entry.reason}});
  }
  ordered_json twoPositions = ordered_json::array();
  for (const CatalogueReport::Positions& positions : report.twoPositions) {
    twoPositions.push_back({{"file", Printable(positions.file)},
                            {"name", positions.name},
                            {"header", positions.header}});
  }
  ordered_json notHeld = ordered_json::array();
  for (const auto& [what, count] : report.notHeld) {
    notHeld.push_back({{"value", what}, {"count", count}});
  }
  object["leftOut"] = {{"files", std::move(files)}, {"transponders", std::move(entries)}};
  object["twoPositions"] = std::move(twoPositions);
  object["notHeld"] = std::move(notHeld);
}

}  // namespace zortunedex::kit::tool
