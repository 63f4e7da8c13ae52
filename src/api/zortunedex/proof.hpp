// What a file gives back of a channel, and saving that is tried before it is done.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "api/zortunedex/opened.hpp"

namespace zortunedex::detail {

/// Compares a channel that was to be stored with what came back, by what the file keeps.
class Comparison {
 public:
  Comparison(const channel& meant, const channel& found)
      : m_meant(Inside::Of(meant)),
        m_found(Inside::Of(found)),
        m_layout(Inside::ContextOf(meant)->BlockLayout()) {}

  /// The name of the first thing that differs; empty where nothing does.
  std::string_view First() const {
    if (m_meant.index != m_found.index) return "index";
    std::string_view different;
    ForEachRow(m_layout, [&](const Field& row) {
      if (different.empty() && row.use == Use::Both && !IsSame(row)) different = row.attribute;
    });
    if (!different.empty()) return different;
    for (const StreamList& list : m_layout.lists) {
      if (list.use == Use::Both && !AreSame(list)) return list.element;
    }
    return m_layout.components == nullptr || AreSame(*m_layout.components) ? "" : "Components";
  }

 private:
  bool IsSame(const Field& row) const {
    switch (row.source) {
      case Source::DisplayName:  // an empty one is filled by the record
        return m_meant.displayName.empty() || m_meant.displayName == m_found.displayName;
      case Source::Index:
        return true;
      case Source::PhysicalChannel:
        return m_meant.number == m_found.number;
      case Source::Frequency:
        return m_meant.frequency == m_found.frequency;
      case Source::OffsetFrequency:
        return m_meant.offset == m_found.offset;
      case Source::TransportStream:
        return m_meant.tsid == m_found.tsid;
      case Source::Favorite:
        return m_meant.favorite == m_found.favorite;
      case Source::Lock:
        return m_meant.lock == m_found.lock;
      case Source::Block:
      case Source::Name:
        break;
    }
    if (!IsText(row.form)) return AreSame(row.offset, row.width);
    return TextAt(m_meant, row.offset, row.width) == TextAt(m_found, row.offset, row.width);
  }
  bool AreSame(const StreamList& list) const {
    const std::size_t count = Count(list.countOffset, list.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      for (const Field& row : station_blocks::EntryFields(list.entrySize)) {
        const std::size_t place = list.offset + i * list.entrySize + row.offset;
        if (FetchNumber(m_meant.block.data() + place, row) !=
            FetchNumber(m_found.block.data() + place, row)) {
          return false;
        }
      }
    }
    return true;
  }
  bool AreSame(const station_blocks::ComponentList& list) const {
    for (std::size_t i = 0; i < Count(list.countOffset, list.capacity); ++i) {
      const std::size_t name = list.nameOffset + i * list.nameWidth;
      if (TextAt(m_meant, name, list.nameWidth) != TextAt(m_found, name, list.nameWidth) ||
          !AreSame(list.typeOffset + 4 * i, 4)) {
        return false;
      }
    }
    return true;
  }
  bool AreSame(std::size_t place, std::size_t width) const {
    return station_blocks::Fetch(m_meant.block.data() + place, width) ==
           station_blocks::Fetch(m_found.block.data() + place, width);
  }
  std::size_t Count(std::size_t offset, std::size_t capacity) const {
    return std::min<std::size_t>(station_blocks::Fetch(m_meant.block.data() + offset, 4), capacity);
  }
  static std::string_view TextAt(const Values& values, std::size_t offset, std::size_t width) {
    return UpToZero(values.block.data() + offset, width);
  }

  const Values& m_meant;
  const Values& m_found;
  const Layout& m_layout;
};

/// Raises an error that names the first thing that did not come back.
template <typename Channels, typename Others>
void RequireSame(const Channels& meant, const Others& found, const std::string& file) {
  if (meant.size() != found.size()) {
    throw error(E_FAIL, "save", file,
                "it would hold " + std::to_string(found.size()) + " channels and not " +
                    std::to_string(meant.size()));
  }
  auto other = found.begin();
  for (const channel& expected : meant) {
    const std::string_view different = Comparison(expected, *other++).First();
    if (different.empty()) continue;
    throw error(E_FAIL, "save", file,
                "it would not hold " + std::string(different) + " of channel " +
                    std::to_string(expected.index()));
  }
}

/// Changes a file of a directory: first all is done with copies in another place, and what came out
/// is judged there; then it is done in the directory itself, and the bytes are compared. So the
/// file is what was judged, or an error is raised; then it is as it was, unless somebody else
/// changed it meanwhile.
class ProvenSave {
 public:
  /// `file` is written; `other`, if any, is looked at meanwhile.
  ProvenSave(const Location& location, const char* file, const char* other = nullptr)
      : m_location(location), m_file(file), m_before(ReadBytes(location.directory / file)) {
    m_scratch.Copy(file, m_before);
    if (other != nullptr) m_scratch.Copy(other, ReadBytes(location.directory / other));
  }

  /// The place of the copies.
  Location Copies() const { return m_location.CopyIn(m_scratch.Path()); }

  /// write(location) changes a directory, judge(location) raises an error for one that is not what
  /// was meant.
  template <typename Write, typename Judge>
  void Run(Write write, Judge judge) const {
    const Location copies = Copies();
    write(copies);
    const std::optional<std::string> meant = ReadBytes(copies.directory / m_file);
    try {
      judge(copies);
    } catch (const error& raised) {
      if (meant != m_before) throw;
      Refuse(raised.result(), "a copy of it stayed as it was: " + raised.reason());
    }
    if (meant == m_before) return;
    if (Now() != m_before) Refuse(E_FAIL, "it was changed by somebody else meanwhile");
    write(m_location);
    const std::optional<std::string> now = Now();
    if (now == meant) return;
    Refuse(E_FAIL, now == m_before ? "it cannot be written; it is as it was"
                                   : "somebody else wrote it at the same time");
  }

 private:
  std::optional<std::string> Now() const { return ReadBytes(m_location.directory / m_file); }
  [[noreturn]] void Refuse(HRESULT result, const std::string& reason) const {
    throw error(result, "save", m_location.File(m_file), reason);
  }

  Location m_location;
  const char* m_file;
  std::optional<std::string> m_before;
  Scratch m_scratch;
};

}  // namespace zortunedex::detail
