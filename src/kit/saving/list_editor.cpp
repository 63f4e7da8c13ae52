#include "kit/saving/list_editor.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/files/unreadable_watch.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/file_check.h"
#include "kit/saving/save_watch.h"
#include "kit/saving/stored_form.h"
#include "kit/text/signal_types.h"

namespace {

constexpr UINT kNoIndex = 0xFFFFFFFF;

void SortByIndex(std::vector<Channel>& channels) {
  std::stable_sort(channels.begin(), channels.end(),
                   [](const Channel& a, const Channel& b) { return a.index < b.index; });
}

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
      m_before(m_location, options.unreadable),
      m_database(m_location),
      m_list(m_database.List()),
      m_narrow(m_database),
      m_lone(m_before.Channels().empty() ? 1 : m_before.Channels().front().index) {}

UINT ListEditor::Add(const Channel& channel) {
  const UINT last = Now().empty() ? 0 : Now().back().index;
  if (last >= kNoIndex - 1) throw Failure{E_FAIL, "no index is left; sort the list first"};
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
  const ComPtr<IChannelInfo> record = RecordAt(m_list.Get(), channel.index);
  WriteChannel(channel, m_location.signal, record.Get());
  if (Channel* known = m_now ? FindIn(*m_now, channel.index) : nullptr) {
    *known = ReadChannel(record.Get());
  }
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
  m_now.reset();
  Require(m_list->MoveChannel(from, to),
          "channel " + std::to_string(from) + " cannot be moved to " + std::to_string(to));
}

void ListEditor::Sort(ESortType by, bool ascending) {
  m_now.reset();
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
  const std::vector<Channel>& before = m_before.Channels();
  const bool inPlace =
      std::equal(before.begin(), before.end(), channels.begin(), channels.end(),
                 [](const Channel& a, const Channel& b) { return a.index == b.index; });
  if (inPlace) {
    // What the library does not know of a channel stays in the file.
    for (std::size_t i = 0; i < channels.size(); ++i) {
      if (FirstDifference(before[i], channels[i], nullptr) != nullptr) Put(channels[i]);
    }
    return;
  }
  Empty();
  for (const Channel& channel : channels) AddAt(channel.index, channel);
  if (!channels.empty()) m_lone = channels.front().index;
}

void ListEditor::Empty() {
  Require(m_list->Clear(), "the list cannot be emptied");
  m_now.reset();
  // An empty list is saved only when it says that something changed, and clearing does not.
  m_list->SetDirty(1);
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
    ::RequireStorable(Find(index), m_location.signal, m_narrow,
                      m_options.format == StoragePreFmtXML);
  }
}

void ListEditor::RequireSavable(const std::vector<Channel>& channels) const {
  const bool preFormatted = m_options.format == StoragePreFmtXML;
  for (const Channel& channel : channels) {
    ::RequireStorable(channel, m_location.signal, m_narrow, preFormatted);
  }
  if (preFormatted) file_check::RequirePreFormattable(m_location);
}

void ListEditor::Save() {
  const std::vector<Channel>& channels = Now();
  if (SameChannels(channels, m_before.Channels())) {
    m_after = m_before.Channels();
    return;
  }
  RequireSavable(channels);
  Write(channels);
}

void ListEditor::Write(const std::vector<Channel>& channels) {
  std::vector<Channel> meant;
  meant.reserve(channels.size());
  for (const Channel& channel : channels) {
    meant.push_back(AsStored(channel, m_location.signal, m_narrow, m_list.Get()));
  }
  if (m_options.format) {
    Require(m_database->SetStorageType(*m_options.format), "the form cannot be chosen");
  }
  SaveWatch(m_location.directory, "ChanInfo.xml").Run([&] {
    const UnreadableWatch watch(m_location.directory);
    Require(m_database->SaveChannelToFile(), "ChanInfo.xml was not written");
    watch.Report(m_options.note);
    Verify(meant);
  });
  m_after = std::move(meant);
}

void ListEditor::Verify(const std::vector<Channel>& meant) const {
  const auto refuse = [](const std::string& what) {
    throw Failure{E_FAIL, "ChanInfo.xml is not what was meant after saving: " + what};
  };
  std::vector<Channel> found = ChannelList(m_location, Unreadable::TakeAsEmpty).Take();
  SortByIndex(found);
  if (found.size() != meant.size()) {
    refuse(std::to_string(found.size()) + " channels instead of " + std::to_string(meant.size()));
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    const char* different = FirstDifference(meant[i], found[i], &LayoutOf(m_location.signal));
    if (different == nullptr) continue;
    refuse(std::string(different) + " of channel " + std::to_string(meant[i].index));
  }
}

const Channel& ListEditor::After(UINT index) const {
  // It ascends: what was written does, and what stayed was found to.
  const auto channel = std::lower_bound(m_after.begin(), m_after.end(), index, IsBefore);
  if (channel == m_after.end() || channel->index != index) throw NoChannelWith(index);
  return *channel;
}
