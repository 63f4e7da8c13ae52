#include "kit/history/change.h"

#include "kit/failure.h"
#include "kit/history/recorded_home.h"
#include "kit/home.h"
#include "kit/saving/save_watch.h"

namespace zortunedex::kit {

namespace {

const Texts kBeforeIt = {{"ChanInfo.xml", "old"}, {"UserSettings.xml", "dishes"}};
const Texts kAfterIt = {{"ChanInfo.xml", "new"}, {"UserSettings.xml", "dishes"}};

TEST(Changes, AreRecordedBehindWhatWasThere) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt, "channels favor 5");
  EXPECT_EQ(kAfterIt, home.Now());
  const history::Store store = home.Store();
  ASSERT_EQ(2U, store.Snapshots().size());
  const history::Snapshot& first = store.Find(1);
  const history::Snapshot& second = store.Find(2);
  EXPECT_EQ("outside", first.by);
  EXPECT_EQ(std::nullopt, first.parent);
  EXPECT_EQ("channels favor 5", second.by);
  EXPECT_EQ(1U, second.parent);
  EXPECT_EQ(&second, store.Head());
  EXPECT_EQ(kBeforeIt, RecordedHome::Present(store.Read(first)));
  EXPECT_EQ(kAfterIt, RecordedHome::Present(store.Read(second)));
  EXPECT_EQ(nullptr, second.Find("SatelliteInfo.xml"));
  EXPECT_EQ("000001-UserSettings.xml", second.Find("UserSettings.xml")->in) << "shared";
  EXPECT_EQ(std::vector<std::string>{"ChanInfo.xml"}, store.Differing(second));
  ExpectWholeHistory(home.Files().Path());
}

TEST(Changes, ThatChangeNothingLeaveNoSnapshot) {
  const RecordedHome home(kBeforeIt);
  home.Change(kBeforeIt);
  EXPECT_TRUE(home.Store().IsEmpty());
}

TEST(Changes, ThatFailLeaveEverythingAsItWas) {
  const RecordedHome home(kBeforeIt);
  const auto fail = [](const std::string& scratch) {
    RecordedHome::Writing(kAfterIt)(scratch);
    throw Failure{E_FAIL, "no"};
  };
  ExpectRaised<Failure>("no", [&] { history::MakeChange(home.Settings(), fail); });
  EXPECT_EQ(kBeforeIt, home.Now());
  EXPECT_TRUE(home.Store().IsEmpty());
}

TEST(Changes, NameTheDirectoryWhereTheirWorkNamesTheCopy) {
  const RecordedHome home(kBeforeIt);
  const std::string path = home.Files().Path();
  const auto raising = [&](const auto& raise) {
    return [&] { history::MakeChange(home.Settings(), raise); };
  };
  ExpectRaised<Failure>(path + "/x, " + path + "/y", raising([](const std::string& copy) {
                          throw Failure{E_FAIL, copy + "/x, " + copy + "/y"};
                        }));
  ExpectRaised<InvalidArgument>("not " + path, raising([](const std::string& copy) {
                                  throw InvalidArgument{"not " + copy};
                                }));
  ExpectRaised<Failure>("in " + path + "; the file is unchanged",
                        raising([](const std::string& copy) {
                          throw FailedSave{E_FAIL, "in " + copy, "the file was replaced"};
                        }));
}

TEST(Changes, OnTrialWriteNothingAtAll) {
  const RecordedHome home(kBeforeIt);
  history::ChangeSettings settings = home.Settings();
  settings.isTrial = true;
  const history::Difference difference =
      history::MakeChange(settings, RecordedHome::Writing(kAfterIt));
  EXPECT_EQ(kAfterIt, RecordedHome::Present(difference.after));
  EXPECT_EQ(kBeforeIt, home.Now());
  EXPECT_EQ(2U, home.Files().Count());
}

TEST(Changes, WithoutHistoryLeaveTheLockAlone) {
  const RecordedHome home(kBeforeIt);
  history::ChangeSettings settings = home.Settings();
  settings.isRecorded = false;
  history::MakeChange(settings, RecordedHome::Writing(kAfterIt));
  EXPECT_EQ(kAfterIt, home.Now());
  EXPECT_TRUE(home.Files().Has("tunedex-history/lock"));
  EXPECT_TRUE(home.Store().IsEmpty());
}

TEST(Changes, WaitForNobodyInAMissingDirectory) {
  history::ChangeSettings settings{"no such directory", "test"};
  ExpectRaised<Failure>("cannot open the directory no such directory",
                        [&] { history::MakeChange(settings, [](const std::string&) {}); });
}

