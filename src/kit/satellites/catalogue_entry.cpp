#include "kit/satellites/catalogue_entry.h"

#include <algorithm>

#include "kit/text/ascii.h"
#include "kit/text/satellite_words.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

namespace {

using catalogue_table::Entry;
using station_blocks::Form;

// kHz. What lies outside is in another unit or no frequency of a satellite.
constexpr std::int64_t kLowestFrequency = 1'000'000;
constexpr std::int64_t kHighestFrequency = 50'000'000;
constexpr std::int64_t kFirstOfKuBand = 10'000'000;
constexpr std::int64_t kFirstOfKaBand = 17'300'000;
// Symbols a second.
constexpr std::int64_t kLowestSymbolRate = 100'000;
constexpr std::int64_t kHighestSymbolRate = 1'000'000'000;

struct TableWord {
  const char* table;
  const char* file;  ///< null: known, but the file has no word for it
};

constexpr TableWord kPolarisations[] = {
    {"HORIZONTAL", "LinearH"}, {"H", "LinearH"},   {"VERTICAL", "LinearV"}, {"V", "LinearV"},
    {"LEFT", "CircularL"},     {"L", "CircularL"}, {"RIGHT", "CircularR"},  {"R", "CircularR"},
};

constexpr TableWord kFecRates[] = {
    {"1/2", "1/2"},   {"2/3", "2/3"},    {"3/4", "3/4"},    {"3/5", "3/5"},
    {"4/5", "4/5"},   {"5/6", "5/6"},    {"5/11", "5/11"},  {"7/8", "7/8"},
    {"1/4", nullptr}, {"1/3", nullptr},  {"2/5", nullptr},  {"6/7", nullptr},
    {"8/9", nullptr}, {"9/10", nullptr}, {"NONE", nullptr}, {"AUTO", nullptr},
};

constexpr TableWord kModulations[] = {
    {"QPSK", "QPSK"},      {"QAM/16", "16QAM"},   {"QAM/32", "32QAM"}, {"QAM/64", "64QAM"},
    {"QAM/128", "128QAM"}, {"QAM/256", "256QAM"}, {"VSB/8", "8VSB"},   {"VSB/16", "16VSB"},
    {"DQPSK", nullptr},    {"PSK/8", nullptr},    {"8PSK", nullptr},   {"APSK/16", nullptr},
    {"16APSK", nullptr},   {"APSK/32", nullptr},  {"32APSK", nullptr}, {"QAM/AUTO", nullptr},
    {"AUTO", nullptr},
};

constexpr TableWord kInversions[] = {
    {"AUTO", "automatic"},
    {"OFF", "normal"},
    {"ON", "inverted"},
};

constexpr const char* kSystems[] = {"DVBS", "DVBS2", "DVBS2X", "DSS", "ISDBS", "TURBO"};

bool IsOneOf(std::string_view text, std::span<const char* const> words) {
  return std::any_of(words.begin(), words.end(),
                     [text](const char* word) { return EqualIgnoringCase(word, text); });
}

class EntryReader {
 public:
  explicit EntryReader(const Entry& entry) : m_entry(entry) {}

  ReadEntry Read() {
    RequireSingle();
    RequireSatellite();
    Transponder& transponder = m_read.transponder;
    ReadFrequency();
    ReadSymbolRate();
    transponder.polarisation = ReadPolarisation();
    transponder.fec_rate =
        static_cast<BinaryConvolutionCodeRate>(ReadWord("INNER_FEC", kFecRates, Form::FecRate));
    transponder.modulation = ReadModulation();
    transponder.inversion =
        static_cast<SpectralInversion>(ReadWord("INVERSION", kInversions, Form::SpectralInversion));
    NoteOtherKeys();
    transponder.name = Name();
    return std::move(m_read);
  }

 private:
  void RequireSingle() const {
    for (auto i = m_entry.values.begin(); i != m_entry.values.end(); ++i) {
      const bool twice = std::any_of(m_entry.values.begin(), i,
                                     [i](const auto& other) { return other.first == i->first; });
      if (twice) throw UnusableEntry{i->first + " stands twice"};
    }
  }

