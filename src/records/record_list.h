#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/com.h"
#include "platform/com_ptr.h"
#include "records/bulk_insert.h"
#include "records/held_record.h"
#include "records/key_order.h"

/// From which end of a list its records are numbered 1, 2, 3, ...; passed on as a flag,
/// "ascending".
enum class Numbering : bool { FromBack = false, FromFront = true };

/// Records in order; holds one reference on each. Records may be the host's own and may call back
/// into their list: none is called while a place in the array is held, and each is kept alive while
/// it is asked. `Traits` says which records:
///   Interface      the records' interface
///   Own            the library's own class of them, an OwnRecord
///   Flag           type of their dirty flag
///   Index          a kind of value, see KeyOrder, with Get(Interface*, UINT*), Ask(Interface*),
///   none
///                  when the record does not tell, and Number(..., UINT), which gives an index: for
///                  an Own& it counts no change and tells whether it was one
///   Keys           std::tuple of KeyOrder for Index and all else that records are looked up by
///
/// Answers are those of scans from the front, which KeyOrder spares where it can. Lookups change
/// what the list knows, so they are no more safe for concurrent use than the rest.
template <typename Traits>
class RecordList {
 public:
  using Interface = typename Traits::Interface;
  using Own = typename Traits::Own;
  using Index = typename Traits::Index;
  using Record = ComPtr<Interface>;
  using Records = std::vector<Record>;
  using Held = HeldRecord<Own, Interface>;
  /// A record that came from a file. `key` finds its place; `index` is what it then carries.
  struct Loaded {
    Record record;
    UINT key;
    UINT index;
  };

  UINT Count() const { return static_cast<UINT>(m_records.size()); }
  const Records& All() const { return m_records; }
  /// Null past the end.
  Held At(std::size_t position) const {
    return position < m_records.size() ? Held(m_records[position].Get()) : Held();
  }
  /// None when the record does not tell.
  static std::optional<UINT> IndexOf(const Held& record) { return ValueOf<Index>(record); }

  /// Puts the record in front of the first one whose index is not smaller, else at the end. The
  /// same record can be added twice. Nothing changes when the record does not tell its index; the
  /// failure is answered as it is.
  HRESULT Add(Interface* record);
  /// The same for each in turn, by its key, with one pass over what is there; for all or, when that
  /// raises, for none.
  void AddLoaded(const std::vector<Loaded>& loaded);
  /// Takes the first occurrence out and hands over its reference; null when there is none.
  Record Extract(Interface* record);
  /// Takes the first occurrence out and releases one reference in any case: of a record that the
  /// list does not hold, the caller's. Hosts that hand theirs over rely on it.
  void RemoveAndRelease(Interface* record);
  void Number(Numbering from);
  void ReleaseAll();
  void Swap(RecordList& other);
  /// Puts `after` in place of `before`, unless the list is no longer `before`: a record that
  /// changed it while it was asked has the last word.
  bool Replace(const Records& before, Records& after);

  /// First record that `match` accepts, with a reference. E_FAIL when there is none.
  template <typename Match>
  HRESULT FindFirst(Match match, Interface** out) const {
    return FindFrom(0, match, out);
  }
  /// First record with that value, one of those that `Traits::Keys` has, with a reference. E_FAIL
  /// when there is none.
  template <typename Key>
  HRESULT FindBy(UINT value, Interface** out);
  HRESULT FindByIndex(UINT index, Interface** out) { return FindBy<Index>(index, out); }
  /// True when a record calls itself dirty; stops at the first.
  bool HasDirtyRecord() const;

 private:
  template <typename Key>
  using Order = KeyOrder<Own, Interface, Key>;

  template <typename Key>
  static std::optional<UINT> ValueOf(const Held& record) {
    return record.Own() != nullptr ? Key::Of(*record.Own()) : Key::Ask(record.Get());
  }
  template <typename Work>
  void ForAllKeys(Work work) {
    std::apply([&](auto&... orders) { (work(orders), ...); }, m_keys);
  }
  void ForgetKeys() {
    ForAllKeys([](auto& order) { order.Forget(); });
  }
  static void NoteListed(Interface* record) {
    if (Own* own = Own::From(record)) own->SetListed();
  }
  template <typename Match>
  HRESULT FindFrom(std::size_t first, Match match, Interface** out) const;
  std::size_t PlaceFor(UINT key);
  void InsertAt(std::size_t position, Interface* record);

  Records m_records;
  typename Traits::Keys m_keys;
};

template <typename Traits>
HRESULT RecordList<Traits>::Add(Interface* record) {
  UINT index = 0;
  const HRESULT hr = Index::Get(record, &index);
  if (FAILED(hr)) return hr;
  InsertAt(PlaceFor(index), record);
  return S_OK;
}

