// Which directory, country and signal type a command works on.
#include <cstdlib>
#include <filesystem>
#include <list>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

/// Sets a variable of the environment for the programs that are run meanwhile.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : m_name(name) { Set(value); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { Set(""); }

 private:
  // An empty value is none, on both platforms.
  void Set(const std::string& value) {
    // One platform keeps the text itself.
    static std::list<std::string> kept;
    std::string& text = kept.emplace_back(m_name + "=" + value);
    ZORTUNEDEX_PUTENV(text.data());
  }

  std::string m_name;
};

/// A file with these sets, a channel in each.
std::string FileWith(const std::vector<std::pair<std::string, std::string>>& sets) {
  std::string xml = "<CHANNELTABLE>";
  for (const auto& [country, signal] : sets) {
    xml += "<Country name=\"x\" countrycode=\"" + country +
           "\"><ChannelSet type=\"\" inputSignalType=\"" + signal +
           "\"><Channel index=\"1\" name=\"X\" nameDisplay=\"X\"/></ChannelSet></Country>";
  }
  return xml + "</CHANNELTABLE>";
}

TEST(Place, TheDirectoryHasToBeOne) {
  const DataDirectory directory;
  const std::string file = directory.Files().File("ChanInfo.xml");
  const std::string missing = directory.Files().File("missing");
  for (const Arguments& command :
       {Arguments{"info"}, Arguments{"channels", "list"}, Arguments{"dishes", "list"}}) {
    Arguments arguments = command;
    arguments.insert(arguments.end(), {"--dir", file});
    ExpectRefused(2, "--dir: " + file + " is no folder", RunTool(arguments));
    arguments.back() = missing;
    ExpectRefused(2, "--dir: " + missing + " is not there", RunTool(arguments));
  }
}

TEST(Place, CountriesAreKnownByCodeIsoCodeAndName) {
  const DataDirectory directory;
  const std::size_t count = directory.Channels("49", "64").size();
  ASSERT_LT(0U, count);
  for (const char* name : {"49", "0x31", "DE", "de", "DEU", "Germany", "gErMaNy"}) {
    EXPECT_EQ(count, directory.Channels(name, "DVBSatellite").size()) << name;
  }
}

TEST(Place, NamesWithMoreBehindThemAreKnownWithoutIt) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  const auto codeOf = [&](const char* name) {
    directory.Run(name, "5", {"channels", "add", "--name", "X"});
    const std::string file = directory.File();
    std::filesystem::remove(directory.Files().File("ChanInfo.xml"));
    const std::string key = "countrycode=\"";
    const std::size_t place = file.find(key);
    return place == std::string::npos
               ? ""
               : file.substr(place + key.size(),
                             file.find('"', place + key.size()) - place - key.size());
  };
  EXPECT_EQ("39", codeOf("Italy"));
  EXPECT_EQ("39", codeOf("Italy, Vatican City"));
  EXPECT_EQ("95", codeOf("Burma"));
  EXPECT_EQ("86", codeOf("CN"));
  EXPECT_EQ("86", codeOf("China"));
  EXPECT_EQ("1", codeOf("us"));
  EXPECT_EQ("1001", codeOf("USA (HRC Cable)"));
  EXPECT_EQ("44", codeOf("GB"));
  EXPECT_EQ("381", codeOf("CS"));
  EXPECT_EQ("255", codeOf("TZ"));
  // Two countries.
  EXPECT_EQ("", codeOf("Korea"));
}

TEST(Place, ACountryThatNobodyHasIsRefused) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectRefused(2,
                "no country has the code 999, neither in the table ('tunedex countries') nor in "
                "ChanInfo.xml",
                directory.Run("999", "5", {"channels", "add", "--name", "X"}));
  const DataDirectory other(DataDirectory::Start::Empty);
  other.Files().Write("ChanInfo.xml", FileWith({{"999", "5"}}));
  EXPECT_EQ(1U, other.Channels("999", "5").size());
}

