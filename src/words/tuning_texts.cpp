#include "words/tuning_texts.h"

#include <optional>
#include <span>

#include "platform/bstr.h"
#include "platform/text.h"

namespace {

enum class Use : std::uint8_t { Both, Read, Write };

struct Row {
  std::string_view word;
  std::int32_t value;
  Use use = Use::Both;
};

/// Readers and writers take the first row that fits: of several words for a value the first one is
/// written, and of several values for a word the first one is read.
struct Vocabulary {
  std::span<const Row> rows;
  /// Written for a value without a word; a reader of such a vocabulary stores 0 for what is no word
  /// of it. None: nothing is written or stored.
  std::optional<std::string_view> fallback = std::nullopt;
};

// 6/7 reads as "not set", and the rates from 9 upward have no word: files of earlier versions hold
// such words. In every tuning vocabulary 0 is written as "NotSet" and comes back as -1.
constexpr Row kFecRateRows[] = {
    {"NotSet", BDA_BCC_RATE_NOT_SET},
    {"-1", BDA_BCC_RATE_NOT_SET},          // read alone
    {"6/7", BDA_BCC_RATE_NOT_SET},         // read alone
    {"NotSet", BDA_BCC_RATE_NOT_DEFINED},  // written alone
    {"1/2", BDA_BCC_RATE_1_2},
    {"2/3", BDA_BCC_RATE_2_3},
    {"3/4", BDA_BCC_RATE_3_4},
    {"3/5", BDA_BCC_RATE_3_5},
    {"4/5", BDA_BCC_RATE_4_5},
    {"5/6", BDA_BCC_RATE_5_6},
    {"5/11", BDA_BCC_RATE_5_11},
    {"7/8", BDA_BCC_RATE_7_8},
};
constexpr Vocabulary kFecRate = {kFecRateRows};

// The analogue frequency's two words differ, so it does not survive a round trip; 8PSK and above
// have no word. Both are kept for the files' sake.
constexpr Row kModulationRows[] = {
    {"NotSet", BDA_MOD_NOT_SET},
    {"-1", BDA_MOD_NOT_SET},          // read alone
    {"NotSet", BDA_MOD_NOT_DEFINED},  // written alone
    {"16QAM", BDA_MOD_16QAM},
    {"32QAM", BDA_MOD_32QAM},
    {"64QAM", BDA_MOD_64QAM},
    {"80QAM", BDA_MOD_80QAM},
    {"96QAM", BDA_MOD_96QAM},
    {"112QAM", BDA_MOD_112QAM},
    {"128QAM", BDA_MOD_128QAM},
    {"160QAM", BDA_MOD_160QAM},
    {"192QAM", BDA_MOD_192QAM},
    {"224QAM", BDA_MOD_224QAM},
    {"256QAM", BDA_MOD_256QAM},
    {"320QAM", BDA_MOD_320QAM},
    {"384QAM", BDA_MOD_384QAM},
    {"448QAM", BDA_MOD_448QAM},
    {"512QAM", BDA_MOD_512QAM},
    {"640QAM", BDA_MOD_640QAM},
    {"768QAM", BDA_MOD_768QAM},
    {"896QAM", BDA_MOD_896QAM},
    {"1024QAM", BDA_MOD_1024QAM},
    {"QPSK", BDA_MOD_QPSK},
    {"BPSK", BDA_MOD_BPSK},
    {"OQPSK", BDA_MOD_OQPSK},
    {"8VSB", BDA_MOD_8VSB},
    {"16VSB", BDA_MOD_16VSB},
    {"ANALOG_AMPLITUDE", BDA_MOD_ANALOG_AMPLITUDE},
    {"BDA_MOD_ANALOG_FREQUENCY", BDA_MOD_ANALOG_FREQUENCY, Use::Read},
    {"ANALOG_FREQUENCY", BDA_MOD_ANALOG_FREQUENCY, Use::Write},
};
constexpr Vocabulary kModulation = {kModulationRows};

// Exactly two forms of each word are read. Unlike its siblings this one does not take "-1".
constexpr Row kPolarisationRows[] = {
    {"NotSet", BDA_POLARISATION_NOT_SET},
    {"NotSet", BDA_POLARISATION_NOT_DEFINED},  // written alone
    {"LinearH", BDA_POLARISATION_LINEAR_H},
    {"Linearh", BDA_POLARISATION_LINEAR_H},  // read alone
    {"LinearV", BDA_POLARISATION_LINEAR_V},
    {"Linearv", BDA_POLARISATION_LINEAR_V},  // read alone
    {"CircularL", BDA_POLARISATION_CIRCULAR_L},
    {"Circularl", BDA_POLARISATION_CIRCULAR_L},  // read alone
    {"CircularR", BDA_POLARISATION_CIRCULAR_R},
    {"Circularr", BDA_POLARISATION_CIRCULAR_R},  // read alone
};
constexpr Vocabulary kPolarisation = {kPolarisationRows};

constexpr Row kSpectralInversionRows[] = {
    {"NotSet", BDA_SPECTRAL_INVERSION_NOT_SET},
    {"-1", BDA_SPECTRAL_INVERSION_NOT_SET},          // read alone
    {"NotSet", BDA_SPECTRAL_INVERSION_NOT_DEFINED},  // written alone
    {"automatic", BDA_SPECTRAL_INVERSION_AUTOMATIC},
    {"normal", BDA_SPECTRAL_INVERSION_NORMAL},
    {"inverted", BDA_SPECTRAL_INVERSION_INVERTED},
};
constexpr Vocabulary kSpectralInversion = {kSpectralInversionRows};

constexpr std::string_view kUnknown = "Unknown";

constexpr Row kSatRegionRows[] = {
    {"Asia", RegionAsia},
    {"Europe", RegionEurope},
    {"Atlantic", RegionAtlantic},
    {"America", RegionAmerica},
};
constexpr Vocabulary kSatRegion = {kSatRegionRows, kUnknown};

constexpr Row kSatDivisionRows[] = {
    {"1", SatcoDX_1}, {"2", SatcoDX_2}, {"3", SatcoDX_3}, {"4", SatcoDX_4}, {"5", SatcoDX_5},
    {"6", SatcoDX_6}, {"7", SatcoDX_7}, {"8", SatcoDX_8}, {"9", SatcoDX_9},
};
constexpr Vocabulary kSatDivision = {kSatDivisionRows, kUnknown};

std::optional<std::string_view> WordOf(const Vocabulary& vocabulary, std::int32_t value) {
  for (const Row& row : vocabulary.rows) {
    if (row.use != Use::Read && row.value == value) return row.word;
  }
  return std::nullopt;
}

HRESULT Write(const Vocabulary& vocabulary, std::int32_t value, BSTR* text) {
  if (text == nullptr) return E_POINTER;
  SysFreeString(*text);
  *text = nullptr;
  const std::optional<std::string_view> word = WordOf(vocabulary, value);
  const std::optional<std::string_view> written = word ? word : vocabulary.fallback;
  if (written) *text = text::FromNarrow(*written).Release();
  return word ? S_OK : E_FAIL;
}

/// `matches` tells whether the text to read is the given word.
template <typename Enum, typename Matches>
HRESULT Read(const Vocabulary& vocabulary, Enum* value, Matches matches) {
  if (value == nullptr) return E_POINTER;
  for (const Row& row : vocabulary.rows) {
    if (row.use == Use::Write || !matches(row.word)) continue;
    *value = static_cast<Enum>(row.value);
    return S_OK;
  }
  if (vocabulary.fallback) *value = static_cast<Enum>(0);
  return E_FAIL;
}

// Compared as wide text: narrowing first could turn another character into one of a word.
template <typename Enum>
HRESULT ReadWide(const Vocabulary& vocabulary, BSTR text, Enum* value) {
  const Bstr owned = Bstr::Attach(text);
  return Read(vocabulary, value, [&owned](std::string_view word) {
    return text::Equal(owned.Get(), text::FromNarrow(word).Get());
  });
}

template <typename Enum>
HRESULT ReadNarrow(const Vocabulary& vocabulary, std::string_view narrow, Enum* value) {
  return Read(vocabulary, value,
              [narrow](std::string_view word) { return text::EqualsWord(narrow, word); });
}

}  // namespace

