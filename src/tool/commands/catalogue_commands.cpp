#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/files/file_scan.h"
#include "kit/files/output_file.h"
#include "kit/files/scratch_directory.h"
#include "kit/model/failure.h"
#include "kit/satellites/catalogue_builder.h"
#include "kit/satellites/catalogue_lnbs.h"
#include "kit/satellites/catalogue_xml.h"
#include "tool/commands/commands.h"
#include "tool/printing/output.h"

using nlohmann::ordered_json;

namespace commands {
namespace {

Location At(const ScratchDirectory& scratch) {
  return {scratch.Path(), 1, InputSignalDVBSatellite};
}

/// Raises a Failure unless the library reads back from the file what was meant.
void RequireReadable(const std::string& xml, const Catalogue& meant) {
  const ScratchDirectory scratch;
  std::ofstream file(file_scan::FileIn(scratch.Path(), "SatelliteInfo.xml"), std::ios::binary);
  file << xml;
  file.close();
  if (file.fail()) throw Failure{E_FAIL, "a temporary file cannot be written"};
  const Catalogue found = ReadCatalogue(At(scratch));
  if (found.lnbs != meant.lnbs) throw Failure{E_FAIL, "the LNB types would not read back"};
  if (found.satellites.size() != meant.satellites.size()) {
    throw Failure{E_FAIL, "of " + std::to_string(meant.satellites.size()) + " satellites " +
                              std::to_string(found.satellites.size()) + " would read back"};
  }
  for (std::size_t i = 0; i < meant.satellites.size(); ++i) {
    if (found.satellites[i] == meant.satellites[i]) continue;
    throw Failure{E_FAIL,
                  "satellite " + Printable(meant.satellites[i].id) + " would not read back"};
  }
}

void PrintResult(const Catalogue& catalogue, const CatalogueReport& report,
                 const Options& options) {
  if (!options.json) {
    report.PrintWarnings();
    std::cout << catalogue.satellites.size() << " satellites, " << catalogue.TransponderCount()
              << " transponders and " << catalogue.lnbs.size() << " LNB types written\n";
    return;
  }
  ordered_json object = {{"satellites", catalogue.satellites.size()},
                         {"transponders", catalogue.TransponderCount()},
                         {"lnbTypes", catalogue.lnbs.size()}};
  report.AddTo(object);
  PrintJson(object);
}

}  // namespace

void BuildCatalogue(const Options& options) {
  RequireFree(options.output, options.force);
  CatalogueReport report;
  Catalogue catalogue;
  catalogue.lnbs = WellKnownLnbs();
  {
    const ScratchDirectory scratch;
    const Database texts(At(scratch));
    const NarrowText narrow(texts);
    CatalogueBuilder builder(narrow, report);
    builder.TakeFolder(options.folder);
    catalogue.satellites = builder.Satellites();
  }
  if (catalogue.satellites.empty()) {
    report.PrintWarnings();
    throw Failure{E_FAIL, options.folder + " holds no table that can be used"};
  }
  const std::string xml = CatalogueXml(catalogue);
  RequireReadable(xml, catalogue);
  WriteWhole(options.output, xml, options.force);
  PrintResult(catalogue, report, options);
}

}  // namespace commands
