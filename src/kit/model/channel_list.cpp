#include "kit/model/channel_list.h"

#include <algorithm>
#include <functional>

#include "api/zortunedex/opened.hpp"
#include "kit/failure.h"

namespace zortunedex::kit {

namespace {

constexpr DWORD kAll = static_cast<DWORD>(ServiceAll);

Failure NoChannel(UINT index) { return {E_FAIL, "no channel with index " + std::to_string(index)}; }

std::vector<UINT> StoredIndexes(IChannelInfoMgr* list) {
  try {
    return detail::TakeIndexes(list, {});
  } catch (const error& raised) {
    throw Failure{raised.result(), raised.reason()};
  }
}

}  // namespace

ComPtr<IChannelInfo> RecordAt(IChannelInfoMgr* list, UINT index) {
  ComPtr<IChannelInfo> record;
  if (FAILED(list->GetChannelInfoByIndex(index, record.Receive()))) throw NoChannel(index);
  return record;
}

std::vector<UINT> IndexesInOrder(IChannelInfoMgr* list, UINT lone) {
  UINT count = 0;
  Require(list->GetChannelCount(kAll, &count), "the channels cannot be counted");
  if (count == 1) {
    ComPtr<IChannelInfo> record;
    const bool first = SUCCEEDED(list->GetChannelInfoByIndex(1, record.Receive()));
    return {first ? 1 : lone};
  }
  std::vector<UINT> indexes(count);
  for (UINT position = 0; position < count; ++position) {
    Require(list->FindNextChannel(position, &indexes[position], kAll, 0, 0),
            "the channels cannot be walked");
  }
  return indexes;
}

ChannelReader::ChannelReader(IChannelInfoMgr* list)
    : m_list(list), m_indexes(StoredIndexes(list)) {}

Channel ChannelReader::Read(std::size_t place) const {
  Channel channel = ReadChannel(RecordAt(m_list, static_cast<UINT>(place) + 1).Get());
  channel.index = m_indexes.at(place);
  return channel;
}

std::vector<Channel> ReadChannels(IChannelInfoMgr* list) {
  const ChannelReader reader(list);
  std::vector<Channel> channels;
  channels.reserve(reader.Indexes().size());
  for (std::size_t place = 0; place < reader.Indexes().size(); ++place) {
    channels.push_back(reader.Read(place));
  }
  return channels;
}

std::optional<std::vector<Channel>> ReadInPlace(IChannelInfoMgr* list) {
  const std::vector<UINT> indexes = IndexesInOrder(list, 1);
  if (std::adjacent_find(indexes.begin(), indexes.end(), std::greater_equal<>()) != indexes.end()) {
    return std::nullopt;
  }
  std::vector<Channel> channels;
  channels.reserve(indexes.size());
  for (const UINT index : indexes) {
    ComPtr<IChannelInfo> record;
    if (FAILED(list->GetChannelInfoByIndex(index, record.Receive()))) return std::nullopt;
    channels.push_back(ReadChannel(record.Get()));
  }
  return channels;
}

ChannelList::ChannelList(const Location& location, Unreadable unreadable)
    : m_database(location), m_list(m_database.List()), m_channels(ReadChannels(m_list.Get())) {
  // Channels come from a file that can be read.
  if (m_channels.empty() && unreadable == Unreadable::Refuse) {
    RequireReadable(location.directory, "ChanInfo.xml");
  }
}

UINT ChannelList::PositionOf(UINT index) const {
  for (UINT position = 0; position < m_channels.size(); ++position) {
    if (m_channels[position].index == index) return position + 1;
  }
  throw NoChannel(index);
}

const Channel& ChannelList::Find(UINT index) const { return m_channels[PositionOf(index) - 1]; }

HRESULT ChannelList::Step(UINT position, bool forward, DWORD services, bool favoritesOnly,
                          bool loop, UINT& found) const {
  return forward ? m_list->FindNextChannel(position, &found, services, favoritesOnly, loop)
                 : m_list->FindPreChannel(position, &found, services, favoritesOnly, loop);
}

std::vector<UINT> ChannelList::Positions(DWORD services) const {
  UINT count = 0;
  Require(m_list->GetChannelCount(services, &count), "the channels cannot be counted");
  // A list of one cannot be walked.
  if (m_channels.size() == 1) return std::vector<UINT>(count, 1);
  std::vector<UINT> positions;
  UINT position = 0;
  while (SUCCEEDED(Step(position, true, services, false, false, position))) {
    positions.push_back(position);
  }
  return positions;
}

const Channel& ChannelList::AtPosition(IChannelInfo* record) const {
  UINT position = 0;
  Require(record->GetChannelIndex(&position), "a channel without an index");
  return m_channels.at(position - 1);
}

const Channel& ChannelList::FindNumber(UINT number) const {
  ComPtr<IChannelInfo> record;
  Require(m_list->GetChannelInfoByNo(number, record.Receive()),
          "no channel with number " + std::to_string(number));
  return AtPosition(record.Get());
}

const Channel& ChannelList::FindLike(UINT index) const {
  Channel probe = Find(index);
  _StationTuneInfo station = {};
  station.lPhysicalChannel = static_cast<LONG>(probe.number);
  station.dwFrequency = probe.frequency;
  station.lOffsetFreq = probe.offset;
  station.lTSID = probe.tsid;
  station.cbInformation = static_cast<DWORD>(probe.block.size());
  station.pbInformation = probe.block.data();
  ComPtr<IChannelInfo> record;
  Require(m_list->GetChannelInfoByStation(&station, record.Receive()),
          "no channel with the station of channel " + std::to_string(index));
  return AtPosition(record.Get());
}

}  // namespace zortunedex::kit
