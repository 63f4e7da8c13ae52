// Changing the files of a directory so that all of a change is made or nothing, none is lost, and
// each can be taken back.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "kit/history/recording.h"
#include "kit/history/renaming.h"

namespace zortunedex::kit::history {

/// Which directory is changed, by whom, and how.
struct ChangeSettings {
  std::string directory;          ///< UTF-8
  std::string by = {};            ///< what the history says who made it
  bool isRecorded = true;         ///< without it the history is left as it is
  bool isTrial = false;           ///< nothing is written
  std::chrono::seconds wait{10};  ///< for others that change the directory
};

/// What a change does to files of the directory that a history does not keep. Each may be empty,
/// and is called with the lock.
struct FolderWork {
  /// What is to be renamed. Asked before the files are read: the work finds them under their new
  /// names, and they get these when it is done.
  std::function<std::vector<Renaming>()> renamings = {};
  /// The last step, when all files are replaced. What it raises takes nothing back.
  std::function<void()> last = {};
};

/// Runs `work` on a copy of the directory, whose path it gets, and then replaces the files that are
/// different there. A history that cannot be written, and work that raises something, leave
/// everything as it was; so does a replacement that fails, unless it raises HalfDone. Files that
/// the work put aside (NAME.unreadable) are carried over. What a Failure or an InvalidArgument of
/// the work says of the copy, it says of the directory.
Difference MakeChange(const ChangeSettings& settings,
                      const std::function<void(const std::string& scratch)>& work,
                      const FolderWork& folder = {});

/// Runs `work` on the directory itself, with its lock alone: for a directory that cannot be copied.
void ChangeInPlace(const ChangeSettings& settings, const std::function<void()>& work);

/// What was done to get from one snapshot to another.
struct Step {
  Snapshot left;     ///< the one that the directory was at
  Snapshot reached;  ///< the one that it is at now
  Difference difference;
};

/// Brings the directory to the parent of the snapshot that it is at; what others changed since is
/// recorded first. Failure when there is no parent.
Step Undo(const ChangeSettings& settings);
/// To the newest child. Failure when there is none.
Step Redo(const ChangeSettings& settings);

/// Makes the files, or one of them, those of a snapshot: a change like any other. Works with a
/// damaged history, too, as long as that snapshot is whole. Failure for a name that is not kept.
Difference Restore(const ChangeSettings& settings, Number number, const std::string& file);

/// What was removed of a history.
struct Pruned {
  std::vector<Number> removed;
  std::vector<std::string> damages;  ///< what was damaged before
};

/// Removes the oldest snapshots: all but the newest `keep`, or as many as are kept without being
/// asked; never the one that the directory is at. What is damaged goes, too, so that the rest can
/// be gone on with.
Pruned Prune(const ChangeSettings& settings, std::optional<std::size_t> keep);

}  // namespace zortunedex::kit::history
