#pragma once

#include <cstdint>
#include <iterator>
#include <list>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/lack_of_memory.h"

/// Builds a list by inserting many items, each in front of the first one whose key is greater than
/// or equal to its own, else at the end: the same order as scanning the list for every item, in
/// O(n log n) over all, whatever the order of the keys. An item may be placed by one key and stay
/// in the list under another.
///
/// The item that a scan stops at is always greater than every one in front of it, so only those are
/// kept in a searchable form. While keys ascend nothing but an array grows.
///
/// Functions that raise (std::bad_alloc) leave everything as it was before the call.
template <typename T, typename Key = std::uint32_t>
class BulkInsert {
 public:
  /// Adds an item of the list as it stands, at its end. No scan stops at one without a key.
  void Append(T item, std::optional<Key> key) {
    m_ascending.push_back({std::move(item), key});
    if (key && (!m_greatest || *m_greatest < *key)) m_greatest = key;
  }

  /// Inserts one item; no Append may follow.
  void Insert(T item, Key key) { Insert(std::move(item), key, key); }
  /// Places the item by `key`; later ones are compared with `storedKey`.
  void Insert(T item, Key key, Key storedKey) {
    if (!m_scattered && (!m_greatest || *m_greatest < key)) {
      Append(std::move(item), storedKey);
      return;
    }
    if (!m_scattered) Scatter();
    const auto stop = m_maxima.lower_bound(key);
    const Node node = m_sequence.insert(stop == m_maxima.end() ? m_sequence.end() : stop->second,
                                        std::move(item));
    // No scan stops at an item that a greater one stands in front of.
    if (stop != m_maxima.begin() && !(std::prev(stop)->first < storedKey)) return;
    const bool covers = stop != m_maxima.end() && stop->first < storedKey;
    const WhenRaised takeOut([this, node] { m_sequence.erase(node); });
    const auto made = m_maxima.insert_or_assign(stop, storedKey, node);
    if (covers) m_maxima.erase(stop, made);
  }

  /// The items in their order. The object is empty afterwards.
  std::vector<T> Take() {
    std::vector<T> items;
    items.reserve(m_ascending.size() + m_sequence.size());
    for (Entry& entry : m_ascending) items.push_back(std::move(entry.item));
    std::move(m_sequence.begin(), m_sequence.end(), std::back_inserter(items));
    *this = BulkInsert();
    return items;
  }

 private:
  struct Entry {
    T item;
    std::optional<Key> key;
  };
  using Node = typename std::list<T>::iterator;

  // From the array to the linked list.
  void Scatter() {
    std::list<T> sequence;
    std::map<Key, Node> maxima;
    for (const Entry& entry : m_ascending) {
      sequence.push_back(entry.item);
      if (entry.key && (maxima.empty() || maxima.rbegin()->first < *entry.key)) {
        maxima.emplace_hint(maxima.end(), *entry.key, std::prev(sequence.end()));
      }
    }
    m_sequence = std::move(sequence);
    m_maxima = std::move(maxima);
    m_ascending.clear();
    m_scattered = true;
  }

  std::vector<Entry> m_ascending;
  std::optional<Key> m_greatest;
  bool m_scattered = false;
  std::list<T> m_sequence;
  std::map<Key, Node> m_maxima;
};
