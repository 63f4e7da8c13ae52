#include "countries/country_code.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/registry.h"
#include "support/expect.h"
#include "support/registry_sandbox.h"

namespace {

constexpr char kUntouched[] = "untouched";
// Written with the capitals of an ordinary export: keys compare without regard to case.
const std::string kList = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Telephony\\Country List\\";

void SetListed(std::uint32_t identifier, const std::string& name) {
  ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, kList + std::to_string(identifier),
                                   "Name", name));
}

struct NameBuffer {
  char text[kCountryNameSize] = {};
  NameBuffer() { std::strcpy(text, kUntouched); }
};

std::string Listed(std::uint32_t code) {
  NameBuffer buffer;
  ExpectHr(S_OK, GetRegistryCountryName(code, buffer.text));
  return buffer.text;
}

void ExpectNotListed(std::uint32_t code) {
  NameBuffer buffer;
  ExpectHr(E_FAIL, GetRegistryCountryName(code, buffer.text));
  EXPECT_STREQ(kUntouched, buffer.text);
}

std::string Named(std::uint32_t code) {
  NameBuffer buffer;
  EXPECT_EQ(buffer.text, CCountryCode().GetNameByCode(code, buffer.text));
  return buffer.text;
}

class CountryCode : public testing::Test {
  RegistrySandbox m_sandbox;
};

}  // namespace

TEST_F(CountryCode, BothStartAtTheUnitedStates) {
  EXPECT_EQ(193, CCountryCode().CurrentRow());
  EXPECT_EQ(193, CProLinkCountryCode().CurrentRow());
}

TEST_F(CountryCode, RowsAndCodes) {
  const CCountryCode countryCode;
  EXPECT_EQ(193, countryCode.GetIndexByCode(1));
  EXPECT_EQ(193, CProLinkCountryCode().GetIndexByCode(1));
  EXPECT_EQ(-1, countryCode.GetIndexByCode(999));
  EXPECT_EQ(-1, CProLinkCountryCode().GetIndexByCode(999));
  EXPECT_EQ(93, countryCode.GetCodeByIndex(0));
  EXPECT_EQ(263, countryCode.GetCodeByIndex(209));
  EXPECT_EQ(-1, countryCode.GetCodeByIndex(-1));
  EXPECT_EQ(-1, countryCode.GetCodeByIndex(210));
  // The second rows of the codes that stand twice are reached by row alone.
  EXPECT_EQ(27, countryCode.GetIndexByCode(95));
  EXPECT_EQ(95, countryCode.GetCodeByIndex(129));
}

TEST_F(CountryCode, TableNames) {
  const CProLinkCountryCode table;
  NameBuffer buffer;
  EXPECT_EQ(buffer.text, table.GetTableName(92, buffer.text));
  EXPECT_STREQ("Japan", buffer.text);
  for (const std::int32_t row : {-1, 210, 0x7FFFFFFF}) {
    NameBuffer other;
    EXPECT_EQ(nullptr, table.GetTableName(row, other.text));
    EXPECT_STREQ(kUntouched, other.text);
  }
  EXPECT_EQ(nullptr, table.GetTableName(0, nullptr));
}

TEST_F(CountryCode, WithoutTheListNamesComeFromTheTable) {
  EXPECT_EQ("United States", Named(1));
  EXPECT_EQ("Canada", Named(2));
  EXPECT_EQ("Spain", Named(34));
  EXPECT_EQ("Burma (Union of Myanmar)", Named(95));
  const CCountryCode countryCode;
  for (std::int32_t row = 0; row < countries::kCountryCount; ++row) {
    NameBuffer buffer;
    EXPECT_EQ(buffer.text, countryCode.GetNameByIndex(row, buffer.text));
    EXPECT_STREQ(countries::kCountries[row].name, buffer.text);
  }
}

TEST_F(CountryCode, TheListGoesBeforeTheTable) {
  SetListed(1, "Vereinigte Staaten");
  SetListed(34, "Espagne");
  EXPECT_EQ("Vereinigte Staaten", Named(1));
  EXPECT_EQ("Espagne", Named(34));
  EXPECT_EQ("France", Named(33));
  // The second row of a code takes the listed name as well.
  NameBuffer buffer;
  EXPECT_EQ(buffer.text, CCountryCode().GetNameByIndex(202, buffer.text));
  EXPECT_EQ(34, CCountryCode().GetCodeByIndex(202));
  EXPECT_STREQ("Espagne", buffer.text);
}