HRESULT FecRateToText(BinaryConvolutionCodeRate value, BSTR* text) {
  return Write(kFecRate, value, text);
}
HRESULT TextToFecRate(BSTR text, BinaryConvolutionCodeRate* value) {
  return ReadWide(kFecRate, text, value);
}

HRESULT ModulationToText(ModulationType value, BSTR* text) {
  return Write(kModulation, value, text);
}
HRESULT TextToModulation(BSTR text, ModulationType* value) {
  return ReadWide(kModulation, text, value);
}

HRESULT PolarisationToText(Polarisation value, BSTR* text) {
  return Write(kPolarisation, value, text);
}
HRESULT TextToPolarisation(BSTR text, Polarisation* value) {
  return ReadWide(kPolarisation, text, value);
}

HRESULT SpectralInversionToText(SpectralInversion value, BSTR* text) {
  return Write(kSpectralInversion, value, text);
}
HRESULT TextToSpectralInversion(BSTR text, SpectralInversion* value) {
  return ReadWide(kSpectralInversion, text, value);
}

HRESULT SatRegionToText(ESatRegion value, BSTR* text) { return Write(kSatRegion, value, text); }
HRESULT TextToSatRegion(BSTR text, ESatRegion* value) { return ReadWide(kSatRegion, text, value); }

HRESULT SatDivisionToText(ESatDivision value, BSTR* text) {
  return Write(kSatDivision, value, text);
}
HRESULT TextToSatDivision(BSTR text, ESatDivision* value) {
  return ReadWide(kSatDivision, text, value);
}

namespace tuning_texts {

std::string_view FecRateWord(BinaryConvolutionCodeRate value) {
  return WordOf(kFecRate, value).value_or("");
}
std::string_view ModulationWord(ModulationType value) {
  return WordOf(kModulation, value).value_or("");
}
std::string_view PolarisationWord(Polarisation value) {
  return WordOf(kPolarisation, value).value_or("");
}
std::string_view SpectralInversionWord(SpectralInversion value) {
  return WordOf(kSpectralInversion, value).value_or("");
}

HRESULT FecRateFromNarrow(std::string_view narrow, BinaryConvolutionCodeRate* value) {
  return ReadNarrow(kFecRate, narrow, value);
}
HRESULT ModulationFromNarrow(std::string_view narrow, ModulationType* value) {
  return ReadNarrow(kModulation, narrow, value);
}
HRESULT PolarisationFromNarrow(std::string_view narrow, Polarisation* value) {
  return ReadNarrow(kPolarisation, narrow, value);
}
HRESULT SpectralInversionFromNarrow(std::string_view narrow, SpectralInversion* value) {
  return ReadNarrow(kSpectralInversion, narrow, value);
}
HRESULT SatRegionFromNarrow(std::string_view narrow, ESatRegion* value) {
  return ReadNarrow(kSatRegion, narrow, value);
}
HRESULT SatDivisionFromNarrow(std::string_view narrow, ESatDivision* value) {
  return ReadNarrow(kSatDivision, narrow, value);
}

}  // namespace tuning_texts
