// What a user sees of the history: changes are taken back, told apart and never lost.
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/host.h"
#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

/// A copy of the sample directory.
class SampleHome {
 public:
  SampleHome() {
    for (const auto& entry : std::filesystem::directory_iterator(ZORTUNEDEX_SAMPLES "/home")) {
      std::filesystem::copy_file(entry.path(), m_directory.File(entry.path().filename().string()));
    }
    m_original = Channels();
  }

  const TempDir& Files() const { return m_directory; }
  std::string Channels() const { return m_directory.Read("ChanInfo.xml"); }
  const std::string& Original() const { return m_original; }
  Outcome Run(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--dir", m_directory.Path(), "--country", kGermany,
                                         "--signal", "DVBSatellite"});
    return RunTool(arguments);
  }
  nlohmann::ordered_json List() const { return Run({"history", "list", "--json"}).Json(); }

 private:
  TempDir m_directory;
  std::string m_original;
};

TEST(History, TakesAChangeBackToTheByte) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "remove", "3"}));
  const std::string removed = home.Channels();
  EXPECT_NE(home.Original(), removed);
  const Outcome undo = home.Run({"undo"});
  ExpectStatus(0, undo);
  EXPECT_TRUE(undo.out.starts_with("took back 2: channels remove 3, 20")) << undo.out;
  EXPECT_EQ(home.Original(), home.Channels());
  ExpectStatus(0, home.Run({"redo"}));
  EXPECT_EQ(removed, home.Channels());
  ExpectStatus(0, home.Run({"undo"}));
  ExpectRefused(1, "undo: E_FAIL (0x80004005): there is nothing to undo", home.Run({"undo"}));
  EXPECT_EQ(home.Original(), home.Channels());
  ExpectStatus(0, home.Run({"redo"}));
  ExpectRefused(1, "redo: E_FAIL (0x80004005): there is nothing to redo", home.Run({"redo"}));
}

TEST(History, ListsWhatWasEditedByHand) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "favor", "5", "--off"}));
  std::string edited = home.Channels();
  edited.replace(edited.find("ZDF HD"), 6, "By us.");
  home.Files().Write("ChanInfo.xml", edited);
  ExpectStatus(0, home.Run({"undo"}));
  const nlohmann::ordered_json list = home.List();
  EXPECT_EQ("history", list["tunedex"]);
  EXPECT_EQ(1, list["version"]);
  EXPECT_EQ(2, list["head"]);
  ASSERT_EQ(3U, list["snapshots"].size());
  const auto& newest = list["snapshots"][0];
  EXPECT_EQ(3, newest["number"]);
  EXPECT_EQ(2, newest["parent"]);
  EXPECT_EQ("outside", newest["by"]);
  EXPECT_EQ(nlohmann::ordered_json({"ChanInfo.xml"}), newest["files"]);
  EXPECT_EQ("channels favor 5 --off", list["snapshots"][1]["by"]);
  EXPECT_EQ(nullptr, list["snapshots"][2]["parent"]);
  const std::string time = newest["time"];
  EXPECT_EQ(20U, time.size());
  EXPECT_EQ('T', time[10]);
  EXPECT_EQ('Z', time[19]);
  ExpectStatus(0, home.Run({"redo"}));
  EXPECT_EQ(edited, home.Channels());
}

TEST(History, TellsHowToWaitLongerForAnother) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "lock", "1"}));
  std::string cause;
  host::FileLock lock(home.Files().File("tunedex-history/lock"), cause);
  ASSERT_TRUE(lock.IsOpen() && lock.Take()) << cause;
  ExpectRefused(1,
                "channels lock: E_FAIL (0x80004005): another command is changing the directory; "
                "nothing was changed. Waited 0 s, --wait SECONDS waits longer",
                home.Run({"--wait", "0", "channels", "lock", "2"}));
}