TEST(Changes, OfOthersAreRecordedFirst) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt);
  home.ChangeOutside({{"ChanInfo.xml", "by hand"}});
  home.Change({{"ChanInfo.xml", "on top"}});
  const history::Store store = home.Store();
  ASSERT_EQ(4U, store.Snapshots().size());
  EXPECT_EQ("outside", store.Find(3).by);
  EXPECT_EQ(2U, store.Find(3).parent);
  EXPECT_EQ(3U, store.Find(4).parent);
  EXPECT_EQ((Texts{{"ChanInfo.xml", "by hand"}}), RecordedHome::Present(store.Read(store.Find(3))));
}

// Another program knows nothing of the lock.
TEST(Changes, EndWhereAnotherProgramWritesMeanwhile) {
  for (const bool isRecorded : {true, false}) {
    const RecordedHome home(kBeforeIt);
    history::ChangeSettings settings = home.Settings();
    settings.isRecorded = isRecorded;
    ExpectRaised<Failure>(
        "ChanInfo.xml was changed by another program meanwhile; its change stays, and this one was "
        "not made",
        [&] {
          history::MakeChange(settings, [&](const std::string& scratch) {
            RecordedHome::Writing({{"ChanInfo.xml", "new"}, {"UserSettings.xml", "new"}})(scratch);
            home.Files().Write("ChanInfo.xml", "other");
          });
        });
    EXPECT_EQ((Texts{{"ChanInfo.xml", "other"}, {"UserSettings.xml", "dishes"}}), home.Now());
    ExpectWholeHistory(home.Files().Path());
  }
}

// The files that come before it by name were replaced already, and are put back.
TEST(Changes, PutBackWhatStoodBeforeAnotherProgramsFile) {
  const RecordedHome home(kBeforeIt);
  EXPECT_THROW(
      history::MakeChange(
          home.Settings(),
          [&](const std::string& scratch) {
            RecordedHome::Writing({{"ChanInfo.xml", "new"}, {"UserSettings.xml", "new"}})(scratch);
            home.Files().Write("UserSettings.xml", "other");
          }),
      Failure);
  EXPECT_EQ((Texts{{"ChanInfo.xml", "old"}, {"UserSettings.xml", "other"}}), home.Now());
  ExpectWholeHistory(home.Files().Path());
}

TEST(Changes, CarryOverWhatWasPutAside) {
  const RecordedHome home(kBeforeIt);
  home.Files().Write("ChanInfo.xml.unreadable", "older");
  history::MakeChange(home.Settings(), [](const std::string& scratch) {
    RecordedHome::Writing(kAfterIt)(scratch);
    std::ofstream(scratch + "/ChanInfo.xml.unreadable") << "old";
    std::ofstream(scratch + "/other.unreadable") << "not ours";
  });
  EXPECT_EQ("older", home.Files().Read("ChanInfo.xml.unreadable"));
  EXPECT_EQ("old", home.Files().Read("ChanInfo.xml.unreadable.2"));
  EXPECT_FALSE(home.Files().Has("other.unreadable"));
}

TEST(Undo, TakesBackStepByStep) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt, "first");
  home.Change({{"UserSettings.xml", "third"}}, "second");
  history::Step step = history::Undo(home.Settings());
  EXPECT_EQ("second", step.left.by);
  EXPECT_EQ(kAfterIt, home.Now());
  step = history::Undo(home.Settings());
  EXPECT_EQ("first", step.left.by);
  EXPECT_EQ(kBeforeIt, home.Now());
  ExpectRaised<Failure>("there is nothing to undo", [&] { history::Undo(home.Settings()); });
  EXPECT_EQ(kBeforeIt, home.Now());
  step = history::Redo(home.Settings());
  EXPECT_EQ("first", step.reached.by);
  EXPECT_EQ(kAfterIt, home.Now());
  history::Redo(home.Settings());
  EXPECT_EQ((Texts{{"UserSettings.xml", "third"}}), home.Now());
  ExpectRaised<Failure>("there is nothing to redo", [&] { history::Redo(home.Settings()); });
  ExpectWholeHistory(home.Files().Path());
}

TEST(Undo, HasNothingToDoWithoutAHistory) {
  const RecordedHome home(kBeforeIt);
  for (const auto walk : {history::Undo, history::Redo}) {
    EXPECT_THROW(walk(home.Settings()), Failure);
  }
  EXPECT_EQ(2U, home.Files().Count()) << "nothing is made for it";
}

TEST(Undo, DestroysNothingThatOthersChanged) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt);
  home.ChangeOutside({{"ChanInfo.xml", "by hand"}});
  const history::Step step = history::Undo(home.Settings());
  EXPECT_EQ("outside", step.left.by);
  EXPECT_EQ(kAfterIt, home.Now());
  history::Redo(home.Settings());
  EXPECT_EQ((Texts{{"ChanInfo.xml", "by hand"}}), home.Now());
}

