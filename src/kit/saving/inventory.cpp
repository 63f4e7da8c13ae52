#include "kit/saving/inventory.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/model/channel_list.h"
#include "kit/saving/file_check.h"
#include "kit/saving/save_watch.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

void RequireSame(const Inventory& meant, const Inventory& found) {
  for (const auto& [key, channels] : meant) {
    const auto other = found.find(key);
    if (other != found.end() && SameChannels(channels, other->second)) continue;
    throw Failure{E_FAIL,
                  "ChanInfo.xml is not what was meant after saving: " + SignalTypeName(key.second) +
                      " of country " + std::to_string(key.first)};
  }
}

}  // namespace

Inventory TakeInventory(const std::string& directory) {
  // Any country and type will do to see whether the directory is there.
  const Database probe({directory, 1, InputSignalFMRadio});
  RequireReadable(directory, "ChanInfo.xml");
  const file_scan::Contents contents = file_scan::Scan(directory);
  Inventory inventory;
  for (const file_scan::Country& country : contents.countries) {
    for (const InputSignalType signal : StorableSignalTypes()) {
      if (inventory.contains({country.code, signal})) continue;
      std::vector<Channel> channels =
          ChannelList({directory, country.code, signal}, Unreadable::TakeAsEmpty).Take();
      const bool inFile = std::any_of(
          contents.sets.begin(), contents.sets.end(),
          [&](const auto& set) { return set.country == country.code && set.signal == signal; });
      if (inFile || !channels.empty()) inventory[{country.code, signal}] = std::move(channels);
    }
  }
  return inventory;
}

void RewriteFile(const std::string& directory, EStorageType format) {
  const Inventory meant = TakeInventory(directory);
  const file_scan::Contents contents = file_scan::Scan(directory);
  if (!contents.exists) throw Failure{E_FAIL, "there is no ChanInfo.xml"};
  if (format == StoragePreFmtXML) file_check::RequirePreFormattable(directory);
  SaveWatch(directory, "ChanInfo.xml").Run([&] {
    {
      // A country that the file lacks would come and go again while saving.
      const DWORD country = contents.countries.empty() ? 1 : contents.countries.front().code;
      const Database database({directory, country, InputSignalFMRadio});
      Require(database->SetStorageType(format), "the form cannot be chosen");
      Require(database->SaveChannelToFile(), "ChanInfo.xml was not written");
    }
    RequireSame(meant, TakeInventory(directory));
  });
}

}  // namespace zortunedex::kit
