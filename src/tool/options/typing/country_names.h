// Countries as people name them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/interfaces.h"

namespace zortunedex::kit::tool {

/// The code of a country by its ISO 3166 code of two or three letters or by its name in the table
/// ("Italy, Vatican City" also as "Italy"), in any letter case. The first row of the table counts.
std::optional<DWORD> CountryByName(const std::string& name);

/// The same, or a number: then any, whether the table has it or not.
std::optional<DWORD> ParseCountry(const std::string& text);

bool IsInCountryTable(DWORD code);

/// The codes of three letters, each once, by alphabet.
std::vector<std::string> CountryIsoCodes();

/// "no country is called 'Germny'; the nearest is Germany (49)".
std::string UnknownCountry(const std::string& name);

}  // namespace zortunedex::kit::tool
