#include <filesystem>
#include <fstream>
#include <iterator>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

/// North (0): Harbour (0, channels 1 and 2), Hills (1, none); South (1): Plain (0, channel 4); Mine
/// (2), the customer's: home (0, channels 1 and 3), car (1, channel 2). The note says 1, 0.
std::string PresetBytes() {
  std::ifstream file(std::string(ZORTUNEDEX_TEST_DATA) + "/presets/presets.xml", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string WithoutNote(std::string bytes) {
  const std::string note = " Area=\"1\" SubArea=\"0\"";
  return bytes.replace(bytes.find(note), note.size(), "");
}

/// A directory with the presets, and one one-segment channel in ChanInfo.xml where it is filled.
class PresetDirectory : public DataDirectory {
 public:
  explicit PresetDirectory(Start start = Start::Filled, const std::string& bytes = PresetBytes())
      : DataDirectory(start) {
    Put(bytes);
  }

  void Put(const std::string& bytes) const { Files().Write("PreSetChannelInfo.xml", bytes); }
  std::string Presets() const { return Files().Read("PreSetChannelInfo.xml"); }
  Outcome Run(Arguments arguments) const {
    arguments.insert(arguments.begin(), "presets");
    return DataDirectory::Run(arguments);
  }
  /// "index:number" of every channel of the list.
  std::string Channels(const std::string& country = "81") const {
    return Describe(DataDirectory::Channels(country, "176"));
  }
  std::string Channels(const std::string& area, const std::string& subArea) const {
    return Describe(Run({"list", area, subArea, "--json"}).Json());
  }

 private:
  static std::string Describe(const nlohmann::ordered_json& channels) {
    std::string text;
    for (const auto& channel : channels) {
      text += (text.empty() ? "" : " ") + channel["index"].dump() + ":" + channel["number"].dump();
    }
    return text;
  }
};

/// Both files are the same at the end.
class NothingChanged {
 public:
  explicit NothingChanged(const PresetDirectory& directory)
      : m_nothing(directory), m_directory(directory), m_presets(directory.Presets()) {}
  ~NothingChanged() { EXPECT_EQ(m_presets, m_directory.Presets()); }

 private:
  const NothingWritten m_nothing;
  const PresetDirectory& m_directory;
  std::string m_presets;
};

void ExpectOut(const std::string& expected, const Outcome& outcome,
               std::source_location where = std::source_location::current()) {
  ExpectStatus(0, outcome, where);
  EXPECT_EQ(expected, outcome.out) << where.line();
  EXPECT_EQ("", outcome.err) << where.line();
}

TEST(Presets, Areas) {
  const PresetDirectory directory;
  const NothingChanged nothing(directory);
  ExpectOut(
      "AREA  SUB-AREAS  KIND      NAME\n"
      "0     2          preset    North\n"
      "1     1          preset    South\n"
      "2     2          customer  Mine\n",
      directory.Run({"areas"}));
  EXPECT_EQ(nlohmann::ordered_json::parse(
                R"([{"area":0,"name":"North","subAreas":2,"customer":false},
                    {"area":1,"name":"South","subAreas":1,"customer":false},
                    {"area":2,"name":"Mine","subAreas":2,"customer":true}])"),
            directory.Run({"areas", "--json"}).Json());
}

TEST(Presets, SubAreas) {
  const PresetDirectory directory;
  const NothingChanged nothing(directory);
  ExpectOut(
      "AREA  SUB-AREA  CHANNELS  NAME\n"
      "0     0         2         Harbour\n"
      "0     1         0         Hills\n",
      directory.Run({"subareas", "0"}));
  EXPECT_EQ(nlohmann::ordered_json::parse(
                R"([{"area":2,"subArea":0,"name":"home","channels":2},
                    {"area":2,"subArea":1,"name":"car","channels":1}])"),
            directory.Run({"subareas", "2", "--json"}).Json());
  ExpectRefused(1, "presets subareas: E_FAIL (0x80004005): no area 3",
                directory.Run({"subareas", "3"}));
}

TEST(Presets, Lists) {
  const PresetDirectory directory;
  const NothingChanged nothing(directory);
  EXPECT_EQ("1:27 2:26", directory.Channels("0", "0"));
  EXPECT_EQ("", directory.Channels("0", "1"));
  EXPECT_EQ("4:25", directory.Channels("1", "0"));
  const Outcome table = directory.Run({"list", "2", "0"});
  ExpectStatus(0, table);
  EXPECT_NE(std::string::npos, table.out.find("Three"));
  ExpectRefused(1, "presets list: E_FAIL (0x80004005): no sub-area 1 of area 1",
                directory.Run({"list", "1", "1"}));
}

