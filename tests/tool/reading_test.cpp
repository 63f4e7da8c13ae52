#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

std::vector<std::string> NamesIn(const nlohmann::ordered_json& channels) {
  std::vector<std::string> names;
  for (const auto& channel : channels) names.push_back(channel["name"]);
  return names;
}

using Texts = std::vector<std::string>;

TEST(List, PrintsATable) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectPrints("list_dvbs.txt", directory.Run(kGermany, "DVBSatellite", {"channels", "list"}));
  ExpectPrints("list_fm.txt", directory.Run(kGermany, "FMRadio", {"channels", "list"}));
}

TEST(List, PrintsJson) {
  const DataDirectory directory;
  ExpectPrints("list_dvbs.json",
               directory.Run(kGermany, "DVBSatellite", {"channels", "list", "--json"}));
  ExpectPrints("list_one_seg.json",
               directory.Run("81", "ISDBTerrestrialOneSeg", {"channels", "list", "--json"}));
}

TEST(List, OfAnEmptyDirectoryIsEmpty) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  const NothingWritten nothing(directory);
  ExpectPrints("list_empty.txt", directory.Run(kGermany, "DVBSatellite", {"channels", "list"}));
  EXPECT_EQ("[]\n", directory.Run(kGermany, "DVBSatellite", {"channels", "list", "--json"}).out);
}

TEST(List, TakesSignalsByNameInAnyCaseAndByNumber) {
  const DataDirectory directory;
  const std::string expected = directory.Run(kGermany, "DVBSatellite", {"channels", "list"}).out;
  for (const char* signal : {"dvbsatellite", "InputSignalDVBSatellite", "64", "0x40"}) {
    EXPECT_EQ(expected, directory.Run(kGermany, signal, {"channels", "list"}).out) << signal;
  }
}

TEST(List, TakesGlobalOptionsBehindTheCommand) {
  const DataDirectory directory;
  ExpectPrints("list_dvbs.json", RunTool({"channels", "list", "--json", "--country", kGermany,
                                          "--signal", "64", "--dir", directory.Files().Path()}));
}

TEST(List, FiltersByService) {
  const DataDirectory directory;
  const auto list = [&](const char* service) {
    return NamesIn(
        directory
            .Run(kGermany, "DVBSatellite", {"channels", "list", "--json", "--service", service})
            .Json());
  };
  EXPECT_EQ((Texts{"Das Erste", "Sky"}), list("tv"));
  EXPECT_EQ((Texts{"BAYERN 1"}), list("radio"));
  EXPECT_EQ((Texts{"Data"}), list("data"));
  EXPECT_EQ((Texts{}), list("other"));
  EXPECT_EQ((Texts{"Das Erste", "BAYERN 1", "Sky", "Data"}), list("all"));
  EXPECT_EQ((Texts{"Das Erste", "BAYERN 1", "Sky"}), list("10"));
  EXPECT_EQ((Texts{"BAYERN 1", "Data"}), list("0xF8"));
  EXPECT_EQ((Texts{}), list("0"));
}

TEST(List, OfOneChannelFiltersByServiceToo) {
  const DataDirectory directory;
  const auto list = [&](const char* service) {
    return NamesIn(
        directory.Run("82", "TDMBMobile", {"channels", "list", "--json", "--service", service})
            .Json());
  };
  EXPECT_EQ((Texts{"MBC"}), list("tv"));
  EXPECT_EQ((Texts{}), list("radio"));
}

TEST(List, ShowsWhatAHandEditedFileHolds) {
  const DataDirectory directory;
  const nlohmann::ordered_json channels = directory.Channels("44", "FMRadio");
  // The second channel with an index goes in front of the first one.
  EXPECT_EQ((Texts{"Five", "Nine again", "Nine"}), NamesIn(channels));
  EXPECT_EQ(5, channels[0]["index"]);
  EXPECT_EQ(9, channels[1]["index"]);
  EXPECT_EQ(9, channels[2]["index"]);
  EXPECT_EQ(7, directory.Channels(kGermany, "FMRadio")[0]["index"]);
}

