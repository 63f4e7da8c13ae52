#include <fstream>
#include <iterator>

#include "tool/satellite_home.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

class Batch : public testing::Test {
 protected:
  Outcome Run(const std::string& lines, const Arguments& more = {}) const {
    return m_directory.RunBatch(kGermany, "64", lines, more);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& channel : m_directory.Channels(kGermany, "64"))
      names.push_back(channel["name"]);
    return names;
  }
  /// Status 2 for the line, and nothing was written.
  void ExpectNoCommand(const std::string& lines, const std::string& message) const {
    const NothingWritten nothing(m_directory);
    ExpectRefused(2, message, Run(lines));
  }

  const DataDirectory m_directory;
};

using Strings = std::vector<std::string>;

}  // namespace

TEST_F(Batch, CarriesOutLineAfterLine) {
  const Outcome outcome =
      Run("# a comment\n"
          "\n"
          "channels add --name 'New One' --number 7\n"
          "  # another\r\n"
          "channels rename 5 \"Newer \\\"One\\\"\"\r\n"
          "channels move 5 1\n"
          "channels favor 1,3 --mark 6\n"
          "channels edit --favorites --set lock=1\n"
          "channels remove 2\n"
          "channels sort number");
  ExpectStatus(0, outcome);
  EXPECT_EQ("5\n3 channels changed, 1 had the values already\n", outcome.out);
  EXPECT_EQ((Strings{"Newer \"One\"", "BAYERN 1", "Sky", "Data"}), Names());
}

// What a batch makes is what its commands make one after the other.
TEST_F(Batch, IsTheSameAsItsCommands) {
  const std::vector<Arguments> commands = {
      {"channels", "remove", "2"},
      {"channels", "add", "--name", "A", "--freq", "11000000"},
      {"channels", "favor", "3-4"},
      {"channels", "move", "4", "1"},
      {"channels", "lock", "1", "--off"},
      {"channels", "set", "1", "--number", "99"},
      {"channels", "sort", "number", "--descending"},
      {"channels", "edit", "--all", "--set", "CA=2"},
  };
  const DataDirectory other;
  std::string lines;
  for (const Arguments& command : commands) {
    ExpectStatus(0, other.Run(kGermany, "64", command));
    for (const std::string& word : command) lines += word + " ";
    lines += "\n";
  }
  ExpectStatus(0, Run(lines));
  EXPECT_EQ(other.Channels(kGermany, "64"), m_directory.Channels(kGermany, "64"));
  EXPECT_EQ(other.Run({"info"}).out, m_directory.Run({"info"}).out);
}

TEST_F(Batch, IsReadFromAFile) {
  const TempDir files;
  files.Write("changes.txt",
              "\xEF\xBB\xBF"
              "channels favor 2\nchannels lock 2\n");
  ExpectStatus(0, Run("", {files.File("changes.txt")}));
  EXPECT_EQ(1, m_directory.Channel(kGermany, "64", "2")["favorite"]);
  EXPECT_EQ(true, m_directory.Channel(kGermany, "64", "2")["lock"]);
  ExpectStatus(0, Run("channels lock 2 --off\n", {"-"}));
  EXPECT_EQ(false, m_directory.Channel(kGermany, "64", "2")["lock"]);
  const NothingWritten nothing(m_directory);
  ExpectRefused(2, "the batch " + files.File("none") + " cannot be read",
                Run("", {files.File("none")}));
}

TEST_F(Batch, WithoutCommandsWritesNothing) {
  const NothingWritten nothing(m_directory);
  for (const char* lines : {"", "\n\n", "# channels remove 1\n", "channels favor 1\n"}) {
    const Outcome outcome = Run(lines);
    ExpectStatus(0, outcome);
    EXPECT_EQ("", outcome.out);
  }
}

TEST_F(Batch, IsDoneWholeOrNotAtAll) {
  const NothingWritten nothing(m_directory);
  ExpectRefused(1, "batch: E_FAIL (0x80004005): line 3: channels remove: no channel with index 9",
                Run("channels favor 2\n#\nchannels remove 9\nchannels lock 1\n"));
  ExpectRefused(1, "batch: E_FAIL (0x80004005): line 2: channels edit: no channel matches",
                Run("channels remove 3\nchannels edit --name Sky --set lock=1\n"));
  ExpectRefused(1,
                "batch: E_INVALIDARG (0x80070057): line 1: channels move: channel 2 cannot be "
                "moved to 2",
                Run("channels move 2 2\n"));
  const Outcome noField = Run("channels favor 2\nchannels set 900 --set foo=1\n");
  ExpectStatus(2, noField);
  EXPECT_TRUE(noField.err.starts_with(
      "tunedex: line 2: channels of DVBSatellite have no field 'foo'; the fields are index, "))
      << noField.err;
  ExpectRefused(1,
                "batch: E_INVALIDARG (0x80070057): line 2: channels rename: channel 2: name holds "
                "U+0001, which the file "
                "cannot keep",
                Run("channels favor 1 --mark 3\nchannels rename 2 'A\x01'\n"));
}

