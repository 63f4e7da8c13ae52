#include "countries/country_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

using countries::kCountries;

namespace {

void ExpectRow(std::int32_t row, std::uint32_t geoId, std::uint32_t code, std::uint32_t standard,
               const char* iso3, const char* name) {
  SCOPED_TRACE(name);
  const countries::CountryRow* country = countries::RowAt(row);
  ASSERT_NE(nullptr, country);
  EXPECT_EQ(geoId, country->geoId);
  EXPECT_EQ(code, country->code);
  EXPECT_EQ(standard, country->videoStandard);
  EXPECT_STREQ(iso3, country->iso3);
  EXPECT_STREQ(name, country->name);
}

}  // namespace

TEST(CountryTable, TellingRows) {
  ExpectRow(0, 3, 93, 16, "AFG", "Afghanistan");
  ExpectRow(31, 39, 2, 1, "CAN", "Canada");
  ExpectRow(92, 122, 81, 2, "JPN", "Japan");
  ExpectRow(110, 19618, 389, 128, "MKD", "Macedonia");
  ExpectRow(132, 176, 31, 16, "NLD", "Netherlands");
  ExpectRow(192, 242, 44, 256, "GBR", "United Kingdom");
  ExpectRow(193, 244, 1, 1, "USA", "United States");
  ExpectRow(209, 264, 263, 16, "ZWE", "Zimbabwe");
}

TEST(CountryTable, PseudoCountriesAreThoseOfTheirMothers) {
  const auto row = [](std::uint32_t code) { return countries::RowAt(countries::FindRow(code)); };
  EXPECT_STREQ("USA (HRC Cable)", row(1001)->name);
  EXPECT_STREQ("USA (IRC Cable)", row(1002)->name);
  EXPECT_STREQ("China ShenZhen Area", row(860755)->name);
  for (const std::uint32_t code : {1001U, 1002U}) {
    EXPECT_STREQ("USA", row(code)->iso3);
    EXPECT_EQ(row(1)->geoId, row(code)->geoId);
  }
  EXPECT_STREQ("CHN", row(860755)->iso3);
  EXPECT_EQ(row(86)->geoId, row(860755)->geoId);
}

// The names go into files, and their order decides which of two equal codes is found. FNV-1a over
// "code name;" of every row.
TEST(CountryTable, CodesNamesAndOrderAreFixed) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const countries::CountryRow& country : kCountries) {
    const std::string row = std::to_string(country.code) + " " + country.name + ";";
    for (const char letter : row) {
      hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3U;
    }
  }
  EXPECT_EQ(0xDEDA6E714FEDA94AU, hash);
}

TEST(CountryTable, KeptMisspellings) {
  const auto name = [](std::uint32_t code) {
    return std::string(countries::RowAt(countries::FindRow(code))->name);
  };
  EXPECT_EQ("Australia, Chrismas and Cocos Islands", name(61));
  EXPECT_EQ("Dominian Republic", name(809));
  EXPECT_EQ("Yemen Arab Repulic", name(967));
  EXPECT_EQ("Yugoslavia (Serbia and Montenegro", name(381));
}

TEST(CountryTable, EveryRowIsComplete) {
  for (const countries::CountryRow& country : kCountries) {
    SCOPED_TRACE(country.name);
    EXPECT_NE(0U, country.geoId);
    EXPECT_NE(0U, country.code);
    EXPECT_EQ(3U, std::strlen(country.iso3));
    const std::uint32_t standard = country.videoStandard;
    EXPECT_TRUE(standard != 0 && (standard & (standard - 1)) == 0);
  }
}

TEST(CountryTable, OnlyTwoCodesStandTwice) {
  std::string twice;
  for (std::int32_t row = 0; row < countries::kCountryCount; ++row) {
    const std::int32_t first = countries::FindRow(kCountries[row].code);
    if (first != row) twice += std::to_string(kCountries[row].code) + " ";
  }
  EXPECT_EQ("95 34 ", twice);
  EXPECT_STREQ("Burma (Union of Myanmar)", countries::RowAt(countries::FindRow(95))->name);
  EXPECT_STREQ("Spain", countries::RowAt(countries::FindRow(34))->name);
}

TEST(CountryTable, OutsideTheTable) {
  EXPECT_EQ(-1, countries::FindRow(999));
  EXPECT_EQ(-1, countries::FindRow(0));
  EXPECT_EQ(-1, countries::FindRow(0xFFFFFFFFU));
  EXPECT_EQ(nullptr, countries::RowAt(-1));
  EXPECT_EQ(nullptr, countries::RowAt(210));
}
