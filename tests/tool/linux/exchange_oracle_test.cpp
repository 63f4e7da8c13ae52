// Tables and documents as Python reads them, and targets that cannot be written.
//
// Linux only: the interpreter, and a limit on the size of files
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

constexpr const char* kSets[][2] = {{"1", "16"},   {"1", "32"},   {"49", "2"},
                                    {"49", "5"},   {"49", "64"},  {"49", "80"},
                                    {"81", "176"}, {"82", "160"}, {"358", "96"}};

// Prints what its reader makes of a table, as a list of rows by name.
constexpr const char* kTableReader =
    "import csv, json, sys\n"
    "with open(sys.argv[1], encoding='utf-8-sig', newline='') as table:\n"
    "    print(json.dumps(list(csv.DictReader(table, strict=True))))\n";
// Prints a document again.
constexpr const char* kDocumentReader =
    "import json, sys\n"
    "with open(sys.argv[1], encoding='utf-8') as document:\n"
    "    print(json.dumps(json.load(document)))\n";

class OracleHome {
 public:
  OracleHome() {
    std::filesystem::copy_file(ZORTUNEDEX_SAMPLES "/home/ChanInfo.xml",
                               m_directory.Files().File("ChanInfo.xml"));
  }

  const DataDirectory& Directory() const { return m_directory; }

  /// An export of a set, read by a script of Python.
  ordered_json ReadByPython(const char* const (&set)[2], const std::string& format,
                            const std::string& script) const {
    const TempDir& files = m_directory.Files();
    ExpectStatus(
        0, m_directory.Run(set[0], set[1],
                           {"channels", "export", "--format", format, "-o", files.File("list")}));
    files.Write("read.py", script);
    const std::string command = "python3 '" + files.File("read.py") + "' '" + files.File("list") +
                                "' > '" + files.File("out") + "'";
    EXPECT_EQ(0, std::system(command.c_str()));
    return ordered_json::parse(files.Read("out"), nullptr, false);
  }

 private:
  DataDirectory m_directory{DataDirectory::Start::Empty};
};

/// A text without the apostrophe that keeps spreadsheets from taking it for something else.
std::string Plain(const std::string& cell) {
  return cell.starts_with('\'') ? cell.substr(1) : cell;
}

TEST(ExchangeOracle, PythonReadsTables) {
  const OracleHome home;
  std::size_t count = 0;
  for (const auto& set : kSets) {
    const ordered_json rows = home.ReadByPython(set, "csv", kTableReader);
    const ordered_json channels = home.Directory().Channels(set[0], set[1]);
    ASSERT_EQ(channels.size(), rows.size());
    count += rows.size();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(channels[i].at("name"), Plain(rows[i].at("name")));
      EXPECT_EQ(channels[i].at("displayName"), Plain(rows[i].at("nameDisplay")));
      EXPECT_EQ(channels[i].at("index").dump(), rows[i].at("index"));
      EXPECT_EQ(channels[i].at("favorite").dump(), rows[i].at("favor"));
      for (const auto& [name, value] : channels[i].at("block").items()) {
        if (!value.is_number()) continue;
        EXPECT_EQ(value.dump(), rows[i].at(name)) << name;
      }
    }
  }
  EXPECT_EQ(165U, count);
}

TEST(ExchangeOracle, PythonReadsDocuments) {
  const OracleHome home;
  std::size_t count = 0;
  for (const auto& set : kSets) {
    const ordered_json document = home.ReadByPython(set, "json", kDocumentReader);
    EXPECT_EQ(home.Directory().Channels(set[0], set[1]), document.at("channels"));
    count += document.at("channels").size();
  }
  EXPECT_EQ(165U, count);
}

TEST(ExchangeOracle, LeavesTheTargetWhereNothingCanBeWritten) {
  const OracleHome home;
  const TempDir& files = home.Directory().Files();
  files.Write("list.csv", "the old list");
  // Every write beyond half a kilobyte fails, as on a full disk.
  const std::string command = "trap '' XFSZ; ulimit -f 1; '" ZORTUNEDEX_TOOL "' --dir '" +
                              files.Path() +
                              "' --country 49 --signal 64 channels export --format csv -o '" +
                              files.File("list.csv") + "' 2>/dev/null >&2";
  EXPECT_EQ(1, WEXITSTATUS(std::system(command.c_str())));
  EXPECT_EQ("the old list", files.Read("list.csv"));
  for (const auto& entry : std::filesystem::directory_iterator(files.Path())) {
    const std::string name = entry.path().filename().string();
    EXPECT_TRUE(name == "list.csv" || name == "ChanInfo.xml") << name;
  }
}

}  // namespace

}  // namespace zortunedex::kit::tool