TEST_F(Batch, LinesThatAreNoCommandsAreNamed) {
  ExpectNoCommand("channels favor 2\nchannels list\n",
                  "line 2: channels list is no command of a batch");
  ExpectNoCommand("info\n", "line 1: info is no command of a batch");
  ExpectNoCommand("format plain\n", "line 1: format is no command of a batch");
  ExpectNoCommand("channels favor\n", "line 1: channels favor needs INDEX, a filter or --all");
  ExpectNoCommand("channels favor x\n", "line 1: INDEX: 'x' is no index and no range of indexes");
  ExpectNoCommand("\n\nchannels rename 1 'a b\n",
                  "line 3: a quotation has no end, or nothing stands behind a backslash");
  ExpectNoCommand("channels rename 1 \xC0\xAF\n", "line 1: this is not UTF-8");
  ExpectNoCommand(std::string("channels rename 1 a\0b\n", 22), "line 1: this holds a zero byte");
  ExpectNoCommand("channels edit --where lock=x --set lock=1\n",
                  "line 1: lock takes yes or no, not 'x'");
  ExpectNoCommand("presets select 0 0\n",
                  "line 1: presets are there for ISDBTerrestrialOneSeg alone");
  for (const char* line : {"tunedex channels favor 1", "batch", "batch -", "channels", "--help",
                           "channels favor 1 --help", "--version", "channels favor 1 --json",
                           "--dir x channels favor 1", "channels favor 1 --country 1", "favor 1",
                           "channels favor 1 # why"}) {
    const NothingWritten nothing(m_directory);
    const Outcome outcome = Run("channels lock 1\n" + std::string(line) + "\n");
    ExpectStatus(2, outcome);
    EXPECT_TRUE(outcome.err.starts_with("tunedex: line 2: ")) << outcome.err;
    EXPECT_EQ("", outcome.out);
  }
}

TEST_F(Batch, IsParsedBeforeAnythingIsOpened) {
  const std::string missing = m_directory.Files().File("missing");
  ExpectRefused(
      2, "line 1: channels list is no command of a batch",
      RunTool({"--dir", missing, "--country", "49", "--signal", "64", "batch"}, "channels list\n"));
  ExpectRefused(2, "line 1: channels list is no command of a batch",
                RunTool({"--dir", missing, "batch"}, "channels list\n"));
  ExpectRefused(2, "line 1: --country is required",
                RunTool({"--dir", m_directory.Files().Path(), "--signal", "2", "batch"},
                        "channels favor 1\n"));
}

TEST_F(Batch, PrintsJson) {
  const ordered_json printed =
      Run("\nchannels add --name A\nchannels favor 1 2\nchannels remove 1\n", {"--json"}).Json();
  EXPECT_EQ(ordered_json::parse(R"({"tunedex": "batch", "version": 1, "commands": [
      {"line": 2, "command": "channels add", "result": {"changed": 1, "indexes": [5]}},
      {"line": 3, "command": "channels favor", "result": {"changed": 1, "indexes": [1, 2]}},
      {"line": 4, "command": "channels remove", "result": {"channels": 4}}]})"),
            printed);
  EXPECT_EQ("{\n  \"tunedex\": \"batch\",\n  \"version\": 1,\n  \"commands\": []\n}\n",
            Run("", {"--json"}).out);
}

TEST_F(Batch, SortsTwinsApart) {
  ExpectRefused(1,
                "batch: E_FAIL (0x80004005): line 1: channels favor: two channels have index 9 and "
                "would become one; sort the list first",
                m_directory.RunBatch("44", "5", "channels favor 5\nchannels sort number\n"));
  ExpectStatus(0, m_directory.RunBatch("44", "5", "channels sort number\nchannels favor 2\n"));
  EXPECT_EQ(1, m_directory.Channel("44", "5", "2")["favorite"]);
}

// Commands that open the files for themselves see what the lines before them did.
TEST_F(Batch, TakesDishesAndPresets) {
  std::ifstream presets(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/presets.xml",
                        std::ios::binary);
  m_directory.Files().Write("PreSetChannelInfo.xml", {std::istreambuf_iterator<char>(presets),
                                                      std::istreambuf_iterator<char>()});
  m_directory.Files().Write("SatelliteInfo.xml",
                            CatalogueFile("<Satellite id='A' name='Astra' index='0'/>"));
  const std::string lines =
      "channels add --name A\n"
      "presets save 2 'my own'\n"
      "dishes assign 1 Astra --band ku --low 9750000\n"
      "dishes assign 1 A --band c --low 5150000\n"
      "presets select 0 0 --yes\n"
      "dishes remove 1 1\n"
      "channels favor --all --mark 8\n";
  const Outcome outcome = m_directory.RunBatch("81", "176", lines);
  ExpectStatus(0, outcome);
  EXPECT_EQ("3\n1\n2\n",
            outcome.out.substr(0, 2) + outcome.out.substr(outcome.out.find("\n1\n") + 1, 4));
  const auto lists = m_directory.Run({"presets", "subareas", "2", "--json"}).Json();
  EXPECT_EQ("my own", lists[2]["name"]);
  EXPECT_EQ(3, lists[2]["channels"]);
  const auto dishes = m_directory.Run({"dishes", "list", "--json"}).Json();
  ASSERT_EQ(1U, dishes.size());
  EXPECT_EQ("C-Band", dishes[0]["band"]);
  const auto selected = m_directory.Run({"presets", "list", "0", "0", "--json"}).Json();
  const auto channels = m_directory.Channels("81", "176");
  ASSERT_EQ(selected.size(), channels.size());
  for (const auto& channel : channels) EXPECT_EQ(8, channel["favorite"]);
  const auto printed = m_directory.RunBatch("81", "176", "dishes clear\n", {"--json"}).Json();
  EXPECT_EQ(ordered_json::parse(R"([{"line": 1, "command": "dishes clear", "result": []}])"),
            printed["commands"]);
  // Nobody can be asked.
  ExpectRefused(2, "line 1: presets select cannot ask in a batch; --yes allows it",
                m_directory.RunBatch("81", "176", "presets select 0 0\n"));
}

}  // namespace zortunedex::kit::tool
