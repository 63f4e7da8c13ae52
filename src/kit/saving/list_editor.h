#pragma once

#include <map>
#include <optional>
#include <vector>

#include "kit/model/channel_list.h"
#include "kit/model/narrow_text.h"
#include "kit/saving/save_options.h"

namespace zortunedex::kit {

/// Changes one list and saves it: everything is checked before the file is touched, and what was
/// written is read back and compared.
class ListEditor {
 public:
  /// Opens the list. Failure when the directory cannot be opened or its file not be read.
  ListEditor(const Location& location, const SaveOptions& options);

  /// The list as it stands, in the order of its indexes. Failure when two channels have one index.
  const std::vector<Channel>& Now();
  /// One of these. Failure when there is none.
  const Channel& Find(UINT index);
  /// The code page of the list's texts; lives as long as the editor.
  const NarrowText& Narrow() const { return m_narrow; }
  InputSignalType Signal() const { return m_location.signal; }

  /// Adds the channel behind the last one and answers its index.
  UINT Add(const Channel& channel);
  /// Stores the channel in the record with its index.
  void Put(const Channel& channel);
  /// Takes out the channels with these indexes, which ascend; the rest is numbered afresh. Failure
  /// before anything is taken out when one is not there.
  void Remove(const std::vector<UINT>& indexes);
  /// Puts a channel at the place of another one and numbers the list afresh.
  void Move(UINT from, UINT to);
  /// Sorts the list and numbers it afresh.
  void Sort(ESortType by, bool ascending);
  /// Makes the list hold these channels alone, with their indexes. Failure when those do not
  /// ascend, InvalidArgument for a block that is not the signal type's.
  void Replace(const std::vector<Channel>& channels);

  /// Raises the Failure that Save would for the first of these channels that cannot be stored.
  void RequireStorable(const std::vector<UINT>& indexes);
  /// Writes the file when anything is different from before. Raises a Failure when something cannot
  /// be stored (nothing is written then), and when the file does not hold what it should
  /// afterwards.
  void Save();
  /// The channels as they read after Save, in the order of their indexes.
  const std::vector<Channel>& After() { return Now(); }
  /// One of these. Failure when there is none.
  const Channel& After(UINT index) { return Find(index); }

 private:
  ComPtr<IChannelInfo> AddAt(UINT index, const Channel& channel);
  void Empty();
  std::vector<Channel> ReadIndexes() const;
  void ReadBeside();
  /// Keeps these channels as those of the file, but for what was replaced of them.
  void KeepBefore(std::vector<Channel> channels);
  /// Before the list becomes more different than m_replaced could tell.
  void ForgetNow();
  bool IsAsBefore();
  void RequireSavable(const std::vector<Channel>& channels) const;
  void Write();
  /// Makes the channels what is meant to be in the file, and compares it with what is.
  void Verify(std::vector<Channel>& channels) const;

  Location m_location;
  SaveOptions m_options;
  Database m_database;
  ComPtr<IChannelInfoMgr> m_list;
  NarrowText m_narrow;
  /// What the records hold; none where they have to be asked.
  std::optional<std::vector<Channel>> m_now;
  /// The list as the file has it, once more is different than m_replaced tells.
  std::optional<std::vector<Channel>> m_before;
  /// Without m_before: channels as the file has them, for those that were changed where they stand.
  std::map<UINT, Channel> m_replaced;
  UINT m_lone = 1;  ///< index that a single channel has, unless it is 1
};

}  // namespace zortunedex::kit