TEST(Place, TheOnlySetOfTheFileIsTaken) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  directory.Files().Write("ChanInfo.xml", FileWith({{"49", "5"}}));
  EXPECT_EQ(1U, directory.Run({"channels", "list", "--json"}).Json().size());
  directory.Files().Write("ChanInfo.xml", FileWith({{"49", "5"}, {"49", "64"}, {"44", "5"}}));
  ExpectRefused(
      2,
      "--country and --signal are required: ChanInfo.xml has 49 FMRadio, 49 DVBSatellite, "
      "44 FMRadio",
      directory.Run({"channels", "list"}));
  ExpectRefused(2, "--signal is required: ChanInfo.xml has 49 FMRadio, 49 DVBSatellite",
                directory.Run({"channels", "list", "--country", "49"}));
  ExpectRefused(2, "--country is required: ChanInfo.xml has 49 FMRadio, 44 FMRadio",
                directory.Run({"channels", "list", "--signal", "5"}));
  EXPECT_EQ(1U, directory.Run({"channels", "list", "--country", "44", "--json"}).Json().size());
  ExpectRefused(2, "--signal is required: ChanInfo.xml has no set of channels that fits",
                directory.Run({"channels", "list", "--country", "81"}));
  std::filesystem::remove(directory.Files().File("ChanInfo.xml"));
  ExpectRefused(
      2, "--country and --signal are required: ChanInfo.xml has no set of channels that fits",
      directory.Run({"channels", "add"}));
}

TEST(Place, AFileThatIsAskedForItAndCannotBeReadIsNamed) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  directory.Files().Write("ChanInfo.xml", FileWith({{"49", "5"}}) + "<");
  ExpectRefused(1,
                "channels list: E_FAIL (0x80004005): ChanInfo.xml cannot be read: line 1, column " +
                    std::to_string(FileWith({{"49", "5"}}).size() + 2) +
                    ": the file ends before an element's name",
                directory.Run({"channels", "list"}));
}

TEST(Place, TheEnvironmentIsTakenWhereNothingIsGiven) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  directory.Files().Write("ChanInfo.xml", FileWith({{"49", "5"}, {"44", "5"}, {"44", "64"}}));
  const DataDirectory other(DataDirectory::Start::Empty);
  const Variable dir("TUNEDEX_DIR", directory.Files().Path());
  EXPECT_EQ(3U, RunTool({"info", "--json"}).Json().size());
  EXPECT_EQ(0U, RunTool({"info", "--json", "--dir", other.Files().Path()}).Json().size());
  const Variable country("TUNEDEX_COUNTRY", "Germany");
  EXPECT_EQ(1U, RunTool({"channels", "list", "--json"}).Json().size());
  ExpectRefused(2, "--signal is required: ChanInfo.xml has 44 FMRadio, 44 DVBSatellite",
                RunTool({"channels", "list", "--country", "44"}));
  const Variable signal("TUNEDEX_SIGNAL", "fmradio");
  EXPECT_EQ(1U, RunTool({"channels", "list", "--json", "--country", "44"}).Json().size());
  // Presets are of one signal type, whatever the environment says.
  ExpectRefused(1, "presets areas: E_FAIL (0x80004005): there is no PreSetChannelInfo.xml",
                RunTool({"presets", "areas"}));
}

TEST(Place, WhatTheEnvironmentSaysIsChecked) {
  const DataDirectory directory;
  const std::string missing = directory.Files().File("missing");
  {
    const Variable dir("TUNEDEX_DIR", missing);
    ExpectRefused(2, "TUNEDEX_DIR: " + missing + " is not there", RunTool({"info"}));
  }
  ExpectRefused(2, "--dir is required", RunTool({"info"}));
  const Variable signal("TUNEDEX_SIGNAL", "radio");
  const Outcome outcome = directory.Run({"channels", "list"});
  ExpectStatus(2, outcome);
  EXPECT_TRUE(outcome.err.starts_with("tunedex: TUNEDEX_SIGNAL: 'radio' is not known; "))
      << outcome.err;
  ExpectStatus(0, directory.Run({"info"}));
  const Variable country("TUNEDEX_COUNTRY", "Germny");
  ExpectRefused(2, "TUNEDEX_COUNTRY: no country is called 'Germny'; the nearest is Germany (49)",
                directory.Run({"channels", "list"}));
}

}  // namespace

}  // namespace zortunedex::kit::tool
