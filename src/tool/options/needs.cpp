#include "tool/options/needs.h"

namespace zortunedex::kit::tool {

Needs NeedsOf(const std::string& command) {
  if (command == "countries" || command == "catalogue build" || command == "completion") return {};
  if (command.starts_with("channels ")) return {Need::Required, Need::Required, Need::Required};
  if (command.starts_with("presets ")) return {Need::Required, Need::Taken, Need::No};
  if (command == "batch") return {Need::Required, Need::Taken, Need::Taken};
  return {Need::Required, Need::No, Need::No};
}

std::string NeedsHelp(const std::string& command) {
  const Needs needs = NeedsOf(command);
  if (needs.directory == Need::No) return {};
  std::string text = "Needs --dir DIR (or TUNEDEX_DIR): the data directory.\n";
  if (needs.signal != Need::No) {
    text +=
        "Needs --country COUNTRY and --signal TYPE (or TUNEDEX_COUNTRY and TUNEDEX_SIGNAL),\n"
        "unless ChanInfo.xml has one channel set alone that fits.\n";
  } else if (needs.country != Need::No) {
    text += "Takes --country COUNTRY (or TUNEDEX_COUNTRY); 81 without it.\n";
  }
  return text + "'tunedex --help' tells what these options take.";
}

}  // namespace zortunedex::kit::tool
