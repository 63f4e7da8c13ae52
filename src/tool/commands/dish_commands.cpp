#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/satellites/catalogue.h"
#include "kit/satellites/dish_settings.h"
#include "kit/text/satellite_words.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace commands {
namespace {

/// The catalogue where there is one; names of satellites come from it.
SatelliteCatalogue CatalogueIfThere(const Location& location) {
  try {
    return ReadCatalogue(location);
  } catch (const Failure&) {
    return {};
  }
}

const Satellite* Find(const SatelliteCatalogue& catalogue, const std::string& id) {
  for (const Satellite& satellite : catalogue.satellites) {
    if (satellite.id == id) return &satellite;
  }
  return nullptr;
}

void Print(const Dishes& dishes, const Options& options) {
  const SatelliteCatalogue catalogue = CatalogueIfThere(SatelliteLocation(options));
  ordered_json array = ordered_json::array();
  std::vector<std::vector<std::string>> rows = {
      {"DISH", "INDEX", "ID", "BAND", "LOW", "HIGH", "SWITCH", "NAME"}};
  for (unsigned dish = 1; dish <= Dishes::count; ++dish) {
    for (std::size_t i = 0; i < dishes.on(dish).size(); ++i) {
      const DishSatellite& entry = dishes.on(dish)[i];
      const Satellite* satellite = Find(catalogue, entry.id);
      array.push_back({{"dish", dish},
                       {"index", i + 1},
                       {"id", entry.id},
                       {"band", entry.band},
                       {"low", entry.low},
                       {"high", entry.high},
                       {"switch", entry.switch_frequency},
                       {"name", nullptr}});
      if (satellite != nullptr) array.back()["name"] = satellite->name;
      rows.push_back({std::to_string(dish), std::to_string(i + 1), Printable(entry.id),
                      Printable(entry.band), std::to_string(entry.low), std::to_string(entry.high),
                      std::to_string(entry.switch_frequency),
                      satellite == nullptr ? "-" : Printable(satellite->name)});
    }
  }
  options.json ? PrintJson(array) : PrintTable(rows);
}

/// Saves and, for JSON, prints what all dishes have then.
void Save(Dishes dishes, const Options& options) {
  const Dishes saved = SaveDishes(SatelliteLocation(options), std::move(dishes),
                                  {{}, PrintNote, options.unreadable});
  if (options.json) Print(saved, options);
}

DishSatellite MakeAssignment(const SatelliteCatalogue& catalogue, const Options& options) {
  DishSatellite entry;
  entry.id = catalogue.FindSatellite(options.satellite).id;
  entry.band = BandName(*options.band);
  if (options.lnb) {
    const LnbType& lnb = catalogue.FindLnb(*options.lnb);
    entry.low = lnb.low;
    entry.high = lnb.high;
    entry.switch_frequency = lnb.switch_frequency;
  } else {
    entry.low = *options.lowFrequency;
    entry.high = options.highFrequency.value_or(entry.low);
    entry.switch_frequency = options.switchFrequency.value_or(0);
  }
  return entry;
}

}  // namespace

void ListDishes(const Options& options) { Print(ReadDishes(SatelliteLocation(options)), options); }

void AssignSatellite(const Options& options) {
  const Location location = SatelliteLocation(options);
  const DishSatellite entry = MakeAssignment(ReadCatalogue(location), options);
  Dishes dishes = ReadDishes(location, options.unreadable);
  const unsigned index = detail::DishAccess::Put(dishes, options.dish, entry);
  Save(std::move(dishes), options);
  if (!options.json) std::cout << index << '\n';
}

void RemoveAssignment(const Options& options) {
  Dishes dishes = ReadDishes(SatelliteLocation(options));
  const UINT index = options.indexes.front();
  if (index == 0 || index > dishes.on(options.dish).size()) {
    throw Failure{E_FAIL, "dish " + std::to_string(options.dish) + " has no satellite with index " +
                              std::to_string(index)};
  }
  dishes.remove(options.dish, index);
  Save(std::move(dishes), options);
}

void ClearDishes(const Options& options) { Save({}, options); }

}  // namespace commands

}  // namespace zortunedex::kit::tool
