// The question that is asked at a terminal.
//
// Linux only: the terminal is played by a forked process
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

struct Dialogue {
  int status = -1;
  std::string text;  ///< what stood on the terminal, the answer included
};

/// Runs `presets select` with its input and output at a terminal, and types the answer.
Dialogue Select(const TempDir& directory, const std::string& answer) {
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    const std::string path = directory.Path();
    execl(ZORTUNEDEX_TOOL, ZORTUNEDEX_TOOL, "--dir", path.c_str(), "presets", "select", "1", "0",
          static_cast<char*>(nullptr));
    _exit(127);
  }
  Dialogue dialogue;
  EXPECT_EQ(static_cast<ssize_t>(answer.size()), write(terminal, answer.data(), answer.size()));
  char buffer[512];
  for (ssize_t count = 0; (count = read(terminal, buffer, sizeof(buffer))) > 0;) {
    dialogue.text.append(buffer, static_cast<std::size_t>(count));
  }
  int status = 0;
  waitpid(child, &status, 0);
  close(terminal);
  dialogue.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return dialogue;
}

class Terminal : public testing::Test {
 protected:
  void SetUp() override {
    std::ifstream presets(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/presets.xml",
                          std::ios::binary);
    m_directory.Files().Write("PreSetChannelInfo.xml", {std::istreambuf_iterator<char>(presets),
                                                        std::istreambuf_iterator<char>()});
    ExpectStatus(0, m_directory.Run({"presets", "select", "0", "0"}));
  }

  const DataDirectory m_directory{DataDirectory::Start::Empty};
};

}  // namespace

TEST_F(Terminal, YesReplaces) {
  for (const char* answer : {"y\n", "Y\n", "yes\n"}) {
    ExpectStatus(0, m_directory.Run({"presets", "select", "0", "0", "--yes"}));
    const Dialogue dialogue = Select(m_directory.Files(), answer);
    EXPECT_EQ(0, dialogue.status) << dialogue.text;
    EXPECT_NE(
        std::string::npos,
        dialogue.text.find("Replace 2 channels of country 81 by the 1 channel of Plain? [y/N]"))
        << dialogue.text;
    EXPECT_EQ(1U, m_directory.Channels("81", "176").size());
  }
}

TEST_F(Terminal, EverythingElseDoesNot) {
  const NothingWritten nothing(m_directory);
  for (const char* answer : {"\n", "n\n", "no\n", "yy\n", "\x04"}) {
    const Dialogue dialogue = Select(m_directory.Files(), answer);
    EXPECT_EQ(1, dialogue.status) << dialogue.text;
    EXPECT_NE(std::string::npos, dialogue.text.find("E_FAIL (0x80004005): nothing was replaced"))
        << dialogue.text;
  }
}

}  // namespace zortunedex::kit::tool
