#include "words/tuning_texts.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/bstr.h"
#include "platform/text.h"
#include "support/expect.h"

namespace {

/// What one enumeration's functions have to do, said a second time and by value.
template <typename Enum>
struct Case {
  HRESULT (*toText)(Enum, BSTR*);
  HRESULT (*fromText)(BSTR, Enum*);
  HRESULT (*fromNarrow)(std::string_view, Enum*);
  std::map<std::int32_t, std::string> written;
  std::map<std::string, std::int32_t> accepted;
  bool hasUnknown;  // region and division: "Unknown" and 0 where the others leave things alone
};

constexpr std::int32_t kBefore = 77;

const Case<BinaryConvolutionCodeRate>& FecRate() {
  static const Case<BinaryConvolutionCodeRate> instance = {FecRateToText,
                                                           TextToFecRate,
                                                           tuning_texts::FecRateFromNarrow,
                                                           {{-1, "NotSet"},
                                                            {0, "NotSet"},
                                                            {1, "1/2"},
                                                            {2, "2/3"},
                                                            {3, "3/4"},
                                                            {4, "3/5"},
                                                            {5, "4/5"},
                                                            {6, "5/6"},
                                                            {7, "5/11"},
                                                            {8, "7/8"}},
                                                           {{"NotSet", -1},
                                                            {"-1", -1},
                                                            {"6/7", -1},
                                                            {"1/2", 1},
                                                            {"2/3", 2},
                                                            {"3/4", 3},
                                                            {"3/5", 4},
                                                            {"4/5", 5},
                                                            {"5/6", 6},
                                                            {"5/11", 7},
                                                            {"7/8", 8}},
                                                           false};
  return instance;
}

const Case<ModulationType>& Modulation() {
  static const Case<ModulationType> instance = [] {
    Case<ModulationType> made = {ModulationToText,
                                 TextToModulation,
                                 tuning_texts::ModulationFromNarrow,
                                 {{-1, "NotSet"}, {0, "NotSet"}, {26, "ANALOG_FREQUENCY"}},
                                 {{"NotSet", -1}, {"-1", -1}, {"BDA_MOD_ANALOG_FREQUENCY", 26}},
                                 false};
    const std::vector<std::string> both = {
        "16QAM",  "32QAM",  "64QAM",  "80QAM",           "96QAM",   "112QAM", "128QAM",
        "160QAM", "192QAM", "224QAM", "256QAM",          "320QAM",  "384QAM", "448QAM",
        "512QAM", "640QAM", "768QAM", "896QAM",          "1024QAM", "QPSK",   "BPSK",
        "OQPSK",  "8VSB",   "16VSB",  "ANALOG_AMPLITUDE"};
    for (std::size_t i = 0; i < both.size(); ++i) {
      made.written[static_cast<std::int32_t>(i + 1)] = both[i];
      made.accepted[both[i]] = static_cast<std::int32_t>(i + 1);
    }
    return made;
  }();
  return instance;
}

const Case<Polarisation>& PolarisationCase() {
  static const Case<Polarisation> instance = {PolarisationToText,
                                              TextToPolarisation,
                                              tuning_texts::PolarisationFromNarrow,
                                              {{-1, "NotSet"},
                                               {0, "NotSet"},
                                               {1, "LinearH"},
                                               {2, "LinearV"},
                                               {3, "CircularL"},
                                               {4, "CircularR"}},
                                              {{"NotSet", -1},
                                               {"LinearH", 1},
                                               {"Linearh", 1},
                                               {"LinearV", 2},
                                               {"Linearv", 2},
                                               {"CircularL", 3},
                                               {"Circularl", 3},
                                               {"CircularR", 4},
                                               {"Circularr", 4}},
                                              false};
  return instance;
}

const Case<SpectralInversion>& Inversion() {
  static const Case<SpectralInversion> instance = {
      SpectralInversionToText,
      TextToSpectralInversion,
      tuning_texts::SpectralInversionFromNarrow,
      {{-1, "NotSet"}, {0, "NotSet"}, {1, "automatic"}, {2, "normal"}, {3, "inverted"}},
      {{"NotSet", -1}, {"-1", -1}, {"automatic", 1}, {"normal", 2}, {"inverted", 3}},
      false};
  return instance;
}

const Case<ESatRegion>& Region() {
  static const Case<ESatRegion> instance = {
      SatRegionToText,
      TextToSatRegion,
      tuning_texts::SatRegionFromNarrow,
      {{1, "Asia"}, {2, "Europe"}, {3, "Atlantic"}, {4, "America"}},
      {{"Asia", 1}, {"Europe", 2}, {"Atlantic", 3}, {"America", 4}},
      true};
  return instance;
}

const Case<ESatDivision>& Division() {
  static const Case<ESatDivision> instance = [] {
    Case<ESatDivision> made = {
        SatDivisionToText, TextToSatDivision, tuning_texts::SatDivisionFromNarrow, {}, {}, true};
    for (std::int32_t digit = 1; digit <= 9; ++digit) {
      made.written[digit] = std::to_string(digit);
      made.accepted[std::to_string(digit)] = digit;
    }
    return made;
  }();
  return instance;
}

template <typename Enum>
void CheckWriter(const Case<Enum>& expected, std::int32_t value) {
  SCOPED_TRACE(value);
  const auto row = expected.written.find(value);
  const bool found = row != expected.written.end();
  Bstr stale = Wide("stale");
  BSTR text = stale.Release();
  ExpectHr(found ? S_OK : E_FAIL, expected.toText(static_cast<Enum>(value), &text));
  const Bstr owned = Bstr::Attach(text);
  if (found || expected.hasUnknown) {
    ExpectText(Wide(found ? row->second : "Unknown").View(), text);
  } else {
    EXPECT_EQ(nullptr, text);
  }
}

template <typename Enum>
void CheckReader(const Case<Enum>& expected, const std::string& word) {
  SCOPED_TRACE(word);
  const auto row = expected.accepted.find(word);
  const bool found = row != expected.accepted.end();
  const std::int32_t after = found ? row->second : expected.hasUnknown ? 0 : kBefore;
  Enum value = static_cast<Enum>(kBefore);
  ExpectHr(found ? S_OK : E_FAIL, expected.fromText(Wide(word).Release(), &value));
  EXPECT_EQ(after, static_cast<std::int32_t>(value));
  value = static_cast<Enum>(kBefore);
  ExpectHr(found ? S_OK : E_FAIL, expected.fromNarrow(word, &value));
  EXPECT_EQ(after, static_cast<std::int32_t>(value));
}

std::vector<std::string> Distorted(const std::string& word) {
  std::string lower;
  std::string upper;
  for (const char letter : word) {
    lower += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    upper += static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  }
  return {lower, upper, " " + word, word + " ", word + "x", word.substr(1), word.substr(0, 1)};
}

template <typename Enum>
void CheckAll(const Case<Enum>& expected) {
  for (std::int32_t value = -5; value <= 50; ++value) CheckWriter(expected, value);
  std::vector<std::string> words = {"", "0", "10", "NotSet", "-1", "-2", "Unknown", "nonsense"};
  for (const auto& [word, value] : expected.accepted) {
    words.push_back(word);
    for (const std::string& distorted : Distorted(word)) words.push_back(distorted);
  }
  for (const auto& [value, word] : expected.written) words.push_back(word);
  for (const std::string& word : words) CheckReader(expected, word);
}

template <typename Enum>
void CheckNulls(const Case<Enum>& expected) {
  ExpectHr(E_POINTER, expected.toText(static_cast<Enum>(1), nullptr));
  // The text goes on this path too; the leak check sees to it.
  ExpectHr(E_POINTER, expected.fromText(Wide("NotSet").Release(), nullptr));
  ExpectHr(E_POINTER, expected.fromNarrow("NotSet", nullptr));
  Enum value = static_cast<Enum>(kBefore);
  ExpectHr(E_FAIL, expected.fromText(nullptr, &value));
  EXPECT_EQ(expected.hasUnknown ? 0 : kBefore, static_cast<std::int32_t>(value));
}

}  // namespace

