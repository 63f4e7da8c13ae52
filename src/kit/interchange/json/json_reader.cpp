#include "kit/interchange/json/json_reader.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/interchange/services/channel_builder.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"

using nlohmann::ordered_json;
using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Source;

namespace interchange {
namespace {

/// Nothing for what is no plain value.
FieldValue PlainValue(const ordered_json& json) {
  if (json.is_boolean()) return json.get<bool>();
  if (json.is_number_unsigned()) {
    const auto number = json.get<std::uint64_t>();
    return static_cast<std::int64_t>(std::min<std::uint64_t>(number, INT64_MAX));
  }
  if (json.is_number_integer()) return json.get<std::int64_t>();
  if (json.is_string()) return json.get<std::string>();
  return {};
}

class DocumentReader {
 public:
  DocumentReader(const ImportRequest& request, Losses& losses)
      : m_signal(request.context.signal),
        m_layout(LayoutOf(m_signal)),
        m_columns(ColumnsOf(m_signal)),
        m_losses(losses),
        m_builder(request.context, losses) {}

  void Take(const ordered_json& json, std::size_t number, ImportResult& result) {
    ++result.read;
    if (!json.is_object()) {
      return m_losses.Add(Code::LineNotUnderstood, "channels",
                          Place{static_cast<UINT>(number), {}, 0}, {});
    }
    m_builder.Begin(PlaceOf(json));
    for (const auto& [key, value] : json.items()) TakeMember(key, value);
    result.channels.push_back({m_builder.Take(), 0});
    RequireFollowing(json, result.channels.back().channel);
  }

 private:
  static Place PlaceOf(const ordered_json& json) {
    Place place;
    if (const auto index = json.find("index"); index != json.end()) {
      const FieldValue value = PlainValue(*index);
      const auto* number = std::get_if<std::int64_t>(&value);
      if (number != nullptr && *number >= 0 && *number <= UINT32_MAX) {
        place.index = static_cast<UINT>(*number);
      }
    }
    for (const char* key : {"displayName", "name"}) {
      const auto name = json.find(key);
      if (place.name.empty() && name != json.end() && name->is_string()) {
        place.name = name->get<std::string>();
      }
    }
    return place;
  }

  void TakeMember(const std::string& key, const ordered_json& value) {
    if (key == "block") return TakeBlock(value);
    const RecordField* known = FindRecordField(key);
    if (known == nullptr) return m_losses.Add(Code::KeyUnknown, key, m_builder.Here());
    // What follows from the block is looked at when the channel is made.
    if (known->source == Source::Block) return;
    for (const Field& row : m_layout.channel) {
      if (row.source == known->source) return m_builder.Set(row, PlainValue(value));
    }
    const FieldValue plain = PlainValue(value);
    if (plain != FieldValue{std::int64_t{0}} && plain != FieldValue{false}) {
      m_losses.Add(Code::NoPlace, key, m_builder.Here(), plain);
    }
  }

  void TakeBlock(const ordered_json& block) {
    if (!block.is_object()) {
      return m_losses.Add(Code::ValueOutOfRange, "block", m_builder.Here());
    }
    for (const auto& [key, value] : block.items()) {
      if (key == "SatelliteParams" && value.is_object()) {
        for (const auto& [name, parameter] : value.items()) TakeValue(name, parameter);
      } else {
        TakeValue(key, value);
      }
    }
  }

  void TakeValue(const std::string& key, const ordered_json& value) {
    for (const Column& column : m_columns) {
      if (key != column.name) continue;
      if (column.field == nullptr) return TakeEntries(column, value);
      return m_builder.Set(*column.field, PlainValue(value));
    }
    m_losses.Add(Code::KeyUnknown, key, m_builder.Here(), PlainValue(value));
  }

  void TakeEntries(const Column& column, const ordered_json& json) {
    if (!json.is_array()) {
      return m_losses.Add(Code::ValueOutOfRange, column.name, m_builder.Here());
    }
    std::vector<EntryValues> entries;
    for (const ordered_json& entry : json) {
      EntryValues& values = entries.emplace_back();
      for (const char* name : EntryNames(column)) {
        const auto member = entry.is_object() ? entry.find(name) : entry.end();
        values.push_back(entry.is_object() && member != entry.end() ? PlainValue(*member)
                                                                    : FieldValue{});
      }
    }
    m_builder.SetEntries(column, entries);
  }

  /// A service type or a mark that the block contradicts has no place of its own.
  void RequireFollowing(const ordered_json& json, const Channel& channel) {
    for (const RecordField& field : RecordFields()) {
      const auto given = json.find(field.name);
      if (field.source != Source::Block || given == json.end()) continue;
      const FieldValue became = field.read(channel);
      if (PlainValue(*given) == became) continue;
      m_losses.Add(Code::NoPlace, field.name, m_builder.Here(), PlainValue(*given), became);
    }
  }

  InputSignalType m_signal;
  const Layout& m_layout;
  std::vector<Column> m_columns;
  Losses& m_losses;
  ChannelBuilder m_builder;
};

ordered_json Parse(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  try {
    return ordered_json::parse(bytes);
  } catch (const ordered_json::exception& error) {
    throw Failure{E_INVALIDARG, std::string("the file is no JSON: ") + error.what()};
  }
}

void RequireChannels(const ordered_json& document, InputSignalType signal) {
  if (!document.is_object() || !document.contains("tunedex") || document["tunedex"] != "channels" ||
      !document.contains("channels") || !document["channels"].is_array()) {
    throw Failure{E_INVALIDARG, "the file is no list of channels"};
  }
  const auto given = document.find("signal");
  if (given != document.end() && *given != SignalTypeName(signal)) {
    const std::string signalText = given->is_string() ? given->get<std::string>() : "another type";
    throw Failure{E_INVALIDARG, "the file holds channels of " + signalText + ", not of " +
                                    SignalTypeName(signal)};
  }
}

}  // namespace

ImportResult ReadJson(const Input& input, const ImportRequest& request, Losses& losses) {
  const ordered_json document = Parse(input.bytes);
  RequireChannels(document, request.context.signal);
  ImportResult result;
  const auto country = document.find("country");
  if (country != document.end() && country->is_number_unsigned()) {
    result.country =
        static_cast<DWORD>(std::min<std::uint64_t>(country->get<std::uint64_t>(), UINT32_MAX));
  }
  DocumentReader reader(request, losses);
  for (const ordered_json& channel : document["channels"]) {
    reader.Take(channel, result.read + 1, result);
  }
  return result;
}

}  // namespace interchange
