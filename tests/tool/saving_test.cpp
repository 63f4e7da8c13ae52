#include <filesystem>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

TEST(Refusal, OfTypesThatTheFileCannotHold) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  for (const char* signal :
       {"DVBCable", "ISDBCable", "ISDBSatellite", "ISDBTerrestrial", "AMRadio"}) {
    ExpectRefused(1,
                  "channels add: E_NOTIMPL (0x80004001): the file cannot hold channels of " +
                      std::string(signal),
                  directory.Run(kGermany, signal, {"channels", "add", "--name", "X"}));
  }
}

TEST(Refusal, OfAttributesThatAreReadOnly) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  const auto expect = [&](const std::string& field) {
    ExpectRefused(
        1,
        "channels set: E_NOTIMPL (0x80004001): the file does not keep " + field + " for TDMBMobile",
        directory.Run("82", "160", {"channels", "set", "1", "--set", field + "=1"}));
  };
  expect("videoStream");
  expect("numOfMhpAitStreams");
  const Outcome entry =
      directory.Run("82", "160", {"channels", "set", "1", "--set", "AudioStream[1].pid=1"});
  ExpectRefused(
      1, "channels set: E_NOTIMPL (0x80004001): the file does not keep AudioStream for TDMBMobile",
      entry);
}

TEST(Refusal, OfTextsThatAreTooLong) {
  const DataDirectory directory;
  const auto set = [&](const char* country, const char* signal, const std::string& field,
                       std::size_t length) {
    return directory.Run(country, signal,
                         {"channels", "set", signal == std::string("5") ? "7" : "1", "--set",
                          field + "=" + std::string(length, 'x')});
  };
  const auto expect = [&](const char* country, const char* signal, const std::string& field,
                          std::size_t most) {
    const std::string limit = std::to_string(most);
    ExpectStatus(0, set(country, signal, field, most));
    const NothingWritten nothing(directory);
    ExpectRefused(1,
                  "channels set: E_INVALIDARG (0x80070057): " + field + " has more than " + limit +
                      " bytes in the code page",
                  set(country, signal, field, most + 1));
  };
  expect(kGermany, "5", "name", 79);
  expect("81", "176", "name", 79);
  expect(kGermany, "64", "name", 259);
  expect(kGermany, "64", "networkName", 255);
  expect("82", "160", "Components[1].name", 7);
  const Outcome display =
      directory.Run("81", "176", {"channels", "set", "1", "--display-name", std::string(260, 'x')});
  ExpectRefused(1,
                "channels set: E_INVALIDARG (0x80070057): channel 1: nameDisplay has more than "
                "259 bytes in the code page",
                display);
  ExpectStatus(0, directory.Run("81", "176",
                                {"channels", "set", "1", "--display-name", std::string(259, 'x')}));
}

TEST(Refusal, OfMarkupInThePreFormattedForm) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  for (const std::string character : {"&", "<"}) {
    const Outcome outcome = directory.Run(
        kGermany, "64",
        {"channels", "rename", "2", "A" + character + "B", "--format", "preformatted"});
    ExpectRefused(1,
                  "channels rename: E_INVALIDARG (0x80070057): channel 2: name holds '" +
                      character + "', which the pre-formatted form cannot keep",
                  outcome);
  }
  ExpectRefused(
      1,
      "channels add: E_INVALIDARG (0x80070057): channel 5: networkName holds '\"', which "
      "the pre-formatted form cannot keep",
      directory.Run(kGermany, "64",
                    {"channels", "add", "--set", "networkName=\"\"", "--format", "preformatted"}));
  ExpectRefused(1,
                "channels rename: E_INVALIDARG (0x80070057): channel 1: nameDisplay holds U+0009, "
                "which the pre-formatted form cannot keep",
                directory.Run(kGermany, "64",
                              {"channels", "rename", "1", "A\tB", "--display-only", "--format",
                               "preformatted"}));
}

TEST(Refusal, OfCharactersThatXmlCannotHold) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectRefused(1,
                "channels rename: E_INVALIDARG (0x80070057): channel 2: name holds U+0001, which "
                "the file cannot keep",
                directory.Run(kGermany, "64", {"channels", "rename", "2", "A\x01"}));
}

TEST(OneSegmentNames, HoldAnyCharacterInEitherForm) {
  const DataDirectory directory;
  const std::string name = "A&B<\x01\t";
  ExpectStatus(
      0, directory.Run("81", "176", {"channels", "rename", "1", name, "--format", "preformatted"}));
  EXPECT_EQ(name, directory.Channel("81", "176", "1")["name"]);
  EXPECT_EQ(name, directory.Channel("81", "176", "1")["displayName"]);
}