TEST(Presets, NumbersOutOfLineAreToldOf) {
  const PresetDirectory directory(
      DataDirectory::Start::Empty,
      "<X><Country countrycode='81'><ChannelSet inputSignalType='176'><Area AreaIndex='1' "
      "name='one'><SubArea SubAreaIndex='7'/></Area><Area AreaIndex='9' name='nine'/></ChannelSet>"
      "</Country></X>");
  const Outcome areas = directory.Run({"areas"});
  EXPECT_EQ("AREA  SUB-AREAS  KIND      NAME\n1     1          customer  one\n", areas.out);
  EXPECT_EQ("tunedex: 1 of 2 areas have a number out of line and are not shown\n", areas.err);
  const Outcome subAreas = directory.Run({"subareas", "1"});
  EXPECT_EQ("tunedex: 1 of 1 sub-areas have a number out of line and are not shown\n",
            subAreas.err);
}

TEST(Presets, FilesWithoutPresets) {
  const std::string missing = "E_FAIL (0x80004005): there is no PreSetChannelInfo.xml";
  const DataDirectory none;
  ExpectRefused(1, "presets areas: " + missing, none.Run({"presets", "areas"}));
  const std::pair<const char*, const char*> damaged[] = {
      {"", "the file is empty"},
      {"text", "the file does not begin with <"},
      {"<?xml ?", "an instruction that does not end"}};
  for (const auto& [bytes, reason] : damaged) {
    const PresetDirectory directory(DataDirectory::Start::Filled, bytes);
    const NothingChanged nothing(directory);
    const std::string message =
        std::string(
            ": E_FAIL (0x80004005): PreSetChannelInfo.xml cannot be read: line 1, column 1: ") +
        reason;
    ExpectRefused(1, "presets select" + message, directory.Run({"select", "0", "0", "--yes"}));
    ExpectRefused(1, "presets save" + message, directory.Run({"save", "0", "x"}));
    ExpectRefused(1, "presets delete" + message, directory.Run({"delete", "0"}));
    ExpectRefused(1, "presets current" + message, directory.Run({"current"}));
  }
  const PresetDirectory other(DataDirectory::Start::Filled, "<CHANNELTABLE/>");
  const NothingChanged nothing(other);
  ExpectRefused(1,
                "presets areas: E_FAIL (0x80004005): PreSetChannelInfo.xml has no set of country "
                "81 and signal type 176",
                other.Run({"areas"}));
}

TEST(Presets, Usage) {
  const PresetDirectory directory;
  const NothingChanged nothing(directory);
  for (const Arguments& arguments : std::vector<Arguments>{{},
                                                           {"subareas"},
                                                           {"list", "0"},
                                                           {"select", "0"},
                                                           {"save", "0"},
                                                           {"delete"},
                                                           {"list", "0", "x"},
                                                           {"list", "-1", "0"},
                                                           {"list", "2147483648", "0"},
                                                           {"other"}}) {
    ExpectStatus(2, directory.Run(arguments));
  }
  ExpectRefused(2, "presets are there for ISDBTerrestrialOneSeg alone",
                directory.Run({"areas", "--signal", "DVBSatellite"}));
  ExpectRefused(2, "--dir is required", RunTool({"presets", "areas"}));
  ExpectStatus(0, directory.Run({"areas", "--signal", "176", "--country", "49"}));
}

TEST(PresetSelection, AsksBeforeItReplaces) {
  const PresetDirectory directory;
  const NothingChanged nothing(directory);
  const std::size_t count = directory.DataDirectory::Channels("81", "176").size();
  ASSERT_NE(0U, count);
  ExpectRefused(1,
                "presets select: E_FAIL (0x80004005): " + std::to_string(count) +
                    (count == 1 ? " channel" : " channels") +
                    " of country 81 would be replaced; --yes allows it",
                directory.Run({"select", "0", "0"}));
  ExpectRefused(1, "presets select: E_FAIL (0x80004005): no sub-area 2 of area 0",
                directory.Run({"select", "0", "2", "--yes"}));
  ExpectRefused(1, "presets select: E_FAIL (0x80004005): no area 3",
                directory.Run({"select", "3", "0", "--yes"}));
}

