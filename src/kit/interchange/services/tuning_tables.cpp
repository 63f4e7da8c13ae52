#include "kit/interchange/services/tuning_tables.h"

#include "kit/failure.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "kit/satellites/catalogue_entry.h"
#include "kit/satellites/catalogue_table.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

using catalogue_table::Entry;

namespace interchange {
namespace {

struct TableValue {
  const char* word;
  std::int32_t value;
};

// Words of the tables that the catalogue has no words for.
constexpr TableValue kTableRates[] = {
    {"1/4", BDA_BCC_RATE_1_4}, {"1/3", BDA_BCC_RATE_1_3}, {"2/5", BDA_BCC_RATE_2_5},
    {"6/7", BDA_BCC_RATE_6_7}, {"8/9", BDA_BCC_RATE_8_9}, {"9/10", BDA_BCC_RATE_9_10},
};
constexpr TableValue kTableModulations[] = {
    {"PSK/8", BDA_MOD_8PSK},    {"8PSK", BDA_MOD_8PSK},      {"APSK/16", BDA_MOD_16APSK},
    {"16APSK", BDA_MOD_16APSK}, {"APSK/32", BDA_MOD_32APSK}, {"32APSK", BDA_MOD_32APSK},
};

template <typename Word, std::size_t N>
Word ValueOf(const Entry& entry, const char* key, const TableValue (&words)[N], Word known) {
  const std::string* text = entry.Find(key);
  if (text == nullptr) return known;
  for (const TableValue& word : words) {
    if (EqualIgnoringCase(word.word, *text)) return static_cast<Word>(word.value);
  }
  return known;
}

System SystemOf(const Entry& entry) {
  const std::string* system = entry.Find("DELIVERY_SYSTEM");
  if (system == nullptr) return System::Unknown;
  if (EqualIgnoringCase(*system, "DVBS")) return System::First;
  return EqualIgnoringCase(system->substr(0, 5), "DVBS2") ? System::Second : System::Unknown;
}

/// 20, 25 or 35 percent; 0 for everything else.
std::uint32_t RollOffOf(const Entry& entry) {
  const std::string* text = entry.Find("ROLLOFF");
  for (const std::uint32_t known : {20U, 25U, 35U}) {
    if (text != nullptr && *text == std::to_string(known)) return known;
  }
  return 0;
}

std::optional<bool> PilotOf(const Entry& entry) {
  const std::string* text = entry.Find("PILOT");
  if (text == nullptr) return std::nullopt;
  if (EqualIgnoringCase(*text, "ON")) return true;
  return EqualIgnoringCase(*text, "OFF") ? std::optional(false) : std::nullopt;
}

Tuning TuningOf(const Entry& entry, std::int32_t position) {
  const Transponder known = ReadTableEntry(entry).transponder;
  Tuning tuning;
  tuning.frequency = known.frequency;
  tuning.polarisation = known.polarisation;
  tuning.position = position;
  tuning.symbolRate = static_cast<std::uint64_t>(known.symbol_rate);
  tuning.fec = ValueOf(entry, "INNER_FEC", kTableRates, known.fec_rate);
  tuning.modulation = ValueOf(entry, "MODULATION", kTableModulations, known.modulation);
  tuning.inversion = known.inversion;
  tuning.system = SystemOf(entry);
  tuning.rollOff = RollOffOf(entry);
  tuning.pilot = PilotOf(entry);
  return tuning;
}

void AddTable(const std::string& name, std::string_view bytes, std::vector<Tuning>& tunings) {
  const catalogue_table::Table table = catalogue_table::Read(bytes);
  const catalogue_table::FileName file = catalogue_table::ParseFileName(name);
  const auto position = file.position ? file.position : table.position;
  if (!position) return;
  for (const Entry& entry : table.entries) {
    try {
      tunings.push_back(TuningOf(entry, position->longitude));
    } catch (const UnusableEntry&) {
      continue;
    }
  }
}

}  // namespace

std::vector<Tuning> ReadTuningTables(const std::string& folder) {
  std::vector<Tuning> tunings;
  for (const std::string& name : NamesIn(folder)) {
    const auto bytes = whole_file::Read(whole_file::PathOf(folder) / whole_file::PathOf(name));
    if (!bytes) continue;
    try {
      AddTable(name, *bytes, tunings);
    } catch (const catalogue_table::Malformed&) {
      continue;
    }
  }
  if (tunings.empty()) throw Failure{E_FAIL, folder + " has no transponder table"};
  return tunings;
}

}  // namespace interchange

}  // namespace zortunedex::kit
