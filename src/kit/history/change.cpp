#include "kit/history/change.h"

#include <filesystem>
#include <memory>

#include "kit/files/scratch_directory.h"
#include "kit/files/whole_file.h"
#include "kit/history/directory_lock.h"
#include "kit/history/put_aside.h"
#include "kit/history/replacement.h"
#include "kit/history/snapshots/retention.h"
#include "kit/history/work_on_copy.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace history {
namespace {

bool IsFolder(const std::string& path) {
  std::error_code ignored;
  return fs::is_directory(whole_file::PathOf(path), ignored);
}

bool HasHistory(const ChangeSettings& settings) {
  return IsFolder(PathOf(settings.directory, kFolder));
}

/// The lock; a trial takes it only where that writes nothing.
std::unique_ptr<DirectoryLock> Locked(const ChangeSettings& settings) {
  if (!IsFolder(settings.directory)) {
    throw Failure{E_INVALIDARG, "cannot open the directory " + settings.directory};
  }
  if (settings.isTrial && !HasHistory(settings)) return nullptr;
  return std::make_unique<DirectoryLock>(settings.directory, settings.wait);
}

/// A history that is left as it is must not undo later what is about to be done.
void FinishUnrecorded(const std::string& directory) {
  try {
    Store store(directory);
    if (store.Damages().empty()) Finish(store);
  } catch (const Failure&) {
    // Of another version, or without room: not this command's matter.
  }
}

/// HEAD, or what would be recorded of the files first.
Snapshot Present(Store& store, const FileSet& files, const ChangeSettings& settings) {
  if (!settings.isTrial) return RecordPresent(store, files, false);
  const Snapshot* head = store.Head();
  if (head != nullptr && store.Holds(*head, files)) return *head;
  Snapshot present{store.NextNumber(), std::nullopt, TimeNow(), kOutside, {}};
  if (head != nullptr) present.parent = head->number;
  return present;
}

/// The way from HEAD to another snapshot.
template <typename Choose>
Step Walk(const ChangeSettings& settings, const std::string& what, Choose choose) {
  const Failure nothing(E_FAIL, "there is nothing to " + what);
  if (!HasHistory(settings)) throw nothing;
  const std::unique_ptr<DirectoryLock> lock = Locked(settings);
  Store store(settings.directory);
  store.RequireWhole();
  if (!settings.isTrial) Finish(store);
  if (store.IsEmpty()) throw nothing;
  const FileSet files = ReadFiles(settings.directory);
  const Snapshot left = Present(store, files, settings);
  const Snapshot* next = choose(store, left);
  if (next == nullptr) throw nothing;
  Step step{left, *next, {files, store.Read(*next)}};
  if (!settings.isTrial) MoveTo(store, next->number, step.difference);
  return step;
}

struct Outcome {
  Difference difference;
  PutAside aside;
};

/// The copy is gone before anything is replaced.
Outcome RunOnCopy(const std::string& directory, FileSet files,
                  const std::function<void(const std::string& scratch)>& work) {
  const ScratchDirectory scratch;
  CopyFiles(files, scratch.Path());
  RunOnCopyOf(directory, scratch.Path(), work);
  FileSet after = ReadFiles(scratch.Path());
  return {{std::move(files), std::move(after)}, PutAside(scratch.Path())};
}

/// Replaces the files. Failure: they are as they were.
void Make(const ChangeSettings& settings, std::optional<Store>& store, Outcome& outcome) {
  const Difference& difference = outcome.difference;
  outcome.aside.CarryTo(settings.directory);
  try {
    if (store) {
      Record(*store, difference, settings.by, false);
    } else {
      ReplaceFiles(settings.directory, difference.before, difference.after);
    }
  } catch (const HalfDone&) {
    throw;
  } catch (const Failure&) {
    outcome.aside.TakeBack();
    throw;
  }
}

/// The files of before with those of a snapshot in their place, or one of them.
FileSet Restored(const FileSet& before, const FileSet& wanted, const std::string& file) {
  FileSet after = before;
  if (!file.empty()) {
    after[file] = BytesOf(wanted, file);
    return after;
  }
  for (auto& [name, bytes] : after) bytes = BytesOf(wanted, name);
  for (const auto& [name, bytes] : wanted) after[name] = bytes;
  return after;
}

}  // namespace

Difference MakeChange(const ChangeSettings& settings,
                      const std::function<void(const std::string& scratch)>& work,
                      const FolderWork& folder) {
  const std::unique_ptr<DirectoryLock> lock = Locked(settings);
  std::optional<Store> store;
  if (settings.isRecorded) {
    store.emplace(settings.directory);
    store->RequireWhole();
    if (!settings.isTrial) Finish(*store);
  } else if (!settings.isTrial) {
    FinishUnrecorded(settings.directory);
  }
  Renamings renamings(settings.directory,
                      folder.renamings ? folder.renamings() : std::vector<Renaming>());
  Outcome outcome = RunOnCopy(settings.directory, renamings.ReadFiles(), work);
  if (settings.isTrial) return std::move(outcome.difference);
  renamings.Make();
  try {
    if (!outcome.difference.IsNone()) Make(settings, store, outcome);
  } catch (const HalfDone&) {
    throw;
  } catch (const Failure&) {
    renamings.TakeBack();
    throw;
  }
  if (folder.last) folder.last();
  return std::move(outcome.difference);
}

void ChangeInPlace(const ChangeSettings& settings, const std::function<void()>& work) {
  const std::unique_ptr<DirectoryLock> lock = Locked(settings);
  FinishUnrecorded(settings.directory);
  work();
}

Step Undo(const ChangeSettings& settings) {
  return Walk(settings, "undo",
              [](const Store& store, const Snapshot& at) { return store.ParentOf(at); });
}

Step Redo(const ChangeSettings& settings) {
  return Walk(settings, "redo",
              [](const Store& store, const Snapshot& at) { return store.ChildOf(at); });
}

Difference Restore(const ChangeSettings& settings, Number number, const std::string& file) {
  if (!HasHistory(settings)) throw Failure{E_FAIL, "there is nothing to restore"};
  const std::unique_ptr<DirectoryLock> lock = Locked(settings);
  Store store(settings.directory);
  // What was interrupted is completed first, or replaced where it is damaged.
  if (!settings.isTrial && store.Damages().empty()) Finish(store);
  const FileSet wanted = store.Read(store.Find(number));
  if (!file.empty() && !wanted.contains(file)) {
    throw Failure{E_FAIL, "snapshot " + std::to_string(number) + " says nothing of " + file};
  }
  Difference difference{ReadFiles(settings.directory), {}};
  difference.after = Restored(difference.before, wanted, file);
  if (settings.isTrial || difference.IsNone()) return difference;
  Record(store, difference, settings.by, true);
  return difference;
}

Pruned Prune(const ChangeSettings& settings, std::optional<std::size_t> keep) {
  Pruned pruned;
  if (!HasHistory(settings)) return pruned;
  const std::unique_ptr<DirectoryLock> lock = Locked(settings);
  Store store(settings.directory);
  pruned.damages = store.Damages();
  if (settings.isTrial) {
    pruned.removed = OldOnes(store, keep);
    return pruned;
  }
  // Also looks for damage that sizes do not tell.
  store.RemoveDamaged();
  Finish(store);
  if (store.Head() == nullptr && !store.Snapshots().empty()) {
    RecordPresent(store, ReadFiles(settings.directory), true);
  }
  pruned.removed = OldOnes(store, keep);
  RemoveOld(store, pruned.removed);
  store.RemoveUnnamed();
  return pruned;
}

}  // namespace history

}  // namespace zortunedex::kit
