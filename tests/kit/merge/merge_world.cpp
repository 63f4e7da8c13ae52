#include "kit/merge/merge_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "kit/model/channel_layout.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Source;

namespace {

const Field* RowNamed(const Layout& layout, std::string_view attribute) {
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    if (const Field* row = station_blocks::FindField(rows, attribute)) return row;
  }
  return nullptr;
}

struct Choice {
  const char* attribute;
  std::vector<std::uint32_t> values;
};

const std::vector<Choice>& Choices() {
  static const std::vector<Choice> choices = {
      {"freq",
       {0, 98500, 98550, 98600, 98700, 506000, 507000, 508500, 12544750, 12546000, 12663750}},
      {"Frequency", {0, 473143, 479143}},
      {"freqOffset", {0, 166}},
      {"polarisation", {UINT32_MAX, 1, 2}},
      {"orbitalPosition", {0, 130, 192, 192, 193, 196}},
      {"westPosition", {0, 0, 1}},
      {"symbolRate", {0, 22000, 27500}},
      {"innerFECRate", {UINT32_MAX, 3, 5}},
      {"physicalChannel", {0, 13, 14, 33}},
      {"serviceID", {0, 1, 1, 2, 3}},
      {"ServiceID", {0, 1, 1, 2, 3}},
      {"TSID", {0, 1, 1, 2}},
      {"ONID", {0, 1, 1, 133, 0xFF01}},
      {"NetworkID", {0, 7, 8}},
      {"majorChannel", {0, 7, 7, 8}},
      {"minorChannel", {0, 1, 2}},
      {"programNumber", {0, 1, 2}},
      {"CNI0", {0, 5, 6}},
      {"CNI1", {0, 5, 7}},
      {"serviceType", {1, 1, 2}},
      {"runningStatus", {0, 1, 4}},
      {"PcrPID", {0, 100, 101}},
      {"CA", {0, 1}},
  };
  return choices;
}

constexpr const char* kNames[] = {"", "A", "A", "a HD", "B", "C", "D"};

}  // namespace

std::uint32_t ValueIn(const Channel& channel, InputSignalType signal, const char* attribute) {
  const Field* row = RowNamed(LayoutOf(signal), attribute);
  if (row == nullptr) {
    ADD_FAILURE() << "no attribute " << attribute;
    return 0;
  }
  if (row->source != Source::Block) return SourceValue(channel, row->source);
  return station_blocks::Fetch(channel.block.data() + row->offset, row->width);
}

void SetValueIn(Channel& channel, InputSignalType signal, const char* attribute,
                std::uint32_t value) {
  const Field* row = RowNamed(LayoutOf(signal), attribute);
  if (row == nullptr) {
    ADD_FAILURE() << "no attribute " << attribute;
    return;
  }
  if (row->source != Source::Block) SetSourceValue(channel, row->source, value);
  if (row->width != 0) {
    station_blocks::Store(channel.block.data() + row->offset, row->width, value);
  }
}

void SetBroadcastName(Channel& channel, InputSignalType signal, const std::string& name) {
  const Field& row = *RowNamed(LayoutOf(signal), "name");
  std::fill_n(channel.block.begin() + row.offset, row.width, BYTE{0});
  std::copy(name.begin(), name.end(), channel.block.begin() + row.offset);
  channel.name.assign(name.begin(), name.end());
}

Channel MakeStation(InputSignalType signal, UINT index, const std::string& name,
                    Attributes attributes) {
  Channel channel = EmptyChannel(LayoutOf(signal));
  channel.index = index;
  SetBroadcastName(channel, signal, name);
  channel.displayName = channel.name;
  for (const auto& [attribute, value] : attributes) SetValueIn(channel, signal, attribute, value);
  return channel;
}

