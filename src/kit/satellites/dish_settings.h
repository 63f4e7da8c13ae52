// The satellites of the dishes, by value.
#pragma once

#include "api/zortunedex/dishes.hpp"
#include "kit/model/database.h"
#include "kit/saving/save_options.h"

namespace zortunedex::kit {

using DishSatellite = dish_satellite;
using Dishes = dish_list;

/// As UserSettings.xml has them; without one all dishes are empty.
Dishes ReadDishes(const Location& location, Unreadable unreadable = Unreadable::Refuse);

/// Writes all dishes afresh and reads them back; what is the same twice on a dish is written once.
/// All is tried on a copy first. Raises a Failure when the file cannot hold it (it stays as it was
/// then), and when it does not hold it after saving. Answers what was written.
Dishes SaveDishes(const Location& location, Dishes meant, const SaveOptions& options = {});

}  // namespace zortunedex::kit
