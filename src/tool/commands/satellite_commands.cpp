#include <algorithm>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/satellites/catalogue.h"
#include "kit/text/satellite_words.h"
#include "kit/text/tuning_words.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace commands {
namespace {

using station_blocks::Form;
using Row = std::vector<std::string>;

std::string AngleText(LONG tenths) {
  if (tenths == -1) return "not set";
  return (tenths < 0 ? "-" : "") + std::to_string(std::abs(tenths / 10)) + "." +
         std::to_string(std::abs(tenths % 10));
}

/// Word of a value, its number where there is none.
std::string WordText(Form form, std::int32_t value) {
  const char* word = tuning_words::Text(form, value);
  return word == nullptr ? std::to_string(value) : word;
}

ordered_json ToJson(const Satellite& satellite, std::size_t index) {
  return {{"index", index},
          {"id", satellite.id},
          {"name", satellite.name},
          {"position", PositionText(satellite.longitude)},
          {"longitude", satellite.longitude},
          {"west", false},  // has no place in the file
          {"azimuth", satellite.azimuth},
          {"elevation", satellite.elevation},
          {"region", RegionName(satellite.region)},
          {"division", satellite.division},
          {"cBand", satellite.c_band.size()},
          {"kuBand", satellite.ku_band.size()}};
}

Row ToRow(const Satellite& satellite, std::size_t index) {
  return {std::to_string(index),
          Printable(satellite.id),
          PositionText(satellite.longitude),
          RegionName(satellite.region),
          DivisionName(satellite.division),
          std::to_string(satellite.c_band.size()),
          std::to_string(satellite.ku_band.size()),
          Printable(satellite.name)};
}

bool IsAskedFor(const Satellite& satellite, const Options& options) {
  return (!options.region || satellite.region == *options.region) &&
         (!options.division || satellite.division == *options.division);
}

/// Where a transponder stands.
struct TransponderPlace {
  const Transponder& transponder;
  ESatFreqBand band;
  std::size_t index;  ///< in its band
};

std::vector<TransponderPlace> PlacesIn(const Satellite& satellite,
                                       std::optional<ESatFreqBand> only) {
  std::vector<TransponderPlace> places;
  for (const ESatFreqBand band : {SatFreqBand_CBand, SatFreqBand_KuBand}) {
    if (only && *only != band) continue;
    const std::vector<Transponder>& list =
        band == SatFreqBand_CBand ? satellite.c_band : satellite.ku_band;
    for (std::size_t i = 0; i < list.size(); ++i) places.push_back({list[i], band, i});
  }
  return places;
}

ordered_json ToJson(const TransponderPlace& place) {
  const Transponder& transponder = place.transponder;
  return {{"band", BandName(place.band)},
          {"index", place.index},
          {"name", transponder.name},
          {"frequency", transponder.frequency},
          {"polarisation", WordText(Form::Polarisation, transponder.polarisation)},
          {"symbolRate", transponder.symbol_rate},
          {"innerFECRate", WordText(Form::FecRate, transponder.fec_rate)},
          {"modulation", WordText(Form::Modulation, transponder.modulation)},
          {"spectralInversion", WordText(Form::SpectralInversion, transponder.inversion)}};
}

Row ToRow(const TransponderPlace& place) {
  const Transponder& transponder = place.transponder;
  return {BandName(place.band),
          std::to_string(place.index),
          std::to_string(transponder.frequency),
          WordText(Form::Polarisation, transponder.polarisation),
          std::to_string(transponder.symbol_rate),
          WordText(Form::FecRate, transponder.fec_rate),
          WordText(Form::Modulation, transponder.modulation),
          WordText(Form::SpectralInversion, transponder.inversion),
          Printable(transponder.name)};
}

}  // namespace

void ListSatellites(const Options& options) {
  const SatelliteCatalogue catalogue = ReadCatalogue(SatelliteLocation(options));
  ordered_json array = ordered_json::array();
  std::vector<Row> rows = {{"INDEX", "ID", "POSITION", "REGION", "DIVISION", "C", "KU", "NAME"}};
  for (std::size_t i = 0; i < catalogue.satellites.size(); ++i) {
    const Satellite& satellite = catalogue.satellites[i];
    if (!IsAskedFor(satellite, options)) continue;
    options.json ? array.push_back(ToJson(satellite, i)) : rows.push_back(ToRow(satellite, i));
  }
  options.json ? PrintJson(array) : PrintTable(rows);
}

void ShowSatellite(const Options& options) {
  const SatelliteCatalogue catalogue = ReadCatalogue(SatelliteLocation(options));
  const Satellite& satellite = catalogue.FindSatellite(options.satellite);
  const auto index = static_cast<std::size_t>(&satellite - catalogue.satellites.data());
  if (options.json) return PrintJson(ordered_json::array({ToJson(satellite, index)}));
  const Row values = ToRow(satellite, index);
  const char* const names[] = {"index",    "id",     "position", "region",
                               "division", "C-Band", "Ku-Band",  "name"};
  std::vector<Row> rows;
  for (std::size_t i = 0; i < values.size(); ++i) rows.push_back({names[i], values[i]});
  rows.push_back({"azimuth", AngleText(satellite.azimuth)});
  rows.push_back({"elevation", AngleText(satellite.elevation)});
  PrintTable(rows);
}

void ListTransponders(const Options& options) {
  const SatelliteCatalogue catalogue = ReadCatalogue(SatelliteLocation(options));
  const Satellite& satellite = catalogue.FindSatellite(options.satellite);
  const std::vector<TransponderPlace> places = PlacesIn(satellite, options.band);
  if (options.json) {
    return PrintJsonArray(places.size(), [&](std::size_t i) { return ToJson(places[i]); });
  }
  std::vector<Row> rows = {{"BAND", "INDEX", "FREQUENCY", "POLARISATION", "SYMBOL RATE", "FEC",
                            "MODULATION", "INVERSION", "NAME"}};
  for (const TransponderPlace& place : places) rows.push_back(ToRow(place));
  PrintTable(rows);
}

void ListLnbs(const Options& options) {
  const SatelliteCatalogue catalogue = ReadCatalogue(SatelliteLocation(options));
  ordered_json array = ordered_json::array();
  std::vector<Row> rows = {{"LOW", "HIGH", "SWITCH", "TYPE"}};
  for (const LnbType& lnb : catalogue.lnbs) {
    array.push_back({{"type", lnb.name},
                     {"low", lnb.low},
                     {"high", lnb.high},
                     {"switch", lnb.switch_frequency}});
    rows.push_back({std::to_string(lnb.low), std::to_string(lnb.high),
                    std::to_string(lnb.switch_frequency), Printable(lnb.name)});
  }
  options.json ? PrintJson(array) : PrintTable(rows);
}

}  // namespace commands

}  // namespace zortunedex::kit::tool
