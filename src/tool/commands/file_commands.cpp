#include <iostream>
#include <nlohmann/json.hpp>

#include "countries/country_table.h"
#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/saving/inventory.h"
#include "kit/text/signal_types.h"
#include "tool/commands/commands.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace commands {
namespace {

std::string CountryName(const file_scan::Contents& contents, DWORD code) {
  for (const file_scan::Country& country : contents.countries) {
    if (country.code == code) return country.name;
  }
  return {};
}

ordered_json ToJson(const countries::CountryRow& row) {
  return {{"code", row.code},
          {"iso3", row.iso3},
          {"geoId", row.geoId},
          {"videoStandard", row.videoStandard},
          {"name", row.name}};
}

}  // namespace

void ShowInfo(const Options& options) {
  const Inventory inventory = TakeInventory(options.directory);
  const file_scan::Contents contents = file_scan::Scan(options.directory);
  ordered_json array = ordered_json::array();
  std::vector<std::vector<std::string>> rows = {{"COUNTRY", "SIGNAL", "CHANNELS", "NAME"}};
  for (const auto& [key, channels] : inventory) {
    const std::string name = CountryName(contents, key.first);
    const std::string signal = SignalTypeName(key.second);
    array.push_back({{"country", key.first},
                     {"countryName", name},
                     {"signal", signal},
                     {"channels", channels.size()}});
    const std::optional<WideText> wide = utf::ToWide(name);
    rows.push_back({std::to_string(key.first), signal, std::to_string(channels.size()),
                    wide ? Printable(*wide) : "?"});
  }
  options.json ? PrintJson(array) : PrintTable(rows);
}

void FormatFile(const Options& options) { RewriteFile(options.directory, *options.rewriteAs); }

void ListCountries(const Options& options) {
  ordered_json array = ordered_json::array();
  std::vector<std::vector<std::string>> rows = {{"CODE", "ISO", "NAME"}};
  for (const countries::CountryRow& row : countries::kCountries) {
    // A code that stands twice names the first country.
    if (&row != countries::RowAt(countries::FindRow(row.code))) continue;
    if (options.countryRow && *options.countryRow != row.code) continue;
    array.push_back(ToJson(row));
    rows.push_back({std::to_string(row.code), row.iso3, row.name});
  }
  if (array.empty()) {
    throw Failure{E_FAIL, "no country with code " + std::to_string(*options.countryRow)};
  }
  options.json ? PrintJson(array) : PrintTable(rows);
}

}  // namespace commands

}  // namespace zortunedex::kit::tool
