#include "kit/merge/fields/differences.h"

#include <algorithm>
#include <array>
#include <optional>

#include "kit/merge/fields/values.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::StreamList;

namespace merge {
namespace {

class Differ {
 public:
  Differ(const FieldTable& table, const Versions& versions, const Utf8Of& utf8)
      : m_table(table), m_utf8(utf8) {
    const Channel* const given[] = {versions.list, versions.base, versions.scan, versions.result};
    for (std::size_t i = 0; i < m_of.size(); ++i) {
      if (given[i] != nullptr) m_of[i] = Whole(*given[i], table.Layout());
    }
  }

  std::vector<FieldChange> Run(const Conflicts& conflicts) {
    for (const FieldRule& rule : m_table.Fields()) {
      const bool isConflict = (conflicts.ofName && rule.rule == Rule::Name) ||
                              (conflicts.ofTuning && rule.rule == Rule::Tuning && IsAtOdds(rule));
      if (isConflict || !IsSame(*m_of.front(), *m_of.back(), *rule.row)) AddField(*rule.row);
    }
    for (const StreamRule& rule : m_table.Streams()) {
      if (rule.selected != nullptr && !IsSame(*m_of.front(), *m_of.back(), *rule.selected)) {
        AddField(*rule.selected);
      }
    }
    for (const StreamRule& rule : m_table.Streams()) AddList(*rule.list);
    if (m_table.Components() != nullptr) AddComponents(*m_table.Components());
    return std::move(m_changes);
  }

 private:
  /// Tuning that the user and the scan changed in different ways.
  bool IsAtOdds(const FieldRule& rule) const {
    const auto& [list, base, scan, result] = m_of;
    return base && scan && !IsSame(*list, *base, *rule.row) && !IsSame(*list, *scan, *rule.row);
  }

  /// Adds what the four have, asked one by one, where list and result differ.
  template <typename ValueOf>
  void Add(const std::string& field, bool isAlways, ValueOf valueOf) {
    std::array<FieldValue, 4> values;
    for (std::size_t i = 0; i < m_of.size(); ++i) {
      if (m_of[i]) values[i] = valueOf(*m_of[i]);
    }
    if (!isAlways && values.front() == values.back()) return;
    m_changes.push_back({field, values[0], values[1], values[2], values[3]});
  }

  void AddField(const Field& row) {
    Add(row.attribute, true,
        [&](const Channel& channel) { return ShownValue(channel, row, m_utf8); });
  }

  std::size_t LongestCount(std::size_t countOffset, std::size_t capacity) const {
    return std::max(CountIn(*m_of.front(), countOffset, capacity),
                    CountIn(*m_of.back(), countOffset, capacity));
  }

  static std::string EntryName(const char* element, std::size_t i, const char* attribute) {
    return std::string(element) + "[" + std::to_string(i + 1) + "]." + attribute;
  }

  void AddList(const StreamList& list) {
    const std::size_t count = LongestCount(list.countOffset, list.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      for (const Field& row : station_blocks::EntryFields(list.entrySize)) {
        Add(EntryName(list.element, i, row.attribute), false,
            [&](const Channel& channel) -> FieldValue {
              if (i >= CountIn(channel, list.countOffset, list.capacity)) return {};
              return ShownValue(EntryIn(channel, list, i) + row.offset, row, m_utf8);
            });
      }
    }
  }

  void AddComponents(const ComponentList& parts) {
    const Field rows[] = {{"name", parts.nameOffset, parts.nameWidth, Form::Text},
                          {"type", parts.typeOffset, 4}};
    const std::size_t count = LongestCount(parts.countOffset, parts.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      for (const Field& row : rows) {
        Add(EntryName("Components", i, row.attribute), false,
            [&](const Channel& channel) -> FieldValue {
              if (i >= CountIn(channel, parts.countOffset, parts.capacity)) return {};
              return ShownValue(channel.block.data() + row.offset + i * row.width, row, m_utf8);
            });
      }
    }
  }

  const FieldTable& m_table;
  const Utf8Of& m_utf8;
  std::array<std::optional<Channel>, 4> m_of;  ///< list, base, scan, result
  std::vector<FieldChange> m_changes;
};

}  // namespace

std::vector<FieldChange> DifferencesOf(const FieldTable& table, const Versions& versions,
                                       const Conflicts& conflicts, const Utf8Of& utf8) {
  return Differ(table, versions, utf8).Run(conflicts);
}

}  // namespace merge

}  // namespace zortunedex::kit
