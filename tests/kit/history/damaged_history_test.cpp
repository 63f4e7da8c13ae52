// A history that somebody or a failing disk has damaged: what can still be had is told, and the
// data files stay as they are.
#include <functional>

#include "kit/failure.h"
#include "kit/history/recorded_home.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

const Texts kStateOne = {{"ChanInfo.xml", "first"}, {"UserSettings.xml", "dishes"}};
const Texts kStateTwo = {{"ChanInfo.xml", "second"}, {"UserSettings.xml", "dishes"}};
const Texts kStateThree = {{"ChanInfo.xml", "third"}, {"UserSettings.xml", "dishes"}};

constexpr char kHelp[] =
    ". 'history prune' removes what is damaged, and --no-history does without the history";

class DamagedHome {
 public:
  DamagedHome() : m_home(kStateOne) {
    m_home.Change(kStateTwo);
    m_home.Change(kStateThree);
  }

  const RecordedHome& Home() const { return m_home; }
  void Write(const std::string& name, const std::string& text) const {
    m_home.Files().Write("tunedex-history/" + name, text);
  }
  void Remove(const std::string& name) const {
    std::filesystem::remove(m_home.Files().File("tunedex-history/" + name));
  }

  /// Every command that would go on from it says this, and leaves the files alone.
  void ExpectRefused(const std::string& message) const {
    const Texts before = m_home.Now();
    ExpectRaised<Failure>(message, [&] { m_home.Change(kStateOne); });
    ExpectRaised<Failure>(message, [&] { history::Undo(m_home.Settings()); });
    ExpectRaised<Failure>(message, [&] { history::Redo(m_home.Settings()); });
    EXPECT_EQ(before, m_home.Now());
  }

  /// After pruning, changes are recorded and taken back again.
  void ExpectPruned() const {
    const Texts before = m_home.Now();
    history::Prune(m_home.Settings(), std::nullopt);
    EXPECT_EQ(before, m_home.Now());
    ExpectWholeHistory(m_home.Files().Path());
    m_home.Change({{"ChanInfo.xml", "later"}});
    history::Undo(m_home.Settings());
    EXPECT_EQ(before, m_home.Now());
  }

 private:
  RecordedHome m_home;
};

TEST(DamagedHistory, LacksACopy) {
  const DamagedHome damaged;
  damaged.Remove("000002-ChanInfo.xml");
  damaged.ExpectRefused(
      "the history is damaged: tunedex-history/000002-ChanInfo.xml is missing; 'history restore' "
      "can bring back 1, 3" +
      std::string(kHelp));
  history::Restore(damaged.Home().Settings(), 1, "");
  EXPECT_EQ(kStateOne, damaged.Home().Now());
  damaged.ExpectPruned();
}

TEST(DamagedHistory, HasACopyOfOtherBytes) {
  const DamagedHome damaged;
  damaged.Write("000002-ChanInfo.xml", "Second");
  ExpectRaised<Failure>(
      "snapshot 2 is damaged: tunedex-history/000002-ChanInfo.xml is not what was stored; "
      "'history restore' can bring back 1, 3",
      [&] { history::Undo(damaged.Home().Settings()); });
  EXPECT_EQ(kStateThree, damaged.Home().Now());
  damaged.Write("000002-ChanInfo.xml", "longer than second");
  damaged.ExpectRefused(
      "the history is damaged: tunedex-history/000002-ChanInfo.xml is not what was stored; "
      "'history restore' can bring back 1, 3" +
      std::string(kHelp));
  damaged.ExpectPruned();
}

TEST(DamagedHistory, HasForeignJson) {
  for (const char* text : {"", "no JSON", "{\"name\":\"other\"}", "[1,2]"}) {
    const DamagedHome damaged;
    damaged.Write("000002.json", text);
    EXPECT_THROW(damaged.Home().Change(kStateOne), Failure);
    EXPECT_EQ(kStateThree, damaged.Home().Now());
    ExpectRaised<Failure>(
        "snapshot 2 is damaged; 'history restore' can bring back 1, 3" + std::string(kHelp),
        [&] { history::Restore(damaged.Home().Settings(), 2, ""); });
    damaged.ExpectPruned();
  }
}

