#include "kit/interchange/loss_report.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "kit/interchange/loss_json.h"
#include "kit/json/channel_json.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace interchange {
namespace {

/// Files may hold bytes that are no text, and a document nothing else.
ordered_json TextJson(const std::string& bytes) {
  constexpr auto kReplace = ordered_json::error_handler_t::replace;
  return ordered_json::parse(ordered_json(bytes).dump(-1, ' ', false, kReplace));
}

ordered_json ValueJson(const FieldValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? TextJson(*text) : channel_json::ToJson(value);
}

ordered_json ChannelJson(const Loss& loss) {
  ordered_json channel = ordered_json::object();
  channel["index"] = loss.place.index ? ordered_json(*loss.place.index) : ordered_json(nullptr);
  channel["name"] = TextJson(loss.place.name);
  channel["line"] = loss.place.line != 0 ? ordered_json(loss.place.line) : ordered_json(nullptr);
  channel["value"] = ValueJson(loss.value);
  channel["became"] = ValueJson(loss.became);
  return channel;
}

// Names of keys are those of the file, which may hold any number of any length.
constexpr std::size_t kMostFields = 20;
constexpr std::size_t kLongestField = 60;

std::string Shortened(const std::string& field) {
  if (field.size() <= kLongestField) return field;
  std::size_t end = kLongestField;
  while (end > 0 && (field[end] & 0xC0) == 0x80) --end;
  return field.substr(0, end) + "...";
}

std::string FieldsText(const std::set<std::string>& fields) {
  std::string text;
  std::size_t count = 0;
  for (const std::string& field : fields) {
    if (count++ == kMostFields) break;
    text += (text.empty() ? "" : ", ") + Shortened(field);
  }
  if (fields.size() <= kMostFields) return text;
  return text + " and " + std::to_string(fields.size() - kMostFields) + " more";
}

std::string Times(std::size_t count) {
  return count == 1 ? "once" : std::to_string(count) + " times";
}

}  // namespace

ordered_json LossDocument(const LossReport& report) {
  std::map<std::pair<Code, std::string>, std::vector<const Loss*>> groups;
  for (const Loss& loss : report.losses.All()) groups[{loss.code, loss.field}].push_back(&loss);
  const std::map<Code, std::size_t>& beyond = report.losses.Beyond();
  for (const auto& [code, count] : beyond) groups[{code, {}}];
  ordered_json document = ordered_json::object();
  document["tunedex"] = "loss";
  document["version"] = 1;
  document["direction"] = report.direction == Direction::Export ? "export" : "import";
  document["format"] = report.format;
  document["read"] = report.read;
  document["written"] = report.written;
  ordered_json& losses = document["losses"] = ordered_json::array();
  for (const auto& [key, group] : groups) {
    ordered_json loss = ordered_json::object();
    loss["code"] = CodeName(key.first);
    loss["field"] = TextJson(key.second);
    const auto more = key.second.empty() ? beyond.find(key.first) : beyond.end();
    loss["count"] = group.size() + (more == beyond.end() ? 0 : more->second);
    ordered_json& channels = loss["channels"] = ordered_json::array();
    for (const Loss* one : group) channels.push_back(ChannelJson(*one));
    losses.push_back(std::move(loss));
  }
  return document;
}

std::string LossJson(const LossReport& report) { return LossDocument(report).dump(2); }

std::string LossText(const LossReport& report) {
  struct Group {
    std::size_t count = 0;
    std::set<std::string> fields;
  };
  std::map<Code, Group> groups;
  for (const Loss& loss : report.losses.All()) {
    Group& group = groups[loss.code];
    ++group.count;
    group.fields.insert(loss.field);
  }
  for (const auto& [code, count] : report.losses.Beyond()) groups[code].count += count;
  std::string text;
  for (const auto& [code, group] : groups) {
    text += CodeName(code) + " " + MeaningOf(code) + ", " + Times(group.count) + ": " +
            FieldsText(group.fields) + "\n";
  }
  return text;
}

}  // namespace interchange

}  // namespace zortunedex::kit
