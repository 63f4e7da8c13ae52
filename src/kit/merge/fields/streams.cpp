#include "kit/merge/fields/streams.h"

#include <algorithm>

#include "kit/merge/fields/values.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::StreamList;

namespace merge {
namespace {

using Entry = std::vector<BYTE>;

std::vector<Entry> EntriesIn(const Channel& channel, const StreamList& list) {
  std::vector<Entry> entries;
  const std::size_t count = CountIn(channel, list.countOffset, list.capacity);
  for (std::size_t i = 0; i < count; ++i) {
    const BYTE* place = EntryIn(channel, list, i);
    entries.emplace_back(place, place + list.entrySize);
  }
  return entries;
}

std::uint32_t EntryNumber(const Entry& entry, const Field& row) {
  const BYTE* place = entry.data() + row.offset;
  return row.form == Form::Language ? station_blocks::FetchLanguage(place)
                                    : station_blocks::Fetch(place, row.width);
}

bool HaveSame(const Entry& a, const Entry& b, const StreamList& list, std::string_view attribute) {
  const Field& row =
      *station_blocks::FindField(station_blocks::EntryFields(list.entrySize), attribute);
  return EntryNumber(a, row) == EntryNumber(b, row);
}

bool AreSame(const Entry& a, const Entry& b, const StreamList& list) {
  return std::ranges::all_of(station_blocks::EntryFields(list.entrySize), [&](const Field& row) {
    return EntryNumber(a, row) == EntryNumber(b, row);
  });
}

std::size_t SelectedAmong(const std::vector<Entry>& entries, const std::vector<Entry>& old,
                          std::size_t selected, const StreamList& list) {
  if (selected >= old.size()) return 0;
  const Entry& was = old[selected];
  const auto place = [&entries](auto fits) {
    return static_cast<std::size_t>(std::ranges::find_if(entries, fits) - entries.begin());
  };
  const std::size_t samePid =
      place([&](const Entry& entry) { return HaveSame(entry, was, list, "pid"); });
  if (samePid < entries.size()) return samePid;
  const std::size_t alike = place([&](const Entry& entry) {
    return HaveSame(entry, was, list, "type") && HaveSame(entry, was, list, "lang");
  });
  return alike < entries.size() ? alike : 0;
}

bool CombineList(const StreamRule& rule, const Channel& scan, Channel& channel) {
  const StreamList& list = *rule.list;
  const std::vector<Entry> old = EntriesIn(channel, list);
  const std::vector<Entry> entries = EntriesIn(scan, list);
  const auto same = [&list](const Entry& a, const Entry& b) { return AreSame(a, b, list); };
  if (std::ranges::equal(entries, old, same)) return false;
  BYTE* block = channel.block.data();
  if (rule.selected != nullptr) {
    const std::size_t selected = NumberIn(channel, *rule.selected);
    SetNumber(channel, *rule.selected,
              static_cast<std::uint32_t>(SelectedAmong(entries, old, selected, list)));
  }
  std::fill_n(block + list.offset, std::size_t{list.capacity} * list.entrySize, BYTE{0});
  for (std::size_t i = 0; i < entries.size(); ++i) {
    std::ranges::copy(entries[i], block + list.offset + i * list.entrySize);
  }
  station_blocks::Store(block + list.countOffset, 4, static_cast<std::uint32_t>(entries.size()));
  return true;
}

bool CombineComponents(const ComponentList& parts, const Channel& scan, Channel& channel) {
  const std::size_t count = CountIn(scan, parts.countOffset, parts.capacity);
  bool isSame = count == CountIn(channel, parts.countOffset, parts.capacity);
  const BYTE* theirs = scan.block.data();
  BYTE* ours = channel.block.data();
  for (std::size_t i = 0; isSame && i < count; ++i) {
    const std::size_t name = parts.nameOffset + i * parts.nameWidth;
    const std::size_t type = parts.typeOffset + i * 4;
    isSame = UpToZero(theirs + name, parts.nameWidth) == UpToZero(ours + name, parts.nameWidth) &&
             station_blocks::Fetch(theirs + type, 4) == station_blocks::Fetch(ours + type, 4);
  }
  if (isSame) return false;
  std::copy_n(theirs + parts.nameOffset, std::size_t{parts.capacity} * parts.nameWidth,
              ours + parts.nameOffset);
  std::copy_n(theirs + parts.typeOffset, std::size_t{parts.capacity} * 4, ours + parts.typeOffset);
  station_blocks::Store(ours + parts.countOffset, 4, static_cast<std::uint32_t>(count));
  return true;
}

}  // namespace

bool CombineStreams(const FieldTable& table, const Channel& scan, Channel& channel) {
  bool isChanged = false;
  for (const StreamRule& rule : table.Streams()) {
    if (CombineList(rule, scan, channel)) isChanged = true;
  }
  const ComponentList* parts = table.Components();
  if (parts != nullptr && CombineComponents(*parts, scan, channel)) isChanged = true;
  return isChanged;
}

}  // namespace merge

}  // namespace zortunedex::kit
