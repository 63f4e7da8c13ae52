#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "channels/bulk_insert.h"
#include "platform/com.h"
#include "platform/com_ptr.h"

/// The records of one list of the satellite model, in order; holds one reference on each. Records
/// may be the host's own and may call back into their list: none is called while a place in the
/// array is held, and each is kept alive while it is asked.
template <typename I>
class RecordList {
 public:
  /// A record that came from a file. `key` finds its place; `index` is what it then carries.
  struct Loaded {
    ComPtr<I> record;
    UINT key;
    UINT index;
  };

  UINT Count() const { return static_cast<UINT>(m_records.size()); }
  /// Null past the end.
  ComPtr<I> At(std::size_t position) const {
    return position < m_records.size() ? m_records[position] : ComPtr<I>();
  }

  /// Puts the record in front of the first one whose index is not smaller, else at the end. The
  /// same record can be added twice. A failing GetIndex is answered as it is.
  HRESULT Add(I* record);
  /// The same for each in turn, by its key, with one pass over what is there; for all or, when that
  /// raises, for none.
  void AddLoaded(const std::vector<Loaded>& loaded);
  /// Takes the first occurrence out and releases one reference in any case: of a record that the
  /// list does not hold, the caller's. Hosts that hand theirs over rely on it.
  void Remove(I* record);
  /// Gives the indexes 1, 2, 3, ... from the front, or from the back.
  void Renumber(bool ascending);
  void ReleaseAll() { Records().swap(m_records); }

  /// First record that `match` accepts, with a reference. E_FAIL when there is none.
  template <typename Match>
  HRESULT FindFirst(Match match, I** out) const;
  HRESULT FindByIndex(UINT index, I** out) const {
    return FindFirst([index](I* record) { return IndexOf(record) == index; }, out);
  }
  /// True when a record calls itself dirty; stops at the first.
  bool HasDirtyRecord() const;

 private:
  using Records = std::vector<ComPtr<I>>;

  // None when the record does not tell.
  static std::optional<UINT> IndexOf(I* record) {
    UINT index = 0;
    if (FAILED(record->GetIndex(&index))) return std::nullopt;
    return index;
  }
  std::size_t PlaceFor(UINT key) const;
  void InsertAt(std::size_t position, const ComPtr<I>& record);
  bool Holds(const Records& records) const;

  Records m_records;
};

template <typename I>
HRESULT RecordList<I>::Add(I* record) {
  UINT index = 0;
  const HRESULT hr = record->GetIndex(&index);
  if (FAILED(hr)) return hr;
  InsertAt(PlaceFor(index), ComPtr<I>(record));
  return S_OK;
}

template <typename I>
void RecordList<I>::AddLoaded(const std::vector<Loaded>& loaded) {
  if (loaded.empty()) return;
  const Records before = m_records;
  BulkInsert<ComPtr<I>, UINT> bulk;
  for (const ComPtr<I>& record : before) bulk.Append(record, IndexOf(record.Get()));
  for (const Loaded& item : loaded) bulk.Insert(item.record, item.key, item.index);
  Records merged = bulk.Take();
  if (Holds(before)) {
    m_records.swap(merged);
    return;
  }
  // A record changed the list while it was asked.
  m_records.reserve(m_records.size() + loaded.size());
  for (const Loaded& item : loaded) InsertAt(PlaceFor(item.key), item.record);
}

template <typename I>
void RecordList<I>::Remove(I* record) {
  const auto found = std::find_if(m_records.begin(), m_records.end(),
                                  [=](const ComPtr<I>& held) { return held.Get() == record; });
  ComPtr<I> released;
  if (found == m_records.end()) {
    released = ComPtr<I>::Attach(record);
  } else {
    released = std::move(*found);
    m_records.erase(found);
  }
}

template <typename I>
void RecordList<I>::Renumber(bool ascending) {
  const std::size_t count = m_records.size();
  for (std::size_t number = 0; number < count; ++number) {
    const ComPtr<I> record = At(ascending ? number : count - 1 - number);
    if (record) record->SetIndex(static_cast<UINT>(number + 1));
  }
}

template <typename I>
template <typename Match>
HRESULT RecordList<I>::FindFirst(Match match, I** out) const {
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    ComPtr<I> record = At(position);
    if (!match(record.Get())) continue;
    *out = record.Detach();
    return S_OK;
  }
  return E_FAIL;
}

template <typename I>
bool RecordList<I>::HasDirtyRecord() const {
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    LONG dirty = 0;
    At(position)->GetDirty(&dirty);
    if (dirty != 0) return true;
  }
  return false;
}

template <typename I>
std::size_t RecordList<I>::PlaceFor(UINT key) const {
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    const std::optional<UINT> index = IndexOf(At(position).Get());
    if (index && *index >= key) return position;
  }
  return m_records.size();
}

template <typename I>
void RecordList<I>::InsertAt(std::size_t position, const ComPtr<I>& record) {
  // The list may have become shorter while its records were asked.
  position = std::min(position, m_records.size());
  m_records.insert(m_records.begin() + static_cast<std::ptrdiff_t>(position), record);
}

template <typename I>
bool RecordList<I>::Holds(const Records& records) const {
  return std::equal(m_records.begin(), m_records.end(), records.begin(), records.end(),
                    [](const ComPtr<I>& a, const ComPtr<I>& b) { return a.Get() == b.Get(); });
}
