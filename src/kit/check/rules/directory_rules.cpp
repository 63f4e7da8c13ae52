#include "kit/check/rules/directory_rules.h"

#include <algorithm>
#include <filesystem>

#include "kit/check/findings/report.h"
#include "kit/check/subject/files.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "kit/text/ascii.h"
#include "platform/host.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace check {
namespace {

bool AreDigits(std::string_view text, std::string_view digits) {
  return !text.empty() && text.find_first_not_of(digits) == std::string_view::npos;
}

constexpr std::string_view kHexadecimal = "0123456789abcdef";

/// The names that saving gives temporary files, on either target, and that of an older way.
bool IsTemporary(std::string_view name) {
  constexpr std::string_view kLinux = ".tunedex-";
  constexpr std::string_view kWindows = "zt";
  constexpr std::string_view kEnd = ".tmp";
  if (name.starts_with(kLinux)) {
    name.remove_prefix(kLinux.size());
    return name.size() == 16 && AreDigits(name, kHexadecimal);
  }
  if (name.starts_with(kWindows) && name.ends_with(kEnd)) {
    const std::string_view digits = name.substr(2, name.size() - 6);
    return digits.size() == 16 && AreDigits(digits, kHexadecimal);
  }
  return std::ranges::any_of(kDataFiles, [name](std::string_view file) {
    constexpr std::string_view kOld = ".tmp-";
    return name.starts_with(file) && name.substr(file.size()).starts_with(kOld) &&
           AreDigits(name.substr(file.size() + kOld.size()), "0123456789");
  });
}

/// Who writes a temporary file holds it: it can then not be opened, or not be locked.
bool IsHeld(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(fs::symlink_status(path, error))) return true;
  const std::u8string name = path.u8string();
  std::string cause;
  host::FileLock lock(std::string(name.begin(), name.end()), cause);
  return !lock.IsOpen() || !lock.Take();
}

void CheckTemporary(const fs::path& folder, const std::string& name,
                    std::vector<Finding>& findings) {
  if (!IsTemporary(name) || IsHeld(folder / whole_file::PathOf(name))) return;
  Finding finding = OfFile("ZT004", name, "a save that ended early left this file");
  finding.fate = Finding::Fate::Removed;
  findings.push_back(std::move(finding));
}

/// True for the name of a data file in other letters, and for one that it has while they change.
bool IsOtherNameOf(std::string_view file, std::string_view name) {
  return name != file && (EqualIgnoringCase(name, file) ||
                          EqualIgnoringCase(name, std::string(file) + host::kBeingRenamed));
}

void CheckLetters(const std::vector<std::string>& names, std::string_view file,
                  std::vector<Finding>& findings) {
  std::vector<std::string> others;
  for (const std::string& name : names) {
    if (IsOtherNameOf(file, name)) others.push_back(name);
  }
  const bool isThere = std::ranges::find(names, file) != names.end();
  for (const std::string& name : others) {
    Finding finding = OfFile("ZT009", name, "the file is looked for as " + std::string(file));
    finding.fate = Finding::Fate::Renamed;
    finding.newName = file;
    if (isThere || others.size() > 1) {
      finding.fate = Finding::Fate::Stays;
      Settle(finding);
    }
    findings.push_back(std::move(finding));
  }
}

void CheckKind(const fs::path& folder, std::string_view file, std::vector<Finding>& findings) {
  std::error_code error;
  const fs::path path = folder / std::string(file);
  const fs::file_status own = fs::symlink_status(path, error);
  if (!fs::exists(own)) return;
  const auto note = [&](const char* text) {
    Finding finding = OfFile("ZT009", std::string(file), text);
    Settle(finding);
    findings.push_back(std::move(finding));
  };
  if (fs::is_symlink(own)) note("the file is a link to another one");
  const fs::perms writing =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  const bool isWritable = (fs::status(path, error).permissions() & writing) != fs::perms::none;
  if (!isWritable) note("the file is write-protected: changes cannot be saved");
}

}  // namespace

std::vector<Finding> CheckNames(const std::string& directory) {
  const fs::path folder = whole_file::PathOf(directory);
  std::vector<std::string> names = NamesIn(directory);
  std::ranges::sort(names);
  std::vector<Finding> findings;
  for (const std::string& name : names) CheckTemporary(folder, name, findings);
  for (const std::string_view file : kDataFiles) {
    CheckLetters(names, file, findings);
    CheckKind(folder, file, findings);
  }
  return findings;
}

}  // namespace check

}  // namespace zortunedex::kit