TEST(DamagedHistory, HasAHeadThatNamesNothing) {
  const std::string rest = "; 'history restore' can bring back 1-3" + std::string(kHelp);
  for (const auto& [head, what] :
       {std::pair{"99\n", "names snapshot 99, which is not there"},
        std::pair{"", "names no snapshot"}, std::pair{"master", "names no snapshot"}}) {
    const DamagedHome damaged;
    damaged.Write("HEAD", head);
    damaged.ExpectRefused("the history is damaged: tunedex-history/HEAD " + std::string(what) +
                          rest);
    damaged.ExpectPruned();
  }
  const DamagedHome damaged;
  damaged.Remove("HEAD");
  damaged.ExpectRefused("the history is damaged: tunedex-history/HEAD is missing" + rest);
  history::Restore(damaged.Home().Settings(), 2, "");
  EXPECT_EQ(kStateTwo, damaged.Home().Now());
  history::Undo(damaged.Home().Settings());
  EXPECT_EQ(kStateThree, damaged.Home().Now());
}

TEST(DamagedHistory, HasAnAnnouncementThatIsNone) {
  const DamagedHome damaged;
  damaged.Write("PENDING", "{\"target\":\"../x\"}");
  damaged.ExpectRefused(
      "the history is damaged: tunedex-history/PENDING has no from; 'history restore' can bring "
      "back 1-3" +
      std::string(kHelp));
  damaged.ExpectPruned();
}

TEST(DamagedHistory, MayHaveNothingLeft) {
  const DamagedHome damaged;
  damaged.Remove("000001-UserSettings.xml");
  damaged.ExpectRefused(
      "the history is damaged: tunedex-history/000001-UserSettings.xml is missing; no snapshot can "
      "be restored" +
      std::string(kHelp));
  history::ChangeSettings settings = damaged.Home().Settings();
  settings.isRecorded = false;
  history::MakeChange(settings, RecordedHome::Writing(kStateOne));
  EXPECT_EQ(kStateOne, damaged.Home().Now());
  damaged.ExpectPruned();
}

// Its rules are not known: nothing of it is rewritten, nor removed.
TEST(DamagedHistory, OfAnotherVersionIsLeftAlone) {
  for (const char* name : {"000002.json", "PENDING"}) {
    const DamagedHome damaged;
    const std::string foreign = "{\"version\": 2, \"rest\": \"unknown\"}";
    damaged.Write(name, foreign);
    const std::string message = "the history is left alone: tunedex-history/" + std::string(name) +
                                " is of version 2 and not of this tunedex (--no-history goes on "
                                "without it)";
    damaged.ExpectRefused(message);
    const history::ChangeSettings settings = damaged.Home().Settings();
    ExpectRaised<Failure>(message, [&] { history::Restore(settings, 1, ""); });
    ExpectRaised<Failure>(message, [&] { history::Prune(settings, 1); });
    EXPECT_EQ(foreign, damaged.Home().Files().Read("tunedex-history/" + std::string(name)));
    EXPECT_EQ(kStateThree, damaged.Home().Now());
    history::ChangeSettings unrecorded = settings;
    unrecorded.isRecorded = false;
    history::MakeChange(unrecorded, RecordedHome::Writing(kStateOne));
    EXPECT_EQ(kStateOne, damaged.Home().Now());
    EXPECT_EQ(foreign, damaged.Home().Files().Read("tunedex-history/" + std::string(name)));
  }
}

TEST(DamagedHistory, MayBeAFileInTheFoldersPlace) {
  const RecordedHome home(kStateOne);
  home.Files().Write("tunedex-history", "a file");
  try {
    home.Change(kStateTwo);
    ADD_FAILURE();
  } catch (const Failure& failure) {
    const std::string message = failure.what();
    EXPECT_TRUE(message.starts_with("tunedex-history cannot be made: ")) << message;
    EXPECT_TRUE(message.ends_with("; nothing was changed")) << message;
  }
  EXPECT_EQ(kStateOne, home.Now());
  EXPECT_EQ("a file", home.Files().Read("tunedex-history"));
}

}  // namespace

}  // namespace zortunedex::kit