TEST(PreFormattedForm, IsRefusedForWhatTheRestOfTheFileHolds) {
  const DataDirectory directory;
  // In the list itself, in another one, and in an attribute that nobody knows.
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "rename", "2", "A&B"}));
  const auto change = [&](const char* country, const char* signal) {
    return directory.Run(country, signal,
                         {"channels", "favor", "1", "--mark", "9", "--format", "preformatted"});
  };
  {
    const NothingWritten nothing(directory);
    const std::string tail = " of country 49 holds '&', which the pre-formatted form cannot keep";
    ExpectRefused(1, "channels favor: E_INVALIDARG (0x80070057): name of a Channel" + tail,
                  change("82", "160"));
    ExpectRefused(1, "format: E_INVALIDARG (0x80070057): name of a Channel" + tail,
                  directory.Run({"format", "preformatted"}));
  }
  // What is about to be replaced does not matter.
  ExpectStatus(0, directory.Run(kGermany, "64",
                                {"channels", "rename", "2", "AB", "--format", "preformatted"}));
  std::string file = directory.File();
  file.insert(file.find("name=\"Sky\""), "note=\"R&amp;D\" ");
  directory.Files().Write("ChanInfo.xml", file);
  const NothingWritten nothing(directory);
  ExpectRefused(1,
                "channels favor: E_INVALIDARG (0x80070057): note of a Channel of country 49 holds "
                "'&', which the pre-formatted form cannot keep",
                change(kGermany, "64"));
}

TEST(PreFormattedForm, IsWrittenByChangesThatAskForIt) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run("44", "5",
                                {"channels", "add", "--name", "One", "--freq", "88000", "--format",
                                 "preformatted"}));
  EXPECT_EQ(ToolData("preformatted.xml"), directory.File());
}

TEST(Format, RewritesTheFileAndKeepsEveryChannel) {
  const DataDirectory directory;
  const auto everything = [&] {
    std::string all = directory.Run({"info", "--json"}).out;
    for (const auto& [country, signal] : {std::pair{"1", "16"},
                                          {"44", "5"},
                                          {"49", "5"},
                                          {"49", "64"},
                                          {"81", "176"},
                                          {"82", "160"}}) {
      all += directory.Run(country, signal, {"channels", "list", "--json"}).out;
    }
    return all + directory.Run(kGermany, "64", {"channels", "show", "1"}).out;
  };
  const std::string before = everything();
  ExpectStatus(0, directory.Run({"format", "preformatted"}));
  const std::string formatted = directory.File();
  EXPECT_TRUE(
      formatted.starts_with("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>"
                            "\r\n\t<Country name=\"United States\" countrycode=\"1\">\r\n"));
  EXPECT_EQ(before, everything());
  ExpectStatus(0, directory.Run({"format", "plain"}));
  EXPECT_EQ(before, everything());
  ExpectStatus(0, directory.Run({"format", "preformatted"}));
  EXPECT_EQ(formatted, directory.File());
}

TEST(Format, NeedsAFileThatCanBeRead) {
  const DataDirectory empty(DataDirectory::Start::Empty);
  const NothingWritten nothing(empty);
  ExpectRefused(1, "format: E_FAIL (0x80004005): there is no ChanInfo.xml",
                empty.Run({"format", "plain"}));
  const DataDirectory broken;
  broken.Files().Write("ChanInfo.xml", broken.File() + "<");
  const NothingWritten nothingElse(broken);
  ExpectRefused(1,
                "format: E_FAIL (0x80004005): ChanInfo.xml cannot be read: line 61, column 2: the "
                "file ends before an element's name",
                broken.Run({"format", "plain"}));
}

TEST(Saving, NeedsAFileOrNothingInItsPlace) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  std::filesystem::create_directory(directory.Files().File("ChanInfo.xml"));
  const Arguments add = {"channels", "add", "--name", "X", "--format"};
  for (const char* form : {"plain", "preformatted"}) {
    Arguments arguments = add;
    arguments.emplace_back(form);
    ExpectRefused(1,
                  "channels add: E_FAIL (0x80004005): ChanInfo.xml cannot be read: it is a folder",
                  directory.Run(kGermany, "5", arguments));
  }
}

TEST(Saving, SaysWhenAnIndexIsWrittenInAnotherWay) {
  const DataDirectory directory;
  std::string file = directory.File();
  const std::size_t place = file.find("index=\"7\"");
  file.replace(place, 9, "index=\"07\"");
  directory.Files().Write("ChanInfo.xml", file);
  // Elements are looked for by the text of the index, so the channel gets a second one.
  ExpectRefused(1,
                "channels favor: E_FAIL (0x80004005): ChanInfo.xml is not what was meant after "
                "saving: 2 channels instead of 1; the file is unchanged",
                directory.Run(kGermany, "5", {"channels", "favor", "7", "--off"}));
}

TEST(Saving, KnowsThatAComponentIndexReadsBackAsZero) {
  const DataDirectory directory;
  ExpectStatus(0,
               directory.Run("82", "160", {"channels", "set", "1", "--set", "Component_index=7"}));
  EXPECT_NE(std::string::npos, directory.File().find("Component_index=\"7\""));
  EXPECT_EQ(0, directory.Channel("82", "160", "1")["block"]["Component_index"]);
}

}  // namespace

}  // namespace zortunedex::kit::tool