TEST(TuningTexts, FecRateTable) { CheckAll(FecRate()); }
TEST(TuningTexts, ModulationTable) { CheckAll(Modulation()); }
TEST(TuningTexts, PolarisationTable) { CheckAll(PolarisationCase()); }
TEST(TuningTexts, SpectralInversionTable) { CheckAll(Inversion()); }
TEST(TuningTexts, SatRegionTable) { CheckAll(Region()); }
TEST(TuningTexts, SatDivisionTable) { CheckAll(Division()); }

TEST(TuningTexts, NullArguments) {
  CheckNulls(FecRate());
  CheckNulls(Modulation());
  CheckNulls(PolarisationCase());
  CheckNulls(Inversion());
  CheckNulls(Region());
  CheckNulls(Division());
}

template <typename Enum>
void CheckWords(HRESULT (*toText)(Enum, BSTR*), std::string_view (*wordOf)(Enum)) {
  for (int value = -2; value < 300; ++value) {
    Bstr text;
    toText(static_cast<Enum>(value), text.Receive());
    EXPECT_EQ(text::ToUtf8(text.View()), wordOf(static_cast<Enum>(value))) << value;
  }
}

TEST(TuningTexts, WordsAreThoseOfTheTexts) {
  using namespace tuning_texts;
  CheckWords(FecRateToText, FecRateWord);
  CheckWords(ModulationToText, ModulationWord);
  CheckWords(PolarisationToText, PolarisationWord);
  CheckWords(SpectralInversionToText, SpectralInversionWord);
}

