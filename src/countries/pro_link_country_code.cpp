#include "countries/pro_link_country_code.h"

#include <cstring>

std::int32_t CProLinkCountryCode::GetIndexByCode(std::uint32_t code) const {
  return countries::FindRow(code);
}

char* CProLinkCountryCode::GetTableName(std::int32_t row, char* buffer) const {
  const countries::CountryRow* country = countries::RowAt(row);
  if (country == nullptr || buffer == nullptr) return nullptr;
  std::memcpy(buffer, country->name, std::strlen(country->name) + 1);
  return buffer;
}
