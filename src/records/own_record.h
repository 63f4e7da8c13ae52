// What lists know of the library's own records, beyond the interface that a host may implement too.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "core/gen_com_obj.h"

/// Counts, for the whole process, how often a value of that kind changed in a record that a list
/// may have looked at. A list that learnt something of its records' values sees by it whether that
/// still holds. It needs no order of its own: who changes a record that a list on another thread
/// holds has to keep the two apart anyway, and then the count is seen with the value.
template <typename Kind>
class ChangeCount {
 public:
  static std::uint64_t Now() { return s_count.load(std::memory_order_relaxed); }
  static void Add() { s_count.fetch_add(1, std::memory_order_relaxed); }

 private:
  static inline std::atomic<std::uint64_t> s_count{0};
};

/// Base of the record class `C` that implements the interface `I`.
template <typename C, typename I>
class OwnRecord : public CGenComObj<C, I> {
 public:
  /// The record behind the interface when it is exactly of class `C`, else null: a host may
  /// implement records of its own, also by deriving from `C`. Told by the table of methods; not for
  /// null. Methods of such a record call nobody back.
  static C* From(I* record) {
    return TableOfMethods(record) == s_table ? static_cast<C*>(record) : nullptr;
  }
  static const C* From(const I* record) {
    return TableOfMethods(record) == s_table ? static_cast<const C*>(record) : nullptr;
  }

  /// Called by every list that takes the record in. From then on changes are counted, for good: the
  /// record does not know how many lists hold it.
  void SetListed() { m_isListed.store(true, std::memory_order_relaxed); }

 protected:
  /// Stores a value that lists find records by.
  template <typename Kind, typename T>
  void StoreKey(T& field, T value) {
    const bool changes = field != value;
    field = value;
    NoteChange<Kind>(changes);
  }
  /// The same for a value that is stored already.
  template <typename Kind>
  void NoteChange(bool changed) {
    if (changed && m_isListed.load(std::memory_order_relaxed)) ChangeCount<Kind>::Add();
  }

 private:
  static const void* TableOfMethods(const I* object) {
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(object), sizeof(table));
    return table;
  }
  static const void* const s_table;

  std::atomic<bool> m_isListed{false};
};

template <typename C, typename I>
const void* const OwnRecord<C, I>::s_table = [] {
  const C ours;
  return TableOfMethods(&ours);
}();