TEST(History, TellsChannelsApart) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "move", "5", "1"}));
  ExpectStatus(0, home.Run({"channels", "rename", "1", "My first", "--display-only"}));
  ExpectStatus(0, home.Run({"channels", "lock", "2"}));
  ExpectStatus(0, home.Run({"dishes", "remove", "1", "2"}));
  const Outcome diff = home.Run({"history", "diff", "1"});
  ExpectStatus(0, diff);
  EXPECT_EQ(
      "49 DVBSatellite: channel 1 My first: moved from 5\n"
      "49 DVBSatellite: channel 1 My first: renamed displayName ProSieben -> My first\n"
      "49 DVBSatellite: channel 2 Das Erste HD: changed lock false -> true\n"
      "UserSettings.xml: dish 1, satellite Hotbird-13B-13.0E Ku-Band: removed\n",
      diff.out);
  const nlohmann::ordered_json json = home.Run({"history", "diff", "3", "4", "--json"}).Json();
  EXPECT_EQ("history-diff", json["tunedex"]);
  EXPECT_EQ(3, json["from"]);
  EXPECT_EQ(4, json["to"]);
  ASSERT_EQ(1U, json["changes"].size());
  EXPECT_EQ((nlohmann::ordered_json{
                {"change", "changed"},
                {"file", "ChanInfo.xml"},
                {"country", 49},
                {"signal", "DVBSatellite"},
                {"before", 2},
                {"index", 2},
                {"name", "Das Erste HD"},
                {"fields", {{{"field", "lock"}, {"from", "false"}, {"to", "true"}}}}}),
            json["changes"][0]);
  EXPECT_EQ("", home.Run({"history", "diff", "5"}).out);
}

TEST(History, BringsASnapshotBack) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "remove", "3"}));
  ExpectStatus(0, home.Run({"dishes", "clear"}));
  EXPECT_EQ("restored snapshot 1: ChanInfo.xml\n",
            home.Run({"history", "restore", "1", "--file", "ChanInfo.xml"}).out);
  EXPECT_EQ(home.Original(), home.Channels());
  EXPECT_EQ("nothing differs from snapshot 4\n", home.Run({"history", "restore", "4"}).out);
  const nlohmann::ordered_json restored = home.Run({"history", "restore", "1", "--json"}).Json();
  EXPECT_EQ(nlohmann::ordered_json({"UserSettings.xml"}), restored["files"]);
  ExpectRefused(1,
                "history restore: E_FAIL (0x80004005): there is no snapshot 9; 'history restore' "
                "can bring back 1-5",
                home.Run({"history", "restore", "9"}));
}

TEST(History, ShowsASnapshot) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "remove", "3"}));
  const nlohmann::ordered_json shown = home.Run({"history", "show", "2", "--json"}).Json();
  EXPECT_EQ("snapshot", shown["tunedex"]);
  EXPECT_EQ(2, shown["number"]);
  EXPECT_EQ(1, shown["parent"]);
  EXPECT_EQ("channels remove 3", shown["by"]);
  EXPECT_EQ("000002-ChanInfo.xml", shown["files"]["ChanInfo.xml"]["in"]);
  EXPECT_EQ(home.Channels().size(), shown["files"]["ChanInfo.xml"]["size"]);
  EXPECT_EQ("000001-UserSettings.xml", shown["files"]["UserSettings.xml"]["in"]);
  EXPECT_NE(std::string::npos, home.Run({"history", "show", "2"}).out.find("000002-ChanInfo.xml"));
}

TEST(History, IsPruned) {
  const SampleHome home;
  for (const char* mark : {"1", "2", "3", "4"}) {
    ExpectStatus(0, home.Run({"channels", "favor", "9", "--mark", mark}));
  }
  EXPECT_EQ("would remove snapshots: 1, 2, 3\n",
            home.Run({"history", "prune", "--keep", "2", "--dry-run"}).out);
  EXPECT_EQ("removed snapshots: 1, 2, 3\n", home.Run({"history", "prune", "--keep", "2"}).out);
  EXPECT_EQ(2U, home.List()["snapshots"].size());
}

TEST(History, IsLeftOutOnRequest) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "remove", "3", "--no-history"}));
  EXPECT_NE(home.Original(), home.Channels());
  EXPECT_EQ(nlohmann::ordered_json::array(), home.List()["snapshots"]);
  EXPECT_TRUE(home.Files().Has("tunedex-history/lock"));
  ExpectRefused(2, "undo is about the history; no --no-history",
                home.Run({"undo", "--no-history"}));
}

