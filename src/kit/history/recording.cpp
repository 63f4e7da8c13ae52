#include "kit/history/recording.h"

#include "kit/history/replacement.h"
#include "kit/history/snapshots/retention.h"

namespace zortunedex::kit::history {
namespace {

/// The files as they are, but those that are still as they were before are as they are after.
FileSet Completed(const FileSet& now, const FileSet& before, const FileSet& after) {
  FileSet completed = now;
  for (const std::string& name : Differing(before, after)) {
    if (BytesOf(now, name) == BytesOf(before, name)) completed[name] = BytesOf(after, name);
  }
  return completed;
}

/// Takes back what was recorded of a change that was not made.
void Forget(Store& store, Number number) {
  // Without it the change is not to be completed either.
  if (!store.Remove(number)) return;
  store.End();
  store.RemoveUnnamed();
}

void Reach(Store& store, Number number) {
  try {
    store.SetHead(number);
  } catch (const Failure& failure) {
    throw HalfDone{failure.Result(), std::string("the change was made, but ") + failure.what() +
                                         "; the next command that changes something completes "
                                         "the history"};
  }
  store.End();
}

enum class Origin { Recorded, New };

void Make(Store& store, Number number, const Difference& difference, Origin origin) {
  try {
    ReplaceFiles(store.Directory(), difference.before, difference.after);
  } catch (const HalfDone& failure) {
    throw HalfDone{failure.Result(), std::string(failure.what()) +
                                         ", and the next command that changes something makes "
                                         "the rest"};
  } catch (const Failure&) {
    origin == Origin::New ? Forget(store, number) : store.End();
    throw;
  }
  Reach(store, number);
}

/// Writes a snapshot under the cover of its announcement.
const Snapshot& Announce(Store& store, const Snapshot* parent, const Difference& difference,
                         const std::string& by) {
  Pending pending{std::nullopt, store.NextNumber()};
  if (parent != nullptr) pending.from = parent->number;
  try {
    store.Begin(pending);
    return store.Write(parent, difference.before, difference.after, by);
  } catch (const Failure& failure) {
    Forget(store, pending.target);
    throw Failure{failure.Result(), std::string(failure.what()) + "; nothing was changed"};
  }
}

}  // namespace

void Finish(Store& store) {
  if (!store.InProgress()) return;
  const Pending pending = *store.InProgress();
  const auto& snapshots = store.Snapshots();
  const auto target = snapshots.find(pending.target);
  const bool isReached = store.Head() != nullptr && store.Head()->number == pending.target;
  if (target != snapshots.end() && !isReached) {
    const auto from = pending.from ? snapshots.find(*pending.from) : snapshots.end();
    if (from != snapshots.end()) {
      const FileSet now = ReadFiles(store.Directory());
      ReplaceFiles(store.Directory(), now,
                   Completed(now, store.Read(from->second), store.Read(target->second)));
    }
    store.SetHead(pending.target);
  }
  store.End();
  store.RemoveUnnamed();
  store = Store(store.Directory());
}

const Snapshot& RecordPresent(Store& store, const FileSet& files, bool isDamageAllowed) {
  const Snapshot* head = store.Head();
  FileSet known;
  try {
    if (head != nullptr && store.Holds(*head, files)) return *head;
    if (head != nullptr) known = store.Read(*head);
  } catch (const Failure&) {
    if (!isDamageAllowed) throw;
    head = nullptr;
  }
  const Number number = Announce(store, head, {known, files}, kOutside).number;
  try {
    store.SetHead(number);
  } catch (const Failure& failure) {
    Forget(store, number);
    throw Failure{failure.Result(), std::string(failure.what()) + "; nothing was changed"};
  }
  store.End();
  return *store.Head();
}

void Record(Store& store, const Difference& difference, const std::string& by,
            bool isDamageAllowed) {
  const Snapshot& parent = RecordPresent(store, difference.before, isDamageAllowed);
  const Number number = Announce(store, &parent, difference, by).number;
  Make(store, number, difference, Origin::New);
  RemoveOld(store, OldOnes(store, std::nullopt));
}

void MoveTo(Store& store, Number number, const Difference& difference) {
  store.Begin({store.Head()->number, number});
  Make(store, number, difference, Origin::Recorded);
}

}  // namespace zortunedex::kit::history