TEST(List, KeepsControlCharactersOffTheTerminal) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  // The name is base64 of "a", an escape character and "[b".
  directory.Files().Write("ChanInfo.xml",
                          "<CHANNELTABLE><Country countrycode='81'><ChannelSet "
                          "inputSignalType='176'><Channel index='1' name='YRtbYg=='/></ChannelSet>"
                          "</Country></CHANNELTABLE>");
  const Outcome outcome = directory.Run("81", "176", {"channels", "list"});
  EXPECT_NE(std::string::npos, outcome.out.find("a\\x1B[b"));
  EXPECT_EQ(std::string::npos, outcome.out.find('\x1B'));
  EXPECT_EQ("a\x1B[b", directory.Channels("81", "176")[0]["name"]);
}

TEST(Show, PrintsEverything) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectPrints("show_dvbs.txt", directory.Run(kGermany, "64", {"channels", "show", "1"}));
  ExpectPrints("show_dvbs.json",
               directory.Run(kGermany, "64", {"channels", "show", "1", "--json"}));
  ExpectPrints("show_tdmb.txt", directory.Run("82", "160", {"channels", "show", "1"}));
  ExpectPrints("show_tdmb.json", directory.Run("82", "160", {"channels", "show", "1", "--json"}));
  ExpectPrints("show_atsc.json", directory.Run("1", "16", {"channels", "show", "1", "--json"}));
  ExpectPrints("show_one_seg.json",
               directory.Run("81", "176", {"channels", "show", "1", "--json"}));
  ExpectPrints("show_fm.txt", directory.Run(kGermany, "FMRadio", {"channels", "show", "7"}));
}

TEST(Show, RefusesAnIndexThatIsNotThere) {
  const DataDirectory directory;
  ExpectRefused(1, "channels show: E_FAIL (0x80004005): no channel with index 99",
                directory.Run(kGermany, "64", {"channels", "show", "99"}));
}

TEST(Navigation, GoesForwards) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  const auto next = [&](Arguments arguments) {
    arguments.insert(arguments.begin(), {"channels", "next", "--json"});
    return NamesIn(directory.Run(kGermany, "64", arguments).Json());
  };
  EXPECT_EQ((Texts{"BAYERN 1"}), next({"1"}));
  EXPECT_EQ((Texts{"Das Erste"}), next({"0"}));
  EXPECT_EQ((Texts{"Sky"}), next({"1", "--favorites"}));
  EXPECT_EQ((Texts{"Data"}), next({"1", "--service", "data"}));
  EXPECT_EQ((Texts{"Das Erste"}), next({"4", "--loop"}));
  EXPECT_EQ((Texts{"Data"}), next({"4", "--loop", "--service", "data"}));
  ExpectPrints("next.txt", directory.Run(kGermany, "64", {"channels", "next", "1"}));
}

TEST(Navigation, GoesBackwards) {
  const DataDirectory directory;
  const auto previous = [&](Arguments arguments) {
    arguments.insert(arguments.begin(), {"channels", "previous", "--json"});
    return NamesIn(directory.Run(kGermany, "64", arguments).Json());
  };
  EXPECT_EQ((Texts{"Sky"}), previous({"4"}));
  EXPECT_EQ((Texts{"Das Erste"}), previous({"3", "--favorites"}));
  EXPECT_EQ((Texts{"BAYERN 1"}), previous({"4", "--service", "radio"}));
  EXPECT_EQ((Texts{"Data"}), previous({"1", "--loop"}));
}

TEST(Navigation, EndsAtTheEnds) {
  const DataDirectory directory;
  const auto expect = [&](const char* message, Arguments arguments) {
    ExpectRefused(1, message, directory.Run(kGermany, "64", std::move(arguments)));
  };
  expect("channels next: E_FAIL (0x80004005): no such channel behind index 4",
         {"channels", "next", "4"});
  expect("channels previous: E_FAIL (0x80004005): no such channel before index 1",
         {"channels", "previous", "1"});
  expect("channels next: E_FAIL (0x80004005): no such channel behind index 1",
         {"channels", "next", "1", "--service", "other", "--loop"});
  expect("channels previous: E_FAIL (0x80004005): no channel with index 0",
         {"channels", "previous", "0"});
  expect("channels next: E_FAIL (0x80004005): no channel with index 5", {"channels", "next", "5"});
  // A list of one has no neighbours.
  ExpectRefused(1, "channels next: E_FAIL (0x80004005): no such channel behind index 1",
                directory.Run("82", "160", {"channels", "next", "1", "--loop"}));
}

TEST(Navigation, WalksOneSegmentListsThatNameNoServiceType) {
  const DataDirectory directory;
  EXPECT_EQ((Texts{"NTV"}),
            NamesIn(directory.Run("81", "176", {"channels", "next", "1", "--json"}).Json()));
}

