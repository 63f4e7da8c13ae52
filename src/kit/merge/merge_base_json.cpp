#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/interchange/format.h"
#include "kit/interchange/json/json_reader.h"
#include "kit/json/channel_json.h"
#include "kit/merge/merge_base.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;
using station_blocks::Source;

namespace merge {
namespace {

constexpr char kKind[] = "merge-base";
constexpr int kVersion = 1;

[[noreturn]] void RaiseDamaged(const std::string& what) {
  throw Failure{E_INVALIDARG, "the base of the last merge is damaged: " + what};
}

bool IsNothingAsJson(const ordered_json& value) {
  if (value.is_null() || value == ordered_json("NotSet")) return true;
  if (value.is_structured() || value.is_string()) return value.empty() || value == "";
  return value == 0 || value == false;
}

void RemoveNothing(ordered_json& object) {
  for (auto member = object.begin(); member != object.end();) {
    if (member->is_object()) RemoveNothing(*member);
    member = IsNothingAsJson(*member) ? object.erase(member) : std::next(member);
  }
}

/// What the record answers for itself, where the file has a place for it.
void RemoveUnstored(ordered_json& json, InputSignalType signal) {
  const station_blocks::Layout& layout = LayoutOf(signal);
  for (const RecordField& field : RecordFields()) {
    const bool isStored =
        field.source != Source::Block && std::any_of(layout.channel.begin(), layout.channel.end(),
                                                     [&field](const station_blocks::Field& row) {
                                                       return row.source == field.source;
                                                     });
    if (!isStored) json.erase(field.name);
  }
}

std::string HexText(std::uint64_t number) {
  char text[16];
  const auto end = std::to_chars(text, text + sizeof(text), number, 16).ptr;
  return {text, end};
}

ordered_json EntryJson(const BaseEntry& entry, const interchange::ListContext& context) {
  ordered_json channel = channel_json::Whole(entry.channel, context.signal, context.narrow);
  RemoveUnstored(channel, context.signal);
  RemoveNothing(channel);
  ordered_json json = ordered_json::object();
  if (entry.absent != 0) json["absent"] = entry.absent;
  if (entry.result != 0) json["result"] = HexText(entry.result);
  if (entry.source != 0) json["source"] = HexText(entry.source);
  if (!entry.isSeen) json["seen"] = false;
  if (!entry.isListed) json["listed"] = false;
  if (entry.isMarked) json["marked"] = true;
  if (entry.isTwin) json["twin"] = true;
  json["channel"] = std::move(channel);
  return json;
}

ordered_json ParseBase(std::string_view bytes) {
  try {
    return ordered_json::parse(bytes);
  } catch (const ordered_json::exception&) {
    RaiseDamaged("it is no JSON");
  }
}

bool ReadMark(const ordered_json& entry, const char* key, bool usual) {
  const auto found = entry.find(key);
  if (found == entry.end()) return usual;
  if (!found->is_boolean()) RaiseDamaged(std::string("'") + key + "' is neither true nor false");
  return found->get<bool>();
}

std::uint32_t ReadCount(const ordered_json& entry, const char* key) {
  const auto found = entry.find(key);
  if (found == entry.end()) return 0;
  if (!found->is_number_unsigned() || found->get<std::uint64_t>() > UINT32_MAX) {
    RaiseDamaged(std::string("'") + key + "' is no count");
  }
  return found->get<std::uint32_t>();
}

std::uint64_t ReadHex(const ordered_json& object, const char* key) {
  const auto found = object.find(key);
  const std::string text =
      found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (error != std::errc() || end != text.data() + text.size()) {
    RaiseDamaged(std::string("'") + key + "' is no hexadecimal number");
  }
  return number;
}

void RequireBaseOf(const ordered_json& document, const interchange::ListContext& context) {
  const auto value = [&document](const char* key) {
    const auto found = document.find(key);
    return found == document.end() ? ordered_json() : *found;
  };
  if (!document.is_object() || value("tunedex") != kKind) {
    throw Failure{E_INVALIDARG, "the file is no base of a merge"};
  }
  if (value("version") != kVersion) {
    throw Failure{E_INVALIDARG, "the base of the last merge is of another version"};
  }
  if (value("signal") != SignalTypeName(context.signal) || value("country") != context.country) {
    throw Failure{E_INVALIDARG, "the base belongs to another list, not to " +
                                    SignalTypeName(context.signal) + " of country " +
                                    std::to_string(context.country)};
  }
  if (!value("channels").is_array()) RaiseDamaged("it has no channels");
}

/// Values that a channel cannot have; names that the code page lacks do not count.
void RequireWhole(const interchange::Losses& losses) {
  using interchange::Code;
  for (const interchange::Loss& loss : losses.All()) {
    if (loss.code != Code::LineNotUnderstood && loss.code != Code::KeyUnknown &&
        loss.code != Code::ValueOutOfRange) {
      continue;
    }
    const std::string where = loss.place.name.empty() ? "" : " of " + loss.place.name;
    RaiseDamaged("'" + loss.field + "'" + where + " is not what it should be");
  }
}

}  // namespace

std::string WriteBase(const MergeBase& base, const interchange::ListContext& context) {
  ordered_json head = ordered_json::object();
  head["tunedex"] = kKind;
  head["version"] = kVersion;
  head["country"] = base.country;
  head["signal"] = SignalTypeName(base.signal);
  head["scan"] = HexText(base.scan);
  std::string text = head.dump();
  text.back() = ',';
  text += "\"channels\":[";
  for (std::size_t i = 0; i < base.entries.size(); ++i) {
    text += i == 0 ? "\n" : ",\n";
    text += EntryJson(base.entries[i], context).dump();
  }
  return text + "\n]}\n";
}

MergeBase ReadBase(std::string_view bytes, const interchange::ListContext& context) {
  ordered_json document = ParseBase(bytes);
  RequireBaseOf(document, context);
  MergeBase base{context.country, context.signal, ReadHex(document, "scan"), {}};
  ordered_json channels = ordered_json::array();
  for (ordered_json& entry : document["channels"]) {
    if (!entry.is_object() || !entry.contains("channel")) RaiseDamaged("an entry has no channel");
    BaseEntry& read = base.entries.emplace_back();
    read.absent = ReadCount(entry, "absent");
    read.result = entry.contains("result") ? ReadHex(entry, "result") : 0;
    read.source = entry.contains("source") ? ReadHex(entry, "source") : 0;
    read.isSeen = ReadMark(entry, "seen", true);
    read.isListed = ReadMark(entry, "listed", true);
    read.isMarked = ReadMark(entry, "marked", false);
    read.isTwin = ReadMark(entry, "twin", false);
    channels.push_back(std::move(entry["channel"]));
  }
  const ordered_json list = {{"tunedex", "channels"}, {"channels", std::move(channels)}};
  interchange::Losses losses;
  interchange::Input input;
  input.bytes = list.dump();
  const interchange::ImportRequest request{context, {}};
  interchange::ImportResult result = interchange::ReadJson(input, request, losses);
  RequireWhole(losses);
  for (std::size_t i = 0; i < base.entries.size(); ++i) {
    base.entries[i].channel = std::move(result.channels[i].channel);
  }
  return base;
}

}  // namespace merge

}  // namespace zortunedex::kit
