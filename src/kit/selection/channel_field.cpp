#include "kit/selection/channel_field.h"

#include "kit/failure.h"
#include "kit/text/ascii.h"
#include "kit/text/nearest.h"
#include "kit/text/printable.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;

namespace {

constexpr std::string_view kBlock = "block.";
constexpr std::string_view kParams = "SatelliteParams.";
constexpr std::string_view kComponents = "Components";

/// Rows that a channel shows as its block's, with the element that they stand below in JSON.
template <typename Take>
void ForEachRow(const Layout& layout, Take take) {
  for (const auto& rows : {layout.channel, layout.elementStreams, layout.satelliteParams}) {
    const Field* last = nullptr;
    for (const Field& row : rows) {
      if (row.source != Source::Block || row.width == 0) continue;
      // Two rows of one place are two spellings of one attribute.
      if (last == nullptr || last->offset != row.offset) take(row);
      last = &row;
    }
  }
}

bool RemovePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

std::vector<Field> ComponentRows(const ComponentList& parts) {
  return {{"name", parts.nameOffset, parts.nameWidth, station_blocks::Form::Text},
          {"type", parts.typeOffset, 4}};
}

/// "LIST[N].ATTRIBUTE".
struct EntryName {
  std::string_view list;
  std::string_view number;
  std::string_view attribute;
};

std::optional<EntryName> SplitEntry(std::string_view name) {
  const std::size_t open = name.find('[');
  const std::size_t close = name.find("].", open == std::string_view::npos ? 0 : open);
  if (open == std::string_view::npos || close == std::string_view::npos) return std::nullopt;
  return EntryName{name.substr(0, open), name.substr(open + 1, close - open - 1),
                   name.substr(close + 2)};
}

std::size_t EntryNumber(const EntryName& name, std::size_t capacity) {
  return static_cast<std::size_t>(
      ParseNumber(name.number, 1, static_cast<std::int64_t>(capacity)).value_or(0));
}

/// Names behind commas; those of one list together, "AudioStream[1..16].type/pid/lang".
std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  std::string last;
  for (const std::string& name : names) {
    const std::size_t bracket = name.find("].");
    const std::string list = bracket == std::string::npos ? "" : name.substr(0, bracket + 2);
    if (!list.empty() && list == last) {
      text += "/" + name.substr(list.size());
    } else {
      text += (text.empty() ? "" : ", ") + name;
    }
    last = list;
  }
  return text;
}

/// "; the nearest is ...", where one is near: of a list the entry that is meant.
std::string NearestOf(std::string_view name, std::vector<std::string> known) {
  const std::optional<EntryName> entry = SplitEntry(name);
  for (std::string& one : known) {
    const std::optional<EntryName> range = SplitEntry(one);
    if (!entry || !range) continue;
    one = std::string(range->list) + "[" + std::string(entry->number) + "]." +
          std::string(range->attribute);
  }
  const std::optional<std::string> nearest = Nearest(name, known);
  return nearest && *nearest != name ? "; the nearest is " + *nearest : "";
}

std::string OfEntries(std::string_view list, std::size_t capacity, const char* attribute) {
  return std::string(list) + "[1.." + std::to_string(capacity) + "]." + attribute;
}

}  // namespace

ChannelField::ChannelField(InputSignalType signal, std::string_view name) : m_name(name) {
  const Layout* layout = station_blocks::Find(signal);
  std::string_view inBlock = name;
  const bool ofBlock = RemovePrefix(inBlock, kBlock);
  if (!ofBlock && FindInRecord(layout, name)) return;
  if (layout != nullptr && (FindInBlock(*layout, inBlock) || FindEntry(*layout, inBlock))) return;
  const std::vector<std::string> names = Names(signal);
  throw InvalidArgument{"channels of " + SignalTypeName(signal) + " have no field '" + m_name +
                        "'" + NearestOf(name, names) + "; the fields are " + Joined(names)};
}

bool ChannelField::FindInRecord(const Layout* layout, std::string_view name) {
  m_record = FindRecordField(name);
  if (m_record != nullptr || layout == nullptr) return m_record != nullptr;
  const Field* row = station_blocks::FindField(layout->channel, name);
  if (row == nullptr || row->source == Source::Block) return false;
  for (const RecordField& field : RecordFields()) {
    if (field.source == row->source) m_record = &field;
  }
  return m_record != nullptr;
}

bool ChannelField::FindInBlock(const Layout& layout, std::string_view name) {
  if (!layout.satelliteParams.Empty()) RemovePrefix(name, kParams);
  bool found = false;
  ForEachRow(layout, [&](const Field& row) {
    if (found || row.attribute != name) return;
    found = true;
    m_row = row;
    m_place = row.offset;
  });
  return found;
}

bool ChannelField::FindEntry(const Layout& layout, std::string_view name) {
  const std::optional<EntryName> entry = SplitEntry(name);
  if (!entry) return false;
  for (const StreamList& list : layout.lists) {
    if (entry->list != list.element) continue;
    const Field* row =
        station_blocks::FindField(station_blocks::EntryFields(list.entrySize), entry->attribute);
    m_entry = EntryNumber(*entry, list.capacity);
    if (row == nullptr || m_entry == 0) return false;
    m_row = *row;
    m_place = list.offset + (m_entry - 1) * list.entrySize + row->offset;
    m_countOffset = list.countOffset;
    return true;
  }
  if (layout.components == nullptr || entry->list != kComponents) return false;
  const ComponentList& parts = *layout.components;
  m_entry = EntryNumber(*entry, parts.capacity);
  for (const Field& row : ComponentRows(parts)) {
    if (m_entry == 0 || row.attribute != entry->attribute) continue;
    m_row = row;
    m_place = row.offset + (m_entry - 1) * row.width;
    m_countOffset = parts.countOffset;
    return true;
  }
  return false;
}

std::vector<std::string> ChannelField::Names(InputSignalType signal) {
  std::vector<std::string> names;
  for (const RecordField& field : RecordFields()) names.emplace_back(field.name);
  const Layout* layout = station_blocks::Find(signal);
  if (layout == nullptr) return names;
  ForEachRow(*layout, [&names](const Field& row) {
    const bool twice = FindRecordField(row.attribute) != nullptr;
    names.push_back((twice ? std::string(kBlock) : std::string()) + row.attribute);
  });
  for (const StreamList& list : layout->lists) {
    for (const Field& row : station_blocks::EntryFields(list.entrySize)) {
      names.push_back(OfEntries(list.element, list.capacity, row.attribute));
    }
  }
  if (layout->components == nullptr) return names;
  for (const Field& row : ComponentRows(*layout->components)) {
    names.push_back(OfEntries(kComponents, layout->components->capacity, row.attribute));
  }
  return names;
}

FieldValue ChannelField::Of(const Channel& channel, const NarrowText& narrow) const {
  if (m_record != nullptr) return m_record->read(channel);
  const std::vector<BYTE>& block = channel.block;
  if (block.size() < m_place + m_row.width) return {};
  if (m_entry != 0) {
    if (block.size() < m_countOffset + 4) return {};
    if (station_blocks::Fetch(block.data() + m_countOffset, 4) < m_entry) return {};
  }
  return ReadFieldValue(block.data() + m_place, m_row, narrow);
}

std::string FieldText(const FieldValue& value) {
  if (const auto* mark = std::get_if<bool>(&value)) return *mark ? "yes" : "no";
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* text = std::get_if<std::string>(&value)) return Printable(*text);
  return "-";
}

}  // namespace zortunedex::kit