void AddStream(Channel& channel, InputSignalType signal, const char* element, std::uint32_t type,
               std::uint32_t pid, std::uint32_t language) {
  for (const station_blocks::StreamList& list : LayoutOf(signal).lists) {
    if (std::string_view(list.element) != element) continue;
    const std::uint32_t count = station_blocks::Fetch(channel.block.data() + list.countOffset, 4);
    if (count >= list.capacity) return;
    BYTE* place = channel.block.data() + list.offset + count * list.entrySize;
    station_blocks::Store(place, 1, type);
    station_blocks::Store(place + 2, 2, pid);
    station_blocks::StoreLanguage(place + 4, language);
    station_blocks::Store(channel.block.data() + list.countOffset, 4, count + 1);
  }
}

void RandomWorlds::SetRandom(Channel& channel, const char* attribute) {
  const Field* row = RowNamed(LayoutOf(m_signal), attribute);
  if (row == nullptr) return;
  for (const Choice& choice : Choices()) {
    if (std::string_view(choice.attribute) != attribute) continue;
    const auto count = static_cast<std::uint32_t>(choice.values.size());
    SetValueIn(channel, m_signal, attribute, choice.values[m_random(count)]);
  }
}

void RandomWorlds::AddStreams(Channel& channel) {
  for (const char* element : {"VideoStream", "AudioStream"}) {
    const std::uint32_t count = m_random(4);
    for (std::uint32_t i = 0; i < count; ++i) {
      AddStream(channel, m_signal, element, m_random(3), 100 + m_random(4), m_random(3));
    }
  }
}

Channel RandomWorlds::RandomStation() {
  Channel channel = MakeStation(m_signal, 0, kNames[m_random(std::size(kNames))], {});
  for (const Choice& choice : Choices()) SetRandom(channel, choice.attribute);
  if (m_random(3) == 0) AddStreams(channel);
  return channel;
}

void RandomWorlds::Mutate(Channel& channel) {
  const std::uint32_t count = m_random(3);
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto which = m_random(static_cast<std::uint32_t>(Choices().size()) + 3);
    if (which < Choices().size()) {
      SetRandom(channel, Choices()[which].attribute);
    } else if (which == Choices().size()) {
      AddStreams(channel);
    } else {
      SetBroadcastName(channel, m_signal, kNames[m_random(std::size(kNames))]);
      channel.displayName = channel.name;
    }
  }
}

ChannelTable RandomWorlds::List() {
  ChannelTable list{49, m_signal, {}};
  const std::uint32_t count = m_random(8);
  UINT index = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    const bool isCopy = i > 0 && m_random(4) == 0;
    list.channels.push_back(isCopy ? list.channels[m_random(i)] : RandomStation());
    Channel& channel = list.channels.back();
    if (isCopy) Mutate(channel);
    channel.index = index += 1 + (m_random(4) == 0 ? m_random(3) : 0);
    channel.favorite = m_random(3) == 0 ? 1 + m_random(2) : 0;
    channel.lock = m_random(4) == 0 ? 1 : 0;
    if (m_random(5) == 0) channel.displayName = OLESTR("mine");
  }
  return list;
}

ChannelTable RandomWorlds::Scan(const ChannelTable& list) {
  ChannelTable scan{49, m_signal, {}};
  for (const Channel& channel : list.channels) {
    if (m_random(4) == 0) continue;
    scan.channels.push_back(channel);
    Channel& scanned = scan.channels.back();
    scanned.displayName = scanned.name;
    scanned.favorite = m_random(2);
    if (m_random(2) == 0) Mutate(scanned);
  }
  for (std::uint32_t i = m_random(4); i > 0; --i) {
    const auto count = static_cast<std::uint32_t>(scan.channels.size());
    scan.channels.push_back(count > 0 && m_random(2) == 0 ? scan.channels[m_random(count)]
                                                          : RandomStation());
    if (m_random(2) == 0) Mutate(scan.channels.back());
  }
  Shuffle(scan);
  return scan;
}

void RandomWorlds::Shuffle(ChannelTable& table) {
  for (std::size_t i = table.channels.size(); i > 1; --i) {
    std::swap(table.channels[i - 1], table.channels[m_random(static_cast<std::uint32_t>(i))]);
  }
  for (Channel& channel : table.channels) channel.index = m_random(20);
}

