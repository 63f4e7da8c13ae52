// Every call of a change and of taking it back fails, stops half-way or is the last one of its
// process. The files are then all old or, after the next command, all new, and every snapshot that
// is listed is whole.
#include <algorithm>
#include <functional>

#include "kit/failure.h"
#include "kit/history/killed_change.h"
#include "kit/history/recorded_home.h"
#include "kit/history/replacement.h"

namespace zortunedex::kit {

namespace {

using disk_faults::Fault;

const Texts kFirst = {{"ChanInfo.xml", std::string(700, 'a')}, {"UserSettings.xml", "first"}};
const Texts kSecond = {{"ChanInfo.xml", std::string(900, 'b')}, {"UserSettings.xml", "second"}};
const Texts kScanned = {{"ChanInfo.xml", std::string(900, 'b')},
                        {"base-49-DVBSatellite.json", "first"}};
const Texts kMerged = {{"ChanInfo.xml", std::string(999, 'n')},
                       {"base-49-DVBSatellite.json", "new"}};
const Texts kThird = {{"ChanInfo.xml", std::string(999, 'n')}, {"UserSettings.xml", "new"}};

enum class Start { Fresh, Recorded, ChangedOutside, Scanned };

struct Case {
  const char* label;
  Operation operation;
  Start start;
  Texts before;
  Texts after;
};

// Of files that were never recorded: two snapshots are written.
const Case kFirstChange = {"first change", Operation::Change, Start::Fresh, kFirst, kThird};
const Case kChange = {"change", Operation::Change, Start::Recorded, kSecond, kThird};
const Case kMerge = {"merge", Operation::Merge, Start::Scanned, kScanned, kMerged};
const Case kUndo = {"undo", Operation::Undo, Start::Recorded, kSecond, kFirst};
const Case kUndoOfOthers = {"undo of others", Operation::Undo, Start::ChangedOutside, kThird,
                            kSecond};

class Prepared {
 public:
  explicit Prepared(const Case& now) : m_home(kFirst) {
    if (now.start != Start::Fresh) m_home.Change(kSecond);
    if (now.start == Start::ChangedOutside) m_home.ChangeOutside(kThird);
    if (now.start == Start::Scanned) m_home.Change(kScanned);
  }
  const RecordedHome& Home() const { return m_home; }
  std::string Path() const { return m_home.Files().Path(); }

 private:
  RecordedHome m_home;
};

int CallsOf(const Case& now) {
  const Prepared prepared(now);
  const disk_faults::Scope scope(Fault::Short, 1000000);
  Operate(prepared.Path(), now.operation);
  return disk_faults::Calls();
}

/// Each file is whole, be it the old or the new one.
void ExpectWholeFiles(const Case& now, const RecordedHome& home) {
  const Texts files = home.Now();
  for (const auto& [name, text] : now.before) {
    ASSERT_TRUE(files.contains(name)) << name;
    EXPECT_TRUE(files.at(name) == text || files.at(name) == now.after.at(name)) << name;
  }
}

/// The next command changes nothing itself: what it leaves is all old or all new, and so is what
/// the history says.
void ExpectOldOrNewAfterTheNext(const Case& now, const RecordedHome& home) {
  history::MakeChange(home.Settings(), [](const std::string&) {});
  const Texts files = home.Now();
  EXPECT_TRUE(files == now.before || files == now.after);
  const history::Store store = home.Store();
  EXPECT_NO_THROW(store.RequireWhole());
  EXPECT_FALSE(store.InProgress());
  for (const auto& [number, snapshot] : store.Snapshots()) EXPECT_NO_THROW(store.Read(snapshot));
  // It goes on as if nothing had happened, and removes what a killed process left.
  home.Change({{"ChanInfo.xml", "later"}});
  history::Undo(home.Settings());
  EXPECT_EQ(files, home.Now());
  EXPECT_EQ(files, RecordedHome::Present(home.Store().Read(*home.Store().Head())));
  ExpectWholeHistory(home.Files().Path());
  // Those that stand in the directory itself, and the history's folder.
  const auto isBase = [](const auto& file) { return history::IsBase(file.first); };
  const auto bases = static_cast<std::size_t>(std::ranges::count_if(files, isBase));
  EXPECT_EQ(files.size() - bases + 1, home.Files().Count());
}

void FailAt(const Case& now, Fault fault, int position) {
  const Prepared prepared(now);
  const RecordedHome& home = prepared.Home();
  bool isHalfDone = false;
  Texts promised = now.after;
  {
    const disk_faults::Scope scope(fault, position);
    try {
      Operate(prepared.Path(), now.operation);
    } catch (const history::HalfDone&) {
      isHalfDone = true;
    } catch (const Failure& failure) {
      EXPECT_NE(std::string::npos, std::string(failure.what()).find(": ")) << failure.what();
      promised = now.before;
    }
  }
  ExpectWholeFiles(now, home);
  if (!isHalfDone) {
    EXPECT_TRUE(promised == home.Now()) << "not what was said";
  }
  ExpectOldOrNewAfterTheNext(now, home);
  if (isHalfDone) {
    EXPECT_TRUE(now.after == home.Now()) << "not completed";
  }
}

void KillAt(const Case& now, Fault fault, int position) {
  const Prepared prepared(now);
  EXPECT_EQ(disk_faults::kKilled,
            StatusOfKilledChange(prepared.Path(), now.operation, fault, position));
  ExpectWholeFiles(now, prepared.Home());
  ExpectOldOrNewAfterTheNext(now, prepared.Home());
}

void ForEveryCall(std::initializer_list<Case> cases,
                  const std::function<void(const Case& now, int position)>& check) {
  for (const Case& now : cases) {
    const int calls = CallsOf(now);
    EXPECT_GE(calls, 20);
    for (int position = 0; position < calls; ++position) {
      SCOPED_TRACE(std::string(now.label) + ", call " + std::to_string(position) + " of " +
                   std::to_string(calls));
      check(now, position);
      if (testing::Test::HasFailure()) return;
    }
  }
}

class ChangeFaults : public testing::TestWithParam<Fault> {};

TEST_P(ChangeFaults, LeaveOldOrNewFiles) {
  ForEveryCall({kFirstChange, kUndo},
               [](const Case& now, int position) { FailAt(now, GetParam(), position); });
}

INSTANTIATE_TEST_SUITE_P(All, ChangeFaults,
                         testing::Values(Fault::NoSpace, Fault::NoRights, Fault::Device,
                                         Fault::Short));

TEST(ChangeFaultsOnHistories, LeaveOldOrNewFiles) {
  ForEveryCall({kChange, kMerge, kUndoOfOthers},
               [](const Case& now, int position) { FailAt(now, Fault::Device, position); });
}

TEST(ChangeInterruptions, LeaveOldOrNewFiles) {
  if (!disk_faults::kIsInterruptible) GTEST_SKIP() << "no call of this system is interrupted";
  ForEveryCall({kFirstChange, kUndoOfOthers},
               [](const Case& now, int position) { FailAt(now, Fault::Interrupted, position); });
}

class KilledChanges : public testing::TestWithParam<Fault> {};

TEST_P(KilledChanges, LeaveOldOrNewFiles) {
  ForEveryCall({kFirstChange, kMerge, kUndo},
               [](const Case& now, int position) { KillAt(now, GetParam(), position); });
}

INSTANTIATE_TEST_SUITE_P(All, KilledChanges, testing::Values(Fault::KillBefore, Fault::KillHalf));

}  // namespace

}  // namespace zortunedex::kit