  void RequireSatellite() const {
    const std::string* system = m_entry.Find("DELIVERY_SYSTEM");
    if (system != nullptr && !IsOneOf(*system, kSystems)) {
      throw UnusableEntry{"DELIVERY_SYSTEM " + *system + " is none of satellites"};
    }
  }

  const std::string& Need(const char* key) const {
    const std::string* value = m_entry.Find(key);
    if (value == nullptr) throw UnusableEntry{std::string("it has no ") + key};
    return *value;
  }

  std::int64_t ReadNumber(const char* key, std::int64_t lowest, std::int64_t highest) const {
    const std::string& text = Need(key);
    const std::optional<std::int64_t> value = ParseNumber(text, lowest, highest);
    if (value && text.find_first_not_of("0123456789") == std::string::npos) return *value;
    throw UnusableEntry{std::string(key) + " " + text + " is no number from " +
                        std::to_string(lowest) + " to " + std::to_string(highest)};
  }

  void ReadFrequency() {
    const std::int64_t frequency = ReadNumber("FREQUENCY", kLowestFrequency, kHighestFrequency);
    m_read.transponder.frequency = static_cast<DWORD>(frequency);
    m_read.band = frequency < kFirstOfKuBand ? SatFreqBand_CBand : SatFreqBand_KuBand;
    if (frequency >= kFirstOfKaBand) {
      m_read.notHeld.emplace_back("the Ka band (such transponders stand under Ku-Band)");
    }
  }

  void ReadSymbolRate() {
    const std::int64_t rate = ReadNumber("SYMBOL_RATE", kLowestSymbolRate, kHighestSymbolRate);
    m_read.transponder.symbol_rate = static_cast<std::int32_t>((rate + 500) / 1000);
    if (rate % 1000 != 0) m_read.notHeld.emplace_back("parts of a thousand symbols a second");
  }

  Polarisation ReadPolarisation() {
    Need("POLARIZATION");
    return static_cast<Polarisation>(ReadWord("POLARIZATION", kPolarisations, Form::Polarisation));
  }

  ModulationType ReadModulation() {
    const std::string* system = m_entry.Find("DELIVERY_SYSTEM");
    // The first system has this modulation alone, so tables need not name it.
    if (m_entry.Find("MODULATION") == nullptr && system != nullptr &&
        EqualIgnoringCase(*system, "DVBS")) {
      return BDA_MOD_QPSK;
    }
    return static_cast<ModulationType>(ReadWord("MODULATION", kModulations, Form::Modulation));
  }

  /// Value of a word; NotSet where there is none and where the file has none for it.
  std::int32_t ReadWord(const char* key, std::span<const TableWord> words, Form form) {
    constexpr std::int32_t kNotSet = -1;
    const std::string* text = m_entry.Find(key);
    if (text == nullptr) return kNotSet;
    for (const TableWord& word : words) {
      if (!EqualIgnoringCase(word.table, *text)) continue;
      if (word.file != nullptr) return *tuning_words::Value(form, word.file);
      m_read.notHeld.push_back(std::string(key) + " " + word.table + " (written as NotSet)");
      return kNotSet;
    }
    throw UnusableEntry{std::string(key) + " " + *text + " is not known"};
  }

  void NoteOtherKeys() {
    constexpr const char* kHeld[] = {"FREQUENCY", "SYMBOL_RATE", "POLARIZATION",
                                     "INNER_FEC", "MODULATION",  "INVERSION"};
    for (const auto& [key, value] : m_entry.values) {
      if (!IsOneOf(key, kHeld)) m_read.notHeld.push_back(key);
    }
  }

  /// "11362 H", with decimals where the frequency has them.
  std::string Name() const {
    const DWORD frequency = m_read.transponder.frequency;
    std::string name = std::to_string(frequency / 1000);
    if (frequency % 1000 != 0) {
      std::string decimals = std::to_string(1000 + frequency % 1000).substr(1);
      decimals.erase(decimals.find_last_not_of('0') + 1);
      name += "." + decimals;
    }
    constexpr char kLetters[] = " HVLR";
    name += std::string(" ") + kLetters[m_read.transponder.polarisation];
    return name;
  }

  const Entry& m_entry;
  ReadEntry m_read;
};

}  // namespace

ReadEntry ReadTableEntry(const Entry& entry) { return EntryReader(entry).Read(); }

}  // namespace zortunedex::kit
