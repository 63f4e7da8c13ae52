// Names outside ASCII, which the shell of every platform does not hand on.
//
// Linux only: names outside ASCII do not pass the shell of Windows
#include <fstream>
#include <iterator>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

TEST(CustomerListNames, AreKeptInUtf8) {
  const DataDirectory directory;
  std::ifstream presets(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/presets.xml",
                        std::ios::binary);
  directory.Files().Write("PreSetChannelInfo.xml", {std::istreambuf_iterator<char>(presets),
                                                    std::istreambuf_iterator<char>()});
  ExpectStatus(0, directory.Run({"presets", "save", "2", "夏の家"}));
  EXPECT_EQ("夏の家", directory.Run({"presets", "subareas", "2", "--json"}).Json()[2]["name"]);
  // 87 characters of three bytes are one byte too many for 260 with the terminator.
  std::string name;
  for (int i = 0; i < 87; ++i) name += "家";
  ExpectRefused(1,
                "presets save: E_INVALIDARG (0x80070057): the name has more than 259 bytes in the "
                "code page",
                directory.Run({"presets", "save", "2", name}));
  ExpectStatus(0, directory.Run({"presets", "save", "2", name.substr(3)}));
}

}  // namespace

}  // namespace zortunedex::kit::tool