TEST(TuningTexts, ZeroDoesNotSurviveARoundTrip) {
  BSTR text = nullptr;
  ExpectHr(S_OK, FecRateToText(BDA_BCC_RATE_NOT_DEFINED, &text));
  BinaryConvolutionCodeRate rate = BDA_BCC_RATE_1_2;
  ExpectHr(S_OK, TextToFecRate(text, &rate));
  EXPECT_EQ(BDA_BCC_RATE_NOT_SET, rate);

  text = nullptr;
  ExpectHr(S_OK, ModulationToText(BDA_MOD_NOT_DEFINED, &text));
  ModulationType modulation = BDA_MOD_QPSK;
  ExpectHr(S_OK, TextToModulation(text, &modulation));
  EXPECT_EQ(BDA_MOD_NOT_SET, modulation);

  text = nullptr;
  ExpectHr(S_OK, PolarisationToText(BDA_POLARISATION_NOT_DEFINED, &text));
  Polarisation polarisation = BDA_POLARISATION_LINEAR_H;
  ExpectHr(S_OK, TextToPolarisation(text, &polarisation));
  EXPECT_EQ(BDA_POLARISATION_NOT_SET, polarisation);

  text = nullptr;
  ExpectHr(S_OK, SpectralInversionToText(BDA_SPECTRAL_INVERSION_NOT_DEFINED, &text));
  SpectralInversion inversion = BDA_SPECTRAL_INVERSION_NORMAL;
  ExpectHr(S_OK, TextToSpectralInversion(text, &inversion));
  EXPECT_EQ(BDA_SPECTRAL_INVERSION_NOT_SET, inversion);
}

TEST(TuningTexts, SixSeventhsReadsAsNotSetAndIsNeverWritten) {
  BinaryConvolutionCodeRate rate = BDA_BCC_RATE_1_2;
  ExpectHr(S_OK, TextToFecRate(Wide("6/7").Release(), &rate));
  EXPECT_EQ(BDA_BCC_RATE_NOT_SET, rate);
  BSTR text = Wide("stale").Release();
  ExpectHr(E_FAIL, FecRateToText(BDA_BCC_RATE_6_7, &text));
  EXPECT_EQ(nullptr, text);
}

TEST(TuningTexts, AnalogueFrequencyHasTwoWords) {
  BSTR text = nullptr;
  ExpectHr(S_OK, ModulationToText(BDA_MOD_ANALOG_FREQUENCY, &text));
  ExpectText(OLESTR("ANALOG_FREQUENCY"), text);
  ModulationType modulation = BDA_MOD_QPSK;
  ExpectHr(E_FAIL, TextToModulation(text, &modulation));
  EXPECT_EQ(BDA_MOD_QPSK, modulation);
  ExpectHr(S_OK, TextToModulation(Wide("BDA_MOD_ANALOG_FREQUENCY").Release(), &modulation));
  EXPECT_EQ(BDA_MOD_ANALOG_FREQUENCY, modulation);
}

TEST(TuningTexts, SatelliteModulationsHaveNoWord) {
  BSTR text = Wide("stale").Release();
  ExpectHr(E_FAIL, ModulationToText(BDA_MOD_8PSK, &text));
  EXPECT_EQ(nullptr, text);
}

TEST(TuningTexts, RegionAndDivisionFailWithUnknown) {
  BSTR text = Wide("stale").Release();
  ExpectHr(E_FAIL, SatRegionToText(RegionUnknown, &text));
  ExpectText(OLESTR("Unknown"), text);
  ESatRegion region = RegionAmerica;
  ExpectHr(E_FAIL, TextToSatRegion(text, &region));
  EXPECT_EQ(RegionUnknown, region);
  region = RegionAmerica;
  ExpectHr(E_FAIL, TextToSatRegion(Wide("asia").Release(), &region));
  EXPECT_EQ(RegionUnknown, region);

  text = nullptr;
  ExpectHr(E_FAIL, SatDivisionToText(static_cast<ESatDivision>(10), &text));
  ExpectText(OLESTR("Unknown"), text);
  SysFreeString(text);
  ESatDivision division = SatcoDX_4;
  ExpectHr(E_FAIL, TextToSatDivision(Wide("10").Release(), &division));
  EXPECT_EQ(SatcoDX_Unknown, division);
}

// The circled digit narrows to the plain one in some code pages, but is another text.
TEST(TuningTexts, WideReaderComparesWide) {
  ESatDivision division = SatcoDX_4;
  ExpectHr(E_FAIL, TextToSatDivision(Bstr(WideView(OLESTR("\u2460"))).Release(), &division));
  EXPECT_EQ(SatcoDX_Unknown, division);
}
