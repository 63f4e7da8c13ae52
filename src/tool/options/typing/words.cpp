#include "tool/options/typing/words.h"

#include <map>

#include "kit/interchange/list/formats.h"
#include "kit/text/nearest.h"
#include "kit/text/signal_types.h"
#include "tool/options/typing/country_names.h"

namespace zortunedex::kit::tool {

namespace {

using Words = std::vector<std::string>;

Words SignalNames() {
  Words names;
  for (const InputSignalType signal : StorableSignalTypes())
    names.push_back(SignalTypeName(signal));
  return names;
}

Words FormatNames() {
  Words names;
  for (const interchange::Format& format : interchange::Formats()) names.emplace_back(format.name);
  return names;
}

}  // namespace

Words WordsOf(const std::string& option) {
  static const std::map<std::string, Words> kWords = {
      {"--format", {"plain", "preformatted"}},
      {"FORM", {"plain", "preformatted"}},
      {"--names", {"shown", "broadcast"}},
      {"--target", {"satip"}},
      {"--file-unit", {"hz", "khz", "mhz"}},
      {"--new", {"end", "transponder", "none"}},
      {"--scope", {"transponders", "full", "none"}},
      {"--gone", {"keep", "mark", "remove", "remove=3"}},
      {"--numbers", {"keep", "scan"}},
      {"--tuning", {"scan", "keep"}},
      {"--deleted", {"out", "add"}},
      {"--service", {"tv", "radio", "data", "other", "all"}},
      {"KEY", {"number", "service"}},
      {"--level", {"error", "warning", "note"}},
      {"--band", {"c", "ku"}},
      {"--region", {"asia", "europe", "atlantic", "america", "unknown"}},
      {"--division", {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}},
      {"--codepage",
       {"932", "936", "949", "950", "1250", "1251", "1252", "1253", "1254", "1255", "1256", "1257",
        "1258", "65001"}},
      {"DISH", {"1", "2", "3", "4"}},
      {"SHELL", {"bash", "zsh"}},
  };
  if (option == "--signal") return SignalNames();
  if (option == "--country") return CountryIsoCodes();
  if (option == kListFormat) return FormatNames();
  const auto found = kWords.find(option);
  return found == kWords.end() ? Words() : found->second;
}

std::string UnknownWord(const std::string& word, const Words& known) {
  std::string text = "'" + word + "' is not known";
  const std::optional<std::string> nearest = Nearest(word, known);
  if (nearest) text += "; the nearest is " + *nearest;
  return known.empty() ? text : text + "; known are " + Listed(known);
}

}  // namespace zortunedex::kit::tool
