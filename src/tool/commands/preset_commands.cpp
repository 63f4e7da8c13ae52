// Reading presets and selecting one. Every command works on databases of its own: a list that was
// filled from a sub-area, or read from one, is never changed and never saved a second time.
#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/model/channel_list.h"
#include "kit/presets/preset_note.h"
#include "kit/presets/presets.h"
#include "kit/presets/selection.h"
#include "platform/host.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/channel_view.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using nlohmann::ordered_json;

namespace commands {
namespace {

/// Says what the numbers 0 to count less one do not reach.
void ReportOthers(LONG count, std::size_t found, const std::string& what) {
  const auto others = static_cast<std::size_t>(count) - found;
  if (others == 0) return;
  std::cerr << "tunedex: " << others << " of " << count << ' ' << what
            << " have a number out of line and are not shown\n";
}

void RequireDistinctIndexes(const std::vector<Channel>& channels) {
  const auto twice =
      std::adjacent_find(channels.begin(), channels.end(),
                         [](const Channel& a, const Channel& b) { return a.index == b.index; });
  if (twice == channels.end()) return;
  throw Failure{E_FAIL, "two channels of the sub-area have index " + std::to_string(twice->index) +
                            " and would become one"};
}

/// Raises a Failure unless the channels may be replaced.
void Confirm(const Options& options, std::size_t before, const PresetList& list) {
  if (before == 0 || options.yes) return;
  const std::string what = CountText(before) + " of country " + std::to_string(*options.country);
  if (!host::InputIsTerminal()) {
    throw Failure{E_FAIL, what + " would be replaced; --yes allows it"};
  }
  std::cerr << "Replace " << what << " by the " << CountText(list.channels.size()) << " of "
            << Printable(list.name) << "? [y/N] " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  if (answer != "y" && answer != "Y" && answer != "yes") {
    throw Failure{E_FAIL, "nothing was replaced"};
  }
}

/// False, and said, where the selection cannot be noted. The channels are selected all the same.
bool NoteSelection(const Location& location, const Presets& presets, LONG area, LONG subArea) {
  try {
    preset_note::Write(location, presets, area, subArea);
    return true;
  } catch (const Failure& failure) {
    PrintNote(std::string("the selection is not noted in PreSetChannelInfo.xml: ") +
              failure.what());
    return false;
  }
}

/// A sub-area with its area; nulls when there is none.
struct Place {
  const PresetArea* area = nullptr;
  const PresetList* list = nullptr;
};

/// The sub-area that the file names as selected.
Place NotedPlace(const Location& location, const Presets& presets) {
  if (!preset_note::IsThere(location)) return {};
  const PresetList* list = presets.FindList(presets.SelectedArea(), presets.SelectedSubArea());
  return list == nullptr ? Place() : Place{&presets.Area(presets.SelectedArea()), list};
}

/// The first sub-area with exactly these channels.
Place PlaceWith(const Presets& presets, const std::vector<Channel>& channels) {
  if (channels.empty()) return {};
  for (const PresetArea& area : presets.Areas()) {
    for (const PresetList& list : area.lists) {
      if (SameChannels(list.channels, channels)) return {&area, &list};
    }
  }
  return {};
}

ordered_json ToJson(const PresetArea& area, const PresetList& list) {
  return {{"area", area.number},
          {"areaName", utf::FromWide(area.name)},
          {"subArea", list.number},
          {"subAreaName", utf::FromWide(list.name)}};
}

}  // namespace

void ListAreas(const Options& options) {
  const Presets presets(LocationOf(options));
  ordered_json array = ordered_json::array();
  std::vector<std::vector<std::string>> rows = {{"AREA", "SUB-AREAS", "KIND", "NAME"}};
  for (const PresetArea& area : presets.Areas()) {
    const bool customer = presets.IsCustomer(area);
    array.push_back({{"area", area.number},
                     {"name", utf::FromWide(area.name)},
                     {"subAreas", area.count},
                     {"customer", customer}});
    rows.push_back({std::to_string(area.number), std::to_string(area.count),
                    customer ? "customer" : "preset", Printable(area.name)});
  }
  options.json ? PrintJson(array) : PrintTable(rows);
  ReportOthers(presets.AreaCount(), presets.Areas().size(), "areas");
}

void ListSubAreas(const Options& options) {
  const Presets presets(LocationOf(options));
  const PresetArea& area = presets.Area(options.places[0]);
  ordered_json array = ordered_json::array();
  std::vector<std::vector<std::string>> rows = {{"AREA", "SUB-AREA", "CHANNELS", "NAME"}};
  for (const PresetList& list : area.lists) {
    array.push_back({{"area", area.number},
                     {"subArea", list.number},
                     {"name", utf::FromWide(list.name)},
                     {"channels", list.channels.size()}});
    rows.push_back({std::to_string(area.number), std::to_string(list.number),
                    std::to_string(list.channels.size()), Printable(list.name)});
  }
  options.json ? PrintJson(array) : PrintTable(rows);
  ReportOthers(area.count, area.lists.size(), "sub-areas");
}

void ListPresetChannels(const Options& options) {
  const Presets presets(LocationOf(options));
  const std::vector<Channel>& channels =
      presets.List(options.places[0], options.places[1]).channels;
  if (!options.json) return channel_view::PrintTable(channels);
  const Database database(LocationOf(options));
  channel_view::PrintJson(channels, *options.signal, NarrowText(database));
}

void SelectPreset(const Options& options) {
  const Location location = LocationOf(options);
  const Presets presets(location);
  const PresetArea& area = presets.Area(options.places[0]);
  const PresetList& list = presets.List(area.number, options.places[1]);
  RequireDistinctIndexes(list.channels);
  const std::size_t before = ChannelList(location, options.unreadable).Channels().size();
  Confirm(options, before, list);
  SelectList(location, area.number, list, {options.format, PrintNote, options.unreadable});
  const bool noted = NoteSelection(location, presets, area.number, list.number);
  if (options.json) {
    ordered_json object = ToJson(area, list);
    object["replaced"] = before;
    object["channels"] = list.channels.size();
    object["noted"] = noted;
    return PrintJson(object);
  }
  std::cout << "replaced " << CountText(before) << " by the " << list.channels.size() << " of "
            << Printable(list.name) << '\n';
}

void ShowSelectedPreset(const Options& options) {
  const Location location = LocationOf(options);
  const Presets presets(location);
  const std::vector<Channel> channels = ChannelList(location).Channels();
  const Place noted = NotedPlace(location, presets);
  const bool same = noted.list != nullptr && SameChannels(noted.list->channels, channels);
  const Place like = same ? noted : PlaceWith(presets, channels);
  if (noted.list == nullptr && like.list == nullptr) {
    throw Failure{E_FAIL, "no selection is noted, and no sub-area has the channels of the list"};
  }
  const auto& [area, list] = noted.list == nullptr ? like : noted;
  if (options.json) {
    ordered_json object = ToJson(*area, *list);
    object["noted"] = noted.list != nullptr;
    object["channels"] = channels.size();
    object["presetChannels"] = list->channels.size();
    object["same"] = list == like.list;
    object["like"] = like.list == nullptr ? ordered_json() : ToJson(*like.area, *like.list);
    return PrintJson(object);
  }
  std::vector<std::vector<std::string>> rows = {
      {"area", std::to_string(area->number) + " " + Printable(area->name)},
      {"sub-area", std::to_string(list->number) + " " + Printable(list->name)},
      {"channels", std::to_string(channels.size())},
      {"state", noted.list == nullptr ? "not noted; told by the channels"
                : same                ? "as selected"
                                      : "the channels are not those of the sub-area"}};
  if (noted.list != nullptr && !same && like.list != nullptr) {
    rows.push_back({"like", "sub-area " + std::to_string(like.list->number) + " of area " +
                                std::to_string(like.area->number) + " " +
                                Printable(like.list->name)});
  }
  PrintTable(rows);
}

}  // namespace commands

}  // namespace zortunedex::kit::tool
