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

template <typename Record, typename Getter>
WideText TextOf(Record* record, Getter getter) {
  Bstr text;
  Require((record->*getter)(text.Receive()), "a text cannot be read");
  return WideText(text.View());
}

Transponder ReadTransponder(ITransponderInfo* record) {
  Transponder transponder;
  transponder.name = TextOf(record, &ITransponderInfo::GetName);
  const HRESULT results[] = {record->GetCarrierFrequency(&transponder.frequency),
                             record->GetPolarisation(&transponder.polarisation),
                             record->GetSymbolRate(&transponder.symbolRate),
                             record->GetInnerFECRate(&transponder.fecRate),
                             record->GetModulationType(&transponder.modulation),
                             record->GetSpectralInversion(&transponder.inversion)};
  for (const HRESULT hr : results) Require(hr, "a transponder cannot be read");
  return transponder;
}

/// `satellite` is held by the caller: its lists do not keep it alive.
std::vector<Transponder> ReadBand(ISatelliteInfo* satellite, ESatFreqBand band) {
  ComPtr<ITransponderInfoMgr> list;
  // Answers a reference count.
  Require(satellite->GetTransponderMgr(band, list.Receive()), "a satellite lacks a band");
  UINT count = 0;
  Require(list->GetTransponderCount(&count), "transponders cannot be counted");
  std::vector<Transponder> transponders;
  transponders.reserve(count);
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ITransponderInfo> record;
    Require(list->GetTransponderInfoByIndex(i, record.Receive()), "a transponder is missing");
    transponders.push_back(ReadTransponder(record.Get()));
  }
  return transponders;
}

Satellite ReadSatellite(ISatelliteInfo* record) {
  Satellite satellite;
  BOOL west = 0;
  satellite.id = TextOf(record, &ISatelliteInfo::GetID);
  satellite.name = TextOf(record, &ISatelliteInfo::GetName);
  const HRESULT results[] = {
      record->GetOrbitalPosition(&west, &satellite.longitude),
      record->GetAzimuth(&satellite.azimuth), record->GetElevation(&satellite.elevation),
      record->GetRegion(&satellite.region), record->GetDivision(&satellite.division)};
  for (const HRESULT hr : results) Require(hr, "a satellite cannot be read");
  satellite.west = west != 0;
  satellite.cBand = ReadBand(record, SatFreqBand_CBand);
  satellite.kuBand = ReadBand(record, SatFreqBand_KuBand);
  return satellite;
}

std::vector<Satellite> ReadSatellites(const Database& database) {
  ComPtr<ISatelliteInfoMgr> list;
  Require(database->GetSatelliteInfoMgr(list.Receive()), "there is no satellite list");
  UINT count = 0;
  Require(list->GetSatCount(0, RegionUnknown, SatcoDX_Unknown, &count),
          "satellites cannot be counted");
  std::vector<Satellite> satellites;
  satellites.reserve(count);
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ISatelliteInfo> record;
    Require(list->GetSatInfoByIndex(i, 0, RegionUnknown, SatcoDX_Unknown, record.Receive()),
            "a satellite is missing");
    satellites.push_back(ReadSatellite(record.Get()));
  }
  return satellites;
}

std::vector<LnbType> ReadLnbs(const Database& database) {
  ComPtr<ILNBInfoMgr> list;
  Require(database->GetLNBInfoMgr(list.Receive()), "there is no LNB list");
  UINT count = 0;
  Require(list->GetLNBCount(&count), "LNB types cannot be counted");
  std::vector<LnbType> lnbs;
  lnbs.reserve(count);
  for (UINT i = 0; i < count; ++i) {
    ComPtr<ILNBInfo> record;
    Require(list->GetLNBInfoByIndex(i, record.Receive()), "an LNB type is missing");
    LnbType lnb;
    lnb.type = TextOf(record.Get(), &ILNBInfo::GetType);
    const HRESULT results[] = {record->GetLowFreq(&lnb.low), record->GetHighFreq(&lnb.high),
                               record->GetSwitchFreq(&lnb.switchover)};
    for (const HRESULT hr : results) Require(hr, "an LNB type cannot be read");
    lnbs.push_back(std::move(lnb));
  }
  return lnbs;
}

/// First record whose text equals one of the texts asked for, in the order of the asking.
template <typename Record>
const Record& Find(const std::vector<Record>& records, const std::string& utf8, const char* kind,
                   std::initializer_list<WideText Record::*> keys) {
  const WideText wanted = WideArgument(utf8);
  for (const auto key : keys) {
    for (const Record& record : records) {
      if (record.*key == wanted) return record;
    }
  }
  std::string message = "the catalogue has no " + std::string(kind) + " '" + utf8 + "'; it has ";
  for (std::size_t i = 0; i < records.size() && i < kMostNames; ++i) {
    message += (i == 0 ? "" : ", ") + utf::FromWide(records[i].*(*keys.begin()));
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
    count += satellite.cBand.size() + satellite.kuBand.size();
  }
  return count;
}

const Satellite& SatelliteCatalogue::FindSatellite(const std::string& utf8) const {
  return Find(satellites, utf8, "satellite", {&Satellite::id, &Satellite::name});
}

const LnbType& SatelliteCatalogue::FindLnb(const std::string& utf8) const {
  return Find(lnbs, utf8, "LNB type", {&LnbType::type});
}

SatelliteCatalogue ReadCatalogue(const Location& location) {
  const Database database(location);
  const HRESULT hr = database->LoadSatInfoFromFile();
  if (FAILED(hr)) RequireReadable(location.directory, kCatalogueFile);
  const bool there = std::filesystem::exists(file_scan::FileIn(location.directory, kCatalogueFile));
  Require(hr, there ? "SatelliteInfo.xml holds no catalogue" : "there is no SatelliteInfo.xml");
  return {ReadSatellites(database), ReadLnbs(database)};
}

}  // namespace zortunedex::kit