TEST(Navigation, TakesTheStoredIndexesOfAHandEditedFile) {
  const DataDirectory directory;
  const auto found = directory.Run("44", "5", {"channels", "next", "5", "--json"}).Json();
  EXPECT_EQ((Texts{"Nine again"}), NamesIn(found));
  EXPECT_EQ(9, found[0]["index"]);
}

TEST(Find, FindsNumbersAndStations) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectPrints("find.txt", directory.Run(kGermany, "64", {"channels", "find", "--number", "20"}));
  const auto like = [&](const char* index) {
    return NamesIn(
        directory.Run("44", "5", {"channels", "find", "--json", "--like", index}).Json());
  };
  EXPECT_EQ((Texts{"Five"}), like("5"));
  EXPECT_EQ((Texts{"Nine again"}), like("9"));
  ExpectRefused(1, "channels find: E_FAIL (0x80004005): no channel with number 99",
                directory.Run(kGermany, "64", {"channels", "find", "--number", "99"}));
  ExpectRefused(1, "channels find: E_FAIL (0x80004005): no channel with index 99",
                directory.Run(kGermany, "64", {"channels", "find", "--like", "99"}));
}

TEST(Find, AnswersTheFirstChannelOfAStation) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run(kGermany, "64",
                                {"channels", "add", "--name", "Twin", "--set", "TSID=133", "--set",
                                 "ONID=1", "--set", "serviceID=12"}));
  EXPECT_EQ(
      (Texts{"Data"}),
      NamesIn(directory.Run(kGermany, "64", {"channels", "find", "--like", "5", "--json"}).Json()));
}

TEST(Info, CountsCountriesAndSets) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectPrints("info.txt", directory.Run({"info"}));
  ExpectPrints("info.json", directory.Run({"info", "--json"}));
}

TEST(Info, OfAnEmptyDirectoryIsEmpty) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  const NothingWritten nothing(directory);
  EXPECT_EQ("COUNTRY  SIGNAL  CHANNELS  NAME\n", directory.Run({"info"}).out);
  EXPECT_EQ("[]\n", directory.Run({"info", "--json"}).out);
}

TEST(Info, SaysWhenTheFileCannotBeRead) {
  const DataDirectory directory;
  const std::string whole = directory.File();
  directory.Files().Write("ChanInfo.xml", whole.substr(0, whole.size() - 10));
  const NothingWritten nothing(directory);
  ExpectRefused(
      1,
      "info: E_FAIL (0x80004005): ChanInfo.xml cannot be read: line 60, column 7: the file "
      "ends before </CHAN> does",
      directory.Run({"info"}));
  directory.Files().Write("ChanInfo.xml", "no XML");
  ExpectRefused(
      1,
      "info: E_FAIL (0x80004005): ChanInfo.xml cannot be read: line 1, column 1: the file "
      "does not begin with <",
      directory.Run({"info"}));
  directory.Files().Write("ChanInfo.xml", whole.substr(0, whole.size() - 10));
}

TEST(Countries, AreListed) {
  ExpectPrints("countries.txt", RunTool({"countries"}));
  ExpectPrints("countries_81.json", RunTool({"countries", "81", "--json"}));
  // Of two countries with one code the first one counts.
  EXPECT_EQ("CODE  ISO  NAME\n34    ESP  Spain\n", RunTool({"countries", "34"}).out);
  ExpectRefused(1, "countries: E_FAIL (0x80004005): no country with code 999",
                RunTool({"countries", "999"}));
  for (const char* name : {"ESP", "es", "spain"}) {
    EXPECT_EQ("CODE  ISO  NAME\n34    ESP  Spain\n", RunTool({"countries", name}).out);
  }
  ExpectRefused(2, "CODE: no country is called 'Germny'; the nearest is Germany (49)",
                RunTool({"countries", "Germny"}));
}

TEST(SignalType, WithoutAListIsRefused) {
  const DataDirectory directory;
  for (const char* signal : {"AnalogComposite", "AnalogSVideo", "AMRadio", "Unknown"}) {
    ExpectRefused(
        1,
        "channels list: E_FAIL (0x80004005): there is no channel list for " + std::string(signal),
        directory.Run("1", signal, {"channels", "list"}));
  }
}

}  // namespace

}  // namespace zortunedex::kit::tool
