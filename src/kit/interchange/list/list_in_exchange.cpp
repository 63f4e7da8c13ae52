#include "kit/interchange/list/list_in_exchange.h"

#include <filesystem>

#include "kit/files/whole_file.h"
#include "kit/satellites/catalogue.h"
#include "kit/satellites/dish_settings.h"

namespace zortunedex::kit::interchange {
namespace {

/// What the dishes of the directory are turned to, as far as it has a catalogue that says so.
std::vector<DishPosition> DishPositions(const Location& location) {
  std::vector<DishPosition> positions;
  std::error_code error;
  const auto folder = whole_file::PathOf(location.directory);
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

ListInExchange::ListInExchange(const Location& location, const Format* format,
                               Unreadable unreadable, std::optional<UINT> codePage)
    : m_list(location, unreadable),
      m_narrow(m_list.Source()),
      m_context{location.country, location.signal, m_list.Source(), m_narrow, codePage} {
  if (format != nullptr && format->usesDishes && location.signal == InputSignalDVBSatellite) {
    m_context.dishes = DishPositions(location);
  }
}

}  // namespace zortunedex::kit::interchange
