#include "tool/options/typing/country_names.h"

#include <algorithm>

#include "countries/country_table.h"
#include "kit/text/ascii.h"
#include "kit/text/nearest.h"

namespace zortunedex::kit::tool {

namespace {

using countries::CountryRow;

/// ISO 3166 codes of the table's countries: of three letters, and of two.
struct IsoCodes {
  std::string_view three;
  std::string_view two;
};

constexpr IsoCodes kIsoCodes[] = {
    {"ABW", "AW"}, {"AFG", "AF"}, {"AGO", "AO"}, {"ALB", "AL"}, {"AND", "AD"}, {"ANT", "AN"},
    {"ARE", "AE"}, {"ARG", "AR"}, {"ARM", "AM"}, {"ASM", "AS"}, {"AUS", "AU"}, {"AUT", "AT"},
    {"AZE", "AZ"}, {"BDI", "BI"}, {"BEL", "BE"}, {"BEN", "BJ"}, {"BFA", "BF"}, {"BGD", "BD"},
    {"BGR", "BG"}, {"BHR", "BH"}, {"BHS", "BS"}, {"BIH", "BA"}, {"BLR", "BY"}, {"BLZ", "BZ"},
    {"BMU", "BM"}, {"BOL", "BO"}, {"BRA", "BR"}, {"BRN", "BN"}, {"BWA", "BW"}, {"CAF", "CF"},
    {"CAN", "CA"}, {"CHE", "CH"}, {"CHL", "CL"}, {"CHN", "CN"}, {"CIV", "CI"}, {"CMR", "CM"},
    {"COD", "CD"}, {"COK", "CK"}, {"COL", "CO"}, {"CPV", "CV"}, {"CRI", "CR"}, {"CUB", "CU"},
    {"CYM", "KY"}, {"CYP", "CY"}, {"CZE", "CZ"}, {"DEU", "DE"}, {"DJI", "DJ"}, {"DNK", "DK"},
    {"DOM", "DO"}, {"DZA", "DZ"}, {"ECU", "EC"}, {"EGY", "EG"}, {"ESH", "EH"}, {"ESP", "ES"},
    {"EST", "EE"}, {"ETH", "ET"}, {"FIN", "FI"}, {"FJI", "FJ"}, {"FLK", "FK"}, {"FRA", "FR"},
    {"FRO", "FO"}, {"FSM", "FM"}, {"GAB", "GA"}, {"GBR", "GB"}, {"GEO", "GE"}, {"GHA", "GH"},
    {"GIB", "GI"}, {"GIN", "GN"}, {"GLP", "GP"}, {"GMB", "GM"}, {"GNB", "GW"}, {"GNQ", "GQ"},
    {"GRC", "GR"}, {"GRL", "GL"}, {"GTM", "GT"}, {"GUF", "GF"}, {"GUM", "GU"}, {"GUY", "GY"},
    {"HKG", "HK"}, {"HND", "HN"}, {"HRV", "HR"}, {"HTI", "HT"}, {"HUN", "HU"}, {"IDN", "ID"},
    {"IND", "IN"}, {"IOT", "IO"}, {"IRL", "IE"}, {"IRN", "IR"}, {"IRQ", "IQ"}, {"ISL", "IS"},
    {"ISR", "IL"}, {"ITA", "IT"}, {"JAM", "JM"}, {"JOR", "JO"}, {"JPN", "JP"}, {"KAZ", "KZ"},
    {"KEN", "KE"}, {"KGZ", "KG"}, {"KHM", "KH"}, {"KIR", "KI"}, {"KOR", "KR"}, {"KWT", "KW"},
    {"LAO", "LA"}, {"LBN", "LB"}, {"LBR", "LR"}, {"LBY", "LY"}, {"LKA", "LK"}, {"LSO", "LS"},
    {"LTU", "LT"}, {"LUX", "LU"}, {"LVA", "LV"}, {"MAC", "MO"}, {"MAR", "MA"}, {"MCO", "MC"},
    {"MDA", "MD"}, {"MDG", "MG"}, {"MDV", "MV"}, {"MEX", "MX"}, {"MHL", "MH"}, {"MKD", "MK"},
    {"MLI", "ML"}, {"MLT", "MT"}, {"MMR", "MM"}, {"MNG", "MN"}, {"MOZ", "MZ"}, {"MRT", "MR"},
    {"MTQ", "MQ"}, {"MUS", "MU"}, {"MWI", "MW"}, {"MYS", "MY"}, {"MYT", "YT"}, {"NAM", "NA"},
    {"NCL", "NC"}, {"NER", "NE"}, {"NFK", "NF"}, {"NGA", "NG"}, {"NIC", "NI"}, {"NLD", "NL"},
    {"NOR", "NO"}, {"NPL", "NP"}, {"NZL", "NZ"}, {"OMN", "OM"}, {"PAK", "PK"}, {"PAN", "PA"},
    {"PER", "PE"}, {"PHL", "PH"}, {"PLW", "PW"}, {"PNG", "PG"}, {"POL", "PL"}, {"PRI", "PR"},
    {"PRK", "KP"}, {"PRT", "PT"}, {"PRY", "PY"}, {"PYF", "PF"}, {"QAT", "QA"}, {"REU", "RE"},
    {"ROU", "RO"}, {"RUS", "RU"}, {"RWA", "RW"}, {"SAU", "SA"}, {"SCG", "CS"}, {"SDN", "SD"},
    {"SEN", "SN"}, {"SGP", "SG"}, {"SLB", "SB"}, {"SLE", "SL"}, {"SLV", "SV"}, {"SMR", "SM"},
    {"SOM", "SO"}, {"SPM", "PM"}, {"STP", "ST"}, {"SUR", "SR"}, {"SVK", "SK"}, {"SVN", "SI"},
    {"SWE", "SE"}, {"SWZ", "SZ"}, {"SYC", "SC"}, {"SYR", "SY"}, {"TCA", "TC"}, {"TCD", "TD"},
    {"TGO", "TG"}, {"THA", "TH"}, {"TJK", "TJ"}, {"TKM", "TM"}, {"TON", "TO"}, {"TTO", "TT"},
    {"TUN", "TN"}, {"TUR", "TR"}, {"TWN", "TW"}, {"TZA", "TZ"}, {"UGA", "UG"}, {"UKR", "UA"},
    {"UMI", "UM"}, {"URY", "UY"}, {"USA", "US"}, {"UZB", "UZ"}, {"VEN", "VE"}, {"VIR", "VI"},
    {"VNM", "VN"}, {"WLF", "WF"}, {"WSM", "WS"}, {"YEM", "YE"}, {"ZAF", "ZA"}, {"ZMB", "ZM"},
    {"ZWE", "ZW"},
};

/// What stands in front of a comma or a parenthesis; the whole name without them.
std::string_view ShortName(std::string_view name) {
  name = name.substr(0, name.find_first_of(",("));
  while (name.ends_with(' ')) name.remove_suffix(1);
  return name;
}

std::string_view ThreeLetters(std::string_view iso) {
  for (const IsoCodes& codes : kIsoCodes) {
    if (EqualIgnoringCase(codes.two, iso)) return codes.three;
  }
  return iso;
}

template <typename Matches>
std::optional<DWORD> FirstRow(Matches matches) {
  const auto row =
      std::find_if(std::begin(countries::kCountries), std::end(countries::kCountries), matches);
  if (row == std::end(countries::kCountries)) return std::nullopt;
  return row->code;
}

/// Nothing where countries of several names have it.
std::optional<DWORD> ByShortName(std::string_view name) {
  const auto isIt = [name](const CountryRow& row) {
    return EqualIgnoringCase(ShortName(row.name), name);
  };
  const auto count =
      std::count_if(std::begin(countries::kCountries), std::end(countries::kCountries), isIt);
  return count == 1 ? FirstRow(isIt) : std::nullopt;
}

}  // namespace

std::optional<DWORD> CountryByName(const std::string& name) {
  const auto byIso = FirstRow([iso = ThreeLetters(name)](const CountryRow& row) {
    return EqualIgnoringCase(row.iso3, iso);
  });
  if (byIso) return byIso;
  const auto byName =
      FirstRow([&name](const CountryRow& row) { return EqualIgnoringCase(row.name, name); });
  return byName ? byName : ByShortName(name);
}

std::optional<DWORD> ParseCountry(const std::string& text) {
  const std::optional<std::int64_t> number = ParseNumber(text, 0, UINT32_MAX);
  return number ? static_cast<DWORD>(*number) : CountryByName(text);
}

bool IsInCountryTable(DWORD code) { return countries::FindRow(code) >= 0; }

std::vector<std::string> CountryIsoCodes() {
  std::vector<std::string> result;
  for (const IsoCodes& codes : kIsoCodes) result.emplace_back(codes.three);
  return result;
}

std::string UnknownCountry(const std::string& name) {
  std::vector<std::string> names;
  for (const CountryRow& row : countries::kCountries) {
    names.emplace_back(row.name);
    if (ShortName(row.name) != row.name) names.emplace_back(ShortName(row.name));
  }
  std::string text = "no country is called '" + name + "'";
  const std::optional<std::string> nearest = Nearest(name, names);
  const std::optional<DWORD> code = nearest ? CountryByName(*nearest) : std::nullopt;
  if (!nearest) return text;
  text += "; the nearest is " + *nearest;
  return code ? text + " (" + std::to_string(*code) + ")" : text;
}

}  // namespace zortunedex::kit::tool
