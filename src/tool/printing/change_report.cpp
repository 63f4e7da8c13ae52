#include "tool/printing/change_report.h"

#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/text/signal_types.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using history::Change;
using history::Kind;
using nlohmann::ordered_json;

namespace {

std::string PlaceText(const Change& change) {
  if (!change.channel) return change.what.empty() ? change.file : change.file + ": " + change.what;
  const history::ChannelPlace& place = *change.channel;
  return std::to_string(place.list.country) + " " + SignalTypeName(place.list.signal) +
         ": channel " + std::to_string(place.now == 0 ? place.before : place.now) + " " +
         change.what;
}

std::string FieldsText(const Change& change) {
  std::string text;
  for (const history::FieldChange& field : change.fields) {
    text += (text.empty() ? " " : ", ") + field.field + " " + field.from + " -> " + field.to;
  }
  return text;
}

std::string LineOf(const Change& change) {
  std::string line = PlaceText(change) + ": " + WordOf(change.kind);
  if (change.kind == Kind::Moved) line += " from " + std::to_string(change.channel->before);
  // Bytes that neither channels nor elements tell of: the form, comments, what is not known.
  if (change.kind == Kind::Changed && change.fields.empty())
    line += " in its form, or in what the library does not read";
  return line + FieldsText(change);
}

ordered_json IndexJson(UINT index) { return index == 0 ? ordered_json() : ordered_json(index); }

ordered_json ToJson(const Change& change) {
  ordered_json json = {{"change", WordOf(change.kind)}, {"file", change.file}};
  if (change.channel) {
    json["country"] = change.channel->list.country;
    json["signal"] = SignalTypeName(change.channel->list.signal);
    json["before"] = IndexJson(change.channel->before);
    json["index"] = IndexJson(change.channel->now);
    json["name"] = change.what;
  } else {
    json["element"] = change.what.empty() ? ordered_json() : ordered_json(change.what);
  }
  json["fields"] = ordered_json::array();
  for (const history::FieldChange& field : change.fields) {
    json["fields"].push_back({{"field", field.field}, {"from", field.from}, {"to", field.to}});
  }
  return json;
}

}  // namespace

void PrintChanges(const std::vector<Change>& changes) {
  for (const Change& change : changes) std::cout << Printable(LineOf(change)) << '\n';
}

ordered_json ChangesJson(const std::vector<Change>& changes) {
  ordered_json array = ordered_json::array();
  for (const Change& change : changes) array.push_back(ToJson(change));
  return array;
}

void PrintDryRun(const history::Difference& difference, bool json) {
  const std::vector<Change> changes = history::ChangesBetween(difference.before, difference.after);
  if (!json) return PrintChanges(changes);
  PrintJson({{"tunedex", "dry-run"}, {"version", 1}, {"changes", ChangesJson(changes)}});
}

}  // namespace zortunedex::kit::tool
