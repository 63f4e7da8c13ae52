// Names outside ASCII: the shell that starts the tool elsewhere takes them for another code page.
#include <filesystem>

#include "tool/tool_run.h"

TEST(CustomerName, IsStoredInUtf8) {
  const TempDir directory;
  for (const char* file : {"ChanInfo.xml", "PreSetChannelInfo.xml"}) {
    std::filesystem::copy_file(std::filesystem::path(ZORTUNEDEX_SAMPLES) / "home" / file,
                               directory.File(file));
  }
  const auto run = [&](Arguments arguments) {
    arguments.insert(arguments.begin(), {"--dir", directory.Path(), "presets"});
    return RunTool(arguments);
  };
  const std::string last = std::to_string(run({"areas", "--json"}).Json().size() - 1);
  ExpectStatus(0, run({"save", "1", "\xE6\x9D\xB1\xE4\xBA\xAC <\xC3\xBC>"}));
  EXPECT_EQ("\xE6\x9D\xB1\xE4\xBA\xAC <\xC3\xBC>",
            run({"subareas", last, "--json"}).Json()[1]["name"]);
}
