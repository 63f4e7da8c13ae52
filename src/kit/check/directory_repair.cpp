#include "kit/check/directory_repair.h"

#include <algorithm>
#include <filesystem>

#include "kit/check/rules/directory_rules.h"
#include "kit/failure.h"
#include "kit/files/whole_file.h"
#include "platform/host.h"

namespace zortunedex::kit::check {
namespace {

using Fate = Finding::Fate;

class DirectoryRepair {
 public:
  DirectoryRepair(const history::ChangeSettings& change, const RepairSettings& settings)
      : m_change(change), m_settings(settings) {}

  Repaired Run() {
    history::MakeChange(m_change, [this](const std::string& scratch) { RepairCopy(scratch); },
                        {[this] { return Renamings(); }, [this] { RemoveFiles(); }});
    std::vector<Finding>& mended = m_result.mended;
    std::ranges::copy_if(m_names, std::back_inserter(mended),
                         [this](const Finding& finding) { return IsAsked(finding, m_settings); });
    std::vector<Finding> left = m_change.isTrial ? m_names : CheckNames(m_change.directory);
    if (m_change.isTrial) {
      std::erase_if(left, [this](const Finding& finding) { return IsAsked(finding, m_settings); });
    }
    m_result.left.insert(m_result.left.end(), left.begin(), left.end());
    Sort(m_result.mended);
    Sort(m_result.left);
    return std::move(m_result);
  }

 private:
  std::string PathOf(const std::string& name) const {
    return data_files::PathOf(m_change.directory, name);
  }

  std::vector<history::Renaming> Renamings() {
    m_names = CheckNames(m_change.directory);
    std::vector<history::Renaming> renamings;
    for (const Finding& finding : m_names) {
      if (finding.fate != Fate::Renamed || !IsAsked(finding, m_settings)) continue;
      renamings.push_back({finding.file, finding.newName});
    }
    return renamings;
  }

  void RepairCopy(const std::string& scratch) {
    Files files = data_files::ReadDataFiles(scratch);
    files.merge(ReadPutAside(m_change.directory));
    m_result = Repair(files, m_settings);
    for (const std::string_view name : kDataFiles) {
      const std::optional<std::string>& bytes = BytesOf(m_result.after, name);
      if (bytes == BytesOf(m_result.before, name)) continue;
      const std::string path = data_files::PathOf(scratch, name);
      if (bytes) {
        data_files::WriteCopy(path, name, *bytes);
      } else {
        std::error_code error;
        std::filesystem::remove(whole_file::PathOf(path), error);
        if (error) throw Failure{E_FAIL, "a temporary file cannot be removed"};
      }
    }
  }

  void RemoveFiles() const {
    for (const auto& [name, bytes] : m_result.before) {
      const bool isAside = bytes && !PutAsideOf(name).empty();
      if (isAside && !BytesOf(m_result.after, name)) RemovePutAside(name, *bytes);
    }
    // With the lock, and looked at once more: somebody may hold one by now.
    for (const Finding& finding : CheckNames(m_change.directory)) {
      if (finding.fate != Fate::Removed || !IsAsked(finding, m_settings)) continue;
      Remove(PathOf(finding.file), finding.file);
    }
  }

  /// Those that may tell something are kept in the history's folder first.
  void RemovePutAside(const std::string& name, const std::string& bytes) const {
    if (data_files::ReadAt(PathOf(name), name) != bytes) {
      throw Failure{E_FAIL, "the files are repaired, but " + name +
                                " was changed by another program meanwhile, and stays"};
    }
    if (m_change.isRecorded && !bytes.empty()) Keep(name, bytes);
    Remove(PathOf(name), name);
  }

  static void Remove(const std::string& path, const std::string& name) {
    std::string cause;
    if (host::RemoveFile(path, cause)) return;
    throw Failure{E_FAIL, "the files are repaired, but " + name + " cannot be removed: " + cause};
  }

  void Keep(const std::string& name, const std::string& bytes) const {
    const std::string path = data_files::PathOf(PathOf(history::kFolder), name);
    std::string cause;
    for (int number = 1; number < 1000; ++number) {
      const std::string free = number == 1 ? path : path + "-" + std::to_string(number);
      // A repair that was interrupted kept it already.
      if (whole_file::Read(whole_file::PathOf(free)) == bytes) return;
      if (host::WriteNewFile(free, bytes, cause)) return;
    }
    throw Failure{E_FAIL, "the files are repaired, but " + name +
                              " cannot be kept in the history's folder: " + cause};
  }

  const history::ChangeSettings& m_change;
  const RepairSettings& m_settings;
  std::vector<Finding> m_names;
  Repaired m_result;
};

}  // namespace

Repaired RepairDirectory(const history::ChangeSettings& change, const RepairSettings& settings) {
  return DirectoryRepair(change, settings).Run();
}

}  // namespace zortunedex::kit::check
