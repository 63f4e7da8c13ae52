#include <filesystem>
#include <fstream>

#include "tool/satellite_home.h"
#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

namespace {

using nlohmann::ordered_json;

/// What was printed as JSON, whatever the status.
ordered_json JsonOf(const Outcome& outcome) { return ordered_json::parse(outcome.out); }

/// A directory of its own with the samples, or with the files of a folder.
class CheckHome {
 public:
  explicit CheckHome(const fs::path& folder = ZORTUNEDEX_SAMPLES "/home") {
    for (const auto& entry : fs::directory_iterator(folder)) {
      fs::copy_file(entry.path(), m_directory.File(entry.path().filename().string()));
    }
  }
  static CheckHome OfFixture(const std::string& code) {
    return CheckHome(fs::path(ZORTUNEDEX_TEST_DATA "/check") / code / "input");
  }

  const TempDir& Files() const { return m_directory; }
  std::string Channels() const { return m_directory.Read("ChanInfo.xml"); }
  Outcome Run(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--dir", m_directory.Path()});
    return RunTool(arguments);
  }
  /// Codes of what is found, and of what a repair says about it.
  static std::vector<std::string> Codes(const ordered_json& findings) {
    std::vector<std::string> codes;
    for (const ordered_json& finding : findings) codes.push_back(finding["code"]);
    return codes;
  }
  std::vector<std::string> Found(Arguments more = {}) const {
    more.insert(more.begin(), {"check", "--json"});
    return Codes(JsonOf(Run(more))["findings"]);
  }
  /// Puts text into the place of the first `part`.
  void Replace(const std::string& part, const std::string& text) const {
    std::string bytes = Channels();
    const std::size_t place = bytes.find(part);
    ASSERT_NE(std::string::npos, place);
    m_directory.Write("ChanInfo.xml", bytes.replace(place, part.size(), text));
  }

