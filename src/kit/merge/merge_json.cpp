#include "kit/merge/merge_json.h"

#include <nlohmann/json.hpp>

#include "kit/json/channel_json.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace merge {
namespace {

ordered_json FieldJson(const FieldChange& field) {
  ordered_json json = ordered_json::object();
  json["field"] = field.field;
  json["list"] = channel_json::ToJson(field.list);
  json["base"] = channel_json::ToJson(field.base);
  json["scan"] = channel_json::ToJson(field.scan);
  json["result"] = channel_json::ToJson(field.result);
  return json;
}

ordered_json ChangeJson(const Change& change) {
  ordered_json json = ordered_json::object();
  json["code"] = CodeName(change.code);
  const UINT index = change.index != 0 || change.inList ? change.index : change.resultIndex;
  const bool isListed = change.inList.has_value() || change.resultIndex != 0;
  json["index"] = isListed ? ordered_json(index) : ordered_json(nullptr);
  json["identity"] = change.identity;
  json["name"] = change.name;
  json["fields"] = ordered_json::array();
  for (const FieldChange& field : change.fields) json["fields"].push_back(FieldJson(field));
  if (change.code == Code::Removed) {
    json["became"] = nullptr;
  } else if (change.inList && change.resultIndex != change.index) {
    json["became"] = change.resultIndex;
  }
  if (change.absent != 0) json["absent"] = change.absent;
  if (change.candidates.empty()) return json;
  for (const Candidate& candidate : change.candidates) {
    json["candidates"].push_back({{"identity", candidate.identity}, {"name", candidate.name}});
  }
  return json;
}

}  // namespace

ordered_json PlanDocument(const MergePlan& plan, PlanKind kind) {
  ordered_json document = ordered_json::object();
  document["tunedex"] = kind == PlanKind::Merge ? "merge" : "diff";
  document["version"] = 1;
  ordered_json& summary = document["summary"] = ordered_json::object();
  for (const CodeMeaning& code : Codes()) {
    std::size_t count = 0;
    for (const Change& change : plan.changes) count += change.code == code.code ? 1 : 0;
    if (count != 0) summary[CodeName(code.code)] = count;
  }
  ordered_json& changes = document["changes"] = ordered_json::array();
  for (const Change& change : plan.changes) changes.push_back(ChangeJson(change));
  return document;
}

std::string PlanJson(const MergePlan& plan, PlanKind kind) {
  return PlanDocument(plan, kind).dump(2);
}

}  // namespace merge

}  // namespace zortunedex::kit
