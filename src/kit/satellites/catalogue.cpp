#include "kit/satellites/catalogue.h"

#include <filesystem>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/reading/readable.h"

namespace zortunedex::kit {

namespace {

const char* const kCatalogueFile = "SatelliteInfo.xml";

/// Names that a message lists before it says how many more there are.
constexpr std::size_t kMostNames = 20;

/// First record whose text equals one of the texts asked for, in the order of the asking.
template <typename Record>
const Record& Find(const std::vector<Record>& records, const std::string& utf8, const char* kind,
                   std::initializer_list<std::string Record::*> keys) {
  WideArgument(utf8);  // raises what is to be raised for bytes that are no text
  for (const auto key : keys) {
    for (const Record& record : records) {
      if (record.*key == utf8) return record;
    }
  }
  std::string message = "the catalogue has no " + std::string(kind) + " '" + utf8 + "'; it has ";
  for (std::size_t i = 0; i < records.size() && i < kMostNames; ++i) {
    message += (i == 0 ? "" : ", ") + records[i].*(*keys.begin());
  }
  if (records.size() > kMostNames) {
    message += " and " + std::to_string(records.size() - kMostNames) + " more";
  }
  throw Failure{E_FAIL, records.empty() ? message + "none" : message};
}

}  // namespace

std::size_t SatelliteCatalogue::TransponderCount() const {
  std::size_t count = 0;
  for (const Satellite& satellite : satellites) {
    count += satellite.c_band.size() + satellite.ku_band.size();
  }
  return count;
}

const Satellite& SatelliteCatalogue::FindSatellite(const std::string& utf8) const {
  return Find(satellites, utf8, "satellite", {&Satellite::id, &Satellite::name});
}

const LnbType& SatelliteCatalogue::FindLnb(const std::string& utf8) const {
  return Find(lnbs, utf8, "LNB type", {&LnbType::name});
}

SatelliteCatalogue ReadCatalogue(const Location& location) {
  try {
    detail::Catalogue read = detail::ReadCatalogue(InLibrary(location));
    return {std::move(read.satellites), std::move(read.lnbs)};
  } catch (const error& raised) {
    RequireReadable(location.directory, kCatalogueFile);
    const auto file = file_scan::FileIn(location.directory, kCatalogueFile);
    Raise(raised, location,
          std::filesystem::exists(file) ? "SatelliteInfo.xml holds no catalogue"
                                        : "there is no SatelliteInfo.xml");
  }
}

}  // namespace zortunedex::kit
