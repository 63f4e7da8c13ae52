// The options of lists that leave, imports in a batch, and targets that cannot be written.
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

namespace {

using nlohmann::ordered_json;

class ExchangeOptions : public testing::Test {
 protected:
  ExchangeOptions() {
    for (const char* file : {"ChanInfo.xml", "SatelliteInfo.xml", "UserSettings.xml"}) {
      fs::copy_file(std::string(ZORTUNEDEX_SAMPLES "/home/") + file, m_home.Files().File(file));
    }
  }

  /// An export of German channels, of DVB-S ("64") or DVB-T ("80").
  Outcome Export(const std::string& signal, const std::string& format, Arguments more = {}) const {
    Arguments arguments = {"channels", "export", "--format", format};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return m_home.Run(kGermany, signal, arguments);
  }
  /// What it prints; a failure of the test where it does not succeed.
  std::string Exported(const std::string& signal, const std::string& format,
                       Arguments more = {}) const {
    const Outcome outcome = Export(signal, format, more);
    ExpectStatus(0, outcome);
    return outcome.out;
  }
  std::string Channel(const std::string& text, const std::string& begin) const {
    const std::size_t place = text.find("\n" + begin) + 1;
    return text.substr(place, text.find('\n', place) - place);
  }

  DataDirectory m_home{DataDirectory::Start::Empty};
  TempDir m_files;
};

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(ExchangeOptions, TablesOfTranspondersFillWhatTheListLacks) {
  fs::create_directory(m_files.File("tables"));
  m_files.Write("tables/Astra-19.2E",
                "[CHANNEL]\n\tDELIVERY_SYSTEM = DVBS2\n\tFREQUENCY = 11494000\n"
                "\tPOLARIZATION = HORIZONTAL\n\tSYMBOL_RATE = 22000000\n\tINNER_FEC = 2/3\n"
                "\tMODULATION = PSK/8\n");
  const std::string line = "Das Erste HD";
  const Outcome without = Export("64", "vdr");
  EXPECT_TRUE(Holds(Channel("\n" + without.out, line), ":HC23M999S1:")) << without.out;
  EXPECT_TRUE(Holds(without.err, "L310 system or modulation assumed, 19 times: modulation\n"));
  const Arguments tables = {"--tuning-from", m_files.File("tables")};
  const Outcome with = Export("64", "vdr", tables);
  EXPECT_TRUE(Holds(Channel("\n" + with.out, line), ":HC23M5S1:")) << with.out;
  EXPECT_FALSE(Holds(with.err, "L310 system or modulation assumed, 19 times"));
  EXPECT_TRUE(Holds(Exported("64", "dvbv5", tables), "MODULATION = PSK/8"));
  EXPECT_TRUE(
      Holds(Exported("64", "m3u", {"--tuning-from", tables[1], "--url", "{msys}"}), "dvbs2"));
  m_files.Write("tables/Astra-19.2E",
                m_files.Read("tables/Astra-19.2E") + "\tROLLOFF = 20\n\tPILOT = OFF\n");
  EXPECT_TRUE(Holds(Exported("64", "vdr", tables), ":HC23M5N0O20S1:"));
  EXPECT_TRUE(Holds(Exported("64", "dvbv5", tables), "\tPILOT = OFF\n\tROLLOFF = 20\n"));
  EXPECT_TRUE(
      Holds(Exported("64", "m3u",
                     {"--tuning-from", tables[1], "--target", "satip", "--host", "192.0.2.7"}),
            "&msys=dvbs2&mtype=8psk&ro=0.20&plts=off&sr=22000&"));
  Exported("64", "enigma2", {"--tuning-from", tables[1], "-o", m_files.File("receiver")});
  EXPECT_TRUE(Holds(m_files.Read("receiver/lamedb5"), ":2:192:2:0:1:2:2:0\n"));
  const NothingWritten nothing(m_home);
  ExpectStatus(1, Export("64", "vdr", {"--tuning-from", m_files.File("none")}));
  fs::remove(m_files.File("tables/Astra-19.2E"));
  const Outcome empty = Export("64", "vdr", tables);
  ExpectStatus(1, empty);
  EXPECT_TRUE(Holds(empty.err, "has no transponder table")) << empty.err;
}

TEST_F(ExchangeOptions, BandwidthIsThatOfTheCommandLineElseDerived) {
  const Outcome derived = Export("80", "dvbv5");
  EXPECT_TRUE(Holds(derived.out, "BANDWIDTH_HZ = 8000000"));
  EXPECT_TRUE(Holds(derived.err, "L314 "));
  const Outcome given = Export("80", "dvbv5", {"--bandwidth", "6"});
  EXPECT_TRUE(Holds(given.out, "BANDWIDTH_HZ = 6000000"));
  EXPECT_FALSE(Holds(given.out, "BANDWIDTH_HZ = 8000000"));
  EXPECT_FALSE(Holds(given.err, "L314 ")) << given.err;
  EXPECT_TRUE(Holds(Exported("80", "vdr", {"--bandwidth", "10"}), ":B10C999"));
  for (const char* wrong : {"9", "8000000", "wide"}) {
    ExpectRefused(2, "--bandwidth: '" + std::string(wrong) + "' is not 5, 6, 7, 8 or 10",
                  Export("80", "vdr", {"--bandwidth", wrong}));
  }
}

TEST_F(ExchangeOptions, AddressesAreThoseOfATemplateOrAServer) {
  const std::string list = Exported("64", "m3u", {"--url", "http://h/{sid}/{pol}"});
  EXPECT_TRUE(Holds(list, "\nhttp://h/10301/h\n")) << list;
  const std::string served = Exported("64", "m3u", {"--target", "satip", "--host", "192.0.2.7"});
  EXPECT_TRUE(Holds(served, "\nrtsp://192.0.2.7/?src=1&freq=11493.75&pol=h&msys=dvbs2&"));
  EXPECT_TRUE(Holds(served, "#EXTVLCOPT:program=10301\n"));
  const NothingWritten nothing(m_home);
  const Outcome unknown =
      Export("64", "m3u", {"-o", m_home.Files().File("list.m3u"), "--url", "http://h/{x}"});
  ExpectStatus(1, unknown);
  EXPECT_TRUE(Holds(unknown.err, "the template names {x}")) << unknown.err;
  ExpectStatus(1, Export("64", "m3u"));
  for (const Arguments& alone : {Arguments{"--target", "satip"}, Arguments{"--host", "h"}}) {
    ExpectRefused(2, "--target satip and --host go together", Export("64", "m3u", alone));
  }
  ExpectStatus(2, Export("64", "m3u", {"--target", "dlna", "--host", "h"}));
}

TEST_F(ExchangeOptions, NamesAreTheUsersOrTheBroadcasters) {
  ExpectStatus(0,
               m_home.Run(kGermany, "64", {"channels", "rename", "1", "Mine", "--display-only"}));
  EXPECT_TRUE(Holds("\n" + Exported("64", "vdr"), "\nMine;"));
  EXPECT_TRUE(Holds("\n" + Exported("64", "vdr", {"--names", "shown"}), "\nMine;"));
  const Outcome broadcast = Export("64", "vdr", {"--names", "broadcast"});
  EXPECT_TRUE(broadcast.out.starts_with("Das Erste HD;")) << broadcast.out;
  EXPECT_TRUE(Holds(broadcast.err, "nameDisplay"));
  EXPECT_FALSE(Holds(Export("64", "vdr").err, "nameDisplay"));
}

TEST_F(ExchangeOptions, StrictAsksToLookWhereAnythingIsLost) {
  const std::string file = m_files.File("list");
  ExpectStatus(3, Export("64", "vdr", {"--strict", "-o", file}));
  EXPECT_TRUE(Holds("\n" + m_files.Read("list"), "\nDas Erste HD;"));
  ExpectStatus(0, Export("64", "vdr", {"-o", file}));
  ExpectStatus(0, Export("64", "csv", {"--strict", "-o", file}));
  ExpectStatus(3, Export("64", "enigma2", {"--strict", "-o", m_files.File("settings")}));
}

TEST_F(ExchangeOptions, ReportsAreThoseThatArePrinted) {
  const std::string file = m_files.File("list");
  const std::string report = m_files.File("loss.json");
  const Outcome out = Export("64", "vdr", {"-o", file, "--report", report, "--json"});
  ExpectStatus(0, out);
  const ordered_json document = ordered_json::parse(m_files.Read("loss.json"));
  EXPECT_EQ(document, out.Json());
  EXPECT_EQ("export", document.at("direction"));
  EXPECT_EQ(58, document.at("read"));
  EXPECT_EQ(58, document.at("written"));
  // A line of text for every code of the document, with its count.
  std::map<std::string, std::size_t> counts;
  for (const ordered_json& loss : document.at("losses")) {
    counts[loss.at("code")] += loss.at("count").get<std::size_t>();
    EXPECT_EQ(loss.at("count"), loss.at("channels").size());
  }
  std::size_t lines = 0;
  for (const auto& [code, count] : counts) {
    EXPECT_TRUE(Holds("\n" + out.err, "\n" + code + " ")) << code;
    EXPECT_TRUE(Holds(out.err, ", " + std::to_string(count) + " times: ")) << code;
    ++lines;
  }
  EXPECT_EQ(lines, static_cast<std::size_t>(std::ranges::count(out.err, '\n')));
  EXPECT_LT(4U, lines);
}

TEST_F(ExchangeOptions, AFolderIsAsItWasWhereOneOfItsFilesCannotBeWritten) {
  const std::string folder = m_files.File("settings");
  fs::create_directory(folder);
  m_files.Write("settings/lamedb", "the old services");
  // Nothing takes the place of a folder.
  fs::create_directories(m_files.File("settings/userbouquet.favourites.radio/x"));
  ExpectStatus(1, Export("64", "enigma2", {"-o", folder}));
  EXPECT_EQ("the old services", m_files.Read("settings/lamedb"));
  std::set<std::string> left;
  for (const auto& entry : fs::directory_iterator(folder)) {
    left.insert(entry.path().filename().string());
  }
  EXPECT_EQ((std::set<std::string>{"lamedb", "userbouquet.favourites.radio"}), left);
  fs::remove_all(m_files.File("settings/userbouquet.favourites.radio"));
  ExpectStatus(0, Export("64", "enigma2", {"-o", folder}));
  EXPECT_TRUE(m_files.Read("settings/lamedb").starts_with("eDVB services /4/\n"));
}

TEST_F(ExchangeOptions, ABatchImports) {
  const std::string file = m_files.File("list.csv");
  m_files.Write("list.csv", "name,freq,colour\nOne,98500,red\nTwo,99500,\n");
  const std::string import = "channels import '" + file + "' --format csv ";
  const Outcome done = m_home.RunBatch(
      kGermany, "5",
      "channels remove 2-18\n" + import + "--append\nchannels rename 3 Three\n" + import +
          "--append --report '" + m_files.File("loss.json") + "'\nchannels remove 1\n");
  ExpectStatus(0, done);
  EXPECT_EQ("2 channels read, 2 imported\n2 channels read, 2 imported\n", done.out);
  EXPECT_TRUE(Holds(done.err, "L502 unknown key ignored, once: colour\n"));
  std::string names;
  for (const auto& channel : m_home.Channels(kGermany, "5")) {
    names += channel.at("name").get<std::string>() + " ";
  }
  EXPECT_EQ("One Three One Two ", names);
  EXPECT_EQ(2, ordered_json::parse(m_files.Read("loss.json")).at("written"));
  const ordered_json printed =
      m_home.RunBatch(kGermany, "5", import + "--replace\n", {"--json"}).Json();
  EXPECT_EQ("loss", printed.at("commands")[0].at("result").at("tunedex"));
  EXPECT_EQ(2U, m_home.Channels(kGermany, "5").size());
}

/// Frequencies in hertz go out in the formats' own units, and stay what they are to the hertz.
TEST_F(ExchangeOptions, DirectoriesMayBeInHertz) {
  const DataDirectory hertz(DataDirectory::Start::Empty);
  const auto run = [&](Arguments arguments) { return hertz.Run(kGermany, "80", arguments); };
  m_files.Write("own.csv", "name,freq,serviceID,ONID\nOne,506166667,1,1\n");
  ExpectStatus(0, run({"channels", "import", m_files.File("own.csv"), "--format", "csv"}));
  const Outcome out = run({"channels", "export", "--format", "vdr", "--file-unit", "hz"});
  EXPECT_TRUE(Holds(out.out, "One:506167:B8")) << out.out;
  m_files.Write("scan.conf",
                "One:506167:B8:T:0:7:0:0:0:1:1:0:0\nTwo:474000:B8:T:0:7:0:0:0:2:1:0:0\n");
  const Outcome plan = run({"--json", "channels", "merge", m_files.File("scan.conf"), "--format",
                            "vdr", "--file-unit", "hz"});
  ExpectStatus(0, plan);
  EXPECT_EQ((ordered_json{{"M105", 1}, {"M201", 1}}), plan.Json().at("summary"));
  const auto frequencies = [&] {
    std::vector<std::uint32_t> found;
    for (const ordered_json& channel : hertz.Channels(kGermany, "80")) {
      found.push_back(channel.at("frequency"));
    }
    return found;
  };
  EXPECT_EQ((std::vector<std::uint32_t>{506166667, 474000000}), frequencies());
  m_files.Write("more.csv", "name,freq,serviceID\nThree,5000000,3\n");
  const Outcome in = run({"channels", "import", m_files.File("more.csv"), "--format", "csv",
                          "--append", "--file-unit", "hz"});
  ExpectStatus(0, in);
  EXPECT_TRUE(Holds(in.err, "L503 value out of range: left out, once: freq\n")) << in.err;
  EXPECT_EQ((std::vector<std::uint32_t>{506166667, 474000000, 0}), frequencies());
  ExpectStatus(2, run({"channels", "export", "--format", "vdr", "--file-unit", "ghz"}));
}

TEST_F(ExchangeOptions, DirectoriesMayBeInMegahertz) {
  const DataDirectory mega(DataDirectory::Start::Empty);
  const auto run = [&](Arguments arguments) {
    arguments.insert(arguments.end(), {"--file-unit", "mhz"});
    return mega.Run(kGermany, "64", arguments);
  };
  m_files.Write("list.csv",
                "name,freq,symbolRate,serviceID,ONID,TSID,LNB_LowFreq,LNB_HighFreq,LNB_SwitchFreq\n"
                "One,11493750,22000,1,1,5,9750000,10600000,11700000\n");
  const Outcome in = run({"channels", "import", m_files.File("list.csv"), "--format", "csv"});
  ExpectStatus(0, in);
  EXPECT_EQ("L202 number rounded, once: freq\n", in.err);
  const ordered_json stored = mega.Channels(kGermany, "64")[0];
  EXPECT_EQ(11494, stored.at("frequency"));
  EXPECT_EQ(22000, stored.at("block").at("SatelliteParams").at("symbolRate"));
  const std::string out = run({"channels", "export", "--format", "dvbv5"}).out;
  EXPECT_TRUE(Holds(out, "\tLNB = EXTENDED\n")) << out;
  EXPECT_TRUE(Holds(out, "\tFREQUENCY = 11494000\n")) << out;
  EXPECT_TRUE(Holds(out, "\tSYMBOL_RATE = 22000000\n")) << out;
  for (int time = 0; time < 2; ++time) {
    const Outcome plan = run({"--json", "channels", "merge", m_files.File("list.csv")});
    ExpectStatus(0, plan);
    EXPECT_EQ((ordered_json{{"M100", 1}}), plan.Json().at("summary")) << plan.out;
  }
  EXPECT_EQ(stored, mega.Channels(kGermany, "64")[0]);
  // Read in thousands as they stand these would be beyond 32 bits.
  ExpectStatus(1, m_home.Run(kGermany, "64",
                             {"channels", "export", "--format", "vdr", "--file-unit", "mhz"}));
}

TEST_F(ExchangeOptions, ABatchThatCannotImportChangesNothing) {
  const NothingWritten nothing(m_home);
  const auto run = [&](const std::string& lines) { return m_home.RunBatch(kGermany, "5", lines); };
  const std::string file = m_files.File("none.csv");
  ExpectRefused(1,
                "batch: E_FAIL (0x80004005): line 2: channels import: " + file +
                    " is not there or cannot be read",
                run("channels remove 1\nchannels import '" + file + "' --format csv --append\n"));
  m_files.Write("list.csv", "name\nOne\n");
  const std::string import = "channels import '" + m_files.File("list.csv") + "' --format csv";
  const Outcome full = run("channels remove 1\n" + import + "\n");
  ExpectStatus(1, full);
  EXPECT_TRUE(Holds(full.err, "--append adds to them")) << full.err;
  ExpectStatus(1, run(import + " --replace\nchannels remove 7\n"));
  ExpectRefused(2, "line 1: --position goes without --format csv",
                run(import + " --append --position 19.2E\n"));
}

}  // namespace

}  // namespace zortunedex::kit::tool
