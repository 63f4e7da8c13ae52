#include <filesystem>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

TEST(Usage, HelpAndVersionArePrinted) {
  const Outcome help = RunTool({"--help"});
  ExpectStatus(0, help);
  EXPECT_NE(std::string::npos, help.out.find("channels"));
  const Outcome set = RunTool({"channels", "set", "--help"});
  ExpectStatus(0, set);
  EXPECT_NE(std::string::npos, set.out.find("AudioStream[1].pid=257"));
  EXPECT_EQ("tunedex " ZORTUNEDEX_VERSION "\n", RunTool({"--version"}).out);
}

TEST(Usage, WhatIsMissingIsNamed) {
  const DataDirectory directory;
  const std::string path = directory.Files().Path();
  ExpectRefused(2, "--dir is required", RunTool({"info"}));
  ExpectRefused(2, "--dir is required",
                RunTool({"channels", "list", "--country", "1", "--signal", "5"}));
  ExpectRefused(2, "INDEX is required", directory.Run("1", "5", {"channels", "next"}));
  for (const std::string command : {"show", "favor", "lock", "remove"}) {
    ExpectRefused(2, "channels " + command + " needs INDEX, a filter or --all",
                  directory.Run("1", "5", {"channels", command}));
  }
  ExpectRefused(2, "channels set needs INDEX or --all",
                directory.Run("1", "5", {"channels", "set", "--number", "1"}));
  ExpectRefused(2, "channels edit needs a filter or --all",
                directory.Run("1", "5", {"channels", "edit", "--set", "freq=1"}));
  ExpectRefused(2, "--set is required", directory.Run("1", "5", {"channels", "edit", "--all"}));
  ExpectRefused(2, "channels set needs something to set",
                directory.Run("1", "5", {"channels", "set", "1"}));
  ExpectRefused(2, "channels find takes either --number or --like",
                directory.Run("1", "5", {"channels", "find"}));
  ExpectRefused(2, "channels find takes either --number or --like",
                directory.Run("1", "5", {"channels", "find", "--number", "1", "--like", "1"}));
}

TEST(Usage, ValuesThatAreNoneAreNamed) {
  const DataDirectory directory;
  const auto expect = [&](const std::string& message, Arguments arguments) {
    ExpectRefused(2, message, directory.Run("49", "64", std::move(arguments)));
  };
  expect("--codepage: 'x' is no number of 32 bits", {"--codepage", "x", "channels", "list"});
  expect("--format: 'tidy' is not known; known are plain, preformatted",
         {"--format", "tidy", "channels", "list"});
  expect("--service: 'soap' is not known; known are tv, radio, data, other, all",
         {"channels", "list", "--service", "soap"});
  expect("INDEX: '-1' is no index", {"channels", "next", "--", "-1"});
  expect("INDEX: '4294967296' is no index", {"channels", "next", "4294967296"});
  for (const std::string index : {"-1", "4294967296", "9-3", "3-", "3,", "3, 4", "3-4-5", ""}) {
    expect("INDEX: '" + index + "' is no index and no range of indexes",
           {"channels", "show", "--", index});
  }
  expect("--index: '9-3' is no index and no range of indexes",
         {"channels", "list", "--index", "9-3"});
  expect("INDEX: 'off' is no index and no range of indexes; a mark is taken away by --off",
         {"channels", "favor", "1", "off"});
  expect("--mark: 'maybe' is no number of 32 bits", {"channels", "favor", "1", "--mark", "maybe"});
  expect("--columns: 'index,,name' lacks a field",
         {"channels", "list", "--columns", "index,,name"});
  expect("--where: 'TSID' is not FIELD=VALUE", {"channels", "list", "--where", "TSID"});
  expect("--name: an empty text is in every name", {"channels", "remove", "--name", ""});
  expect("--columns goes without --json, which prints every field",
         {"channels", "list", "--columns", "index", "--json"});
  expect("--all goes without --index", {"channels", "lock", "--all", "--index", "1"});
  expect("KEY: 'name' is not known; known are number, service", {"channels", "sort", "name"});
  expect("--set: 'TSID' is not FIELD=VALUE", {"channels", "set", "1", "--set", "TSID"});
  ExpectStatus(2, directory.Run("49", "64", {"channels", "next", "1", "2"}));
  ExpectStatus(2, directory.Run("49", "64", {"channels", "remove", "1", "--all"}));
  ExpectStatus(2, directory.Run("49", "64", {"channels", "favor", "1", "--mark", "2", "--off"}));
  ExpectStatus(2, directory.Run("49", "64", {"channels", "list", "--colour"}));
}

