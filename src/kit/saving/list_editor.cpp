#include "kit/saving/list_editor.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/files/unreadable_watch.h"
#include "kit/history/comparison/channel_changes.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/file_check.h"
#include "kit/saving/save_watch.h"
#include "kit/saving/stored_form.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

constexpr UINT kNoIndex = 0xFFFFFFFF;

bool IsBefore(const Channel& channel, UINT index) { return channel.index < index; }

/// Null when there is none in the list, which is in the order of its indexes.
Channel* FindIn(std::vector<Channel>& channels, UINT index) {
  const auto channel = std::lower_bound(channels.begin(), channels.end(), index, IsBefore);
  return channel == channels.end() || channel->index != index ? nullptr : &*channel;
}

Failure NoChannelWith(UINT index) {
  return {E_FAIL, "no channel with index " + std::to_string(index)};
}

}  // namespace

ListEditor::ListEditor(const Location& location, const SaveOptions& options)
    : m_location(location),
      m_options(options),
      m_database(m_location),
      m_list(m_database.List()),
      m_narrow(m_database),
      m_now(ReadInPlace(m_list.Get())) {
  if (!m_now) ReadBeside();
  const std::vector<Channel>& channels = m_now ? *m_now : *m_before;
  if (!channels.empty()) m_lone = channels.front().index;
  // Channels come from a file that can be read.
  if (channels.empty() && m_options.unreadable == Unreadable::Refuse) {
    RequireReadable(m_location.directory, "ChanInfo.xml");
  }
}

// From a list that need not be saved, where every channel can be had.
void ListEditor::ReadBeside() {
  std::vector<Channel> channels = ChannelList(m_location, m_options.unreadable).Take();
  if (channels.size() < 2) {
    m_now = std::move(channels);
  } else {
    m_before = std::move(channels);
  }
}

UINT ListEditor::Add(const Channel& channel) {
  const UINT last = Now().empty() ? 0 : Now().back().index;
  if (last >= kNoIndex - 1) throw Failure{E_FAIL, "no index is left; sort the list first"};
  if (!m_before) KeepBefore(Now());
  const ComPtr<IChannelInfo> record = AddAt(last + 1, channel);
  m_now->push_back(ReadChannel(record.Get()));
  return last + 1;
}

ComPtr<IChannelInfo> ListEditor::AddAt(UINT index, const Channel& channel) {
  ComPtr<IChannelInfo> record;
  Require(m_list->CreateChannelInfo(record.Receive()), "a record cannot be made");
  record->SetChannelIndex(index);  // answers E_NOTIMPL and stores it
  WriteChannel(channel, m_location.signal, record.Get());
  Require(m_list->AddChannelInfo(record.Get()), "the channel cannot be added");
  return record;
}

void ListEditor::Put(const Channel& channel) {
  if (!m_before) Now();
  const ComPtr<IChannelInfo> record = RecordAt(m_list.Get(), channel.index);
  WriteChannel(channel, m_location.signal, record.Get());
  Channel* known = m_now ? FindIn(*m_now, channel.index) : nullptr;
  if (known == nullptr) return;
  Channel now = ReadChannel(record.Get());
  if (!m_before) m_replaced.try_emplace(channel.index, std::move(*known));
  *known = std::move(now);
}

// One removal after the other would number the whole list as often. Emptying it makes it forget its
// elements in the file, as a removal does.
void ListEditor::Remove(const std::vector<UINT>& indexes) {
  for (const UINT index : indexes) RecordAt(m_list.Get(), index);
  if (indexes.empty()) return;
  std::vector<ComPtr<IChannelInfo>> left;
  for (const Channel& channel : Now()) {
    if (std::binary_search(indexes.begin(), indexes.end(), channel.index)) continue;
    left.push_back(RecordAt(m_list.Get(), channel.index));
  }
  Empty();
  UINT index = 0;
  for (const ComPtr<IChannelInfo>& record : left) {
    record->SetChannelIndex(++index);  // answers E_NOTIMPL and stores it
    Require(m_list->AddChannelInfo(record.Get()), "the channel cannot be added");
  }
}

void ListEditor::Move(UINT from, UINT to) {
  RecordAt(m_list.Get(), from);
  ForgetNow();
  Require(m_list->MoveChannel(from, to),
          "channel " + std::to_string(from) + " cannot be moved to " + std::to_string(to));
}

void ListEditor::Sort(ESortType by, bool ascending) {
  ForgetNow();
  Require(m_list->SortChannel(by, ascending), "the list cannot be sorted");
}

void ListEditor::Replace(const std::vector<Channel>& channels) {
  const bool ascending =
      std::adjacent_find(channels.begin(), channels.end(), [](const Channel& a, const Channel& b) {
        return a.index >= b.index;
      }) == channels.end();
  if (!ascending || (!channels.empty() && channels.back().index == kNoIndex)) {
    throw Failure{E_INVALIDARG, "the indexes of the channels do not ascend"};
  }
  const std::size_t size = LayoutOf(m_location.signal).size;
  for (const Channel& channel : channels) {
    if (channel.block.size() == size) continue;
    throw InvalidArgument{"channel " + std::to_string(channel.index) + " has no station block of " +
                          SignalTypeName(m_location.signal)};
  }
  if (!m_before) Now();
  const bool inPlace =
      m_now &&
      std::equal(m_now->begin(), m_now->end(), channels.begin(), channels.end(),
                 [](const Channel& a, const Channel& b) { return a.index == b.index; }) &&
      history::KeepTheirPlaces(*m_now, channels, m_location.signal);
  if (inPlace) {
    // What the library does not know of a channel stays in the file, with the index.
    for (std::size_t i = 0; i < channels.size(); ++i) {
      if (FirstDifference((*m_now)[i], channels[i], nullptr) != nullptr) Put(channels[i]);
    }
    return;
  }
  Empty();
  for (const Channel& channel : channels) AddAt(channel.index, channel);
  if (!channels.empty()) m_lone = channels.front().index;
}

