#include <algorithm>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>

#include "countries/country_table.h"
#include "kit/check/findings/finding_json.h"
#include "kit/check/repair.h"
#include "kit/check/rules/directory_rules.h"
#include "kit/failure.h"
#include "kit/files/whole_file.h"
#include "kit/history/change.h"
#include "platform/host.h"
#include "tool/commands/commands.h"
#include "tool/commands/running/change.h"
#include "tool/commands/running/exit_status.h"
#include "tool/printing/findings.h"
#include "tool/printing/output.h"

namespace fs = std::filesystem;

using check::Finding;
using nlohmann::ordered_json;

namespace commands {
namespace {

bool IsCountry(std::uint32_t code) { return countries::RowAt(countries::FindRow(code)) != nullptr; }

check::RepairSettings RepairSettingsOf(const Options& options) {
  return {{IsCountry, {}}, options.codes, options.repairs};
}

/// Files as files: nothing of this is in the history, which has bytes alone.
class FolderRepair {
 public:
  FolderRepair(const Options& options, const check::RepairSettings& settings)
      : m_options(options), m_settings(settings), m_found(check::CheckNames(options.directory)) {}

  /// Gives files the names that they are looked for by.
  void Rename() { Mend(Finding::Fate::Renamed); }
  /// Removes what saves left over.
  void RemoveLeftOvers() { Mend(Finding::Fate::Removed); }

  /// Files put aside whose channels are all in the file now. Those that may tell something go into
  /// the history's folder.
  void RemovePutAside(const check::Repaired& result) const {
    for (const auto& [name, bytes] : result.before) {
      if (!bytes || check::PutAsideOf(name).empty()) continue;
      if (check::BytesOf(result.after, name) != nullptr) continue;
      if (!m_options.noHistory && !bytes->empty()) Keep(name, *bytes);
      Remove(name);
    }
  }

  const std::vector<Finding>& Mended() const { return m_mended; }

 private:
  std::string PathOf(const std::string& name) const {
    const std::u8string path = (whole_file::PathOf(m_options.directory) / name).u8string();
    return {path.begin(), path.end()};
  }

  void Mend(Finding::Fate fate) {
    for (const Finding& finding : m_found) {
      if (finding.fate != fate || !check::IsAsked(finding, m_settings)) continue;
      if (!m_options.dryRun && fate == Finding::Fate::Renamed) {
        Move(finding.file, finding.newName);
      } else if (!m_options.dryRun) {
        Remove(finding.file);
      }
      m_mended.push_back(finding);
    }
  }

  // By way of another name: where letters of either case are the same, the two names are one.
  void Move(const std::string& from, const std::string& to) const {
    const fs::path source = whole_file::PathOf(PathOf(from));
    const fs::path target = whole_file::PathOf(PathOf(to));
    fs::path between = target;
    between += ".renamed";
    std::error_code error;
    fs::rename(source, between, error);
    if (!error) {
      fs::rename(between, target, error);
      std::error_code ignored;
      if (error) fs::rename(between, source, ignored);
    }
    if (error) throw Failure{E_FAIL, from + " cannot be renamed: " + error.message()};
  }

  void Remove(const std::string& name) const {
    std::string cause;
    if (!host::RemoveFile(PathOf(name), cause)) {
      throw Failure{E_FAIL, name + " cannot be removed: " + cause};
    }
  }

  void Keep(const std::string& name, const std::string& bytes) const {
    const std::string folder = PathOf(history::kFolder);
    std::string cause;
    if (!host::MakeFolder(folder, cause)) {
      throw Failure{E_FAIL, folder + " cannot be made: " + cause};
    }
    const std::string path = folder + "/" + name;
    for (int number = 1; number < 1000; ++number) {
      const std::string free = number == 1 ? path : path + "-" + std::to_string(number);
      if (host::WriteNewFile(free, bytes, cause)) return;
    }
    throw Failure{E_FAIL, name + " cannot be kept in the history's folder: " + cause};
  }

  const Options& m_options;
  const check::RepairSettings& m_settings;
  std::vector<Finding> m_found;
  std::vector<Finding> m_mended;
};

/// The data files of a copy, with what was put aside in the directory itself.
check::Files FilesOf(const std::string& scratch, const std::string& directory) {
  check::Files files = check::ReadFiles(scratch);
  for (const auto& [name, bytes] : check::ReadFiles(directory)) {
    if (!check::PutAsideOf(name).empty()) files[name] = bytes;
  }
  return files;
}

void WriteChanged(const check::Repaired& result, const std::string& scratch) {
  for (const std::string_view file : check::kDataFiles) {
    const std::string name(file);
    const std::string* bytes = check::BytesOf(result.after, name);
    const std::string* before = check::BytesOf(result.before, name);
    const fs::path path = whole_file::PathOf(scratch) / name;
    std::error_code error;
    if (bytes == nullptr) {
      fs::remove(path, error);
    } else if (before == nullptr || *before != *bytes) {
      const std::u8string text = path.u8string();
      whole_file::Replace({text.begin(), text.end()}, *bytes);
    }
  }
}

void PrintRepair(const Options& options, const check::Repaired& result) {
  if (options.json) {
    PrintJson({{"tunedex", "repair"},
               {"version", 1},
               {"dryRun", options.dryRun},
               {"repaired", check::ToJson(result.mended)},
               {"left", check::ToJson(result.left)}});
    return;
  }
  if (!result.mended.empty()) {
    std::cout << (options.dryRun ? "would be repaired:\n" : "repaired:\n");
    PrintFindings(result.mended);
  }
  if (!result.left.empty()) {
    std::cout << "left:\n";
    PrintFindings(result.left);
  }
  std::cout << (options.dryRun ? "to repair: " : "repaired: ") << CountText(result.mended)
            << "; left: " << CountText(result.left) << '\n';
}

bool IsClean(const std::vector<Finding>& findings) {
  return std::ranges::all_of(findings, [](const Finding& finding) {
    return finding.code->severity == check::Severity::Note;
  });
}

}  // namespace

void CheckFiles(const Options& options) {
  std::vector<Finding> findings =
      check::CheckDirectory(options.directory, {IsCountry, options.file});
  const check::Severity level = options.level.value_or(check::Severity::Warning);
  std::erase_if(findings,
                [level](const Finding& finding) { return finding.code->severity > level; });
  if (options.json) {
    PrintJson({{"tunedex", "check"}, {"version", 1}, {"findings", check::ToJson(findings)}});
  } else {
    PrintFindings(findings);
    std::cout << "found: " << CountText(findings) << '\n';
  }
  if (!findings.empty()) AskToLook();
}

void RepairFiles(const Options& options) {
  const check::RepairSettings settings = RepairSettingsOf(options);
  FolderRepair folder(options, settings);
  folder.Rename();
  check::Repaired result;
  history::MakeChange(SettingsOf(options), [&](const std::string& scratch) {
    result = check::Repair(FilesOf(scratch, options.directory), settings);
    WriteChanged(result, scratch);
  });
  if (!options.dryRun) folder.RemovePutAside(result);
  folder.RemoveLeftOvers();
  result.mended.insert(result.mended.end(), folder.Mended().begin(), folder.Mended().end());
  for (Finding& finding : check::CheckNames(options.directory)) {
    const bool isMended = options.dryRun && check::IsAsked(finding, settings);
    if (!isMended) result.left.push_back(std::move(finding));
  }
  PrintRepair(options, result);
  if (!IsClean(result.left) || (options.dryRun && !result.mended.empty())) AskToLook();
}

}  // namespace commands
