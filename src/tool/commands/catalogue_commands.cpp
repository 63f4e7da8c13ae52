#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/satellites/checked_catalogue.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/output_file.h"
#include "tool/printing/catalogue_report.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace commands {
namespace {

void PrintResult(const SatelliteCatalogue& catalogue, const CatalogueReport& report,
                 const Options& options) {
  if (!options.json) {
    PrintWarnings(report);
    std::cout << catalogue.satellites.size() << " satellites, " << catalogue.TransponderCount()
              << " transponders and " << catalogue.lnbs.size() << " LNB types "
              << (options.dryRun ? "would be written\n" : "written\n");
    return;
  }
  ordered_json object = {{"satellites", catalogue.satellites.size()},
                         {"transponders", catalogue.TransponderCount()},
                         {"lnbTypes", catalogue.lnbs.size()}};
  AddTo(object, report);
  PrintJson(object);
}

}  // namespace

void BuildCatalogue(const Options& options) {
  RequireFree(options.output, options.force);
  CatalogueReport report;
  const SatelliteCatalogue catalogue = CatalogueOfTables(options.folder, report);
  if (catalogue.satellites.empty()) {
    PrintWarnings(report);
    throw Failure{E_FAIL, options.folder + " holds no table that can be used"};
  }
  const std::string xml = CheckedXml(catalogue);
  if (!options.dryRun) WriteOutput(options.output, xml, options.force);
  PrintResult(catalogue, report, options);
}

}  // namespace commands

}  // namespace zortunedex::kit::tool
