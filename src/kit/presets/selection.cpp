#include "kit/presets/selection.h"

#include "kit/failure.h"
#include "kit/files/unreadable_watch.h"
#include "kit/model/channel_list.h"
#include "kit/saving/file_check.h"
#include "kit/saving/save_watch.h"

namespace zortunedex::kit {

namespace {

void Select(const Location& location, LONG area, const PresetList& list,
            const SaveOptions& options) {
  const Database database(location);
  if (options.format) {
    Require(database->SetStorageType(*options.format), "the form cannot be chosen");
  }
  const UnreadableWatch watch(location.directory);
  Require(database->SetArea(area, list.number), "the sub-area cannot be selected");
  watch.Report(options.note);
}

void RequireHeld(const Location& location, const PresetList& list) {
  const std::vector<Channel> found = ChannelList(location, Unreadable::TakeAsEmpty).Channels();
  if (SameChannels(list.channels, found)) return;
  throw Failure{
      E_FAIL, "ChanInfo.xml is not what was meant after saving: " + CountText(found.size()) +
                  " that are not the " + std::to_string(list.channels.size()) + " of the sub-area"};
}

}  // namespace

void SelectList(const Location& location, LONG area, const PresetList& list,
                const SaveOptions& options) {
  if (options.unreadable == Unreadable::Refuse) RequireReadable(location.directory, "ChanInfo.xml");
  if (options.format == StoragePreFmtXML) file_check::RequirePreFormattable(location);
  SaveWatch(location.directory, "ChanInfo.xml").Run([&] {
    Select(location, area, list, options);
    RequireHeld(location, list);
  });
}

}  // namespace zortunedex::kit