 private:
  TempDir m_directory;
};

using FoundCodes = std::vector<std::string>;

TEST(ToolCheck, SamplesAreClean) {
  const CheckHome home;
  const Outcome outcome = home.Run({"check"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("found: nothing\n", outcome.out);
  EXPECT_EQ("", outcome.err);
}

TEST(ToolCheck, JsonSaysEverything) {
  const CheckHome home = CheckHome::OfFixture("ZT020");
  const Outcome outcome = home.Run({"check", "--json", "--level", "error"});
  ExpectStatus(3, outcome);
  const ordered_json json = JsonOf(outcome);
  EXPECT_EQ("check", json["tunedex"]);
  EXPECT_EQ(1, json["version"]);
  const ordered_json expected = {
      {"code", "ZT020"},        {"severity", "error"},
      {"file", "ChanInfo.xml"}, {"line", 5},
      {"column", 24},           {"path", "Country[49]/ChannelSet[5]/Channel[index=1]"},
      {"attribute", "name"},    {"value", "&"},
      {"text", "a raw &"},      {"repair", "yes"},
      {"option", nullptr}};
  EXPECT_EQ(expected, json["findings"][1]);
}

TEST(ToolCheck, LevelsAndFilesAreChosen) {
  const CheckHome home = CheckHome::OfFixture("ZT031");
  ExpectStatus(0, home.Run({"check"}));
  ExpectStatus(0, home.Run({"check", "--level", "error"}));
  const Outcome notes = home.Run({"check", "--level", "error", "--level", "note"});
  ExpectStatus(3, notes);
  EXPECT_NE(std::string::npos, notes.out.find("ChanInfo.xml:5:92: note ZT031: ")) << notes.out;
  EXPECT_NE(std::string::npos, notes.out.find("found: 2 notes\n")) << notes.out;
  ExpectStatus(0, home.Run({"check", "--level", "note", "--file", "UserSettings.xml"}));
}

TEST(ToolCheck, RefusesWhatMakesNoSense) {
  const CheckHome home;
  ExpectStatus(2, home.Run({"check", "--level", "all"}));
  ExpectStatus(2, home.Run({"repair", "--code", "ZT999"}));
  ExpectRefused(2,
                "--file: 'Chaninfo.xml' is not known; the nearest is ChanInfo.xml; known are "
                "ChanInfo.xml, PreSetChannelInfo.xml, SatelliteInfo.xml, UserSettings.xml",
                home.Run({"check", "--file", "Chaninfo.xml"}));
  home.Files().Write("ChanInfo.xml.unreadable", home.Channels());
  ExpectStatus(0, home.Run({"check", "--file", "ChanInfo.xml.unreadable"}));
  ExpectStatus(2, home.Run({"check", "--dry-run"}));
}

/// What `channels list` says of every set of the samples.
std::string ListsOf(const CheckHome& home) {
  std::string text;
  for (const auto& [country, signal] :
       std::vector<std::pair<std::string, std::string>>{{"1", "16"},
                                                        {"1", "32"},
                                                        {"49", "2"},
                                                        {"49", "5"},
                                                        {"49", "64"},
                                                        {"49", "80"},
                                                        {"81", "176"},
                                                        {"82", "160"},
                                                        {"358", "96"}}) {
    const Outcome outcome =
        home.Run({"--country", country, "--signal", signal, "--json", "channels", "list"});
    ExpectStatus(0, outcome);
    text += outcome.out;
  }
  return text;
}

TEST(ToolRepair, BringsAListBackThatOneCharacterHid) {
  const CheckHome whole;
  const CheckHome broken;
  broken.Replace("name=\"ProSieben\"", "name=\"Pro & Sieben\"");
  ExpectStatus(3, broken.Run({"check"}));
  const Outcome repaired = broken.Run({"repair"});
  ExpectStatus(0, repaired);
  EXPECT_NE(std::string::npos, repaired.out.find("repaired: 2 errors; left: ")) << repaired.out;
  ExpectStatus(0, broken.Run({"check"}));
  std::string expected = ListsOf(whole);
  const std::string name = "\"ProSieben\"";
  const std::string lists = ListsOf(broken);
  EXPECT_NE(expected, lists);
  // The first one is the name, the display name stays.
  const std::size_t place = lists.find("\"Pro & Sieben\"");
  ASSERT_NE(std::string::npos, place);
  EXPECT_EQ(name, expected.substr(place, name.size()));
  EXPECT_EQ(expected.replace(place, name.size(), "\"Pro & Sieben\""), lists);
}

TEST(ToolRepair, CanBeTakenBack) {
  const CheckHome home = CheckHome::OfFixture("ZT043");
  const std::string before = home.Channels();
  ExpectStatus(0, home.Run({"repair"}));
  EXPECT_NE(before, home.Channels());
  ExpectStatus(0, home.Run({"undo"}));
  EXPECT_EQ(before, home.Channels());
}

TEST(ToolRepair, ADryRunWritesNothing) {
  const CheckHome home = CheckHome::OfFixture("ZT060");
  const std::string before = home.Channels();
  const Outcome outcome = home.Run({"repair", "--dry-run", "--json"});
  ExpectStatus(3, outcome);
  const ordered_json json = JsonOf(outcome);
  EXPECT_EQ("repair", json["tunedex"]);
  EXPECT_TRUE(json["dryRun"]);
  EXPECT_EQ(FoundCodes({"ZT060"}), CheckHome::Codes(json["repaired"]));
  EXPECT_EQ(before, home.Channels());
  EXPECT_EQ(1U, home.Files().Count());
}

TEST(ToolRepair, LeavesWhatIsNotAskedFor) {
  const CheckHome home = CheckHome::OfFixture("ZT062");
  const std::string before = home.Channels();
  const Outcome outcome = home.Run({"repair", "--json"});
  ExpectStatus(3, outcome);
  EXPECT_EQ(FoundCodes({"ZT062"}), CheckHome::Codes(JsonOf(outcome)["left"]));
  EXPECT_EQ(before, home.Channels());
  ExpectStatus(0, home.Run({"repair", "--renumber"}));
  EXPECT_EQ(FoundCodes{}, home.Found());
}

TEST(ToolRepair, WritesNothingWhileMarkupSplitsInSeveralWays) {
  const CheckHome home = CheckHome::OfFixture("ZT025");
  const std::string before = home.Channels();
  const Outcome outcome = home.Run({"repair"});
  ExpectStatus(1, outcome);
  EXPECT_NE(std::string::npos, outcome.err.find("--drop-unrepairable")) << outcome.err;
  EXPECT_NE(std::string::npos, outcome.err.find("ChanInfo.xml:5:4:")) << outcome.err;
  EXPECT_EQ(before, home.Channels());
}

TEST(ToolRepair, RemovesWhatSavesLeftOver) {
  const CheckHome home = CheckHome::OfFixture("ZT004");
  EXPECT_EQ(FoundCodes({"ZT004", "ZT004", "ZT004"}), home.Found());
  ExpectStatus(3, home.Run({"repair", "--dry-run"}));
  EXPECT_EQ(4U, home.Files().Count());
  ExpectStatus(0, home.Run({"repair", "--no-history"}));
  EXPECT_EQ(FoundCodes{}, home.Found());
  EXPECT_TRUE(home.Files().Has("ChanInfo.xml"));
  EXPECT_FALSE(home.Files().Has("ChanInfo.xml.tmp-1234"));
}

TEST(ToolRepair, GivesAFileTheNameThatItIsLookedForBy) {
  const CheckHome home = CheckHome::OfFixture("ZT009");
  const std::string before = home.Files().Read("chaninfo.xml");
  EXPECT_EQ(FoundCodes({"ZT009"}), home.Found());
  ExpectStatus(0, home.Run({"repair"}));
  EXPECT_EQ(before, home.Channels());
  EXPECT_EQ(FoundCodes{}, home.Found());
}

TEST(ToolRepair, KeepsInTheHistoryWhatWasPutAside) {
  const CheckHome home = CheckHome::OfFixture("ZT003");
  const std::string aside = home.Files().Read("ChanInfo.xml.unreadable.2");
  ExpectStatus(0, home.Run({"repair"}));
  EXPECT_FALSE(home.Files().Has("ChanInfo.xml.unreadable.2"));
  EXPECT_EQ(aside, home.Files().Read("tunedex-history/ChanInfo.xml.unreadable.2"));
}

TEST(ToolRepair, PutsChannelsBack) {
  const CheckHome home = CheckHome::OfFixture("ZT002");
  ExpectStatus(3, home.Run({"repair"}));
  EXPECT_TRUE(home.Files().Has("ChanInfo.xml.unreadable"));
  ExpectStatus(0, home.Run({"repair", "--restore"}));
  EXPECT_FALSE(home.Files().Has("ChanInfo.xml.unreadable"));
  const ordered_json channels =
      home.Run({"--country", kGermany, "--signal", "5", "channels", "list", "--json"}).Json();
  ASSERT_EQ(4U, channels.size());
  EXPECT_EQ("Salt & Pepper", channels[2]["name"]);
}

TEST(ToolCheck, TheCatalogueThatIsBuiltIsClean) {
  const TableFolder folder{{"Astra-19.2E",
                            "[CHANNEL]\n\tDELIVERY_SYSTEM = DVBS\n\tFREQUENCY = 11836500\n"
                            "\tPOLARIZATION = HORIZONTAL\n\tSYMBOL_RATE = 27500000\n"
                            "\tINNER_FEC = 3/4\n\tINVERSION = AUTO\n"}};
  ExpectStatus(0, folder.Build());
  const Outcome outcome = RunTool({"--dir", folder.Home().Path(), "check", "--level", "note"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("found: nothing\n", outcome.out);
}

}  // namespace

}  // namespace zortunedex::kit::tool
