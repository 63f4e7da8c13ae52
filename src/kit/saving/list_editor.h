#pragma once

#include <vector>

#include "kit/model/channel_list.h"
#include "kit/model/narrow_text.h"
#include "kit/saving/save_options.h"

/// Changes one list and saves it: everything is checked before the file is touched, and what was
/// written is read back and compared.
class ListEditor {
 public:
  ListEditor(const Location& location, const SaveOptions& options);

  /// The list as it was.
  const ChannelList& Before() const { return m_before; }
  IChannelInfoMgr* List() const { return m_list.Get(); }
  const NarrowText& Narrow() const { return m_narrow; }
  InputSignalType Signal() const { return m_location.signal; }

  /// Adds the channel behind the last one and answers its index.
  UINT Add(const Channel& channel);
  /// Stores the channel in the record with its index.
  void Put(const Channel& channel);
  /// Makes the list hold these channels alone, with their indexes. Failure when those do not
  /// ascend, InvalidArgument for a block that is not the signal type's.
  void Replace(const std::vector<Channel>& channels);

  /// Writes the file when anything is different from before. Raises a Failure when something cannot
  /// be stored (nothing is written then), and when the file does not hold what it should
  /// afterwards.
  void Save();
  /// The channels as they read after Save, in the order of their indexes.
  const std::vector<Channel>& After() const { return m_after; }
  const Channel& After(UINT index) const;

 private:
  void AddAt(UINT index, const Channel& channel);
  std::vector<Channel> Current() const;
  void RequireSavable(const std::vector<Channel>& channels) const;
  void Write(const std::vector<Channel>& channels);
  void Verify(const std::vector<Channel>& meant) const;

  Location m_location;
  SaveOptions m_options;
  ChannelList m_before;
  Database m_database;
  ComPtr<IChannelInfoMgr> m_list;
  NarrowText m_narrow;
  UINT m_lone;  ///< index that a single channel has, unless it is 1
  std::vector<Channel> m_after;
};
