#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

// "NHK" and five characters in code page 932, base64: 4E 48 4B 91 8D 8D 87.
const char* const kJapaneseFile =
    "<CHANNELTABLE><Country name='Japan' countrycode='81'>"
    "<ChannelSet type='ISDBT_OneSeg' inputSignalType='176'>"
    "<Channel name='TkhLkY2Nhw==' nameDisplay='TkhLkY2Nhw==' index='1' physicalChannel='27' "
    "favor='0' lock='0' Frequency='557143' NetworkID='1' ServiceID='2'/>"
    "</ChannelSet></Country></CHANNELTABLE>";
const char* const kName = "NHK\xE7\xB7\x8F\xE5\x90\x88";  // the same in UTF-8

/// Code pages can be chosen on one platform; the other has one already and says so.
bool HasCodePages() {
  const Outcome outcome = RunTool({"--codepage", "65001", "countries", "81"});
  if (outcome.status == 0) return true;
  ExpectRefused(1,
                "countries: E_NOTIMPL (0x80004001): --codepage is not supported here: texts are in "
                "the system's code page",
                outcome);
  return false;
}

Arguments In932(Arguments arguments) {
  arguments.insert(arguments.begin(), {"--codepage", "932"});
  return arguments;
}

TEST(CodePage, OneThatCannotBeHadIsRefused) {
  if (!HasCodePages()) return;
  ExpectRefused(1, "countries: E_INVALIDARG (0x80070057): code page 4711 cannot be had",
                RunTool({"--codepage", "4711", "countries"}));
}

TEST(CodePage, NamesAreReadAndWrittenInIt) {
  if (!HasCodePages()) return;
  const DataDirectory directory(DataDirectory::Start::Empty);
  directory.Files().Write("ChanInfo.xml", kJapaneseFile);
  const auto channel = [&](const char* index) {
    return directory.Run("81", "176", In932({"channels", "show", index, "--json"})).Json()[0];
  };
  EXPECT_EQ(kName, channel("1")["name"]);
  EXPECT_EQ(kName, channel("1")["displayName"]);
  ExpectStatus(0, directory.Run("81", "176", In932({"channels", "add", "--name", kName})));
  EXPECT_EQ(kName, channel("2")["name"]);
  // The bytes of the new name are those of the old one.
  const std::string file = directory.File();
  const std::size_t first = file.find("name=\"TkhLkY2Nhw==\"");
  ASSERT_NE(std::string::npos, first);
  EXPECT_NE(std::string::npos, file.find("name=\"TkhLkY2Nhw==\"", first + 1));
}

TEST(CodePage, BlockTextsAreConvertedToo) {
  if (!HasCodePages()) return;
  const DataDirectory directory(DataDirectory::Start::Empty);
  const std::string set = std::string("networkName=") + kName;
  ExpectStatus(0, directory.Run("81", "64", In932({"channels", "add", "--set", set})));
  const auto shown = directory.Run("81", "64", In932({"channels", "show", "1", "--json"})).Json();
  EXPECT_EQ(kName, shown[0]["block"]["networkName"]);
  EXPECT_NE(std::string::npos, directory.File().find(kName));
}

TEST(CodePage, TheWrongOneDestroysNoNames) {
  if (!HasCodePages()) return;
  const DataDirectory directory(DataDirectory::Start::Empty);
  directory.Files().Write("ChanInfo.xml", kJapaneseFile);
  const NothingWritten nothing(directory);
  ExpectRefused(1,
                "channels favor: E_INVALIDARG (0x80070057): channel 1: name is no text of the code "
                "page; choose the right one with --codepage",
                directory.Run("81", "176", {"channels", "favor", "1"}));
}

TEST(CodePage, CharactersOutsideAreRefused) {
  if (!HasCodePages()) return;
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  const std::string euro = "1 \xE2\x82\xAC";
  ExpectRefused(1,
                "channels rename: E_INVALIDARG (0x80070057): name holds characters outside the "
                "code page",
                directory.Run("82", "160", In932({"channels", "rename", "1", euro})));
  ExpectRefused(
      1,
      "channels rename: E_INVALIDARG (0x80070057): channel 1: nameDisplay holds "
      "characters outside the code page",
      directory.Run("82", "160", In932({"channels", "rename", "1", euro, "--display-only"})));
}

TEST(CodePage, ArgumentsThatAreNotUtf8AreRefused) {
  if (!HasCodePages()) return;
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectRefused(2, "an argument is not UTF-8",
                directory.Run("82", "160", {"channels", "rename", "1", "\xC0\xAF"}));
}

}  // namespace

}  // namespace zortunedex::kit::tool
