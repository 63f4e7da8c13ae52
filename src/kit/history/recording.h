// The steps in which a change is recorded and made. Who calls these holds the directory's lock.
#pragma once

#include <string>

#include "kit/history/snapshots/store.h"

namespace zortunedex::kit::history {

/// The files before a change and after it.
struct Difference {
  FileSet before;
  FileSet after;

  /// True where no byte differs.
  bool IsNone() const { return before == after; }
};

/// Completes what was interrupted: files that are still those from before are replaced, those of
/// another program stay. What was not recorded whole had not begun, and is forgotten.
void Finish(Store& store);

/// Records the files as they are where they differ from those of HEAD, and answers HEAD. A HEAD
/// whose files cannot be read is a Failure, or is left behind where `isDamageAllowed`. Failure when
/// it cannot be written; nothing is left of it then.
const Snapshot& RecordPresent(Store& store, const FileSet& files, bool isDamageAllowed);

/// Records a change, and what others changed before it, then makes it. Failure: nothing was
/// changed; HalfDone: a part was, and the next call of Finish makes the rest.
void Record(Store& store, const Difference& difference, const std::string& by,
            bool isDamageAllowed);

/// Makes the files those of a snapshot that is recorded already; fails as Record does.
void MoveTo(Store& store, Number number, const Difference& difference);

}  // namespace zortunedex::kit::history