TEST_F(CountryCode, CanadaIsListedUnder107) {
  SetListed(2, "wrong");
  EXPECT_EQ("Canada", Named(2));
  SetListed(107, "Kanada");
  EXPECT_EQ("Kanada", Named(2));
  EXPECT_EQ("Kanada", Listed(107));
}

TEST_F(CountryCode, UnknownCodesAreNotLookedUp) {
  SetListed(999, "Nowhere");
  NameBuffer buffer;
  EXPECT_EQ(nullptr, CCountryCode().GetNameByCode(999, buffer.text));
  EXPECT_STREQ(kUntouched, buffer.text);
  EXPECT_EQ("Nowhere", Listed(999));
}

TEST_F(CountryCode, RowsOutsideAndNullBuffers) {
  const CCountryCode countryCode;
  for (const std::int32_t row : {-1, 210}) {
    NameBuffer buffer;
    EXPECT_EQ(nullptr, countryCode.GetNameByIndex(row, buffer.text));
    EXPECT_STREQ(kUntouched, buffer.text);
  }
  EXPECT_EQ(nullptr, countryCode.GetNameByIndex(0, nullptr));
  EXPECT_EQ(nullptr, countryCode.GetNameByCode(1, nullptr));
  ExpectHr(E_POINTER, GetRegistryCountryName(1, nullptr));
}

TEST_F(CountryCode, Windows9xNeverReadsTheList) {
  SetListed(1, "listed");
  const CCountryCode countryCode;
  NameBuffer buffer;
  EXPECT_EQ(buffer.text, countryCode.GetNameByIndex(193, buffer.text, true));
  EXPECT_STREQ("United States", buffer.text);
  EXPECT_EQ(buffer.text, countryCode.GetNameByIndex(193, buffer.text, false));
  EXPECT_STREQ("listed", buffer.text);
}

TEST_F(CountryCode, MissingKeyOrValueFails) {
  ExpectNotListed(49);
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, kList + "49"));
  ExpectNotListed(49);
  ExpectHr(S_OK, registry::SetNumber(registry::Root::LocalMachine, kList + "49", "Name", 7));
  ExpectNotListed(49);
  EXPECT_EQ("Germany", Named(49));
}

TEST_F(CountryCode, AnEmptyNameSucceedsAndWritesNothing) {
  SetListed(49, "");
  EXPECT_EQ(kUntouched, Listed(49));
  EXPECT_EQ(kUntouched, Named(49));
}

TEST_F(CountryCode, TheNetherlandsEndAtTheFirstComma) {
  SetListed(31, "Niederlande, Koenigreich der, Europa");
  EXPECT_EQ("Niederlande", Listed(31));
  SetListed(31, "Niederlande");
  EXPECT_EQ("Niederlande", Listed(31));
}

TEST_F(CountryCode, MacedoniaIsTurnedAround) {
  SetListed(389, "Macedonia, Former Yugoslav Republic of");
  EXPECT_EQ("Former Yugoslav Republic of Macedonia", Listed(389));
  SetListed(389, "Macedonia,FYRO");
  EXPECT_EQ("FYRO Macedonia", Listed(389));
  SetListed(389, "Macedonia,  FYRO, Europe");
  EXPECT_EQ(" FYRO Macedonia", Listed(389));
  SetListed(389, "Macedonia");
  EXPECT_EQ("Macedonia", Listed(389));
  SetListed(389, "Macedonia,");
  EXPECT_EQ("Macedonia", Listed(389));
}

TEST_F(CountryCode, OtherNamesKeepTheirCommas) {
  SetListed(44, "Kingdom, United");
  EXPECT_EQ("Kingdom, United", Listed(44));
}

TEST_F(CountryCode, LongestNames) {
  const std::string longest(259, 'x');
  SetListed(49, longest);
  EXPECT_EQ(longest, Listed(49));
  SetListed(49, longest + "x");
  ExpectNotListed(49);
  const std::string parts = std::string(100, 'a') + "," + std::string(158, 'b');
  SetListed(389, parts);
  EXPECT_EQ(std::string(158, 'b') + " " + std::string(100, 'a'), Listed(389));
}