TEST(Undo, OnTrialTellsAndChangesNothing) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt);
  home.ChangeOutside({{"ChanInfo.xml", "by hand"}});
  history::ChangeSettings settings = home.Settings();
  settings.isTrial = true;
  const history::Step step = history::Undo(settings);
  EXPECT_EQ("outside", step.left.by);
  EXPECT_EQ(kAfterIt, RecordedHome::Present(step.difference.after));
  EXPECT_EQ((Texts{{"ChanInfo.xml", "by hand"}}), home.Now());
  EXPECT_EQ(2U, home.Store().Snapshots().size());
}

TEST(Redo, GoesToTheNewestOfSeveral) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt, "left");
  history::Undo(home.Settings());
  home.Change({{"ChanInfo.xml", "right"}}, "right");
  history::Undo(home.Settings());
  EXPECT_EQ("right", history::Redo(home.Settings()).reached.by);
}

TEST(Restore, IsAChangeThatCanBeTakenBack) {
  const RecordedHome home(kBeforeIt);
  home.Change(kAfterIt);
  home.Change({{"ChanInfo.xml", "third"}});
  history::Restore(home.Settings("history restore 1"), 1, "");
  EXPECT_EQ(kBeforeIt, home.Now());
  EXPECT_EQ("history restore 1", home.Store().Head()->by);
  history::Undo(home.Settings());
  EXPECT_EQ((Texts{{"ChanInfo.xml", "third"}}), home.Now());
}

TEST(Restore, TakesOneFileAlone) {
  const RecordedHome home(kBeforeIt);
  home.Change({{"ChanInfo.xml", "new"}});
  history::Restore(home.Settings(), 1, "UserSettings.xml");
  EXPECT_EQ(kAfterIt, home.Now());
  ExpectRaised<Failure>("snapshot 1 says nothing of notes.txt",
                        [&] { history::Restore(home.Settings(), 1, "notes.txt"); });
  ExpectRaised<Failure>("there is no snapshot 9; 'history restore' can bring back 1-3",
                        [&] { history::Restore(home.Settings(), 9, ""); });
  EXPECT_TRUE(history::Restore(home.Settings(), 3, "").IsNone());
  EXPECT_EQ(3U, home.Store().Snapshots().size());
}

TEST(Bases, BelongToEverySnapshot) {
  const RecordedHome home(kBeforeIt);
  const Texts merged = {{"ChanInfo.xml", "merged"}, {"base-49-DVBSatellite.json", "{}"}};
  home.Change(merged);
  EXPECT_EQ("{}", home.Files().Read("tunedex-history/base-49-DVBSatellite.json"));
  history::Undo(home.Settings());
  EXPECT_EQ(kBeforeIt, home.Now());
  history::Redo(home.Settings());
  EXPECT_EQ(merged, home.Now());
}

TEST(Prune, KeepsTheNewestAndHead) {
  const RecordedHome home(kBeforeIt);
  for (int i = 0; i < 8; ++i) home.Change({{"ChanInfo.xml", std::to_string(i)}});
  while (home.Store().Head()->number > 2) history::Undo(home.Settings());
  const history::Pruned pruned = history::Prune(home.Settings(), 3);
  EXPECT_EQ((std::vector<history::Number>{1, 3, 4, 5, 6}), pruned.removed);
  EXPECT_EQ((Texts{{"ChanInfo.xml", "0"}}), home.Now());
  ExpectWholeHistory(home.Files().Path());
  ExpectRaised<Failure>("there is nothing to undo", [&] { history::Undo(home.Settings()); });
}

TEST(Prune, HappensByItselfAfterFifty) {
  const RecordedHome home(kBeforeIt);
  for (int i = 0; i < 60; ++i) home.Change({{"ChanInfo.xml", std::to_string(i)}});
  const history::Store store = home.Store();
  EXPECT_EQ(50U, store.Snapshots().size());
  EXPECT_EQ(61U, store.Head()->number);
  ExpectWholeHistory(home.Files().Path());
}

TEST(Prune, KeepsTenHoweverLargeTheyAre) {
  const RecordedHome home;
  std::string text(std::size_t{8} * 1024 * 1024, 'x');
  for (char letter = 'a'; letter < 'p'; ++letter) {
    text[0] = letter;
    home.Change({{"SatelliteInfo.xml", text}});
  }
  EXPECT_EQ(10U, home.Store().Snapshots().size());
  ExpectWholeHistory(home.Files().Path());
}

}  // namespace

}  // namespace zortunedex::kit
