#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/files/file_scan.h"
#include "kit/model/failure.h"
#include "kit/saving/file_check.h"
#include "kit/text/signal_types.h"
#include "tool/commands/commands.h"
#include "tool/printing/output.h"
#include "xml/country_table.h"

using nlohmann::ordered_json;

namespace commands {
namespace {

std::string CountryName(const file_scan::Contents& contents, DWORD code) {
  for (const file_scan::Country& country : contents.countries) {
    if (country.code == code) return country.name;
  }
  return {};
}

void RequireSame(const file_check::Inventory& meant, const file_check::Inventory& found) {
  for (const auto& [key, channels] : meant) {
    const auto other = found.find(key);
    const bool same = other != found.end() &&
                      std::equal(channels.begin(), channels.end(), other->second.begin(),
                                 other->second.end(), [](const Channel& a, const Channel& b) {
                                   return FirstDifference(a, b, nullptr) == nullptr;
                                 });
    if (same) continue;
    throw Failure{E_FAIL,
                  "ChanInfo.xml is not what was meant after saving: " + SignalTypeName(key.second) +
                      " of country " + std::to_string(key.first)};
  }
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
  const file_check::Inventory inventory = file_check::TakeInventory(options.directory);
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

void FormatFile(const Options& options) {
  const file_check::Inventory meant = file_check::TakeInventory(options.directory);
  const file_scan::Contents contents = file_scan::Scan(options.directory);
  if (!contents.exists) throw Failure{E_FAIL, "there is no ChanInfo.xml"};
  if (options.rewriteAs == StoragePreFmtXML) file_check::RequirePreFormattable(options.directory);
  {
    // A country that the file lacks would come and go again while saving.
    const DWORD country = contents.countries.empty() ? 1 : contents.countries.front().code;
    const Database database({options.directory, country, InputSignalFMRadio});
    Require(database->SetStorageType(*options.rewriteAs), "the form cannot be chosen");
    Require(database->SaveChannelToFile(), "ChanInfo.xml was not written");
  }
  RequireSame(meant, file_check::TakeInventory(options.directory));
}

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
