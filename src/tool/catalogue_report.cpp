#include "tool/catalogue_report.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "tool/output.h"

using nlohmann::ordered_json;

namespace {

const char* const kPrefix = "tunedex: catalogue build: ";

}  // namespace

void CatalogueReport::LeaveOutFile(const std::string& file, const std::string& reason) {
  m_files.push_back({Printable(file), 0, reason});
}

void CatalogueReport::LeaveOutEntry(const std::string& file, std::size_t line,
                                    const std::string& reason) {
  m_entries.push_back({Printable(file), line, reason});
}

void CatalogueReport::TwoPositions(const std::string& file, const std::string& name,
                                   const std::string& header) {
  m_positions.push_back({Printable(file), name, header});
}

void CatalogueReport::PrintWarnings() const {
  for (const LeftOut& file : m_files) {
    std::cerr << kPrefix << "left out " << file.file << ": " << Printable(file.reason) << '\n';
  }
  std::map<std::string, std::vector<const LeftOut*>> reasons;
  for (const LeftOut& entry : m_entries) reasons[entry.reason].push_back(&entry);
  for (const auto& [reason, entries] : reasons) {
    std::cerr << kPrefix << "left out " << entries.size()
              << (entries.size() == 1 ? " transponder: " : " transponders: ") << Printable(reason)
              << " (" << (entries.size() == 1 ? "" : "first at ") << entries.front()->file
              << " line " << entries.front()->line << ")\n";
  }
  for (const Positions& positions : m_positions) {
    std::cerr << kPrefix << positions.file << " is taken to be at " << positions.name
              << ", as its name says; its header says " << positions.header << '\n';
  }
  for (const auto& [what, count] : m_notHeld) {
    std::cerr << kPrefix << "the catalogue does not hold " << Printable(what) << ": " << count
              << '\n';
  }
}

void CatalogueReport::AddTo(ordered_json& object) const {
  ordered_json files = ordered_json::array();
  for (const LeftOut& file : m_files) {
    files.push_back({{"file", file.file}, {"reason", file.reason}});
  }
  ordered_json entries = ordered_json::array();
  for (const LeftOut& entry : m_entries) {
    entries.push_back({{"file", entry.file}, {"line", entry.line}, {"reason", entry.reason}});
  }
  ordered_json twoPositions = ordered_json::array();
  for (const Positions& positions : m_positions) {
    twoPositions.push_back(
        {{"file", positions.file}, {"name", positions.name}, {"header", positions.header}});
  }
  ordered_json notHeld = ordered_json::array();
  for (const auto& [what, count] : m_notHeld) {
    notHeld.push_back({{"value", what}, {"count", count}});
  }
  object["leftOut"] = {{"files", std::move(files)}, {"transponders", std::move(entries)}};
  object["twoPositions"] = std::move(twoPositions);
  object["notHeld"] = std::move(notHeld);
}
