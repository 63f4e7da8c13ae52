// What is printed and does not arrive.
//
// Linux only: a device that is always full
#include <sys/wait.h>

#include <cstdlib>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

TEST(FullOutput, FailsBehindTheSave) {
  const DataDirectory directory;
  const std::string before = directory.File();
  const std::size_t count = directory.Channels("49", "5").size();
  const TempDir errors;
  const std::string command = std::string(ZORTUNEDEX_TOOL) + " --dir " + directory.Files().Path() +
                              " --country 49 --signal 5 channels add --name X > /dev/full 2> " +
                              errors.File("err");
  EXPECT_EQ(1, WEXITSTATUS(std::system(command.c_str())));
  EXPECT_EQ(
      "tunedex: channels add: E_FAIL (0x80004005): the output could not be written; the "
      "change was made\n",
      errors.Read("err"));
  EXPECT_NE(before, directory.File());
  EXPECT_EQ(count + 1, directory.Channels("49", "5").size());
}

TEST(FullOutput, SaysNothingOfAChangeWhereNoneWasMade) {
  const DataDirectory directory;
  const TempDir errors;
  for (const char* command : {"channels list", "channels favor 1 --json"}) {
    const std::string line = std::string(ZORTUNEDEX_TOOL) + " --dir " + directory.Files().Path() +
                             " --country 49 --signal 64 " + command + " > /dev/full 2> " +
                             errors.File("err");
    EXPECT_EQ(1, WEXITSTATUS(std::system(line.c_str())));
    EXPECT_TRUE(errors.Read("err").ends_with("): the output could not be written\n"))
        << errors.Read("err");
  }
}

}  // namespace

}  // namespace zortunedex::kit::tool
