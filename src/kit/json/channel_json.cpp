#include "kit/json/channel_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "kit/text/utf.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;
using station_blocks::ComponentList;
using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Rows;
using station_blocks::Source;
using station_blocks::StreamList;

namespace channel_json {
namespace {

class Viewer {
 public:
  Viewer(const Channel& channel, const NarrowText& narrow)
      : m_block(channel.block.data()), m_narrow(narrow) {}

  ordered_json View(const Layout& layout) const {
    ordered_json view = ordered_json::object();
    AddRows(layout.channel, view);
    AddRows(layout.elementStreams, view);
    for (const StreamList& list : layout.lists) view[list.element] = Entries(list);
    if (layout.components != nullptr) view["Components"] = Components(*layout.components);
    if (!layout.satelliteParams.Empty()) {
      ordered_json params = ordered_json::object();
      AddRows(layout.satelliteParams, params);
      view["SatelliteParams"] = std::move(params);
    }
    return view;
  }

 private:
  ordered_json Value(const BYTE* place, const Field& field) const {
    return ToJson(ReadFieldValue(place, field, m_narrow));
  }

  ordered_json Text(const BYTE* place, std::size_t width) const {
    return utf::FromWide(m_narrow.ToWide(UpToZero(place, width)));
  }

  /// Rows whose value stands in the block alone. Two rows of one place are two spellings of one
  /// attribute: the first is shown.
  void AddRows(Rows<Field> rows, ordered_json& view) const {
    const Field* last = nullptr;
    for (const Field& field : rows) {
      if (field.source != Source::Block || field.width == 0) continue;
      if (last != nullptr && last->offset == field.offset) continue;
      view[field.attribute] = Value(m_block + field.offset, field);
      last = &field;
    }
  }

  std::size_t Count(std::size_t countOffset, std::size_t capacity) const {
    return std::min<std::size_t>(station_blocks::Fetch(m_block + countOffset, 4), capacity);
  }

  ordered_json Entries(const StreamList& list) const {
    ordered_json entries = ordered_json::array();
    const std::size_t count = Count(list.countOffset, list.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      ordered_json entry = ordered_json::object();
      const BYTE* place = m_block + list.offset + i * list.entrySize;
      for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
        entry[field.attribute] = Value(place + field.offset, field);
      }
      entries.push_back(std::move(entry));
    }
    return entries;
  }

  ordered_json Components(const ComponentList& parts) const {
    ordered_json entries = ordered_json::array();
    const std::size_t count = Count(parts.countOffset, parts.capacity);
    for (std::size_t i = 0; i < count; ++i) {
      const BYTE* type = m_block + parts.typeOffset + i * 4;
      entries.push_back(
          {{"name", Text(m_block + parts.nameOffset + i * parts.nameWidth, parts.nameWidth)},
           {"type", static_cast<std::int32_t>(station_blocks::Fetch(type, 4))}});
    }
    return entries;
  }

  const BYTE* m_block;
  const NarrowText& m_narrow;
};

}  // namespace

ordered_json ToJson(const FieldValue& value) {
  if (const auto* mark = std::get_if<bool>(&value)) return *mark;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  return nullptr;
}

ordered_json Summary(const Channel& channel) {
  ordered_json object = ordered_json::object();
  for (const RecordField& field : RecordFields()) object[field.name] = ToJson(field.read(channel));
  return object;
}

ordered_json Block(const Channel& channel, InputSignalType signal, const NarrowText& narrow) {
  const Layout* layout = station_blocks::Find(signal);
  if (layout == nullptr || channel.block.size() < layout->size) return ordered_json::object();
  return Viewer(channel, narrow).View(*layout);
}

ordered_json Whole(const Channel& channel, InputSignalType signal, const NarrowText& narrow) {
  ordered_json object = Summary(channel);
  object["block"] = Block(channel, signal, narrow);
  return object;
}

}  // namespace channel_json

}  // namespace zortunedex::kit
