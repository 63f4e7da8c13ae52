#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "kit/history/snapshots/file_set.h"
#include "kit/history/snapshots/snapshot.h"

namespace zortunedex::kit::history {

/// The history of a directory as it stands on the disk. Reading needs no lock; who writes holds the
/// directory's.
class Store {
 public:
  /// Reads what is there, and notes what is damaged. Failure for a history of another version.
  explicit Store(const std::string& directory);

  /// As it was given.
  const std::string& Directory() const { return m_directory; }
  /// By number; those that can be read.
  const std::map<Number, Snapshot>& Snapshots() const { return m_snapshots; }
  /// The snapshot that the directory was brought to last; null where there is none.
  const Snapshot* Head() const;
  /// A change that was begun and not ended: its process was killed, or works still.
  const std::optional<Pending>& InProgress() const { return m_pending; }
  /// True when nothing was recorded yet.
  bool IsEmpty() const { return m_snapshots.empty() && m_damage.empty(); }
  /// Sentences, empty for a whole history.
  const std::vector<std::string>& Damages() const { return m_damage; }

  /// Failure when something is damaged: what, what can be restored, and what helps.
  void RequireWhole() const;
  /// Failure with what can be restored when there is no such snapshot.
  const Snapshot& Find(Number number) const;
  /// The parent of a snapshot, unless it has none or it is not kept any more.
  const Snapshot* ParentOf(const Snapshot& snapshot) const;
  /// The newest child of a snapshot; null when it has none.
  const Snapshot* ChildOf(const Snapshot& snapshot) const;
  /// Names of the files that differ from the parent's.
  std::vector<std::string> Differing(const Snapshot& snapshot) const;
  /// The snapshot's files, checked against their sizes and sums. Failure with what can be restored.
  FileSet Read(const Snapshot& snapshot) const;
  /// True when these are the snapshot's files, which are checked as well; fails as Read does.
  bool Holds(const Snapshot& snapshot, const FileSet& files) const;

  /// The number that the next snapshot gets.
  Number NextNumber() const { return m_last + 1; }
  /// Writes a snapshot, whose file comes last. Copies of files that are those of `parentFiles` are
  /// shared with it. Failure: nothing of it is left.
  const Snapshot& Write(const Snapshot* parent, const FileSet& parentFiles, const FileSet& files,
                        const std::string& by);
  /// Says what is about to be done, and that it was.
  void Begin(const Pending& pending);
  /// Says at which snapshot the directory is.
  void SetHead(Number number);
  /// Takes back what Begin said.
  void End();
  /// Removes a snapshot, not the copies of its files. False when that did not work.
  bool Remove(Number number);
  /// Removes a damaged HEAD and snapshots that are damaged or lack files.
  void RemoveDamaged();
  /// Removes copies of files that no snapshot names. Nothing while one is damaged.
  void RemoveUnnamed();

 private:
  static constexpr char kHead[] = "HEAD";
  static constexpr char kPending[] = "PENDING";

  std::string PathIn(const std::string& name) const;
  std::optional<std::string> ReadIn(const std::string& name) const;
  void ReadSnapshots();
  void ReadHead();
  void ReadPending();
  void NoteMissing();
  std::string ReadCopy(const StoredFile& file) const;
  bool CopyHolds(const StoredFile& file, std::string_view bytes) const;
  bool HoldsUnexplained(const Snapshot& snapshot, const FileSet& files) const;
  [[noreturn]] void Explain(const Snapshot& snapshot, const std::string& damage) const;
  FileSet ReadUnexplained(const Snapshot& snapshot) const;
  std::string Restorable() const;
  void WriteIn(const std::string& name, const std::string& bytes) const;
  void RemoveIn(const std::string& name) const;
  StoredFile WriteCopy(Number number, const std::string& name, const std::string& bytes) const;

  std::string m_directory;
  std::map<Number, Snapshot> m_snapshots;
  std::vector<Number> m_unreadable;
  std::optional<Number> m_head;
  std::optional<Pending> m_pending;
  std::vector<std::string> m_damage;
  Number m_last = 0;
};

}  // namespace zortunedex::kit::history
