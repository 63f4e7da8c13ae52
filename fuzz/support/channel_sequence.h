#pragma once

#include <memory>
#include <vector>

#include "support/channel_list_model.h"
#include "support/database.h"
#include "support/input.h"

/// The DVB-T list of one database beside the plain model of it. Every step does to both what the
/// input says, and ends the run when they answer differently.
class ChannelSequence {
 public:
  explicit ChannelSequence(const Scratch& scratch);

  void Step(Input& input);
  /// Every record's index and references, and the list's count.
  void RequireSame();

 private:
  using Entry = channel_list_model::Entry;

  void Add(Input& input);
  void Remove(Input& input);
  void Move(Input& input);
  void SetIndex(Input& input);
  void Sort(bool ascending);
  void Lookup(Input& input);
  void Count(Input& input);
  void Navigate(Input& input);
  void Dirty();
  void Clear();
  /// Saves, closes and opens again: the channels that the file has a form for come back.
  void Reopen();

  Entry* Any(Input& input);
  IChannelInfo* RecordOf(const Entry* entry);
  void RequireFound(const Entry* expected, HRESULT hr, const ComPtr<IChannelInfo>& found);
  void TakeOut(Entry* entry);
  void Hold(const ComPtr<IChannelInfo>& record, Entry entry);

  const Scratch& m_scratch;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
  channel_list_model::Model m_model;
  std::vector<std::unique_ptr<Entry>> m_entries;  // by identifier
  std::vector<ComPtr<IChannelInfo>> m_records;    // by identifier
};