TEST(PresetSelection, OfAnEmptyListNeedsNoQuestion) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectOut("replaced 0 channels by the 2 of Harbour\n", directory.Run({"select", "0", "0"}));
  EXPECT_EQ("1:27 2:26", directory.Channels());
}

TEST(PresetSelection, SaysWhatItReplaced) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run({"select", "0", "0"}));
  ExpectOut("replaced 2 channels by the 1 of Plain\n",
            directory.Run({"select", "1", "0", "--yes"}));
  EXPECT_EQ(nlohmann::ordered_json::parse(
                R"({"area":0,"areaName":"North","subArea":0,"subAreaName":"Harbour",
                    "replaced":1,"channels":2,"noted":true})"),
            directory.Run({"select", "0", "0", "--yes", "--json"}).Json());
}

// Neither the presets nor what was selected before show through, in whatever order.
TEST(PresetSelection, LosesNothingAndLeavesNothing) {
  const PresetDirectory directory;
  const std::string germany = directory.DataDirectory::Channels("49", "64").dump();
  ExpectStatus(0, directory.Run({"select", "1", "0", "--yes"}));
  EXPECT_EQ("4:25", directory.Channels());
  ExpectStatus(0, directory.Run({"select", "2", "0", "--yes"}));
  EXPECT_EQ("1:27 3:25", directory.Channels());
  ExpectStatus(0, directory.Run({"select", "0", "0", "--yes"}));
  EXPECT_EQ("1:27 2:26", directory.Channels());
  ExpectStatus(0, directory.DataDirectory::Run("81", "176", {"channels", "remove", "1", "2"}));
  EXPECT_EQ("", directory.Channels());
  ExpectStatus(0, directory.Run({"delete", "1"}));
  EXPECT_EQ("1:27 2:26", directory.Channels("0", "0"));
  EXPECT_EQ("4:25", directory.Channels("1", "0"));
  EXPECT_EQ("1:27 3:25", directory.Channels("2", "0"));
  EXPECT_EQ(germany, directory.DataDirectory::Channels("49", "64").dump());
}

TEST(PresetSelection, OfASubAreaWithoutChannels) {
  const PresetDirectory directory;
  ExpectStatus(0, directory.Run({"select", "0", "1", "--yes"}));
  EXPECT_EQ("", directory.Channels());
  const auto current = directory.Run({"current", "--json"}).Json();
  EXPECT_EQ("Hills", current["subAreaName"]);
  EXPECT_EQ(true, current["same"]);
}

TEST(PresetSelection, GoesToTheCountryAndIntoTheForm) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0,
               directory.Run({"select", "0", "0", "--country", "49", "--format", "preformatted"}));
  EXPECT_EQ("1:27 2:26", directory.Channels("49"));
  EXPECT_EQ("", directory.Channels());
  EXPECT_NE(std::string::npos, directory.File().find("\r\n\t\t\t<Channel name=\"T25l\""));
}

TEST(PresetSelection, OfChannelsThatWouldBecomeOne) {
  std::string bytes = PresetBytes();
  const std::size_t place = bytes.find("index=\"2\"");
  bytes.replace(place, 9, "index=\"1\"");
  const PresetDirectory directory(DataDirectory::Start::Filled, bytes);
  const NothingChanged nothing(directory);
  ExpectRefused(1,
                "presets select: E_FAIL (0x80004005): two channels of the sub-area have index 1 "
                "and would become one",
                directory.Run({"select", "0", "0", "--yes"}));
}

TEST(PresetSelection, SaysWhenTheFileIsNotWhatWasMeant) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  std::filesystem::create_directory(directory.Files().File("ChanInfo.xml"));
  ExpectRefused(1,
                "presets select: E_FAIL (0x80004005): ChanInfo.xml could not be written: it is a "
                "folder; the file is unchanged",
                directory.Run({"select", "0", "0", "--replace-unreadable"}));
  EXPECT_EQ(PresetBytes(), directory.Presets());
}

// The note is all that changes in the preset file.
TEST(PresetNote, IsWrittenAlone) {
  const PresetDirectory directory;
  ExpectStatus(0, directory.Run({"select", "2", "1", "--yes"}));
  std::string saved = directory.Presets();
  EXPECT_NE(std::string::npos, saved.find(" Area=\"2\" SubArea=\"1\""));
  EXPECT_NE(std::string::npos, saved.find("<!-- kept -->"));
  for (const auto& [area, subArea, channels] : {std::tuple("0", "0", "1:27 2:26"),
                                                {"0", "1", ""},
                                                {"1", "0", "4:25"},
                                                {"2", "0", "1:27 3:25"},
                                                {"2", "1", "2:26"}}) {
    EXPECT_EQ(channels, directory.Channels(area, subArea));
  }
  EXPECT_EQ(2U, directory.Run({"subareas", "2", "--json"}).Json().size());
}

