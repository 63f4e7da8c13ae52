#include "kit/satellites/checked_catalogue.h"

#include "kit/failure.h"
#include "kit/files/scratch_directory.h"
#include "kit/satellites/catalogue_builder.h"
#include "kit/satellites/catalogue_lnbs.h"
#include "kit/satellites/catalogue_xml.h"
#include "kit/text/printable.h"
#include "platform/host.h"

namespace zortunedex::kit {

namespace {

Location At(const ScratchDirectory& scratch) {
  return {scratch.Path(), 1, InputSignalDVBSatellite};
}

/// Raises a Failure unless the library reads back from the file what was meant.
void RequireReadable(const std::string& xml, const SatelliteCatalogue& meant) {
  const ScratchDirectory scratch;
  if (!host::ReplaceFile(scratch.Path() + "/SatelliteInfo.xml", xml)) {
    throw Failure{E_FAIL, "a temporary file cannot be written"};
  }
  const SatelliteCatalogue found = ReadCatalogue(At(scratch));
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

}  // namespace

SatelliteCatalogue CatalogueOfTables(const std::string& folder, CatalogueReport& report) {
  const ScratchDirectory scratch;
  const Database texts(At(scratch));
  const NarrowText narrow(texts);
  CatalogueBuilder builder(narrow, report);
  builder.TakeFolder(folder);
  return {builder.Satellites(), WellKnownLnbs()};
}

std::string CheckedXml(const SatelliteCatalogue& catalogue) {
  std::string xml = CatalogueXml(catalogue);
  RequireReadable(xml, catalogue);
  return xml;
}

}  // namespace zortunedex::kit
