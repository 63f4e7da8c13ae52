// Commands that take several channels: by ranges, by filters, or all.
#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

using Values = std::vector<std::string>;

/// One value of every channel of the German satellite list.
Values ValuesOf(const DataDirectory& directory, const char* key) {
  Values values;
  for (const auto& channel : directory.Channels(kGermany, "64"))
    values.push_back(channel[key].dump());
  return values;
}

Values NamesIn(const Outcome& outcome) {
  Values names;
  for (const auto& channel : outcome.Json()) names.push_back(channel["name"]);
  return names;
}

class Bulk : public testing::Test {
 protected:
  Outcome Run(Arguments arguments) const {
    return m_directory.Run(kGermany, "64", std::move(arguments));
  }
  Values Listed(Arguments filters) const {
    filters.insert(filters.begin(), {"channels", "list", "--json"});
    return NamesIn(Run(std::move(filters)));
  }

  const DataDirectory m_directory;
};

}  // namespace

TEST_F(Bulk, TwoIndexesAreTwoChannels) {
  ExpectStatus(0, Run({"channels", "favor", "1", "2"}));
  EXPECT_EQ((Values{"1", "1", "1", "0"}), ValuesOf(m_directory, "favorite"));
}

TEST_F(Bulk, MarksAreSetAndTaken) {
  const Outcome outcome = Run({"channels", "favor", "4,1-2", "4", "--mark", "9", "--json"});
  // In the order of the list, each once.
  EXPECT_EQ((Values{"Das Erste", "BAYERN 1", "Data"}), NamesIn(outcome));
  EXPECT_EQ((Values{"9", "9", "1", "9"}), ValuesOf(m_directory, "favorite"));
  ExpectStatus(0, Run({"channels", "favor", "--all", "--off"}));
  EXPECT_EQ((Values{"0", "0", "0", "0"}), ValuesOf(m_directory, "favorite"));
  ExpectStatus(0, Run({"channels", "lock", "1-4"}));
  EXPECT_EQ((Values{"true", "true", "true", "true"}), ValuesOf(m_directory, "lock"));
  ExpectStatus(0, Run({"channels", "lock", "--name", "bayern", "--off"}));
  EXPECT_EQ((Values{"true", "false", "true", "true"}), ValuesOf(m_directory, "lock"));
  ExpectStatus(0, Run({"channels", "favor", "--locked", "--where", "TSID=133"}));
  EXPECT_EQ((Values{"0", "0", "1", "1"}), ValuesOf(m_directory, "favorite"));
}

TEST_F(Bulk, IndexesMustBeThere) {
  const NothingWritten nothing(m_directory);
  for (const std::string command : {"favor", "lock", "remove", "show"}) {
    const std::string head = "channels " + command + ": E_FAIL (0x80004005): ";
    ExpectRefused(1, head + "no channel with index 9", Run({"channels", command, "2-9"}));
    ExpectRefused(1, head + "no channel with index 0", Run({"channels", command, "0-2"}));
    ExpectRefused(1, head + "no channel with index 5", Run({"channels", command, "1,5"}));
    ExpectRefused(1, head + "no channel matches", Run({"channels", command, "--name", "zdf"}));
    // Filters narrow what indexes name.
    ExpectRefused(1, head + "no channel matches", Run({"channels", command, "2", "--favorites"}));
  }
  ExpectRefused(1, "channels set: E_FAIL (0x80004005): no channel with index 9",
                Run({"channels", "set", "2-9", "--number", "1"}));
}

TEST_F(Bulk, SeveralChannelsAreSetShownAndRemoved) {
  ExpectStatus(0, Run({"channels", "set", "2-3", "--set", "networkName=X", "--number", "5"}));
  EXPECT_EQ((Values{"30", "5", "5", "40"}), ValuesOf(m_directory, "number"));
  const Outcome shown = Run({"channels", "show", "3", "2", "--json"});
  EXPECT_EQ((Values{"BAYERN 1", "Sky"}), NamesIn(shown));
  EXPECT_EQ("X", shown.Json()[1]["block"]["networkName"]);
  const Outcome text = Run({"channels", "show", "--where", "networkName=X"});
  EXPECT_EQ(Run({"channels", "show", "2"}).out + "\n" + Run({"channels", "show", "3"}).out,
            text.out);
  ExpectStatus(0, Run({"channels", "remove", "--favorites"}));
  EXPECT_EQ((Values{"\"BAYERN 1\"", "\"Data\""}), ValuesOf(m_directory, "name"));
  EXPECT_EQ((Values{"1", "2"}), ValuesOf(m_directory, "index"));
  ExpectStatus(0, Run({"channels", "remove", "--all"}));
  EXPECT_EQ(Values{}, ValuesOf(m_directory, "name"));
}

