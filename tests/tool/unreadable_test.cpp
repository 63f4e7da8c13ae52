// Files that are there and cannot be read: no command takes one for an empty one.
#include <filesystem>

#include "tool/satellite_home.h"
#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

const char* const kFault =
    "E_FAIL (0x80004005): ChanInfo.xml cannot be read: line 3, column 19: an & stands alone; &amp; "
    "is meant";

/// The data directory with a raw & in the first name.
class Damaged {
 public:
  Damaged() {
    std::string file = m_directory.File();
    const std::string name = "name=\"";
    file.insert(file.find(name) + name.size(), "A & ");
    m_directory.Files().Write("ChanInfo.xml", file);
  }

  const DataDirectory& operator*() const { return m_directory; }
  const DataDirectory* operator->() const { return &m_directory; }

 private:
  DataDirectory m_directory;
};

/// Status 1, the fault and the way out of it.
void ExpectUnread(const std::string& message, const Outcome& outcome,
                  const DataDirectory& directory,
                  std::source_location where = std::source_location::current()) {
  ExpectStatus(1, outcome, where);
  EXPECT_EQ("", outcome.out);
  EXPECT_EQ(
      "tunedex: " + message + "\nTry 'tunedex --dir " + directory.Files().Path() + " repair'.\n",
      outcome.err)
      << where.line();
}

TEST(Unreadable, EveryCommandThatNeedsTheChannelsFails) {
  const Damaged directory;
  const NothingWritten nothing(*directory);
  for (const Arguments& command : std::initializer_list<Arguments>{
           {"channels", "list"},
           {"channels", "show", "1"},
           {"channels", "next", "0"},
           {"channels", "previous", "1"},
           {"channels", "find", "--number", "1"},
           {"channels", "add", "--name", "X"},
           {"channels", "set", "1", "--name", "X"},
           {"channels", "remove", "1"},
           {"channels", "rename", "1", "X"},
           {"channels", "favor", "1"},
           {"channels", "lock", "1"},
           {"channels", "move", "1", "2"},
           {"channels", "sort", "number"},
       }) {
    ExpectUnread(command[0] + " " + command[1] + ": " + kFault, directory->Run("49", "64", command),
                 *directory);
  }
  ExpectUnread("batch: E_FAIL (0x80004005): line 2: channels favor: " +
                   std::string(kFault).substr(std::string_view("E_FAIL (0x80004005): ").size()),
               directory->RunBatch("49", "64", "#\nchannels favor 1\n"), *directory);
  ExpectUnread("info: " + std::string(kFault), directory->Run({"info"}), *directory);
  ExpectUnread("format: " + std::string(kFault), directory->Run({"format", "plain"}), *directory);
}

TEST(Unreadable, TheOldWayIsThereWhereItIsAskedFor) {
  const Damaged directory;
  const std::string damaged = directory->File();
  const Outcome outcome =
      directory->Run("49", "5", {"channels", "add", "--name", "X", "--replace-unreadable"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("tunedex: the old ChanInfo.xml could not be read and was kept beside the new one\n",
            outcome.err);
  EXPECT_EQ(damaged, directory->Files().Read("ChanInfo.xml.unreadable"));
  EXPECT_EQ(1U, directory->Channels("49", "5").size());
}

TEST(Unreadable, EveryKindOfDamageIsTold) {
  const DataDirectory directory;
  const std::string whole = directory.File();
  const auto expect = [&](const std::string& bytes, const std::string& reason) {
    directory.Files().Write("ChanInfo.xml", bytes);
    ExpectUnread("channels list: E_FAIL (0x80004005): ChanInfo.xml cannot be read: " + reason,
                 directory.Run("49", "64", {"channels", "list"}), directory);
  };
  expect("", "line 1, column 1: the file is empty");
  expect("no XML", "line 1, column 1: the file does not begin with <");
  expect("<CHANNELTABLE>\n<Country", "line 2, column 9: the file ends before <Country> does");
  expect(whole + "<", "line " + std::to_string(CountOf("\n", whole) + 1) +
                          ", column 2: the file ends before an element's name");
  expect("<?xml version=\"1.0\" encoding=\"EBCDIC-X\"?><CHANNELTABLE/>",
         "line 1, column 1: its encoding 'EBCDIC-X' is not known, or has other characters");
  std::filesystem::remove(directory.Files().File("ChanInfo.xml"));
  std::filesystem::create_directory(directory.Files().File("ChanInfo.xml"));
  ExpectUnread("channels list: E_FAIL (0x80004005): ChanInfo.xml cannot be read: it is a folder",
               directory.Run("49", "64", {"channels", "list"}), directory);
}

TEST(Unreadable, OtherFilesAreNeededByTheirOwnCommandsAlone) {
  const DataDirectory directory;
  for (const char* file : {"SatelliteInfo.xml", "UserSettings.xml", "PreSetChannelInfo.xml"}) {
    directory.Files().Write(file, "<A><B></A>");
  }
  const FilesUnchanged unchanged(directory.Files());
  const std::string reason =
      " cannot be read: line 1, column 7: </A> stands where <B> of line 1 is open";
  const auto expect = [&](const std::string& file, const Arguments& command) {
    ExpectUnread(command[0] + " " + command[1] + ": E_FAIL (0x80004005): " + file + reason,
                 directory.Run(command), directory);
  };
  for (const char* command : {"satellites", "lnbs"}) {
    expect("SatelliteInfo.xml", {command, "list"});
  }
  expect("SatelliteInfo.xml", {"satellites", "show", "A"});
  expect("SatelliteInfo.xml", {"transponders", "list", "A"});
  expect("UserSettings.xml", {"dishes", "list"});
  expect("UserSettings.xml", {"dishes", "remove", "1", "1"});
  expect("UserSettings.xml", {"dishes", "clear"});
  expect("PreSetChannelInfo.xml", {"presets", "areas"});
  expect("PreSetChannelInfo.xml", {"presets", "select", "0", "0", "--yes"});
  expect("PreSetChannelInfo.xml", {"presets", "save", "0", "X"});
  EXPECT_FALSE(directory.Channels("49", "64").empty());
}

TEST(Unreadable, DishesAreReplacedWhereThatIsAskedFor) {
  const DataDirectory directory;
  directory.Files().Write("UserSettings.xml", "<A><B></A>");
  ExpectStatus(0, directory.Run({"dishes", "clear", "--replace-unreadable"}));
  EXPECT_EQ("<A><B></A>", directory.Files().Read("UserSettings.xml.unreadable"));
  ExpectStatus(0, directory.Run({"dishes", "list"}));
}

TEST(Unreadable, SelectingPresetsDoesNotReplaceTheList) {
  const Damaged directory;
  std::filesystem::copy_file(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/presets.xml",
                             directory->Files().File("PreSetChannelInfo.xml"));
  const FilesUnchanged unchanged(directory->Files());
  ExpectUnread("presets select: " + std::string(kFault),
               directory->Run({"presets", "select", "0", "0", "--yes"}), *directory);
  ExpectUnread("presets current: " + std::string(kFault), directory->Run({"presets", "current"}),
               *directory);
  ExpectUnread("presets save: " + std::string(kFault),
               directory->Run({"presets", "save", "0", "X"}), *directory);
}

}  // namespace

}  // namespace zortunedex::kit::tool
