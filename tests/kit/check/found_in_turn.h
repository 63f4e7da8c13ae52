#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "kit/check/checker.h"
#include "kit/check/findings/finding_json.h"
#include "kit/check/rules/directory_rules.h"

namespace zortunedex::kit {

inline std::string TextOfFindings(const std::vector<check::Finding>& findings) {
  return check::ToJson(findings).dump(1);
}

/// What the parts of a check find, one after the other on this thread.
inline std::string FoundInTurn(const std::string& directory) {
  check::Checker checker({});
  check::Checked checked = checker.Check(check::ReadFiles(directory));
  std::vector<check::Finding>& findings = checked.findings;
  for (const auto& more : {checker.Compare(checked.documents), check::CheckNames(directory)}) {
    findings.insert(findings.end(), more.begin(), more.end());
  }
  check::Sort(findings);
  return TextOfFindings(findings);
}

}  // namespace zortunedex::kit
