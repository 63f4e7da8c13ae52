#include "kit/interchange/services/channel_values.h"

#include <algorithm>

#include "kit/model/channel_layout.h"
#include "kit/text/utf.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Rows;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

namespace interchange {
namespace {

void AddRows(Rows<Field> rows, std::vector<Column>& columns) {
  const Field* last = nullptr;
  for (const Field& row : rows) {
    const bool again = last != nullptr && last->width != 0 && last->offset == row.offset;
    if (!again) columns.push_back({row.attribute, &row});
    last = &row;
  }
}

std::size_t CountOf(const Channel& channel, std::size_t offset, std::size_t capacity) {
  return std::min<std::size_t>(station_blocks::Fetch(channel.block.data() + offset, 4), capacity);
}

FieldValue BlockTextOf(const BYTE* place, std::size_t width, const NarrowText& narrow) {
  return utf::FromWide(narrow.ToWide(UpToZero(place, width)));
}

EntryValues ComponentOf(const BYTE* block, const ComponentList& parts, std::size_t i,
                        const NarrowText& narrow) {
  const std::uint32_t type = station_blocks::Fetch(block + parts.typeOffset + i * 4, 4);
  return {BlockTextOf(block + parts.nameOffset + i * parts.nameWidth, parts.nameWidth, narrow),
          std::int64_t{static_cast<std::int32_t>(type)}};
}

}  // namespace

std::vector<Column> ColumnsOf(InputSignalType signal) {
  const Layout& layout = LayoutOf(signal);
  std::vector<Column> columns;
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    AddRows(rows, columns);
  }
  for (const StreamList& list : layout.lists) columns.push_back({list.element, nullptr, &list});
  if (layout.components != nullptr) {
    columns.push_back({"Components", nullptr, nullptr, layout.components});
  }
  return columns;
}

FieldValue ValueOf(const Channel& channel, const Field& field, const NarrowText& narrow) {
  if (field.source == Source::DisplayName) return utf::FromWide(channel.displayName);
  if (field.source == Source::Block || field.source == Source::Name) {
    return ReadFieldValue(channel.block.data() + field.offset, field, narrow);
  }
  const std::uint32_t value = SourceValue(channel, field.source);
  return std::int64_t{static_cast<std::int32_t>(value)};
}

std::vector<EntryValues> EntriesOf(const Channel& channel, const Column& column,
                                   const NarrowText& narrow) {
  std::vector<EntryValues> entries;
  const BYTE* block = channel.block.data();
  if (column.components != nullptr) {
    const ComponentList& parts = *column.components;
    const std::size_t count = CountOf(channel, parts.countOffset, parts.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      entries.push_back(ComponentOf(block, parts, i, narrow));
    }
    return entries;
  }
  const StreamList& list = *column.list;
  const std::size_t count = CountOf(channel, list.countOffset, list.capacity);
  for (std::size_t i = 0; i < count; ++i) {
    const BYTE* place = block + list.offset + i * list.entrySize;
    EntryValues& entry = entries.emplace_back();
    for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
      entry.push_back(ReadFieldValue(place + field.offset, field, narrow));
    }
  }
  return entries;
}

std::vector<const char*> EntryNames(const Column& column) {
  if (column.components != nullptr) return {"name", "type"};
  std::vector<const char*> names;
  for (const Field& field : station_blocks::EntryFields(column.list->entrySize)) {
    names.push_back(field.attribute);
  }
  return names;
}

}  // namespace interchange

}  // namespace zortunedex::kit
