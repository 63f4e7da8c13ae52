#include "tool/commands/running/list_in_exchange.h"

#include <filesystem>

#include "kit/files/whole_file.h"
#include "kit/satellites/catalogue.h"
#include "kit/satellites/dish_settings.h"
#include "tool/options/location.h"

namespace zortunedex::kit::tool {

using interchange::DishPosition;

namespace {

/// What the dishes of the directory are turned to, as far as it has a catalogue that says so.
std::vector<DishPosition> DishPositions(const Options& options) {
  std::vector<DishPosition> positions;
  const Location location = SatelliteLocation(options);
  std::error_code error;
  const auto folder = whole_file::PathOf(options.directory);
  for (const char* file : {"SatelliteInfo.xml", "UserSettings.xml"}) {
    if (!std::filesystem::exists(folder / file, error)) return positions;
  }
  const SatelliteCatalogue catalogue = ReadCatalogue(location);
  const Dishes dishes = ReadDishes(location);
  for (unsigned dish = 1; dish <= Dishes::count; ++dish) {
    for (const DishSatellite& received : dishes.on(dish)) {
      for (const Satellite& satellite : catalogue.satellites) {
        if (satellite.id != received.id) continue;
        positions.push_back({dish, satellite.longitude});
      }
    }
  }
  return positions;
}

}  // namespace

ListInExchange::ListInExchange(const Options& options, const interchange::Format* format)
    : m_list(LocationOf(options), options.unreadable),
      m_narrow(m_list.Source()),
      m_context{*options.country, *options.signal, m_list.Source(), m_narrow, options.codePage} {
  if (format != nullptr && format->usesDishes && *options.signal == InputSignalDVBSatellite) {
    m_context.dishes = DishPositions(options);
  }
}

}  // namespace zortunedex::kit::tool
