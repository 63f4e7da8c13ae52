#include "kit/presets/customer_lists.h"

#include <algorithm>
#include <map>

#include "kit/failure.h"
#include "kit/model/channel_list.h"
#include "kit/model/narrow_text.h"
#include "kit/presets/preset_note.h"
#include "kit/saving/save_watch.h"
#include "kit/saving/stored_form.h"

namespace zortunedex::kit {

namespace {

const char* const kPresetFile = "PreSetChannelInfo.xml";

const PresetArea& CustomerArea(const Presets& presets) {
  const LONG last = presets.AreaCount() - 1;
  for (const PresetArea& area : presets.Areas()) {
    if (area.number == last) return area;
  }
  throw Failure{E_FAIL, "there is no area " + std::to_string(last) + " for the customer's lists"};
}

/// The name as the library takes it. Failure for one that would not come back.
std::string NarrowName(const Location& location, const WideText& name) {
  RequireWritable(name, false, "the name");
  return NarrowText(Database(location)).Require(name, NarrowText::kAttributeLimit, "the name");
}

struct Merged {
  std::vector<Channel> channels;
  std::size_t replaced = 0;
  std::size_t kept = 0;
};

/// What storing makes of a list: channels are replaced by their index, others stay.
Merged Merge(const std::vector<Channel>& old, const std::vector<Channel>& added) {
  Merged merged;
  std::map<UINT, Channel> byIndex;
  for (const Channel& channel : added) {
    if (!byIndex.emplace(channel.index, channel).second) {
      throw Failure{E_FAIL, "two channels have index " + std::to_string(channel.index) +
                                " and would become one; sort the list first"};
    }
  }
  std::vector<Channel> kept;
  for (const Channel& channel : old) {
    (byIndex.contains(channel.index) ? ++merged.replaced : ++merged.kept);
    if (!byIndex.contains(channel.index)) kept.push_back(channel);
  }
  merged.channels = kept;
  for (const auto& [index, channel] : byIndex) merged.channels.push_back(channel);
  std::stable_sort(merged.channels.begin(), merged.channels.end(),
                   [](const Channel& a, const Channel& b) { return a.index < b.index; });
  return merged;
}

/// The list with the number, made where it is the next free one.
PresetList& FindOrAdd(PresetArea& area, LONG index) {
  for (PresetList& list : area.lists) {
    if (list.number == index) return list;
  }
  if (index != area.count) {
    throw Failure{E_INVALIDARG, "there is no customer list " + std::to_string(index) +
                                    "; the next free number is " + std::to_string(area.count)};
  }
  PresetList list;
  list.number = area.count++;
  area.lists.push_back(std::move(list));
  return area.lists.back();
}

/// What deleting leaves: the rest is numbered afresh.
void Remove(PresetArea& area, LONG index) {
  std::erase_if(area.lists, [index](const PresetList& list) { return list.number == index; });
  for (std::size_t i = 0; i < area.lists.size(); ++i) area.lists[i].number = static_cast<LONG>(i);
  --area.count;
}

/// Lists of `meant` that are still there, in the order that was found, with what came into line.
void TakeNumbers(const PresetArea& found, PresetArea& meant) {
  for (const PresetList& list : meant.lists) {
    const bool there = std::any_of(found.lists.begin(), found.lists.end(), [&](const auto& other) {
      return other.name == list.name && SameChannels(other.channels, list.channels);
    });
    if (!there) throw Failure{E_FAIL, "a customer list is not there any more after saving"};
  }
  meant.lists = found.lists;
}

}  // namespace

StoredList StoreCustomerList(const Location& location, LONG number, const WideText& name) {
  Presets meant(location);
  CustomerArea(meant);
  PresetArea& area = meant.ChangeCustomerArea();
  PresetList& list = FindOrAdd(area, number);
  const std::vector<Channel> channels = ChannelList(location).Channels();
  if (channels.empty()) {
    throw Failure{E_FAIL, "country " + std::to_string(location.country) +
                              " has no one-segment channels to store"};
  }
  const Merged merged = Merge(list.channels, channels);
  const std::string narrow = NarrowName(location, name);
  list.name = name;
  list.channels = merged.channels;
  SaveWatch(location.directory, kPresetFile).Run([&] {
    {
      const Database database(location);
      // A reference count comes back, and tells nothing.
      Require(database->SaveCustomerChannelList(list.number, narrow.c_str()),
              "the list cannot be stored");
    }
    RequireSamePresets(meant, Presets(location));
  });
  return {list, channels.size(), merged.replaced, merged.kept};
}

PresetList DropCustomerList(const Location& location, LONG number, const TakeNote& note) {
  const Presets before(location);
  const PresetArea& area = CustomerArea(before);
  const PresetList& list = before.List(area.number, number);
  Presets meant = before;
  Remove(meant.ChangeCustomerArea(), number);
  const bool inOrder = preset_note::ListsAreInOrder(location, before);
  const bool noted = preset_note::IsThere(location) && before.SelectedArea() == area.number;
  const bool moves = noted && inOrder && before.SelectedSubArea() > number;
  SaveWatch(location.directory, kPresetFile).Run([&] {
    {
      const Database database(location);
      if (moves) preset_note::Put(database, location, area.number, before.SelectedSubArea() - 1);
      if (database->DeleteCustomerChannelList(number) != S_OK) {
        throw Failure{E_FAIL, std::string(kPresetFile) + " was not written"};
      }
    }
    const Presets after(location);
    // Numbers out of line become the places in the file, which they do not tell.
    if (!inOrder) TakeNumbers(CustomerArea(after), meant.ChangeCustomerArea());
    RequireSamePresets(meant, after);
  });
  if (noted && before.SelectedSubArea() == number) {
    Tell(note, "this list was the one that is noted as selected; select another one");
  }
  return list;
}

}  // namespace zortunedex::kit