TEST(PresetNote, IsShownInALaterStart) {
  const PresetDirectory directory(DataDirectory::Start::Filled, WithoutNote(PresetBytes()));
  ExpectRefused(1,
                "presets current: E_FAIL (0x80004005): no selection is noted, and no sub-area has "
                "the channels of the list",
                directory.Run({"current"}));
  ExpectStatus(0, directory.Run({"select", "2", "0", "--yes"}));
  ExpectOut(
      "area      2 Mine\n"
      "sub-area  0 home\n"
      "channels  2\n"
      "state     as selected\n",
      directory.Run({"current"}));
  ExpectStatus(0, directory.DataDirectory::Run("81", "176", {"channels", "favor", "3"}));
  ExpectOut(
      "area      2 Mine\n"
      "sub-area  0 home\n"
      "channels  2\n"
      "state     the channels are not those of the sub-area\n",
      directory.Run({"current"}));
}

TEST(PresetNote, DecidesBetweenSubAreasThatAreAlike) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run({"select", "0", "0"}));
  ExpectStatus(0, directory.Run({"save", "2", "copy"}));
  EXPECT_EQ("Harbour", directory.Run({"current", "--json"}).Json()["subAreaName"]);
  ExpectStatus(0, directory.Run({"select", "2", "2", "--yes"}));
  EXPECT_EQ("copy", directory.Run({"current", "--json"}).Json()["subAreaName"]);
}

// Another program's selection leaves no note.
TEST(PresetNote, IsComparedWithTheChannels) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run({"select", "0", "0"}));
  directory.Put(PresetBytes());
  EXPECT_EQ(nlohmann::ordered_json::parse(
                R"({"area":1,"areaName":"South","subArea":0,"subAreaName":"Plain","noted":true,
                    "channels":2,"presetChannels":1,"same":false,
                    "like":{"area":0,"areaName":"North","subArea":0,"subAreaName":"Harbour"}})"),
            directory.Run({"current", "--json"}).Json());
  ExpectOut(
      "area      1 South\n"
      "sub-area  0 Plain\n"
      "channels  2\n"
      "state     the channels are not those of the sub-area\n"
      "like      sub-area 0 of area 0 Harbour\n",
      directory.Run({"current"}));
  directory.Put(WithoutNote(PresetBytes()));
  ExpectOut(
      "area      0 North\n"
      "sub-area  0 Harbour\n"
      "channels  2\n"
      "state     not noted; told by the channels\n",
      directory.Run({"current"}));
}

TEST(PresetNote, IsLeftOutWhereItWouldRenumberLists) {
  std::string bytes = PresetBytes();
  const std::size_t place = bytes.find("<SubArea SubAreaIndex=\"1\" name=\"car\"");
  bytes.replace(place, 26, "<SubArea SubAreaIndex=\"5\" ");
  const PresetDirectory directory(DataDirectory::Start::Empty, bytes);
  const Outcome outcome = directory.Run({"select", "0", "0"});
  ExpectStatus(0, outcome);
  EXPECT_EQ(
      "tunedex: the selection is not noted in PreSetChannelInfo.xml: the customer's lists are not "
      "numbered 0, 1, 2, ...\n",
      outcome.err);
  EXPECT_EQ(bytes, directory.Presets());
  EXPECT_EQ("1:27 2:26", directory.Channels());
  EXPECT_EQ("Harbour", directory.Run({"current", "--json"}).Json()["like"]["subAreaName"]);
}

TEST(CustomerList, IsStored) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run({"select", "0", "0"}));
  ExpectOut("stored 2 channels as customer list 2; replaced 0, kept 0\n",
            directory.Run({"save", "2", "summer <&>"}));
  EXPECT_EQ("1:27 2:26", directory.Channels("2", "2"));
  EXPECT_EQ("summer <&>", directory.Run({"subareas", "2", "--json"}).Json()[2]["name"]);
  EXPECT_EQ("1:27 2:26", directory.Channels());
}

