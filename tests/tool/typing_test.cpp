// What is typed wrong: the word, the nearest known one, what may stand there, and whose help tells
// more.
#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

const char* const kGroups =
    "channels, catalogue, satellites, transponders, lnbs, dishes, presets, undo, redo, history, "
    "check, repair, info, format, countries, completion, batch";
const char* const kSignals =
    "AnalogAntenna, AnalogCable, FMRadio, ATSCAntenna, ATSCCable, DVBSatellite, DVBTerrestrial, "
    "DVBHandheld, TDMBMobile, ISDBTerrestrialOneSeg";

/// Status 2, a message that begins so, and the help of this command.
void ExpectTyped(const std::string& message, const std::string& command, const Arguments& typed,
                 std::source_location where = std::source_location::current()) {
  const Outcome outcome = RunTool(typed);
  ExpectStatus(2, outcome, where);
  EXPECT_EQ("", outcome.out) << where.line();
  const std::string hint = "Try 'tunedex " + command + (command.empty() ? "" : " ") + "--help'.\n";
  EXPECT_TRUE(outcome.err.starts_with("tunedex: " + message)) << where.line() << outcome.err;
  EXPECT_TRUE(outcome.err.ends_with("\n" + hint)) << where.line() << outcome.err;
}

TEST(Typing, CommandsAreNamed) {
  const std::string groups = std::string("; known are ") + kGroups;
  ExpectTyped("a command is missing" + groups, "", {});
  ExpectTyped("there is no command 'chanels'; the nearest is channels" + groups, "",
              {"chanels", "list"});
  ExpectTyped("there is no command 'xyzzy'" + groups, "", {"xyzzy"});
  ExpectTyped("a command is missing behind 'channels'; known are list, show, next,", "channels",
              {"channels"});
  ExpectTyped("there is no command 'channels lsit'; the nearest is list; known are list, show,",
              "channels", {"channels", "lsit"});
  ExpectTyped("there is no command 'presets sub'; the nearest is subareas; known are areas,",
              "presets", {"presets", "sub"});
  ExpectTyped("channels next does not take '2'", "channels next", {"channels", "next", "1", "2"});
}

// What it was given is what it says, whatever a shell would make of it.
TEST(Typing, WordsComeBackAsTheyAre) {
  for (const std::string word : {R"(a "b\" c)", R"(\\"\)", "$HOME `c` %PATH%", "a\\", "a'b ^&|"}) {
    EXPECT_TRUE(RunTool({word}).err.starts_with("tunedex: there is no command '" + word + "'"))
        << word;
  }
}

TEST(Typing, OptionsAreNamed) {
  ExpectTyped("there is no option '--jsn'; the nearest is --json; known are --help, -h, --dir,", "",
              {"--jsn", "--version2"});
  ExpectTyped(
      "channels list has no option '--srvice'; the nearest is --service; known are --help, "
      "-h, --name, ",
      "channels list", {"channels", "list", "--srvice", "tv"});
  ExpectTyped("channels list has no option '--colour'; known are", "channels list",
              {"channels", "list", "--colour=red"});
  // Before what is missing beside it.
  ExpectTyped("channels show has no option '--jsno'; the nearest is --json;", "channels show",
              {"channels", "show", "--jsno"});
  ExpectTyped("INDEX is required", "channels next", {"channels", "next"});
  ExpectTyped("--output is required", "catalogue build", {"catalogue", "build", "x"});
  ExpectTyped("--dir is required", "channels list", {"channels", "list"});
}

TEST(Typing, ValuesAreNamed) {
  const std::string signals = std::string("; known are ") + kSignals;
  ExpectTyped("--signal: 'DVBSatelite' is not known; the nearest is DVBSatellite" + signals, "info",
              {"--signal", "DVBSatelite", "info"});
  ExpectTyped("--signal: '7' is not known" + signals, "info", {"--signal", "7", "info"});
  ExpectTyped(
      "--service: 'rado' is not known; the nearest is radio; known are tv, radio, data, "
      "other, all\n",
      "channels list", {"channels", "list", "--service", "rado"});
  ExpectTyped("KEY: 'numbers' is not known; the nearest is number; known are number, service\n",
              "channels sort", {"channels", "sort", "numbers"});
  ExpectTyped("--country: no country is called 'Germny'; the nearest is Germany (49)\n", "info",
              {"--country", "Germny", "info"});
  ExpectTyped("--country: no country is called 'qqqqqq'\n", "info",
              {"--country", "qqqqqq", "info"});
}

TEST(Typing, ControlCharactersReachNoTerminal) {
  ExpectTyped("there is no command 'a\\x1B[31m\\x7F'", "", {"a\x1B[31m\x7F"});
  ExpectTyped("there is no option '--\\x07'", "", {"--\x07"});
  ExpectTyped("--dir: \\x1Bx is not there", "info", {"--dir", "\x1Bx", "info"});
  ExpectTyped("--signal: '\\x7F\\x01' is not known", "info", {"--signal", "\x7F\x01", "info"});
}

TEST(Typing, WhatACommandNeedsStandsInItsHelp) {
  const Outcome list = RunTool({"channels", "list", "--help"});
  ExpectStatus(0, list);
  for (const char* option : {"--dir", "--country", "--signal", "TUNEDEX_DIR", "TUNEDEX_COUNTRY"}) {
    EXPECT_NE(std::string::npos, list.out.find(option)) << option;
  }
  const Outcome set = RunTool({"channels", "set", "--help"});
  EXPECT_NE(std::string::npos, set.out.find("AudioStream[1].pid=257"));
  EXPECT_NE(std::string::npos, set.out.find("--dir DIR"));
  const Outcome satellites = RunTool({"satellites", "list", "--help"});
  EXPECT_NE(std::string::npos, satellites.out.find("--dir DIR"));
  EXPECT_EQ(std::string::npos, satellites.out.find("--country"));
  const Outcome presets = RunTool({"presets", "areas", "--help"});
  EXPECT_NE(std::string::npos, presets.out.find("--country"));
  EXPECT_EQ(std::string::npos, RunTool({"countries", "--help"}).out.find("--dir"));
}

}  // namespace

}  // namespace zortunedex::kit::tool
