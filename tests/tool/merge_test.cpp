// A new scan into a list, and a list against another one.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

namespace {

using nlohmann::ordered_json;

const std::string kYesterday = ZORTUNEDEX_SAMPLES "/scans/yesterday.channels.conf";
const std::string kToday = ZORTUNEDEX_SAMPLES "/scans/today.channels.conf";

/// A list of satellite channels.
class Household {
 public:
  Outcome Run(Arguments arguments) const {
    return m_directory.Run(kGermany, "DVBSatellite", std::move(arguments));
  }
  Outcome Merge(const std::string& scan, const Arguments& more = {}) const {
    Arguments arguments = {"channels", "merge", scan};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Run(arguments);
  }
  ordered_json Channels() const { return m_directory.Channels(kGermany, "DVBSatellite"); }
  std::string Base() const {
    return m_directory.Files().Read("tunedex-history/base-49-DVBSatellite.json");
  }
  const DataDirectory& Directory() const { return m_directory; }
  const TempDir& Files() const { return m_directory.Files(); }
  std::string Write(const std::string& name, const std::string& text) const {
    m_others.Write(name, text);
    return Path(name);
  }
  /// Of a file beside the data directory.
  std::string Path(const std::string& name) const { return m_others.File(name); }

 private:
  DataDirectory m_directory{DataDirectory::Start::Empty};
  TempDir m_others;
};

/// The one who scanned yesterday, and made the list his own since.
class Evening : public Household {
 public:
  Evening() {
    ExpectStatus(0, Merge(kYesterday));
    ExpectStatus(0, Run({"channels", "rename", "9", "The second", "--display-only"}));
    ExpectStatus(0, Run({"channels", "favor", "9"}));
    ExpectStatus(0, Run({"channels", "lock", "6"}));
    ExpectStatus(0, Run({"channels", "move", "9", "1"}));
  }
};

std::string NamesOf(const ordered_json& channels) {
  std::string names;
  for (const ordered_json& channel : channels) {
    names += std::to_string(channel.at("index").get<int>()) + " " +
             channel.at("displayName").get<std::string>() + "\n";
  }
  return names;
}

std::string CodesOf(const ordered_json& plan) {
  std::string codes;
  for (const ordered_json& change : plan.at("changes")) {
    codes +=
        change.at("code").get<std::string>() + " " + change.at("name").get<std::string>() + "\n";
  }
  return codes;
}

TEST(Merge, FillsAnEmptyList) {
  const Household home;
  const Outcome first = home.Merge(kYesterday);
  ExpectStatus(0, first);
  EXPECT_EQ(10U, home.Channels().size());
  EXPECT_NE(std::string::npos, first.out.find("M201")) << first.out;
  EXPECT_FALSE(home.Base().empty());
}

TEST(Merge, TakesTodaysScanAndKeepsWhatIsTheUsers) {
  const Evening home;
  const Outcome merged = home.Merge(kToday, {"--json"});
  ExpectStatus(0, merged);
  EXPECT_EQ(
      "1 The second\n2 ZDF HD\n3 ZDFneo HD\n4 Das Erste HD\n5 arte HD\n6 SWR BW HD\n7 Bayern 1\n"
      "8 Bayern 2\n9 SAT.1\n10 kabel eins\n11 3sat HD\n12 phoenix HD\n13 tagesschau24 HD\n",
      NamesOf(home.Channels()));
  const ordered_json channels = home.Channels();
  EXPECT_EQ(1, channels[0].at("favorite"));
  EXPECT_EQ("ProSieben", channels[0].at("name"));
  EXPECT_EQ(12663000, channels[4].at("frequency"));
  EXPECT_EQ(
      "M100 The second\nM100 ZDF HD\nM103 ZDFneo HD\nM100 Das Erste HD\nM102 arte HD\n"
      "M105 SWR BW HD\nM100 Bayern 1\nM100 Bayern 2\nM100 SAT.1\nM100 kabel eins\nM201 3sat HD\n"
      "M201 phoenix HD\nM201 tagesschau24 HD\n",
      CodesOf(merged.Json()));
}

TEST(Merge, IsDoneOnce) {
  const Evening home;
  ExpectStatus(0, home.Merge(kToday, {"--scope", "full", "--gone", "mark"}));
  const std::string file = home.Directory().File();
  const std::string base = home.Base();
  const Outcome again =
      home.Merge(kToday, {"--scope", "full", "--gone", "mark", "--exit-code", "--json"});
  ExpectStatus(0, again);
  EXPECT_EQ(file, home.Directory().File());
  EXPECT_EQ(base, home.Base());
  for (const auto& [code, count] : again.Json().at("summary").items()) {
    EXPECT_TRUE(code == "M100" || code == "M302") << code;
  }
}

TEST(Merge, LooksForWhatIsGoneWhereItIsTold) {
  const Evening home;
  const ordered_json plan = home.Merge(kToday, {"--scope", "full", "--dry-run", "--json"}).Json();
  EXPECT_EQ(2, plan.at("summary").at("M301"));
  ExpectStatus(0, home.Merge(kToday, {"--scope", "full", "--gone", "remove"}));
  // One of the two is locked.
  EXPECT_EQ(12U, home.Channels().size());
  ExpectStatus(0, home.Merge(kToday, {"--scope", "full", "--gone", "remove", "--gone-favorites"}));
  EXPECT_EQ(11U, home.Channels().size());
}

TEST(Merge, TellsInAdvanceWhatItWouldDo) {
  const Evening home;
  const NothingWritten watch(home.Directory());
  const std::string base = home.Base();
  const Outcome dry = home.Merge(kToday, {"--dry-run", "--exit-code"});
  ExpectStatus(3, dry);
  EXPECT_NE(std::string::npos, dry.out.find("arte HD  M102")) << dry.out;
  EXPECT_EQ(base, home.Base());
  EXPECT_EQ(dry.out, home.Merge(kToday, {"--dry-run"}).out);
}

TEST(Merge, DoesWhatItsDocumentShows) {
  std::ifstream file(ZORTUNEDEX_DOCS "/merge.md", std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const std::string begin = "<!-- plan -->\n```\n";
  const std::size_t at = text.find(begin);
  ASSERT_NE(std::string::npos, at);
  const std::size_t first = at + begin.size();
  const Evening home;
  const Outcome plan = home.Merge(kToday, {"--scope", "full", "--gone", "mark", "--dry-run"});
  EXPECT_EQ(text.substr(first, text.find("```", first) - first), plan.out);
}

TEST(Merge, IsTakenBackWithItsBase) {
  const Evening home;
  const std::string file = home.Directory().File();
  const std::string base = home.Base();
  ExpectStatus(0, home.Merge(kToday));
  EXPECT_NE(base, home.Base());
  ExpectStatus(0, home.Run({"undo"}));
  EXPECT_EQ(file, home.Directory().File());
  EXPECT_EQ(base, home.Base());
  ExpectStatus(0, home.Run({"redo"}));
  EXPECT_EQ(13U, home.Channels().size());
}

TEST(Merge, GoesWithoutHistory) {
  const Evening home;
  ExpectStatus(0, home.Run({"--no-history", "channels", "merge", kToday}));
  EXPECT_EQ(13U, home.Channels().size());
  const Outcome again = home.Merge(kToday, {"--exit-code"});
  ExpectStatus(0, again);
}

TEST(Merge, TakesAnotherBaseOrNone) {
  const Evening home;
  const std::string base = home.Write("base.json", home.Base());
  const Outcome by = home.Merge(kToday, {"--dry-run", "--json"});
  EXPECT_EQ(by.out, home.Merge(kToday, {"--dry-run", "--json", "--base", base}).out);
  const Outcome none = home.Merge(kToday, {"--dry-run", "--json", "--base", "none"});
  ExpectStatus(0, none);
  EXPECT_NE(by.out, none.out);
  const Outcome missing = home.Merge(kToday, {"--base", "nowhere.json"});
  ExpectStatus(1, missing);
  EXPECT_NE(std::string::npos, missing.err.find("nowhere.json is not there or cannot be read"));
  const std::string broken =
      home.Write("broken.json", home.Base().substr(0, home.Base().size() / 2));
  const NothingWritten watch(home.Directory());
  const Outcome refused = home.Merge(kToday, {"--base", broken});
  ExpectStatus(1, refused);
  EXPECT_NE(std::string::npos, refused.err.find("base")) << refused.err;
}

TEST(Merge, TakesADirectoryThatAHostScannedInto) {
  const Evening home;
  const Evening other;
  ExpectStatus(0, other.Merge(kToday));
  const Outcome merged = home.Merge(other.Files().Path());
  ExpectStatus(0, merged);
  EXPECT_EQ(13U, home.Channels().size());
}

TEST(Merge, RefusesADirectoryWithoutSuchChannels) {
  const Evening home;
  const NothingWritten watch(home.Directory());
  const DataDirectory other(DataDirectory::Start::Empty);
  fs::copy_file(ZORTUNEDEX_SAMPLES "/home/ChanInfo.xml", other.Files().File("ChanInfo.xml"));
  const Outcome refused =
      home.Directory().Run("358", "DVBSatellite", {"channels", "merge", other.Files().Path()});
  ExpectStatus(1, refused);
  EXPECT_NE(std::string::npos, refused.err.find("has no channels of 358 DVBSatellite; it has 1 "))
      << refused.err;
  other.Files().Write("ChanInfo.xml", "<CHANNELTABLE><Country");
  const Outcome broken = home.Merge(other.Files().Path());
  ExpectStatus(1, broken);
  EXPECT_NE(std::string::npos, broken.err.find("ChanInfo.xml cannot be read")) << broken.err;
  EXPECT_EQ(std::string::npos, broken.err.find("repair")) << broken.err;
}

TEST(Merge, RefusesAScanThatIsNone) {
  const Evening home;
  const NothingWritten watch(home.Directory());
  const auto message = [](const Outcome& outcome) { return outcome.err; };
  const Outcome missing = home.Merge("nowhere.conf");
  ExpectRefused(1,
                "channels merge: E_FAIL (0x80004005): nowhere.conf is not there or cannot be read",
                missing);
  const Outcome unknown = home.Merge(home.Write("notes.txt", "nothing of the kind\n"));
  ExpectStatus(2, unknown);
  EXPECT_NE(std::string::npos, message(unknown).find("--format says it")) << unknown.err;
  const Outcome playlist = home.Merge(home.Write("list.m3u", "#EXTM3U\n"));
  ExpectStatus(1, playlist);
  EXPECT_NE(std::string::npos, message(playlist).find("is no scan")) << playlist.err;
  const std::string radio =
      home.Write("radio.json",
                 "{\"tunedex\":\"channels\",\"version\":1,\"signal\":\"FMRadio\",\"channels\":[]}");
  ExpectStatus(1, home.Merge(radio));
  const std::string abroad = home.Write(
      "abroad.json",
      "{\"tunedex\":\"channels\",\"version\":1,\"country\":43,\"signal\":\"DVBSatellite\","
      "\"channels\":[]}");
  const Outcome foreign = home.Merge(abroad, {"--scope", "full"});
  ExpectStatus(1, foreign);
  EXPECT_NE(std::string::npos, message(foreign).find("channels of country 43, not of 49"))
      << foreign.err;
  ExpectStatus(2, home.Merge(kToday, {"--format", "json", "--position", "19.2E"}));
}

TEST(Merge, AsksForAWordWithAnEmptyScan) {
  const Evening home;
  const std::string empty = home.Write("empty.conf", ":Nothing\n");
  {
    const NothingWritten watch(home.Directory());
    ExpectStatus(1, home.Merge(empty));
  }
  const Outcome full = home.Merge(empty, {"--scope", "full", "--gone", "remove"});
  ExpectStatus(0, full);
  // The favourite and the locked one stay.
  EXPECT_EQ(2U, home.Channels().size());
}

TEST(Merge, RefusesWordsThatItDoesNotKnow) {
  const Evening home;
  for (const Arguments& words : std::vector<Arguments>{{"--gone", "remove=0"},
                                                       {"--gone", "later"},
                                                       {"--new", "front"},
                                                       {"--scope", "some"},
                                                       {"--deleted", "back"},
                                                       {"--numbers", "mine"},
                                                       {"--tuning", "mine"}}) {
    const Outcome refused = home.Merge(kToday, words);
    ExpectStatus(2, refused);
    EXPECT_NE(std::string::npos, refused.err.find("'" + words[1] + "' is not known"));
  }
}

TEST(Merge, KeepsWhatAFormatCannotHold) {
  const Evening home;
  ExpectStatus(0, home.Run({"channels", "set", "2", "--freq", "11361750"}));
  const ordered_json before = home.Channels();
  for (const char* format : {"vdr", "dvbv5", "enigma2", "csv", "json"}) {
    const std::string file = home.Path(std::string("list.") + format);
    const bool isOfPeers = std::string(format) != "csv" && std::string(format) != "json";
    Arguments out = {"channels", "export", "--format", format, "-o", file};
    if (isOfPeers) out.insert(out.end(), {"--names", "broadcast"});
    ExpectStatus(0, home.Run(out));
    ExpectStatus(0, home.Merge(file, {"--base", "none", "--exit-code"}));
    EXPECT_TRUE(before == home.Channels()) << format;
  }
}

TEST(Merge, KeepsWhatATableHasNoColumnFor) {
  const Evening home;
  const ordered_json before = home.Channels();
  std::string table = "name,freq,polarisation,orbitalPosition,serviceID,TSID,ONID\n";
  for (const ordered_json& channel : before) {
    const ordered_json& block = channel.at("block");
    table += channel.at("name").get<std::string>() + "," +
             std::to_string(channel.at("frequency").get<int>()) + "," +
             block.at("SatelliteParams").at("polarisation").get<std::string>() + ",192," +
             std::to_string(block.at("serviceID").get<int>()) + "," +
             std::to_string(channel.at("tsid").get<int>()) + "," +
             std::to_string(block.at("ONID").get<int>()) + "\n";
  }
  ExpectStatus(0, home.Merge(home.Write("list.csv", table), {"--base", "none", "--exit-code"}));
  EXPECT_TRUE(before == home.Channels());
}

TEST(Diff, SaysHowAnotherListDiffers) {
  const Evening home;
  const NothingWritten watch(home.Directory());
  const Outcome diff = home.Run({"channels", "diff", kToday, "--json", "--exit-code"});
  ExpectStatus(3, diff);
  const ordered_json plan = ordered_json::parse(diff.out);
  EXPECT_EQ("diff", plan.at("tunedex"));
  EXPECT_EQ(1, plan.at("version"));
  EXPECT_EQ(3, plan.at("summary").at("M201"));
  const Outcome none = home.Run({"channels", "diff", home.Files().Path(), "--exit-code"});
  ExpectStatus(0, none);
  ExpectStatus(2, home.Run({"channels", "diff", kToday, "--dry-run"}));
}

}  // namespace

}  // namespace zortunedex::kit::tool
