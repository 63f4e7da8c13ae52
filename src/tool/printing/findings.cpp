#include "tool/printing/findings.h"

#include <algorithm>
#include <iostream>

#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using check::Finding;
using check::Severity;

namespace {

std::string PlaceText(const Finding& finding) {
  std::string text = finding.file;
  if (finding.place) {
    text += ":" + std::to_string(finding.place->line) + ":" + std::to_string(finding.place->column);
  }
  return text;
}

/// Where in the tree, which attribute, and its value.
std::string SubjectText(const Finding& finding) {
  std::string text = finding.path;
  if (finding.attribute) text += (text.empty() ? "" : " ") + *finding.attribute;
  if (finding.attribute && finding.value) text += "=\"" + *finding.value + "\"";
  return text.empty() ? text : " (" + text + ")";
}

std::string RepairText(const Finding& finding) {
  if (finding.repair == check::Repair::No) return {};
  const char* option = check::NameOf(finding.option);
  return option == nullptr ? " [repair]" : " [repair " + std::string(option) + "]";
}

}  // namespace

void PrintFindings(const std::vector<Finding>& findings) {
  for (const Finding& finding : findings) {
    const std::string line = PlaceText(finding) + ": " + check::NameOf(finding.code->severity) +
                             " " + std::string(finding.code->name) + ": " + finding.text +
                             SubjectText(finding) + RepairText(finding);
    std::cout << Printable(line) << '\n';
  }
}

std::string FindingCounts(const std::vector<Finding>& findings) {
  std::string text;
  for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
    const auto count = std::ranges::count_if(
        findings, [severity](const Finding& one) { return one.code->severity == severity; });
    if (count == 0) continue;
    text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + check::NameOf(severity) +
            (count == 1 ? "" : "s");
  }
  return text.empty() ? "nothing" : text;
}

}  // namespace zortunedex::kit::tool
