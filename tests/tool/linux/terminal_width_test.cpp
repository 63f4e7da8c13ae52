// Tables on a terminal.
//
// Linux only: the terminal is played by a forked process
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

/// What a command prints on a terminal with so many columns; 0: one that does not tell.
std::string PrintedAt(unsigned short columns, Arguments arguments) {
  winsize size = {};
  size.ws_row = 24;
  size.ws_col = columns;
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
  if (child == 0) {
    arguments.insert(arguments.begin(), ZORTUNEDEX_TOOL);
    std::vector<char*> words;
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    execv(ZORTUNEDEX_TOOL, words.data());
    _exit(127);
  }
  std::string text;
  char buffer[512];
  for (ssize_t count = 0; (count = read(terminal, buffer, sizeof(buffer))) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  int status = 0;
  waitpid(child, &status, 0);
  close(terminal);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << text;
  std::erase(text, '\r');
  return text;
}

std::size_t LongestLine(const std::string& text) {
  std::size_t longest = 0;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    // Characters beside ASCII: the ellipsis alone, three bytes for one column.
    const auto more = std::count_if(line.begin(), line.end(),
                                    [](char letter) { return (letter & 0xC0) == 0x80; });
    longest = std::max(longest, line.size() - static_cast<std::size_t>(more));
  }
  return longest;
}

}  // namespace

TEST(TerminalWidth, IsThatOfTables) {
  const DataDirectory directory;
  const Arguments list = {"--dir",    directory.Files().Path(), "--country", kGermany,
                          "--signal", "DVBSatellite",           "channels",  "list"};
  const std::string whole = ToolData("list_dvbs.txt");
  ASSERT_LT(80U, LongestLine(whole));
  EXPECT_EQ(whole, PrintedAt(200, list));
  EXPECT_EQ(whole, PrintedAt(0, list));
  for (const unsigned short columns : std::initializer_list<unsigned short>{100, 80, 60, 40}) {
    const std::string table = PrintedAt(columns, list);
    EXPECT_GE(columns, LongestLine(table)) << table;
    EXPECT_EQ(5, std::count(table.begin(), table.end(), '\n')) << table;
  }
  // Numbers stay whole as long as texts can be shortened.
  EXPECT_NE(std::string::npos, PrintedAt(80, list).find("11493750"));
}

// Names that the code pages of the other target do not all hold.
TEST(TerminalWidth, IsCountedInItsColumns) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  for (const char* name : {"\u65E5\u672C", "Ko\u0308ln", "abcd"}) {
    ExpectStatus(0, directory.Run("81", "64", {"channels", "add", "--name", name}));
  }
  EXPECT_EQ(
      "name  index\n"
      "\u65E5\u672C  1\n"
      "Ko\u0308ln  2\n"
      "abcd  3\n",
      directory.Run("81", "64", {"channels", "list", "--columns", "name,index"}).out);
}

}  // namespace zortunedex::kit::tool
