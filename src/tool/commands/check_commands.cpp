#include <algorithm>
#include <iostream>

#include "kit/check/check_json.h"
#include "kit/check/directory_repair.h"
#include "kit/check/known_countries.h"
#include "kit/files/data_files.h"
#include "kit/files/folder.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/change.h"
#include "tool/commands/running/exit_status.h"
#include "tool/options/typing/words.h"
#include "tool/options/usage_error.h"
#include "tool/printing/findings.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool {

using check::Finding;

namespace commands {
namespace {

check::RepairSettings RepairSettingsOf(const Options& options) {
  return {{check::IsCountry, {}, SIZE_MAX}, options.codes, options.repairs};
}

void PrintRepair(const Options& options, const check::Repaired& result) {
  if (options.json) {
    return PrintJsonText(check::RepairJson(result, options.dryRun));
  }
  if (!result.mended.empty()) {
    std::cout << (options.dryRun ? "would be repaired:\n" : "repaired:\n");
    PrintFindings(result.mended);
  }
  if (!result.left.empty()) {
    std::cout << "left:\n";
    PrintFindings(result.left);
  }
  std::cout << (options.dryRun ? "to repair: " : "repaired: ") << FindingCounts(result.mended)
            << "; left: " << FindingCounts(result.left) << '\n';
}

bool IsClean(const std::vector<Finding>& findings) {
  return std::ranges::all_of(findings, [](const Finding& finding) {
    return finding.code->severity == check::Severity::Note;
  });
}

/// A mistyped name would find nothing, as if all were well. Names of files that only a check knows,
/// such as those that were put aside, are taken where they stand in the directory.
void RequireKnownFile(const Options& options) {
  if (options.file.empty()) return;
  const std::vector<std::string> known(std::begin(data_files::kDataFiles),
                                       std::end(data_files::kDataFiles));
  const std::vector<std::string> there = NamesIn(options.directory);
  if (std::ranges::count(known, options.file) != 0) return;
  if (std::ranges::count(there, options.file) != 0) return;
  throw UsageError{"--file: " + UnknownWord(options.file, known)};
}

}  // namespace

void CheckFiles(const Options& options) {
  RequireKnownFile(options);
  std::vector<Finding> findings = check::CheckDirectory(
      options.directory, {check::IsCountry, options.file, check::kMostOfACode});
  const check::Severity level = options.level.value_or(check::Severity::Warning);
  std::erase_if(findings,
                [level](const Finding& finding) { return finding.code->severity > level; });
  if (options.json) {
    PrintJsonText(check::CheckJson(findings));
  } else {
    PrintFindings(findings);
    std::cout << "found: " << FindingCounts(findings) << '\n';
  }
  if (!findings.empty()) AskToLook();
}

void RepairFiles(const Options& options) {
  const check::Repaired result =
      check::RepairDirectory(SettingsOf(options), RepairSettingsOf(options));
  PrintRepair(options, result);
  if (!IsClean(result.left) || (options.dryRun && !result.mended.empty())) AskToLook();
}

}  // namespace commands

}  // namespace zortunedex::kit::tool