TEST_F(Bulk, EditChangesWhatTheFilterChooses) {
  Outcome outcome =
      Run({"channels", "edit", "--service", "tv", "--set", "lock=1", "--set", "favorite=4"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("2 channels changed\n", outcome.out);
  EXPECT_EQ((Values{"4", "0", "4", "0"}), ValuesOf(m_directory, "favorite"));
  EXPECT_EQ((Values{"true", "false", "true", "false"}), ValuesOf(m_directory, "lock"));
  EXPECT_EQ("1 channel changed, 2 had the values already\n",
            Run({"channels", "edit", "--index", "1-2", "--index", "3", "--set", "lock=1"}).out);
  EXPECT_EQ("1 channel changed, 3 had the values already\n",
            Run({"channels", "edit", "--all", "--set", "freqOffset=0"}).out);
  EXPECT_EQ("0 channels changed, 4 had the values already\n",
            Run({"channels", "edit", "--all", "--set", "freqOffset=0"}).out);
  outcome = Run({"channels", "edit", "--name", "SKY", "--set", "name=Sky 2", "--json"});
  EXPECT_EQ((Values{"Sky 2"}), NamesIn(outcome));
  const NothingWritten nothing(m_directory);
  ExpectRefused(1, "channels edit: E_FAIL (0x80004005): no channel matches",
                Run({"channels", "edit", "--name", "zdf", "--set", "lock=1"}));
  ExpectRefused(1, "channels edit: E_FAIL (0x80004005): no channel with index 9",
                Run({"channels", "edit", "--index", "1-9", "--set", "lock=1"}));
  ExpectStatus(1,
               Run({"channels", "edit", "--all", "--set", "networkName=" + std::string(256, 'x')}));
}

TEST_F(Bulk, ListTakesEveryFilter) {
  EXPECT_EQ((Values{"Das Erste", "Sky"}), Listed({"--favorites"}));
  EXPECT_EQ((Values{"Sky"}), Listed({"--locked"}));
  EXPECT_EQ((Values{"Das Erste"}), Listed({"--name", "ERSTE h"}));
  EXPECT_EQ((Values{"BAYERN 1", "Sky", "Data"}), Listed({"--index", "2-100"}));
  EXPECT_EQ((Values{"Das Erste", "Data"}), Listed({"--index", "4", "--index", "1"}));
  EXPECT_EQ((Values{"Sky", "Data"}), Listed({"--where", "tsid=133"}));
  EXPECT_EQ((Values{"Sky"}), Listed({"--where", "tsid=133", "--where", "block.CA=1"}));
  EXPECT_EQ((Values{}), Listed({"--where", "tsid=133", "--favorites", "--service", "radio"}));
  EXPECT_EQ((Values{"Das Erste"}), Listed({"--where", "AudioStream[2].pid=0x13F2"}));
}

TEST_F(Bulk, ListAsJsonIsWhatShowPrints) {
  for (const auto& [country, signal] :
       {std::pair{"1", "16"}, {"49", "64"}, {"81", "176"}, {"82", "160"}}) {
    const ordered_json list = m_directory.Channels(country, signal);
    ASSERT_FALSE(list.empty());
    for (const auto& channel : list) {
      EXPECT_EQ(channel, m_directory.Channel(country, signal, channel["index"].dump()));
      EXPECT_TRUE(channel.contains("block"));
    }
  }
}

TEST_F(Bulk, ColumnsAreChosen) {
  const Outcome outcome =
      Run({"channels", "list", "--columns", "number,displayName,polarisation,AudioStream[2].pid",
           "--columns", "block.serviceType", "--index", "1-2"});
  ExpectStatus(0, outcome);
  EXPECT_EQ(
      "number  displayName   polarisation  AudioStream[2].pid  block.serviceType\n"
      "30      Das Erste HD  LinearH       5106                25\n"
      "10      BAYERN 1      NotSet        -                   2\n",
      outcome.out);
}

TEST_F(Bulk, UnknownFieldsAreNamedWithTheKnownOnes) {
  const std::string message =
      "channels of FMRadio have no field 'symbolRate'; the fields are index, number, name, "
      "displayName, frequency, offset, tsid, serviceType, favorite, lock, scrambled, mhp";
  const auto expect = [&](Arguments arguments) {
    ExpectRefused(2, message, m_directory.Run("49", "5", std::move(arguments)));
  };
  expect({"channels", "list", "--columns", "index,symbolRate"});
  expect({"channels", "list", "--where", "symbolRate=1"});
  expect({"channels", "edit", "--where", "symbolRate=1", "--set", "lock=1"});
  // Before anything is opened.
  ExpectRefused(2, message,
                RunTool({"--dir", m_directory.Files().File("missing"), "--country", "49",
                         "--signal", "5", "channels", "favor", "--where", "symbolRate=1"}));
}

TEST_F(Bulk, TablesAreAlignedByCharactersAndNotByBytes) {
  for (const char* name : {"wxyz", "abcd"}) {
    ExpectStatus(0, Run({"channels", "add", "--name", name}));
  }
  // Display names are what they are in every code page.
  std::string file = m_directory.Files().Read("ChanInfo.xml");
  const std::string old = "nameDisplay=\"wxyz\"";
  ASSERT_NE(std::string::npos, file.find(old));
  file.replace(file.find(old), old.size(), "nameDisplay=\"K\u00F6ln\"");
  m_directory.Files().Write("ChanInfo.xml", file);
  EXPECT_EQ(
      "displayName  index\n"
      "K\u00F6ln         5\n"
      "abcd         6\n",
      Run({"channels", "list", "--columns", "displayName,index", "--index", "5-6"}).out);
}

// The list of a signal type with one channel, which is found in another way.
TEST_F(Bulk, ALoneChannelIsChosenToo) {
  ExpectStatus(0, m_directory.Run("49", "5", {"channels", "lock", "--all"}));
  EXPECT_EQ(true, m_directory.Channel("49", "5", "7")["lock"]);
  ExpectStatus(0, m_directory.Run("49", "5", {"channels", "remove", "--locked"}));
  EXPECT_EQ("[]\n", m_directory.Run("49", "5", {"channels", "list", "--json"}).out);
}

}  // namespace zortunedex::kit::tool
