#include "kit/check/known_countries.h"

#include "countries/country_table.h"

namespace zortunedex::kit::check {

bool IsCountry(std::uint32_t code) { return countries::RowAt(countries::FindRow(code)) != nullptr; }

}  // namespace zortunedex::kit::check