template <typename Traits>
void RecordList<Traits>::AddLoaded(const std::vector<Loaded>& loaded) {
  if (loaded.empty()) return;
  const Records before = m_records;
  BulkInsert<Record, UINT> bulk;
  for (const Record& record : before) bulk.Append(record, IndexOf(Held(record.Get())));
  for (const Loaded& item : loaded) bulk.Insert(item.record, item.key, item.index);
  Records merged = bulk.Take();
  if (Replace(before, merged)) {
    for (const Loaded& item : loaded) NoteListed(item.record.Get());
    return;
  }
  // A record changed the list while it was asked.
  m_records.reserve(m_records.size() + loaded.size());
  for (const Loaded& item : loaded) InsertAt(PlaceFor(item.key), item.record.Get());
}

template <typename Traits>
typename RecordList<Traits>::Record RecordList<Traits>::Extract(Interface* record) {
  const auto found = std::find_if(m_records.begin(), m_records.end(),
                                  [=](const Record& held) { return held.Get() == record; });
  if (found == m_records.end()) return Record();
  Record extracted = std::move(*found);
  const auto position = static_cast<std::size_t>(found - m_records.begin());
  m_records.erase(found);
  ForAllKeys([=](auto& order) { order.Removed(position); });
  return extracted;
}

template <typename Traits>
void RecordList<Traits>::RemoveAndRelease(Interface* record) {
  Record released = Extract(record);
  if (!released) released = Record::Attach(record);
}

// Changes of our own records are counted together, but before anybody else is called.
template <typename Traits>
void RecordList<Traits>::Number(Numbering from) {
  const std::size_t count = m_records.size();
  bool changed = false;
  const auto tellChanges = [&changed] {
    if (changed) ChangeCount<Index>::Add();
    changed = false;
  };
  for (std::size_t number = 0; number < count; ++number) {
    const Held record = At(from == Numbering::FromFront ? number : count - 1 - number);
    if (!record) continue;
    const UINT index = static_cast<UINT>(number + 1);
    if (Own* own = record.Own()) {
      if (Index::Number(*own, index)) changed = true;
    } else {
      tellChanges();
      Index::Number(record.Get(), index);
    }
  }
  tellChanges();
}

template <typename Traits>
void RecordList<Traits>::ReleaseAll() {
  Records released;
  released.swap(m_records);
  ForgetKeys();
}

template <typename Traits>
void RecordList<Traits>::Swap(RecordList& other) {
  m_records.swap(other.m_records);
  ForgetKeys();
  other.ForgetKeys();
}

template <typename Traits>
bool RecordList<Traits>::Replace(const Records& before, Records& after) {
  if (!std::equal(m_records.begin(), m_records.end(), before.begin(), before.end(),
                  [](const Record& a, const Record& b) { return a.Get() == b.Get(); })) {
    return false;
  }
  m_records.swap(after);
  ForgetKeys();
  return true;
}

template <typename Traits>
template <typename Match>
HRESULT RecordList<Traits>::FindFrom(std::size_t first, Match match, Interface** out) const {
  for (std::size_t position = first; position < m_records.size(); ++position) {
    const Held record = At(position);
    if (!match(record)) continue;
    *out = Record(record.Get()).Detach();
    return S_OK;
  }
  return E_FAIL;
}

template <typename Traits>
template <typename Key>
HRESULT RecordList<Traits>::FindBy(UINT value, Interface** out) {
  auto& order = std::get<Order<Key>>(m_keys);
  std::size_t from = 0;
  if (const std::optional<std::size_t> place = order.Find(m_records, value, from)) {
    *out = Record(m_records[*place]).Detach();
    return S_OK;
  }
  std::size_t asked = 0;
  const HRESULT hr = FindFrom(
      from,
      [&asked, value](const Held& record) {
        ++asked;
        return ValueOf<Key>(record) == value;
      },
      out);
  order.Asked(m_records, asked);
  return hr;
}

template <typename Traits>
bool RecordList<Traits>::HasDirtyRecord() const {
  for (std::size_t position = 0; position < m_records.size(); ++position) {
    typename Traits::Flag dirty = 0;
    At(position)->GetDirty(&dirty);
    if (dirty != 0) return true;
  }
  return false;
}

template <typename Traits>
std::size_t RecordList<Traits>::PlaceFor(UINT key) {
  std::size_t position = 0;
  const auto known = std::get<Order<Index>>(m_keys).FindNotBelow(m_records, key, position);
  if (known) return *known;
  for (; position < m_records.size(); ++position) {
    const std::optional<UINT> other = IndexOf(At(position));
    if (other && *other >= key) return position;
  }
  return m_records.size();
}

template <typename Traits>
void RecordList<Traits>::InsertAt(std::size_t position, Interface* record) {
  if (m_records.size() == m_records.capacity()) {
    const std::size_t capacity = m_records.capacity();
    m_records.reserve(std::max(capacity + 1, capacity + capacity / 2));
  }
  Record carried(record);
  // The list may have become shorter while its records were asked.
  position = std::min(position, m_records.size());
  // By exchanging: moving each would test every place for what it held.
  for (std::size_t place = position; place < m_records.size(); ++place) {
    std::swap(m_records[place], carried);
  }
  m_records.push_back(std::move(carried));
  NoteListed(record);
  ForAllKeys([=, this](auto& order) { order.Inserted(m_records, position); });
}
