#include "kit/interchange/loss_report.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

using nlohmann::ordered_json;

namespace interchange {
namespace {

ordered_json ValueJson(const FieldValue& value) {
  if (const auto* mark = std::get_if<bool>(&value)) return *mark;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  return nullptr;
}

ordered_json ChannelJson(const Loss& loss) {
  ordered_json channel = ordered_json::object();
  channel["index"] = loss.place.index ? ordered_json(*loss.place.index) : ordered_json(nullptr);
  channel["name"] = loss.place.name;
  channel["line"] = loss.place.line != 0 ? ordered_json(loss.place.line) : ordered_json(nullptr);
  channel["value"] = ValueJson(loss.value);
  channel["became"] = ValueJson(loss.became);
  return channel;
}

std::string Times(std::size_t count) {
  return count == 1 ? "once" : std::to_string(count) + " times";
}

}  // namespace

ordered_json LossJson(const LossReport& report) {
  std::map<std::pair<Code, std::string>, std::vector<const Loss*>> groups;
  for (const Loss& loss : report.losses.All()) groups[{loss.code, loss.field}].push_back(&loss);
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
    loss["field"] = key.second;
    loss["count"] = group.size();
    ordered_json& channels = loss["channels"] = ordered_json::array();
    for (const Loss* one : group) channels.push_back(ChannelJson(*one));
    losses.push_back(std::move(loss));
  }
  return document;
}

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
  std::string text;
  for (const auto& [code, group] : groups) {
    text += CodeName(code) + " " + MeaningOf(code) + ", " + Times(group.count) + ":";
    const char* before = " ";
    for (const std::string& field : group.fields) {
      text += before + field;
      before = ", ";
    }
    text += '\n';
  }
  return text;
}

}  // namespace interchange
