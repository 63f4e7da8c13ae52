#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "kit/model/channel.h"
#include "kit/model/database.h"
#include "kit/reading/readable.h"

namespace zortunedex::kit {

/// A list read whole, with the indexes that the file gave its channels. The lists of the interface
/// can be walked by position only once they are numbered 1..n, so this one renumbers its own
/// database, which is never saved.
class ChannelList {
 public:
  /// Raises a Failure when the directory cannot be opened, or its file cannot be read and is not to
  /// be taken as empty.
  explicit ChannelList(const Location& location, Unreadable unreadable = Unreadable::Refuse);

  /// In list order, with their stored indexes.
  const std::vector<Channel>& Channels() const { return m_channels; }
  /// The same, out of a list that is not needed any more.
  std::vector<Channel> Take() && { return std::move(m_channels); }
  /// First channel with the stored index. Failure when there is none.
  const Channel& Find(UINT index) const;
  /// Position of that channel, counted from 1.
  UINT PositionOf(UINT index) const;
  const Database& Source() const { return m_database; }

  /// The neighbour of a position: a position again, or the failing result.
  HRESULT Step(UINT position, bool forward, DWORD services, bool favoritesOnly, bool loop,
               UINT& found) const;
  /// Positions of the channels with a service type in the mask.
  std::vector<UINT> Positions(DWORD services) const;
  /// First channel with the number, or with the station of another channel.
  const Channel& FindNumber(UINT number) const;
  const Channel& FindLike(UINT index) const;

 private:
  const Channel& AtPosition(IChannelInfo* record) const;

  Database m_database;
  ComPtr<IChannelInfoMgr> m_list;
  std::vector<Channel> m_channels;
};

/// The channels of a list one by one, by places that are counted from 0 in list order. The list is
/// numbered afresh, and the element that it was loaded from loses its channels: neither may be
/// saved afterwards.
class ChannelReader {
 public:
  explicit ChannelReader(IChannelInfoMgr* list);

  /// The stored indexes, in list order.
  const std::vector<UINT>& Indexes() const { return m_indexes; }
  /// The channel at a place, with its stored index.
  Channel Read(std::size_t place) const;

 private:
  IChannelInfoMgr* m_list;
  std::vector<UINT> m_indexes;
};

/// All of them.
std::vector<Channel> ReadChannels(IChannelInfoMgr* list);

/// The channels of a list in list order, without changing it. Nothing where their indexes do not
/// ascend, so that they name no channel for certain, and for a single one that is not the first.
std::optional<std::vector<Channel>> ReadInPlace(IChannelInfoMgr* list);

/// Indexes of a list in list order, without changing it. `lone` is asked for where the list has one
/// channel, which cannot be found otherwise.
std::vector<UINT> IndexesInOrder(IChannelInfoMgr* list, UINT lone);

/// Record with the stored index. Failure when there is none.
ComPtr<IChannelInfo> RecordAt(IChannelInfoMgr* list, UINT index);

}  // namespace zortunedex::kit
