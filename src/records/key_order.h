#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <vector>

#include "platform/com_ptr.h"
#include "records/own_record.h"

/// What a list knows about one value of its records, so that it need not ask all of them for it.
/// `C` is the class of the library's own records and `I` their interface; `Kind::Of(const C&)` is
/// the value, none where the record does not tell.
///
/// Known is how many records at the front are our own and have values that never fall: among them a
/// value is found by halving. It grows as lookups go along, so that none ever looks at more records
/// than a scan from the front would. A list of our own whose values do fall is put into a table
/// when enough records were asked in vain; where there is no memory for it, scans go on.
///
/// Our own records count their changes; see ChangeCount.
template <typename C, typename I, typename Kind>
class KeyOrder {
 public:
  using Records = std::vector<ComPtr<I>>;

  KeyOrder() = default;
  /// A copy knows nothing.
  KeyOrder(const KeyOrder&) : KeyOrder() {}
  KeyOrder& operator=(const KeyOrder&) {
    Forget();
    return *this;
  }

  /// The place of the first record with that value when that is known; else none, and the scan for
  /// it starts at `from`.
  std::optional<std::size_t> Find(const Records& records, std::uint32_t key, std::size_t& from) {
    Refresh();
    if (m_table) return FindInTable(records, key, from);
    GrowUntil(records, key);
    const std::size_t place = FirstNotBelow(records, key);
    if (place < m_known && ValueAt(records, place) == key) return place;
    // Greater values follow, until the first that falls.
    while (Grow(records)) continue;
    from = m_known;
    return std::nullopt;
  }

  /// The same for the first record whose value is not smaller.
  std::optional<std::size_t> FindNotBelow(const Records& records, std::uint32_t key,
                                          std::size_t& from) {
    Refresh();
    GrowUntil(records, key);
    const std::size_t place = FirstNotBelow(records, key);
    if (place < m_known) return place;
    from = m_known;
    return std::nullopt;
  }

  /// A scan asked that many records behind the known ones.
  void Asked(const Records& records, std::size_t count) {
    m_asked += count;
    if (m_asked / kScansBeforeTable <= records.size()) return;
    m_asked = 0;
    MakeTable(records);
  }

  /// The array changed: a record was put in, or taken out, at that place.
  void Inserted(const Records& records, std::size_t place) {
    ForgetTable();
    if (place > m_known) return;
    const std::optional<std::uint32_t> value = OwnValueAt(records, place);
    const bool fits = value && (place == 0 || ValueAt(records, place - 1) <= *value) &&
                      (place == m_known || *value <= ValueAt(records, place + 1));
    m_known = fits ? m_known + 1 : place;
  }
  void Removed(std::size_t place) {
    ForgetTable();
    if (place < m_known) --m_known;
  }
  void Forget() {
    ForgetTable();
    m_known = 0;
  }

 private:
  // Scans that would have been spared before a table is made.
  static constexpr std::size_t kScansBeforeTable = 8;

  struct Entry {
    std::uint32_t value;
    std::size_t place;
    bool operator<(const Entry& other) const {
      return value != other.value ? value < other.value : place < other.place;
    }
  };

  static std::optional<std::uint32_t> OwnValueAt(const Records& records, std::size_t place) {
    const C* own = C::From(records[place].Get());
    return own == nullptr ? std::nullopt : Kind::Of(*own);
  }
  // Of a known record.
  static std::uint32_t ValueAt(const Records& records, std::size_t place) {
    return Kind::Of(*static_cast<const C*>(records[place].Get())).value_or(0);
  }

  void Refresh() {
    const std::uint64_t now = ChangeCount<Kind>::Now();
    if (m_changes == now) return;
    m_changes = now;
    Forget();
  }
  // One more known record; false when there is none.
  bool Grow(const Records& records) {
    if (m_known >= records.size()) return false;
    const std::optional<std::uint32_t> value = OwnValueAt(records, m_known);
    if (!value || (m_known > 0 && *value < ValueAt(records, m_known - 1))) return false;
    ++m_known;
    return true;
  }
  void GrowUntil(const Records& records, std::uint32_t key) {
    while (m_known == 0 || ValueAt(records, m_known - 1) < key) {
      if (!Grow(records)) return;
    }
  }
  // Among the known ones; their number when all are smaller.
  std::size_t FirstNotBelow(const Records& records, std::uint32_t key) const {
    if (m_known == 0 || ValueAt(records, m_known - 1) < key) return m_known;
    // Lists are numbered from 1, and loaded ones from 0.
    for (const std::uint64_t guess : {std::uint64_t{key} - 1, std::uint64_t{key}}) {
      if (guess >= m_known) continue;
      const auto place = static_cast<std::size_t>(guess);
      if (ValueAt(records, place) != key) continue;
      if (place == 0 || ValueAt(records, place - 1) < key) return place;
    }
    const auto begin = records.begin();
    const auto found = std::lower_bound(
        begin, begin + static_cast<std::ptrdiff_t>(m_known), key,
        [](const ComPtr<I>& record, std::uint32_t value) {
          return Kind::Of(*static_cast<const C*>(record.Get())).value_or(0) < value;
        });
    return static_cast<std::size_t>(found - begin);
  }

  std::optional<std::size_t> FindInTable(const Records& records, std::uint32_t key,
                                         std::size_t& from) const {
    const Entry* const end = m_table.get() + m_entries;
    const Entry* const found =
        std::lower_bound(static_cast<const Entry*>(m_table.get()), end, Entry{key, 0});
    if (found != end && found->value == key) return found->place;
    from = records.size();
    return std::nullopt;
  }
  // Nothing without memory, and for a list with records of a host: those are always asked.
  void MakeTable(const Records& records) {
    std::unique_ptr<Entry[]> table(new (std::nothrow) Entry[records.size()]);
    if (!table) return;
    std::size_t entries = 0;
    for (std::size_t place = 0; place < records.size(); ++place) {
      const C* own = C::From(records[place].Get());
      if (own == nullptr) return;
      if (const std::optional<std::uint32_t> value = Kind::Of(*own)) {
        table[entries++] = {*value, place};
      }
    }
    std::sort(table.get(), table.get() + entries);
    m_table = std::move(table);
    m_entries = entries;
  }
  void ForgetTable() {
    m_table.reset();
    m_asked = 0;
  }

  std::uint64_t m_changes = 0;
  std::size_t m_known = 0;
  std::size_t m_asked = 0;
  std::unique_ptr<Entry[]> m_table;
  std::size_t m_entries = 0;
};
