#include "kit/interchange/json/json_reader.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "kit/failure.h"
#include "kit/interchange/services/channel_builder.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

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
      : m_request(request),
        m_signal(request.context.signal),
        m_layout(LayoutOf(m_signal)),
        m_columns(ColumnsOf(m_signal)),
        m_losses(losses),
        m_builder(request.context, losses) {}

  void Take(const ordered_json& json) {
    ++m_result.read;
    if (!json.is_object()) {
      return m_losses.Add(Code::LineNotUnderstood, "channels",
                          Place{static_cast<UINT>(m_result.read), {}, 0}, {});
    }
    m_builder.Begin(PlaceOf(json));
    for (const auto& [key, value] : json.items()) TakeMember(key, value);
    m_result.Add({m_builder.Take(), 0}, m_request);
    RequireFollowing(json, m_result.channels.back().channel);
  }

  ImportResult Result() { return std::move(m_result); }

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
      const std::vector<const char*> names = EntryNames(column);
      for (const char* name : names) {
        const auto member = entry.is_object() ? entry.find(name) : entry.end();
        values.push_back(entry.is_object() && member != entry.end() ? PlainValue(*member)
                                                                    : FieldValue{});
      }
      if (!entry.is_object()) continue;
      for (const auto& [key, value] : entry.items()) {
        if (std::ranges::find(names, key) != names.end()) continue;
        m_losses.Add(Code::KeyUnknown, std::string(column.name) + "." + key, m_builder.Here(),
                     PlainValue(value));
      }
    }
    m_builder.SetEntries(column, entries, entries.size());
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

  const ImportRequest& m_request;
  InputSignalType m_signal;
  const Layout& m_layout;
  std::vector<Column> m_columns;
  Losses& m_losses;
  ChannelBuilder m_builder;
  ImportResult m_result;
};

[[noreturn]] void Refuse() { throw Failure{E_INVALIDARG, "the file is no list of channels"}; }

/// Hands the channels over one by one while the document is parsed, and keeps nothing of them: a
/// document may be larger than what memory holds of its tree.
class ChannelFilter {
 public:
  explicit ChannelFilter(DocumentReader& reader) : m_reader(reader) {}

  /// False for what is not kept. Depth 1 is that of the document's keys.
  bool Keeps(int depth, ordered_json::parse_event_t event, const ordered_json& parsed) {
    using Event = ordered_json::parse_event_t;
    if (depth > kDeepest) return false;
    const bool isElement = m_isInList && depth == kElement;
    switch (event) {
      case Event::key:
        if (depth == 1) TakeKey(parsed.get_ref<const std::string&>());
        return true;
      case Event::object_start:
      case Event::array_start:
        if (!isElement) Count(depth);
        m_members[static_cast<std::size_t>(depth) + 1] = 0;
        if (depth == 1) m_isInList = event == Event::array_start && m_isChannels;
        if (!isElement || event == Event::object_start) return true;
        m_reader.Take(ordered_json::array());
        return false;
      case Event::array_end:
        if (depth == 1) m_isInList = false;
        return true;
      case Event::object_end:
        break;
      case Event::value:
        if (!isElement) Count(depth);
        break;
    }
    if (isElement) m_reader.Take(parsed);
    return !isElement;
  }

 private:
  static constexpr int kElement = 2;
  /// Values of a stream; what is below is none that a channel has.
  static constexpr int kDeepest = 6;
  /// Twice as many as any object or list of a channel has. Looking for a key asks all before it.
  static constexpr std::size_t kMostMembers = 256;

  void TakeKey(const std::string& key) {
    m_isChannels = key == "channels";
    if (m_isChannels && std::exchange(m_hadChannels, true)) Refuse();
  }

  void Count(int depth) {
    if (++m_members[static_cast<std::size_t>(depth)] > kMostMembers) Refuse();
  }

  DocumentReader& m_reader;
  std::array<std::size_t, kDeepest + 2> m_members = {};
  bool m_isChannels = false;  ///< the key of the document that was last
  bool m_hadChannels = false;
  bool m_isInList = false;
};

ordered_json Parse(std::string_view bytes, DocumentReader& reader) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  ChannelFilter filter(reader);
  const auto keeps = [&filter](int depth, ordered_json::parse_event_t event,
                               const ordered_json& parsed) {
    return filter.Keeps(depth, event, parsed);
  };
  try {
    return ordered_json::parse(bytes, keeps);
  } catch (const ordered_json::exception& error) {
    throw Failure{E_INVALIDARG, std::string("the file is no JSON: ") + error.what()};
  }
}

void RequireChannels(const ordered_json& document, InputSignalType signal) {
  if (!document.is_object() || !document.contains("tunedex") || document["tunedex"] != "channels" ||
      !document.contains("channels") || !document["channels"].is_array()) {
    Refuse();
  }
  const auto given = document.find("signal");
  if (given != document.end() && *given != SignalTypeName(signal)) {
    const std::string signalText = given->is_string() ? given->get<std::string>() : "another type";
    throw Failure{E_INVALIDARG, "the file holds channels of " + signalText + ", not of " +
                                    SignalTypeName(signal)};
  }
}

/// Numbers of another version or in other units would be taken for something else.
void RequireKnownForm(const ordered_json& document) {
  if (const auto version = document.find("version"); version != document.end() && *version != 1) {
    throw Failure{E_INVALIDARG, "the file is of version " + version->dump() + ", not of 1"};
  }
  const auto units = document.find("units");
  if (units == document.end()) return;
  const ordered_json known = {{"frequency", "kHz"}, {"symbolRate", "kSymbol/s"}};
  for (const auto& [name, unit] : units->items()) {
    if (known.contains(name) && known.at(name) == unit) continue;
    throw Failure{E_INVALIDARG, "the file's units are not kHz and kSymbol/s"};
  }
}

void LoseUnknownKeys(const ordered_json& document, Losses& losses) {
  constexpr const char* kKeys[] = {"tunedex", "version",  "country", "signal",
                                   "units",   "codepage", "channels"};
  for (const auto& [key, value] : document.items()) {
    if (std::ranges::find(kKeys, key) != std::end(kKeys)) continue;
    losses.Add(Code::KeyUnknown, key, {}, PlainValue(value));
  }
}

std::optional<DWORD> CountryOf(const ordered_json& document) {
  const auto country = document.find("country");
  if (country == document.end() || !country->is_number_unsigned()) return std::nullopt;
  return static_cast<DWORD>(std::min<std::uint64_t>(country->get<std::uint64_t>(), UINT32_MAX));
}

}  // namespace

ImportResult ReadJson(const Input& input, const ImportRequest& request, Losses& losses) {
  DocumentReader reader(request, losses);
  const ordered_json document = Parse(input.bytes, reader);
  RequireChannels(document, request.context.signal);
  RequireKnownForm(document);
  LoseUnknownKeys(document, losses);
  ImportResult result = reader.Result();
  result.country = CountryOf(document);
  return result;
}

}  // namespace interchange

}  // namespace zortunedex::kit