void RandomWorlds::Edit(ChannelTable& list) {
  std::vector<Channel>& channels = list.channels;
  for (Channel& channel : channels) {
    if (m_random(5) == 0) channel.displayName = OLESTR("yours");
    if (m_random(6) == 0) SetBroadcastName(channel, m_signal, "renamed");
    if (m_random(6) == 0) SetRandom(channel, m_random(2) == 0 ? "freq" : "symbolRate");
    if (m_random(8) == 0) SetRandom(channel, "serviceID");
  }
  std::erase_if(channels, [this](const Channel&) { return m_random(8) == 0; });
  if (channels.size() > 1 && m_random(4) == 0) std::swap(channels.front(), channels.back());
  UINT index = 0;
  for (Channel& channel : channels) channel.index = ++index;
}

merge::MergePolicy RandomWorlds::Policy() {
  merge::MergePolicy policy;
  policy.newOnes = static_cast<merge::NewOnes>(m_random(3));
  policy.gone = static_cast<merge::Gone>(m_random(3));
  policy.scope = static_cast<merge::Scope>(m_random(3));
  policy.goneAfter = 1 + m_random(2);
  policy.goneFavorites = m_random(2) == 0;
  policy.numbers = static_cast<merge::Numbers>(m_random(3));
  policy.tuning = static_cast<merge::EditedTuning>(m_random(2));
  policy.deleted = static_cast<merge::Deleted>(m_random(2));
  policy.looseNames = m_random(2) == 0;
  return policy;
}

merge::MergePlan MergeWorld::PlanOf(const ChannelTable& now, const merge::MergeBase* last) const {
  merge::MergePolicy by = policy;
  if (told) {
    for (const Channel& channel : now.channels) by.toldList.push_back(told(channel));
    if (last != nullptr) {
      for (const merge::BaseEntry& entry : last->entries) {
        by.toldBase.push_back(told(entry.channel));
      }
    }
  }
  return merge::PlanMerge(now, last, scan, by);
}

Channel Coarse(Channel channel, InputSignalType signal) {
  const Layout& layout = LayoutOf(signal);
  constexpr std::uint32_t kStep = 100;
  channel.frequency = (channel.frequency + kStep / 2) / kStep * kStep;
  channel.displayName = channel.name;
  for (const station_blocks::StreamList& list : layout.lists) {
    for (std::size_t i = 0; i < list.capacity; ++i) {
      BYTE* entry = channel.block.data() + list.offset + i * list.entrySize;
      for (const Field& row : station_blocks::EntryFields(list.entrySize)) {
        if (std::string_view(row.attribute) == "pid") continue;
        std::fill_n(entry + row.offset, row.width, BYTE{0});
      }
    }
  }
  return channel;
}

MergeWorld RandomWorlds::Next() {
  MergeWorld world{List(), std::nullopt, {}, Policy()};
  if (m_random(4) == 0) {
    world.told = [signal = m_signal](Channel channel) {
      return Coarse(std::move(channel), signal);
    };
  }
  const auto scanned = [&](ChannelTable scan) {
    for (Channel& channel : scan.channels) {
      if (world.told) channel = world.told(channel);
    }
    return scan;
  };
  if (m_random(3) != 0) {
    world.scan = scanned(Scan(world.list));
    if (!world.scan.channels.empty()) {
      const merge::MergePlan plan = world.Plan();
      world.base = plan.base;
      world.list = merge::Apply(plan);
      Edit(world.list);
      world.policy = Policy();
    }
  }
  world.scan = Scan(world.list);
  if (world.scan.channels.empty()) world.scan.channels.push_back(RandomStation());
  world.scan = scanned(std::move(world.scan));
  return world;
}

std::string CodesIn(const merge::MergePlan& plan) {
  std::string text;
  for (const merge::Change& change : plan.changes) {
    text += (text.empty() ? "" : ", ") +
            (change.index != 0 ? std::to_string(change.index) + " " : std::string()) +
            merge::CodeName(change.code);
  }
  return text;
}

}  // namespace zortunedex::kit