TEST(Usage, WhatDependsOnTheListIsJudgedAfterReadingIt) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectRefused(1, "channels set: E_FAIL (0x80004005): no channel with index 4000",
                directory.Run("49", "64", {"channels", "set", "4000", "--set", "TSID=1"}));
  const DataDirectory missing(DataDirectory::Start::Empty);
  std::filesystem::remove_all(missing.Files().Path());
  ExpectRefused(2, "--dir: " + missing.Files().Path() + " is not there",
                missing.Run("49", "64", {"channels", "add", "--set", "TSID=1"}));
}

TEST(Usage, FieldsAreCheckedAgainstTheSignalType) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  const auto expect = [&](const char* signal, const std::string& set, const std::string& message) {
    ExpectRefused(2, message, directory.Run("49", signal, {"channels", "add", "--set", set}));
  };
  const auto expectNoField = [&](const char* signal, const std::string& name,
                                 const std::string& nearest = "") {
    const Outcome outcome = directory.Run("49", signal, {"channels", "add", "--set", name + "=1"});
    ExpectStatus(2, outcome);
    const std::string message = " have no field '" + name + "'" + nearest;
    EXPECT_NE(std::string::npos, outcome.err.find(message)) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.err.find("; the fields are index,")) << outcome.err;
  };
  expectNoField("64", "foo");
  expectNoField("5", "serviceID");
  expectNoField("64", "symbolRat", "; the nearest is symbolRate");
  expect("64", "TSID=x", "TSID takes a number from -2147483648 to 4294967295, not 'x'");
  expect("64", "TSID=", "TSID takes a number from -2147483648 to 4294967295, not ''");
  expect("64", "TSID=4294967296",
         "TSID takes a number from -2147483648 to 4294967295, not '4294967296'");
  expect("1", "CNI0=65536", "CNI0 takes a number from 0 to 65535, not '65536'");
  expect("64", "polarisation=up",
         "polarisation takes NotSet, LinearH, LinearV, CircularL or CircularR, not 'up'");
  // Words that the file does not give back are none.
  expect("64", "innerFECRate=6/7",
         "innerFECRate takes NotSet, 1/2, 2/3, 3/4, 3/5, 4/5, 5/6, 5/11 or 7/8, not '6/7'");
  expect("64", "numOfAudioStreams=17", "numOfAudioStreams takes a number from 0 to 16, not '17'");
  expect("64", "numOfAudioStreams=-1", "numOfAudioStreams takes a number from 0 to 16, not '-1'");
  expect("160", "numOfComponents=9", "numOfComponents takes a number from 0 to 8, not '9'");
  expectNoField("64", "AudioStream[0].pid");
  expectNoField("64", "AudioStream[17].pid");
  expectNoField("64", "AudioStream[1");
  expectNoField("64", "AudioStream[1].name");
  expect("64", "AudioStream[1].pid=65536",
         "AudioStream[1].pid takes a number from 0 to 65535, not '65536'");
  expect("64", "AudioStream[1].type=256",
         "AudioStream[1].type takes a number from 0 to 255, not '256'");
  expect("64", "AudioStream[1].lang=4096",
         "AudioStream[1].lang takes a number from 0 to 4095, not '4096'");
  expectNoField("64", "Components[1].name");
  expectNoField("160", "Components[1].pid");
  expect("64", "index=3", "an index is changed by channels move");
  ExpectRefused(2, "channels of FMRadio have no --number",
                directory.Run("49", "5", {"channels", "add", "--number", "3"}));
  ExpectRefused(2, "channels of ATSCAntenna have no --freq",
                directory.Run("1", "16", {"channels", "add", "--freq", "3"}));
}

}  // namespace

}  // namespace zortunedex::kit::tool