TEST(CustomerList, IsReplacedByIndex) {
  const PresetDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run({"select", "0", "0"}));
  EXPECT_EQ(nlohmann::ordered_json::parse(
                R"({"index":0,"name":"cottage","channels":3,"stored":2,"replaced":1,"kept":1})"),
            directory.Run({"save", "0", "cottage", "--json"}).Json());
  EXPECT_EQ("1:27 2:26 3:25", directory.Channels("2", "0"));
  EXPECT_EQ("cottage", directory.Run({"subareas", "2", "--json"}).Json()[0]["name"]);
}

TEST(CustomerList, IsRefused) {
  const PresetDirectory directory;
  const NothingChanged nothing(directory);
  ExpectRefused(1,
                "presets save: E_INVALIDARG (0x80070057): there is no customer list 3; the next "
                "free number is 2",
                directory.Run({"save", "3", "x"}));
  ExpectRefused(1,
                "presets save: E_FAIL (0x80004005): country 44 has no one-segment channels to "
                "store",
                directory.Run({"save", "2", "x", "--country", "44"}));
  ExpectRefused(1,
                "presets save: E_INVALIDARG (0x80070057): the name has more than 259 bytes in the "
                "code page",
                directory.Run({"save", "2", std::string(260, 'x')}));
  ExpectRefused(1,
                "presets save: E_INVALIDARG (0x80070057): the name holds U+0001, which the file "
                "cannot keep",
                directory.Run({"save", "2", "a\x01"}));
  ExpectRefused(1, "presets delete: E_FAIL (0x80004005): no sub-area 2 of area 2",
                directory.Run({"delete", "2"}));
}

TEST(CustomerList, OfALongName) {
  const PresetDirectory directory;
  const std::string name(259, 'x');
  ExpectStatus(0, directory.Run({"save", "2", name}));
  EXPECT_EQ(name, directory.Run({"subareas", "2", "--json"}).Json()[2]["name"]);
}

TEST(CustomerList, NeedsAnArea) {
  const PresetDirectory directory(
      DataDirectory::Start::Filled,
      "<X><Country countrycode='81'><ChannelSet inputSignalType='176'><Area AreaIndex='4'/>"
      "</ChannelSet></Country></X>");
  const NothingChanged nothing(directory);
  const std::string message = "E_FAIL (0x80004005): there is no area 0 for the customer's lists";
  ExpectRefused(1, "presets save: " + message, directory.Run({"save", "0", "x"}));
  ExpectRefused(1, "presets delete: " + message, directory.Run({"delete", "0"}));
}

TEST(CustomerList, IsDeleted) {
  const PresetDirectory directory;
  ExpectOut("deleted customer list 0 with 2 channels: home\n", directory.Run({"delete", "0"}));
  ExpectOut(
      "AREA  SUB-AREA  CHANNELS  NAME\n"
      "2     0         1         car\n",
      directory.Run({"subareas", "2"}));
  EXPECT_EQ(nlohmann::ordered_json::parse(R"({"index":0,"name":"car","channels":1})"),
            directory.Run({"delete", "0", "--json"}).Json());
  EXPECT_EQ("[]\n", directory.Run({"subareas", "2", "--json"}).out);
}

// The note follows the list that it names.
TEST(CustomerList, MovesTheNoteWithIt) {
  const PresetDirectory directory;
  ExpectStatus(0, directory.Run({"select", "2", "1", "--yes"}));
  ExpectStatus(0, directory.DataDirectory::Run("81", "176", {"channels", "lock", "2", "--off"}));
  ExpectStatus(0, directory.Run({"delete", "0"}));
  const auto current = directory.Run({"current", "--json"}).Json();
  EXPECT_EQ("car", current["subAreaName"]);
  EXPECT_EQ(0, current["subArea"]);
  EXPECT_EQ(true, current["noted"]);
  EXPECT_EQ(false, current["same"]);
  const Outcome outcome = directory.Run({"delete", "0"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("tunedex: this list was the one that is noted as selected; select another one\n",
            outcome.err);
  EXPECT_EQ("2:26", directory.Channels()) << "the channel list stays";
}

TEST(CustomerList, IsDeletedFromNumbersOutOfLine) {
  std::string bytes = PresetBytes();
  const std::size_t place = bytes.find("<SubArea SubAreaIndex=\"1\" name=\"car\"");
  bytes.replace(place, 25, "<SubArea SubAreaIndex=\"5\"");
  const PresetDirectory directory(DataDirectory::Start::Empty, bytes);
  ExpectStatus(0, directory.Run({"delete", "0"}));
  EXPECT_EQ("2:26", directory.Channels("2", "0"));
}

}  // namespace

}  // namespace zortunedex::kit::tool