TEST(History, SaysWhatCanStillBeHad) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "remove", "3"}));
  ExpectStatus(0, home.Run({"channels", "remove", "3"}));
  std::filesystem::remove(home.Files().File("tunedex-history/000002-ChanInfo.xml"));
  const std::string before = home.Channels();
  const std::string message =
      ": E_FAIL (0x80004005): the history is damaged: tunedex-history/000002-ChanInfo.xml is "
      "missing; 'history restore' can bring back 1, 3. 'history prune' removes what is damaged, "
      "and "
      "--no-history does without the history";
  ExpectRefused(1, "undo" + message, home.Run({"undo"}));
  ExpectRefused(1, "channels favor" + message, home.Run({"channels", "favor", "9", "--mark", "7"}));
  const Outcome list = home.Run({"history", "list"});
  ExpectStatus(1, list);
  EXPECT_EQ("tunedex: history list" + message + "\n", list.err);
  EXPECT_NE(std::string::npos, list.out.find("channels remove 3"));
  EXPECT_EQ(before, home.Channels());
  ExpectStatus(0, home.Run({"history", "restore", "1"}));
  EXPECT_EQ(home.Original(), home.Channels());
  ExpectStatus(0, home.Run({"history", "prune"}));
  ExpectStatus(0, home.Run({"history", "list"}));
}

TEST(DryRun, TellsWhatEveryChangingCommandWouldDo) {
  const SampleHome home;
  const auto expect = [&home](const std::string& told, Arguments arguments) {
    arguments.push_back("--dry-run");
    const Outcome outcome = home.Run(std::move(arguments));
    ExpectStatus(0, outcome);
    EXPECT_EQ(told, outcome.out);
  };
  expect("49 DVBSatellite: channel 3 RTL Television: removed\n", {"channels", "remove", "3"});
  expect("49 DVBSatellite: channel 2 Mine: renamed displayName ZDF HD -> Mine\n",
         {"channels", "rename", "2", "Mine", "--display-only"});
  expect("UserSettings.xml: dish 1, satellite Hotbird-13B-13.0E Ku-Band: removed\n",
         {"dishes", "remove", "1", "2"});
  expect("", {"channels", "lock", "1", "--off"});
  const nlohmann::ordered_json json =
      home.Run({"channels", "favor", "1", "--mark", "8", "--dry-run", "--json"}).Json();
  EXPECT_EQ("dry-run", json["tunedex"]);
  EXPECT_EQ("changed", json["changes"][0]["change"]);
  EXPECT_EQ(home.Original(), home.Channels());
  EXPECT_EQ(4U, home.Files().Count()) << "not even a lock";
}

TEST(DryRun, TellsOfAFormAlone) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  EXPECT_EQ("ChanInfo.xml: changed in its form, or in what the library does not read\n",
            directory.Run({"format", "preformatted", "--dry-run"}).out);
}

TEST(DryRun, IsRefusedWhereNothingChanges) {
  const SampleHome home;
  ExpectRefused(2, "--dry-run: channels list changes nothing",
                home.Run({"channels", "list", "--dry-run"}));
}

TEST(DryRun, OfUndoLeavesTheHistoryAlone) {
  const SampleHome home;
  ExpectStatus(0, home.Run({"channels", "remove", "3"}));
  const std::string removed = home.Channels();
  EXPECT_EQ("49 DVBSatellite: channel 3 RTL Television: added\n",
            home.Run({"undo", "--dry-run"}).out);
  EXPECT_EQ(removed, home.Channels());
  EXPECT_EQ(2, home.List()["head"]);
}

TEST(Messages, NameTheUsersDirectory) {
  const SampleHome home;
  for (const Arguments& command : {Arguments{"channels", "favor", "999"},
                                   {"dishes", "remove", "4", "9"},
                                   {"channels", "set", "1", "--set", "nothing=1"}}) {
    EXPECT_EQ(std::string::npos, home.Run(command).err.find("tunedex-1")) << command[0];
  }
}

// Two terminals: each change builds on what the other one left.
TEST(TwoLoops, OfAHundredChangesLoseNone) {
  constexpr int kChanges = 100;
  const DataDirectory directory(DataDirectory::Start::Empty);
  const auto loop = [&directory](const char* signal) {
    for (int i = 0; i < kChanges; ++i) {
      ExpectStatus(
          0, directory.Run(kGermany, signal, {"channels", "add", "--name", "X", "--wait", "600"}));
    }
  };
  std::thread other(loop, "5");
  loop("64");
  other.join();
  EXPECT_EQ(static_cast<std::size_t>(kChanges), directory.Channels(kGermany, "5").size());
  EXPECT_EQ(static_cast<std::size_t>(kChanges), directory.Channels(kGermany, "64").size());
}

}  // namespace

}  // namespace zortunedex::kit::tool
