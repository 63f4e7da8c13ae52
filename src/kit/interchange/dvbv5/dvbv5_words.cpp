#include "kit/interchange/dvbv5/dvbv5_words.h"

#include <algorithm>
#include <iterator>

#include "kit/text/ascii.h"

namespace zortunedex::kit::interchange::dvbv5 {
namespace {

constexpr InputSignalType kSignals[] = {
    InputSignalATSCAntenna,           InputSignalATSCCable,
    InputSignalDVBSatellite,          InputSignalDVBTerrestrial,
    InputSignalISDBTerrestrialOneSeg,
};

// Of two words for one value the first is written.
constexpr Word kPolarisations[] = {
    {"HORIZONTAL", BDA_POLARISATION_LINEAR_H}, {"H", BDA_POLARISATION_LINEAR_H},
    {"VERTICAL", BDA_POLARISATION_LINEAR_V},   {"V", BDA_POLARISATION_LINEAR_V},
    {"LEFT", BDA_POLARISATION_CIRCULAR_L},     {"L", BDA_POLARISATION_CIRCULAR_L},
    {"RIGHT", BDA_POLARISATION_CIRCULAR_R},    {"R", BDA_POLARISATION_CIRCULAR_R},
    {"OFF", BDA_POLARISATION_NOT_SET},
};

constexpr Word kFecRates[] = {
    {"AUTO", BDA_BCC_RATE_NOT_SET}, {"NONE", BDA_BCC_RATE_NOT_SET}, {"1/2", BDA_BCC_RATE_1_2},
    {"2/3", BDA_BCC_RATE_2_3},      {"3/4", BDA_BCC_RATE_3_4},      {"3/5", BDA_BCC_RATE_3_5},
    {"4/5", BDA_BCC_RATE_4_5},      {"5/6", BDA_BCC_RATE_5_6},      {"7/8", BDA_BCC_RATE_7_8},
    {"2/5", BDA_BCC_RATE_2_5},      {"6/7", BDA_BCC_RATE_6_7},      {"8/9", BDA_BCC_RATE_8_9},
    {"9/10", BDA_BCC_RATE_9_10},    {"1/4", BDA_BCC_RATE_1_4},      {"1/3", BDA_BCC_RATE_1_3},
};

constexpr Word kModulations[] = {
    {"QAM/AUTO", BDA_MOD_NOT_SET}, {"AUTO", BDA_MOD_NOT_SET},   {"QPSK", BDA_MOD_QPSK},
    {"PSK/8", BDA_MOD_8PSK},       {"8PSK", BDA_MOD_8PSK},      {"APSK/16", BDA_MOD_16APSK},
    {"APSK/32", BDA_MOD_32APSK},   {"QAM/16", BDA_MOD_16QAM},   {"QAM/32", BDA_MOD_32QAM},
    {"QAM/64", BDA_MOD_64QAM},     {"QAM/128", BDA_MOD_128QAM}, {"QAM/256", BDA_MOD_256QAM},
    {"VSB/8", BDA_MOD_8VSB},       {"VSB/16", BDA_MOD_16VSB},
};

constexpr Word kInversions[] = {
    {"AUTO", BDA_SPECTRAL_INVERSION_AUTOMATIC},
    {"OFF", BDA_SPECTRAL_INVERSION_NORMAL},
    {"ON", BDA_SPECTRAL_INVERSION_INVERTED},
};

struct SystemWord {
  const char* text;
  DeliverySystem means;
};
constexpr SystemWord kSystems[] = {
    {"DVBS", {InputSignalDVBSatellite, System::First}},
    {"DVBS2", {InputSignalDVBSatellite, System::Second}},
    {"DVBT", {InputSignalDVBTerrestrial, System::First}},
    {"DVBT2", {InputSignalDVBTerrestrial, System::Second}},
    {"ATSC", {InputSignalATSCAntenna, System::First}},
    {"DVBC/ANNEX_B", {InputSignalATSCCable, System::First}},
    {"ISDBT", {InputSignalISDBTerrestrialOneSeg, System::First}},
};

constexpr Lnb kLnbs[] = {
    {"EXTENDED", 9'750'000, 10'600'000, 11'700'000},
    {"UNIVERSAL", 9'750'000, 10'600'000, 11'700'000},
    {"C-BAND", 5'150'000, 5'150'000, 0},
    {"DBS", 11'250'000, 11'250'000, 0},
    {"STANDARD", 10'000'000, 10'000'000, 0},
    {"L10700", 10'700'000, 10'700'000, 0},
    {"L10750", 10'750'000, 10'750'000, 0},
    {"L11300", 11'300'000, 11'300'000, 0},
    {"ENHANCED", 9'750'000, 9'750'000, 0},
    {"110BS", 10'678'000, 10'678'000, 0},
};

constexpr const char* kNoPlace[] = {
    "CODE_RATE_HP",      "CODE_RATE_LP", "GUARD_INTERVAL", "HIERARCHY",
    "TRANSMISSION_MODE", "FREQ_BPF",     "DISEQC_WAIT",    "INTERLEAVING",
    "LOCATION",          "BANDWIDTH_HZ", "POLARIZATION",   "SYMBOL_RATE",
    "INNER_FEC",         "MODULATION",   "SAT_NUMBER",     "LNB",
};
constexpr const char* kSecondGeneration[] = {
    "STREAM_ID", "ROLLOFF", "PILOT", "PLS_CODE", "PLS_MODE", "DVBT2_PLP_ID_LEGACY",
};

}  // namespace

std::span<const InputSignalType> Signals() { return kSignals; }
std::span<const Word> Polarisations() { return kPolarisations; }
std::span<const Word> FecRates() { return kFecRates; }
std::span<const Word> Modulations() { return kModulations; }
std::span<const Word> Inversions() { return kInversions; }
std::span<const Lnb> Lnbs() { return kLnbs; }

const char* TextOf(std::span<const Word> words, std::int32_t value) {
  const auto found = std::ranges::find(words, value, &Word::value);
  return found == words.end() ? nullptr : found->text;
}

std::optional<std::int32_t> ValueOf(std::span<const Word> words, std::string_view text) {
  for (const Word& word : words) {
    if (EqualIgnoringCase(word.text, text)) return word.value;
  }
  return std::nullopt;
}

const char* SystemText(InputSignalType signal, System system) {
  if (system == System::Unknown) system = System::First;
  for (const SystemWord& word : kSystems) {
    if (word.means.signal == signal && word.means.system == system) return word.text;
  }
  return "UNDEFINED";
}

DeliverySystem ParseSystem(std::string_view text, std::string_view modulation, bool isPartial) {
  for (const SystemWord& word : kSystems) {
    if (!EqualIgnoringCase(word.text, text)) continue;
    DeliverySystem system = word.means;
    if (system.signal == InputSignalISDBTerrestrialOneSeg && !isPartial) return {};
    if (system.signal == InputSignalATSCAntenna && modulation.substr(0, 3) == "QAM") {
      system.signal = InputSignalATSCCable;
    }
    return system;
  }
  return {};
}

bool Lnb::HasFrequencies(std::uint32_t otherLow, std::uint32_t otherHigh,
                         std::uint32_t otherSwitch) const {
  return low == otherLow && high == otherHigh && switchAt == otherSwitch;
}

KeyUse UseOf(std::string_view key) {
  if (std::ranges::find(kNoPlace, key) != std::end(kNoPlace)) return KeyUse::NoPlace;
  if (std::ranges::find(kSecondGeneration, key) != std::end(kSecondGeneration)) {
    return KeyUse::SecondGeneration;
  }
  return key.starts_with("ISDBT_") ? KeyUse::NoPlace : KeyUse::Unknown;
}

}  // namespace zortunedex::kit::interchange::dvbv5
