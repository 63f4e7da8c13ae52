#include "kit/history/comparison/channel_changes.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/files/scratch_directory.h"
#include "kit/json/channel_json.h"
#include "kit/model/channel_list.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace history {
namespace {

using Lists = std::map<ListKey, std::vector<Channel>>;

/// The lists of a text; nothing when it cannot be read.
std::optional<Lists> ListsOf(const std::string& bytes) {
  Lists lists;
  if (bytes.empty()) return lists;
  const ScratchDirectory scratch;
  CopyFiles({{"ChanInfo.xml", bytes}}, scratch.Path());
  try {
    const file_scan::Contents contents = file_scan::Scan(scratch.Path());
    std::size_t count = 0;
    for (const file_scan::ChannelSet& set : contents.sets) {
      const ListKey key{set.country, set.signal};
      if (lists.contains(key)) continue;
      lists[key] = ChannelList({scratch.Path(), set.country, set.signal}).Channels();
      count += lists[key].size();
    }
    if (!contents.table || (count == 0 && contents.ChannelCount() != 0)) return std::nullopt;
  } catch (const Failure&) {
    return std::nullopt;
  }
  return lists;
}

/// "/AudioStream/0/pid" as `channels set` calls it: AudioStream[1].pid
std::string FieldName(std::string_view pointer) {
  std::string name;
  while (!pointer.empty()) {
    pointer.remove_prefix(1);
    const std::string_view part = pointer.substr(0, pointer.find('/'));
    pointer.remove_prefix(part.size());
    if (!part.empty() && std::all_of(part.begin(), part.end(),
                                     [](char letter) { return letter >= '0' && letter <= '9'; })) {
      name += "[" + std::to_string(std::stoul(std::string(part)) + 1) + "]";
    } else {
      name.append(name.empty() ? "" : ".").append(part);
    }
  }
  return name;
}

std::map<std::string, std::string> FlatFields(const ordered_json& object) {
  std::map<std::string, std::string> fields;
  const ordered_json flat = object.flatten();
  for (const auto& [pointer, value] : flat.items()) {
    // Empty lists and objects have no fields.
    if (value.is_null() || value.is_structured()) continue;
    fields[FieldName(pointer)] = value.is_string() ? value.get<std::string>() : value.dump();
  }
  return fields;
}

std::vector<FieldChange> FieldChanges(const ordered_json& from, const ordered_json& to) {
  const std::map<std::string, std::string> before = FlatFields(from);
  const std::map<std::string, std::string> now = FlatFields(to);
  std::vector<FieldChange> changes;
  for (const auto& [field, value] : before) {
    const auto found = now.find(field);
    const std::string became = found == now.end() ? "-" : found->second;
    if (became != value) changes.push_back({field, value, became});
  }
  for (const auto& [field, value] : now) {
    if (!before.contains(field)) changes.push_back({field, "-", value});
  }
  return changes;
}

/// The values of the record that do not follow from its block, apart from index and names.
ordered_json OwnValues(const Channel& channel) {
  ordered_json values = channel_json::Summary(channel);
  for (const char* other : {"index", "name", "displayName", "serviceType", "scrambled", "mhp"}) {
    values.erase(other);
  }
  return values;
}

ordered_json Names(const Channel& channel) {
  return {{"name", utf::FromWide(channel.name)},
          {"displayName", utf::FromWide(channel.displayName)}};
}

class ListComparison {
 public:
  ListComparison(const ListKey& list, const NarrowText& narrow, std::vector<Change>& changes)
      : m_list(list), m_narrow(narrow), m_changes(changes) {}

  void Compare(const std::vector<Channel>& from, const std::vector<Channel>& to) {
    if (SameChannels(from, to)) return;
    const std::vector<int> origins = Origins(from, to, m_list.signal);
    std::vector<bool> isLeft(from.size(), true);
    for (const int origin : origins) {
      if (origin >= 0) isLeft[static_cast<std::size_t>(origin)] = false;
    }
    for (std::size_t i = 0; i < from.size(); ++i) {
      if (isLeft[i]) Add(Kind::Removed, &from[i], nullptr, {});
    }
    const std::vector<bool> isOut = OutOfOrder(origins);
    // Where nothing came, went or left the order, a new index was given on purpose.
    const bool isRenumbered = from.size() == to.size() &&
                              std::find(isOut.begin(), isOut.end(), true) == isOut.end() &&
                              std::find(origins.begin(), origins.end(), -1) == origins.end();
    for (std::size_t i = 0; i < to.size(); ++i) {
      if (origins[i] < 0) {
        Add(Kind::Added, nullptr, &to[i], {});
        continue;
      }
      const Channel& before = from[static_cast<std::size_t>(origins[i])];
      if (isOut[i] || (isRenumbered && before.index != to[i].index)) {
        Add(Kind::Moved, &before, &to[i], {});
      }
      CompareChannel(before, to[i]);
    }
  }

 private:
  void CompareChannel(const Channel& from, const Channel& to) {
    Channel moved = from;
    moved.index = to.index;
    if (FirstDifference(moved, to, nullptr) == nullptr) return;
    const std::vector<FieldChange> names = FieldChanges(Names(from), Names(to));
    if (!names.empty()) Add(Kind::Renamed, &from, &to, names);
    std::vector<FieldChange> fields = FieldChanges(OwnValues(from), OwnValues(to));
    for (FieldChange& field : FieldChanges(channel_json::Block(from, m_list.signal, m_narrow),
                                           channel_json::Block(to, m_list.signal, m_narrow))) {
      fields.push_back(std::move(field));
    }
    if (!fields.empty()) Add(Kind::Changed, &from, &to, std::move(fields));
  }

  void Add(Kind kind, const Channel* from, const Channel* to, std::vector<FieldChange> fields) {
    const ChannelPlace place{m_list, from == nullptr ? 0 : from->index,
                             to == nullptr ? 0 : to->index};
    const Channel& named = to == nullptr ? *from : *to;
    m_changes.push_back({kind, {}, place, utf::FromWide(named.displayName), std::move(fields)});
  }

  ListKey m_list;
  const NarrowText& m_narrow;
  std::vector<Change>& m_changes;
};

}  // namespace

std::vector<Change> ChannelChanges(const std::string& from, const std::string& to) {
  const std::optional<Lists> before = ListsOf(from);
  const std::optional<Lists> now = ListsOf(to);
  std::vector<Change> changes;
  if (!before || !now) return changes;
  Lists all = *before;
  for (const auto& [key, channels] : *now) all[key];
  const ScratchDirectory scratch;
  const Database database({scratch.Path(), 1, InputSignalFMRadio});
  const NarrowText narrow(database);
  for (const auto& [key, ignored] : all) {
    const auto listIn = [&key = key](const Lists& lists) {
      const auto found = lists.find(key);
      return found == lists.end() ? std::vector<Channel>() : found->second;
    };
    ListComparison(key, narrow, changes).Compare(listIn(*before), listIn(*now));
  }
  return changes;
}

}  // namespace history

}  // namespace zortunedex::kit
