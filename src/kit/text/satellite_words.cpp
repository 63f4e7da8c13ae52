#include "kit/text/satellite_words.h"

#include <cstdlib>

#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace {

struct RegionWord {
  ESatRegion region;
  const char* word;
};

constexpr RegionWord kRegions[] = {
    {RegionAsia, "Asia"},       {RegionEurope, "Europe"},   {RegionAtlantic, "Atlantic"},
    {RegionAmerica, "America"}, {RegionUnknown, "Unknown"},
};

}  // namespace

std::optional<ESatRegion> ParseRegion(std::string_view text) {
  for (const RegionWord& region : kRegions) {
    if (EqualIgnoringCase(region.word, text)) return region.region;
  }
  return std::nullopt;
}

std::string RegionName(ESatRegion region) {
  for (const RegionWord& word : kRegions) {
    if (word.region == region) return word.word;
  }
  return "Unknown";
}

std::string DivisionName(ESatDivision division) {
  return division >= SatcoDX_1 && division <= SatcoDX_9 ? std::to_string(division) : "Unknown";
}

std::optional<ESatFreqBand> ParseBand(std::string_view text) {
  for (const ESatFreqBand band : {SatFreqBand_CBand, SatFreqBand_KuBand}) {
    const std::string_view name = BandName(band);
    const std::string_view letters = name.substr(0, name.find('-'));
    if (EqualIgnoringCase(name, text) || EqualIgnoringCase(letters, text)) return band;
  }
  return std::nullopt;
}

const char* BandName(ESatFreqBand band) { return band == SatFreqBand_CBand ? "C-Band" : "Ku-Band"; }

std::string PositionText(LONG longitude) {
  const std::int64_t tenths = std::llabs(std::int64_t{longitude});
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) +
         (longitude < 0 ? "W" : "E");
}

}  // namespace zortunedex::kit
