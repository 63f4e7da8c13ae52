#include "kit/check/check_json.h"

#include <nlohmann/json.hpp>

#include "kit/check/findings/finding_json.h"

namespace zortunedex::kit {

using nlohmann::ordered_json;

namespace check {

std::string CheckJson(const std::vector<Finding>& findings) {
  const ordered_json document = {
      {"tunedex", "check"}, {"version", 1}, {"findings", ToJson(findings)}};
  return document.dump(2);
}

std::string RepairJson(const Repaired& result, bool isTrial) {
  const ordered_json document = {{"tunedex", "repair"},
                                 {"version", 1},
                                 {"dryRun", isTrial},
                                 {"repaired", ToJson(result.mended)},
                                 {"left", ToJson(result.left)}};
  return document.dump(2);
}

}  // namespace check

}  // namespace zortunedex::kit