void ListEditor::Empty() {
  ForgetNow();
  Require(m_list->Clear(), "the list cannot be emptied");
  // An empty list is saved only when it says that something changed, and clearing does not.
  m_list->SetDirty(1);
}

void ListEditor::KeepBefore(std::vector<Channel> channels) {
  for (auto& [index, channel] : m_replaced) {
    if (Channel* known = FindIn(channels, index)) *known = std::move(channel);
  }
  m_replaced.clear();
  m_before = std::move(channels);
}

void ListEditor::ForgetNow() {
  if (!m_before) {
    Now();
    KeepBefore(*std::move(m_now));
  }
  m_now.reset();
}

const std::vector<Channel>& ListEditor::Now() {
  if (!m_now) m_now = ReadIndexes();
  return *m_now;
}

const Channel& ListEditor::Find(UINT index) {
  Now();
  const Channel* channel = FindIn(*m_now, index);
  if (channel == nullptr) throw NoChannelWith(index);
  return *channel;
}

std::vector<Channel> ListEditor::ReadIndexes() const {
  std::vector<UINT> indexes = IndexesInOrder(m_list.Get(), m_lone);
  std::sort(indexes.begin(), indexes.end());
  const auto twice = std::adjacent_find(indexes.begin(), indexes.end());
  if (twice != indexes.end()) {
    throw Failure{E_FAIL, "two channels have index " + std::to_string(*twice) +
                              " and would become one; sort the list first"};
  }
  std::vector<Channel> channels;
  channels.reserve(indexes.size());
  for (const UINT index : indexes) {
    channels.push_back(ReadChannel(RecordAt(m_list.Get(), index).Get()));
  }
  return channels;
}

void ListEditor::RequireStorable(const std::vector<UINT>& indexes) {
  for (const UINT index : indexes) {
    kit::RequireStorable(Find(index), m_location.signal, m_narrow,
                         m_options.format == StoragePreFmtXML);
  }
}

void ListEditor::RequireSavable(const std::vector<Channel>& channels) const {
  const bool preFormatted = m_options.format == StoragePreFmtXML;
  for (const Channel& channel : channels) {
    kit::RequireStorable(channel, m_location.signal, m_narrow, preFormatted);
  }
  if (preFormatted) file_check::RequirePreFormattable(m_location);
}

void ListEditor::Save() {
  if (IsAsBefore()) return;
  RequireSavable(Now());
  Write();
}

bool ListEditor::IsAsBefore() {
  const std::vector<Channel>& channels = Now();
  if (m_before) return SameChannels(channels, *m_before);
  return std::all_of(m_replaced.begin(), m_replaced.end(), [&](const auto& replaced) {
    return FirstDifference(replaced.second, Find(replaced.first), nullptr) == nullptr;
  });
}

void ListEditor::Write() {
  // They are not what the records hold any more: where this fails those are asked again.
  std::vector<Channel> channels = *std::move(m_now);
  m_now.reset();
  if (m_options.format) {
    Require(m_database->SetStorageType(*m_options.format), "the form cannot be chosen");
  }
  SaveWatch(m_location.directory, "ChanInfo.xml").Run([&] {
    const UnreadableWatch watch(m_location.directory);
    Require(m_database->SaveChannelToFile(), "ChanInfo.xml was not written");
    watch.Report(m_options.note);
    Verify(channels);
  });
  m_now = std::move(channels);
  m_before.reset();
  m_replaced.clear();
}

void ListEditor::Verify(std::vector<Channel>& channels) const {
  const auto refuse = [](const std::string& what) {
    throw Failure{E_FAIL, "ChanInfo.xml is not what was meant after saving: " + what};
  };
  const Database written(m_location);
  const ComPtr<IChannelInfoMgr> list = written.List();
  const ChannelReader found(list.Get());
  const std::size_t count = found.Indexes().size();
  if (count != channels.size()) {
    refuse(std::to_string(count) + " channels instead of " + std::to_string(channels.size()));
  }
  // A list is loaded in the order of its indexes.
  for (std::size_t i = 0; i < count; ++i) {
    Channel& meant = channels[i];
    const Channel stored = found.Read(i);
    if (FirstDifference(meant, stored, nullptr) == nullptr) continue;
    meant = AsStored(meant, m_location.signal, m_narrow, m_list.Get());
    const char* different = FirstDifference(meant, stored, &LayoutOf(m_location.signal));
    if (different == nullptr) continue;
    refuse(std::string(different) + " of channel " + std::to_string(meant.index));
  }
}

}  // namespace zortunedex::kit
