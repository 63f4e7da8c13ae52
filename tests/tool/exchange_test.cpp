// Lists out and in by the command line.
#include <filesystem>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace fs = std::filesystem;

namespace {

using nlohmann::ordered_json;

struct SampleSet {
  const char* country;
  const char* signal;
};

// All of samples/home.
constexpr SampleSet kSampleSets[] = {
    {"1", "16"},  {"1", "32"},   {"49", "2"},   {"49", "5"},   {"49", "64"},
    {"49", "80"}, {"81", "176"}, {"82", "160"}, {"358", "96"},
};

/// A directory with the channels of the samples.
class Samples : public DataDirectory {
 public:
  Samples() : DataDirectory(Start::Empty) {
    fs::copy_file(ZORTUNEDEX_SAMPLES "/home/ChanInfo.xml", Files().File("ChanInfo.xml"));
  }
};

/// The table with semicolons between its cells and without carriage returns.
std::string WithSemicolons(std::string table) {
  bool quoted = false;
  for (char& byte : table) {
    if (byte == '"') quoted = !quoted;
    if (byte == ',' && !quoted) byte = ';';
  }
  std::erase(table, '\r');
  return table;
}

TEST(Exchange, BringsEverySampleSetBackAsItWas) {
  for (const SampleSet& set : kSampleSets) {
    SCOPED_TRACE(set.signal);
    const Samples directory;
    const ordered_json before = directory.Channels(set.country, set.signal);
    EXPECT_LT(0U, before.size());
    for (const std::string format : {"csv", "json"}) {
      const std::string file = directory.Files().File("list." + format);
      const Outcome out =
          directory.Run(set.country, set.signal,
                        {"channels", "export", "--format", format, "-o", file, "--strict"});
      ExpectStatus(0, out);
      EXPECT_EQ("", out.out + out.err);
      ExpectStatus(0, directory.Run(set.country, set.signal, {"channels", "remove", "--all"}));
      EXPECT_EQ(0U, directory.Channels(set.country, set.signal).size());
      const Outcome in =
          directory.Run(set.country, set.signal, {"channels", "import", file, "--format", format});
      ExpectStatus(0, in);
      EXPECT_EQ("", in.err);
      EXPECT_EQ(before, directory.Channels(set.country, set.signal)) << format;
    }
  }
}

TEST(Exchange, TakesTablesWithSemicolonsAndWithoutAMark) {
  const Samples directory;
  for (const SampleSet& set : kSampleSets) {
    SCOPED_TRACE(set.signal);
    const ordered_json before = directory.Channels(set.country, set.signal);
    const std::string file = directory.Files().File("list.csv");
    ExpectStatus(
        0, directory.Run(set.country, set.signal,
                         {"channels", "export", "--format", "csv", "--no-mark", "--output", file}));
    const std::string table = directory.Files().Read("list.csv");
    EXPECT_TRUE(table.starts_with("name,nameDisplay,"));
    directory.Files().Write("list.csv", WithSemicolons(table));
    const Outcome in = directory.Run(set.country, set.signal,
                                     {"channels", "import", file, "--format", "csv", "--replace"});
    ExpectStatus(0, in);
    EXPECT_EQ("", in.err);
    EXPECT_EQ(before, directory.Channels(set.country, set.signal));
  }
}

TEST(Exchange, PrintsWithoutAFile) {
  const Samples directory;
  const Outcome out =
      directory.Run("49", "64", {"channels", "export", "--format", "json", "--favorites"});
  ExpectStatus(0, out);
  EXPECT_EQ("", out.err);
  const ordered_json channels = out.Json().at("channels");
  EXPECT_LT(0U, channels.size());
  EXPECT_GT(directory.Channels("49", "64").size(), channels.size());
  for (const ordered_json& channel : channels) EXPECT_EQ(1, channel.at("favorite"));
  const Outcome radio =
      directory.Run("49", "64", {"channels", "export", "--format", "json", "--service", "radio"});
  for (const ordered_json& channel : radio.Json().at("channels")) {
    EXPECT_EQ("DigitalRadio", channel.at("serviceType"));
  }
  EXPECT_LT(0U, radio.Json().at("channels").size());
}

TEST(Exchange, NeedsAWordWhereTheListHasChannels) {
  const Samples directory;
  directory.Files().Write("list.csv", "name,freq\nOne,98500\n");
  const std::string file = directory.Files().File("list.csv");
  const std::size_t count = directory.Channels("49", "5").size();
  {
    const NothingWritten watch(directory);
    const Outcome refused =
        directory.Run("49", "5", {"channels", "import", file, "--format", "csv"});
    ExpectStatus(1, refused);
    EXPECT_NE(std::string::npos, refused.err.find("the list has " + std::to_string(count) +
                                                  " channels: --append adds to them, --replace "
                                                  "takes their place"));
    ExpectStatus(
        2, directory.Run("49", "5",
                         {"channels", "import", file, "--format", "csv", "--append", "--replace"}));
    const Outcome dry = directory.Run(
        "49", "5", {"channels", "import", file, "--format", "csv", "--append", "--dry-run"});
    ExpectStatus(0, dry);
    EXPECT_NE(std::string::npos, dry.out.find("One: added"));
  }
  const Outcome appended =
      directory.Run("49", "5", {"channels", "import", file, "--format", "csv", "--append"});
  ExpectStatus(0, appended);
  EXPECT_EQ("1 channel read, 1 imported\n", appended.out);
  EXPECT_EQ(count + 1, directory.Channels("49", "5").size());
  ExpectStatus(
      0, directory.Run("49", "5", {"channels", "import", file, "--format", "csv", "--replace"}));
  EXPECT_EQ(1U, directory.Channels("49", "5").size());
  ExpectStatus(0, directory.Run({"undo"}));
  EXPECT_EQ(count + 1, directory.Channels("49", "5").size());
}

TEST(Exchange, ReportsWhatIsLost) {
  const Samples directory;
  directory.Files().Write("list.csv", "name,freq,colour\nOne,98500,red\nTwo,high,\nThree\n");
  const Outcome in =
      directory.Run("49", "5",
                    {"channels", "import", directory.Files().File("list.csv"), "--format", "csv",
                     "--replace", "--report", directory.Files().File("loss.json")});
  ExpectStatus(0, in);
  EXPECT_EQ(
      "L501 line not understood: left out, once: line\n"
      "L502 unknown key ignored, once: colour\n"
      "L503 value out of range: left out, once: freq\n",
      in.err);
  EXPECT_EQ("3 channels read, 2 imported\n", in.out);
  const ordered_json report = ordered_json::parse(directory.Files().Read("loss.json"));
  EXPECT_EQ("loss", report.at("tunedex"));
  EXPECT_EQ("import", report.at("direction"));
  EXPECT_EQ("csv", report.at("format"));
  EXPECT_EQ(3, report.at("read"));
  EXPECT_EQ(2, report.at("written"));
  EXPECT_EQ(
      ordered_json::parse(R"({"index":null,"name":"Two","line":3,"value":"high","became":null})"),
      report.at("losses")[2].at("channels")[0]);
  EXPECT_EQ(report, directory
                        .Run("49", "5",
                             {"channels", "import", directory.Files().File("list.csv"), "--format",
                              "csv", "--replace", "--json"})
                        .Json());
}

TEST(Exchange, EscapesWhatFilesHold) {
  const Samples directory;
  directory.Files().Write("list.csv", "name,\"a\x1B[2J\nb\"\nOne,1\n");
  const Outcome in = directory.Run(
      "49", "5",
      {"channels", "import", directory.Files().File("list.csv"), "--format", "csv", "--replace"});
  EXPECT_EQ(std::string::npos, in.err.find('\x1B'));
  EXPECT_NE(std::string::npos, in.err.find("a\\x1B[2J"));
}

TEST(Exchange, RefusesEmptyFiles) {
  const Samples directory;
  const std::string file = directory.Files().File("list");
  for (const char* bytes : {"", "\r\n \n"}) {
    directory.Files().Write("list", bytes);
    const NothingWritten watch(directory);
    for (const char* format : {"csv", "json", "dvbv5", "vdr", "enigma2", "m3u"}) {
      SCOPED_TRACE(format);
      const Outcome refused =
          directory.Run("49", "64", {"channels", "import", file, "--format", format, "--replace"});
      ExpectStatus(1, refused);
      EXPECT_NE(std::string::npos, refused.err.find("is empty")) << refused.err;
    }
  }
}

TEST(Exchange, ReplacesNoListByNothing) {
  const Samples directory;
  directory.Files().Write("t.conf", "One:474000:B8:T:0:1:2:0:0:5:1:2:0\n");
  const std::vector<std::string> words = {"channels", "import", directory.Files().File("t.conf"),
                                          "--format", "vdr",    "--replace"};
  {
    const NothingWritten watch(directory);
    const Outcome refused = directory.Run("49", "64", words);
    ExpectStatus(1, refused);
    EXPECT_NE(std::string::npos, refused.err.find("L402")) << refused.err;
    EXPECT_NE(std::string::npos, refused.err.find("no channel for this list")) << refused.err;
  }
  ExpectStatus(0, directory.Run("49", "80", words));
  EXPECT_EQ(1U, directory.Channels("49", "80").size());
}

TEST(Exchange, ReportsBytesThatAreNoText) {
  const Samples directory;
  directory.Files().Write("list.csv", "name,k\xFF,freq\n\xE4,1,5\n");
  const Outcome done =
      directory.Run("49", "5",
                    {"--json", "channels", "import", directory.Files().File("list.csv"), "--format",
                     "csv", "--append"});
  ExpectStatus(0, done);
  EXPECT_EQ(2U, done.Json().at("losses").size());
}

TEST(Exchange, RefusesFilesThatAreNothingOfTheKind) {
  const Samples directory;
  const std::string file = directory.Files().File("list");
  directory.Files().Write("list", "<CHANNELTABLE/>\n");
  const NothingWritten watch(directory);
  for (const char* format : {"csv", "json"}) {
    ExpectStatus(
        1, directory.Run("49", "5", {"channels", "import", file, "--format", format, "--replace"}));
    ExpectStatus(1, directory.Run("49", "5",
                                  {"channels", "import", directory.Files().File("no"), "--format",
                                   format, "--replace"}));
    ExpectStatus(1, directory.Run("49", "5",
                                  {"channels", "import", directory.Files().Path(), "--format",
                                   format, "--replace"}));
  }
}

TEST(Exchange, RefusesWhatMakesNoSense) {
  const Samples directory;
  const NothingWritten watch(directory);
  const auto refused = [&](const std::string& message, Arguments arguments) {
    const Outcome outcome = directory.Run("49", "5", arguments);
    ExpectStatus(2, outcome);
    EXPECT_NE(std::string::npos, outcome.err.find(message)) << outcome.err;
  };
  const Arguments out = {"channels", "export", "--format"};
  const auto with = [&](Arguments more) {
    Arguments arguments = out;
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  };
  refused("--format: 'xls' is not known; known are csv, json, dvbv5, vdr, enigma2, m3u",
          with({"xls"}));
  refused("--format is required", {"channels", "export"});
  refused("--url goes without --format csv", with({"csv", "--url", "http://x/{sid}"}));
  refused("--no-mark goes without --format json", with({"json", "--no-mark"}));
  refused("--names: 'both' is not known; known are shown, broadcast",
          with({"csv", "--names", "both"}));
  refused("--json, which prints the loss report, needs -o", with({"csv", "--json"}));
  refused("'far' is no position like 19.2E",
          {"channels", "import", "x", "--format", "csv", "--position", "far"});
  refused("--position goes without --format csv",
          {"channels", "import", "x", "--format", "csv", "--position", "19.2E"});
}

TEST(Exchange, WritesNothingInADryRun) {
  const Samples directory;
  const NothingWritten watch(directory);
  const Outcome out = directory.Run("49", "5",
                                    {"channels", "export", "--format", "csv", "-o",
                                     directory.Files().File("new.csv"), "--dry-run"});
  ExpectStatus(0, out);
  EXPECT_EQ("", out.out);
}

TEST(Exchange, TakesNamesThatAreNotAscii) {
  const Samples directory;
  const std::string file = directory.Files().File("Kan\xC3\xA4le \xE6\x97\xA5.csv");
  ExpectStatus(0, directory.Run("49", "5", {"channels", "export", "--format", "csv", "-o", file}));
  ExpectStatus(
      0, directory.Run("49", "5", {"channels", "import", file, "--format", "csv", "--replace"}));
}

TEST(Exchange, SavesInTheFormThatStandsInFrontOfTheCommand) {
  const Samples directory;
  const std::string file = directory.Files().File("list.csv");
  directory.Files().Write("list.csv", "name,freq\nOne,98500\n");
  const Outcome in = directory.Run({"--country", "49", "--signal", "5", "--format", "preformatted",
                                    "channels", "import", file, "--format", "csv", "--replace"});
  ExpectStatus(0, in);
  EXPECT_NE(std::string::npos, directory.File().find("<Channel name=\"One\" nameDisplay=\"One\""));
  EXPECT_EQ(1U, directory.Channels("49", "5").size());
}

}  // namespace

}  // namespace zortunedex::kit::tool
