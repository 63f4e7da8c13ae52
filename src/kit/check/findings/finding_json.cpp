#include "kit/check/findings/finding_json.h"

#include <nlohmann/json.hpp>

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace check {
namespace {

template <typename T>
ordered_json OrNull(const std::optional<T>& value) {
  return value ? ordered_json(*value) : ordered_json();
}

}  // namespace

ordered_json ToJson(const Finding& finding) {
  ordered_json json;
  json["code"] = finding.code->name;
  json["severity"] = NameOf(finding.code->severity);
  json["file"] = finding.file;
  json["line"] = finding.place ? ordered_json(finding.place->line) : ordered_json();
  json["column"] = finding.place ? ordered_json(finding.place->column) : ordered_json();
  json["path"] = finding.path.empty() ? ordered_json() : ordered_json(finding.path);
  json["attribute"] = OrNull(finding.attribute);
  json["value"] = OrNull(finding.value);
  json["text"] = finding.text;
  json["repair"] = NameOf(finding.repair);
  const char* option = NameOf(finding.option);
  json["option"] = option == nullptr ? ordered_json() : ordered_json(option);
  return json;
}

ordered_json ToJson(const std::vector<Finding>& findings) {
  ordered_json array = ordered_json::array();
  for (const Finding& finding : findings) array.push_back(ToJson(finding));
  return array;
}

}  // namespace check

}  // namespace zortunedex::kit
