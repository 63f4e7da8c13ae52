#pragma once

#include <filesystem>
#include <set>

#include "kit/model/narrow_text.h"
#include "kit/satellites/catalogue.h"
#include "kit/satellites/catalogue_entry.h"
#include "kit/satellites/catalogue_report.h"
#include "kit/satellites/catalogue_table.h"

namespace zortunedex::kit {

/// Makes satellites of the files of a folder. What cannot be used is left out and reported.
class CatalogueBuilder {
 public:
  /// Texts are checked against the code page of `narrow`, which outlives the builder.
  CatalogueBuilder(const NarrowText& narrow, CatalogueReport& report)
      : m_narrow(narrow), m_report(report) {}

  /// Takes every file, in the order of the names. Raises a Failure when the folder cannot be read.
  void TakeFolder(const std::string& folder);
  /// The satellites from west to east.
  std::vector<Satellite> Satellites();

 private:
  void TakeFile(const std::filesystem::path& path);
  Satellite MakeSatellite(const std::string& file, const catalogue_table::FileName& name,
                          const catalogue_table::Table& table);
  void TakeEntries(const std::string& file, const catalogue_table::Table& table,
                   Satellite& satellite);
  /// Of UTF-8.
  bool IsKept(const std::string& text) const;
  void AddTitle(const std::string& title, ReadEntry& entry) const;

  const NarrowText& m_narrow;
  CatalogueReport& m_report;
  std::vector<Satellite> m_satellites;
  std::set<std::string> m_ids;
};

/// By the orbital position: Europe from 0 to 73 degrees east, Asia further east up to 160 degrees
/// west, Atlantic from 0 to 61 degrees west, America in between.
ESatRegion RegionAt(LONG longitude);

}  // namespace zortunedex::kit
