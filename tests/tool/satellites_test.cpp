#include "tool/satellite_home.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

std::string Satellite(const std::string& id, const std::string& more,
                      const std::string& inside = "") {
  return "<Satellite id=\"" + id + "\" " + more + ">" + inside + "</Satellite>";
}

/// Two named satellites, one without an id, and one whose words are unknown.
std::string Four() {
  return Satellite("A1",
                   "pos='192' name='First' region='Europe' division='3' azimuthe='1727' "
                   "elevation='297' index='0'",
                   "<Ku-Band><Transponder name='T&amp;1' freq='11362000' polarisation='Linearv' "
                   "symbolRate='22000' innerFECRate='2/3' modulation='QPSK' "
                   "spectralInversion='inverted'/><Transponder name='T2' freq='4294967295' "
                   "polarisation='up' symbolRate='-1' innerFECRate='6/7' modulation='8PSK' "
                   "spectralInversion='?'/></Ku-Band><C-Band><Transponder name='c' freq='3700000' "
                   "polarisation='CircularL' symbolRate='1' innerFECRate='1/2' "
                   "modulation='BPSK' spectralInversion='normal'/></C-Band>") +
         Satellite("First",
                   "pos='-30' name='Second' region='Atlantic' division='3' "
                   "azimuthe='-1' elevation='-15' index='1'") +
         "<Satellite pos='0' name='Nameless' region='Asia' division='9' azimuthe='0' "
         "elevation='0' index='2'/>" +
         Satellite("X", "pos='1800' name='Odd' region='Moon' division='10' index='3'");
}

class CatalogueHome {
 public:
  explicit CatalogueHome(const std::string& catalogue) {
    m_directory.Write("SatelliteInfo.xml", catalogue);
  }
  Outcome Run(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--dir", m_directory.Path()});
    return RunTool(arguments);
  }
  ordered_json Json(Arguments arguments,
                    std::source_location where = std::source_location::current()) const {
    arguments.emplace_back("--json");
    return Run(std::move(arguments)).Json(where);
  }

 private:
  TempDir m_directory;
};

std::vector<std::string> Ids(const ordered_json& list) {
  std::vector<std::string> ids;
  for (const ordered_json& satellite : list) ids.push_back(satellite["id"]);
  return ids;
}

TEST(Satellites, ControlCharactersReachNoTerminal) {
  const CatalogueHome home(
      CatalogueFile(Satellite("A&#10;B&#127;[31m&#9;", "name='n&#13;&#127;' index='0'")));
  ExpectRefused(1,
                "satellites show: E_FAIL (0x80004005): the catalogue has no satellite 'B'; it has "
                "A\\x0AB\\x7F[31m\\x09",
                home.Run({"satellites", "show", "B"}));
  ExpectRefused(1,
                "satellites show: E_FAIL (0x80004005): the catalogue has no satellite 'x\\x7F'; it "
                "has A\\x0AB\\x7F[31m\\x09",
                home.Run({"satellites", "show", "x\x7F"}));
  ExpectRefused(
      2, "--region: 'a\\x7F' is not known; known are asia, europe, atlantic, america, unknown",
      home.Run({"satellites", "list", "--region", "a\x7F"}));
  EXPECT_EQ(1U, CountOf("A\\x0AB\\x7F[31m\\x09", home.Run({"satellites", "list"}).out));
  const Outcome json = home.Run({"satellites", "list", "--json"});
  EXPECT_EQ(1U, CountOf("\"A\\nB\\u007f[31m\\t\"", json.out)) << json.out;
  EXPECT_EQ("n\r\x7F", json.Json()[0]["name"]);
}

TEST(Satellites, AreListed) {
  const CatalogueHome home(CatalogueFile(Four()));
  ExpectPrints("satellites.txt", home.Run({"satellites", "list"}));
  const ordered_json list = home.Json({"satellites", "list"});
  ASSERT_EQ(4U, list.size());
  const ordered_json expected = {{"index", 0},          {"id", "A1"},       {"name", "First"},
                                 {"position", "19.2E"}, {"longitude", 192}, {"west", false},
                                 {"azimuth", 1727},     {"elevation", 297}, {"region", "Europe"},
                                 {"division", 3},       {"cBand", 1},       {"kuBand", 2}};
  EXPECT_EQ(expected, list[0]);
  EXPECT_EQ("3.0W", list[1]["position"]);
  // A missing id reads as the name, words that nobody knows as unknown.
  EXPECT_EQ("Nameless", list[2]["id"]);
  EXPECT_EQ("Unknown", list[3]["region"]);
  EXPECT_EQ(0, list[3]["division"]);
}

TEST(Satellites, AreChosenByRegionAndDivision) {
  const CatalogueHome home(CatalogueFile(Four()));
  const auto ids = [&home](Arguments filter) {
    filter.insert(filter.begin(), {"satellites", "list"});
    return Ids(home.Json(filter));
  };
  using Expected = std::vector<std::string>;
  EXPECT_EQ((Expected{"A1"}), ids({"--region", "EUROPE"}));
  EXPECT_EQ((Expected{"A1", "First"}), ids({"--division", "3"}));
  EXPECT_EQ((Expected{"First"}), ids({"--division", "3", "--region", "atlantic"}));
  EXPECT_EQ((Expected{"X"}), ids({"--region", "unknown"}));
  EXPECT_EQ((Expected{"X"}), ids({"--division", "0"}));
  EXPECT_EQ(Expected{}, ids({"--region", "america"}));
  ExpectRefused(2,
                "--region: 'africa' is not known; the nearest is america; known are asia, europe, "
                "atlantic, america, unknown",
                home.Run({"satellites", "list", "--region", "africa"}));
  ExpectRefused(
      2, "--division: '10' is not known; the nearest is 0; known are 0, 1, 2, 3, 4, 5, 6, 7, 8, 9",
      home.Run({"satellites", "list", "--division", "10"}));
}

TEST(Satellites, AreShownByIdOrName) {
  const CatalogueHome home(CatalogueFile(Four()));
  const auto index = [&home](const char* satellite) {
    return home.Json({"satellites", "show", satellite})[0]["index"];
  };
  EXPECT_EQ(0, index("A1"));
  // Ids go first.
  EXPECT_EQ(1, index("First"));
  EXPECT_EQ(1, index("Second"));
  ExpectPrints("satellite.txt", home.Run({"satellites", "show", "A1"}));
  ExpectRefused(1,
                "satellites show: E_FAIL (0x80004005): the catalogue has no satellite 'a1'; it has "
                "A1, First, Nameless, X",
                home.Run({"satellites", "show", "a1"}));
  ExpectRefused(2, "SATELLITE is required", home.Run({"satellites", "show"}));
}

TEST(Satellites, WithAnyCharactersInTheirIdsAreFound) {
  for (const auto& [xml, id] : {std::pair<std::string, std::string>{"it's", "it's"},
                                {"a&quot;b&quot;", "a\"b\""},
                                {"R&amp;D &lt;1&gt;", "R&D <1>"},
                                {std::string(259, 'x'), std::string(259, 'x')}}) {
    const CatalogueHome home(
        CatalogueFile(Satellite(xml, "pos='1' name='N' region='Asia' division='1'")));
    EXPECT_EQ(id, home.Json({"satellites", "show", id})[0]["id"]);
  }
  // Longer ones come cut; others are told apart by the name.
  const CatalogueHome longer(
      CatalogueFile(Satellite(std::string(300, 'y'), "name='N' region='Asia'")));
  EXPECT_EQ(std::string(259, 'y'), longer.Json({"satellites", "show", "N"})[0]["id"]);
  const CatalogueHome german(
      CatalogueFile(Satellite("S\xC3\xBC"
                              "d",
                              "name='N' region='Asia'")));
  EXPECT_EQ(
      "S\xC3\xBC"
      "d",
      german.Json({"satellites", "show", "N"})[0]["id"]);
}

TEST(Satellites, AMessageNamesTwentyOfThem) {
  std::string many;
  std::string names;
  for (int i = 10; i < 35; ++i) {
    many += Satellite(std::to_string(i), "name='n' index='" + std::to_string(i) + "'");
    if (i < 30) names += (i == 10 ? "" : ", ") + std::to_string(i);
  }
  const std::string start =
      "transponders list: E_FAIL (0x80004005): the catalogue has no satellite 'no'; it has ";
  ExpectRefused(1, start + names + " and 5 more",
                CatalogueHome(CatalogueFile(many)).Run({"transponders", "list", "no"}));
  ExpectRefused(1, start + "none",
                CatalogueHome(CatalogueFile("")).Run({"transponders", "list", "no"}));
}

TEST(Transponders, AreListed) {
  const CatalogueHome home(CatalogueFile(Four()));
  ExpectPrints("transponders.txt", home.Run({"transponders", "list", "A1"}));
  const ordered_json list = home.Json({"transponders", "list", "A1", "--band", "Ku-Band"});
  ASSERT_EQ(2U, list.size());
  EXPECT_EQ("T&1", list[0]["name"]);
  EXPECT_EQ("LinearV", list[0]["polarisation"]);
  // Unknown words leave what a new record has.
  const ordered_json expected = {{"band", "Ku-Band"},
                                 {"index", 1},
                                 {"name", "T2"},
                                 {"frequency", 4294967295},
                                 {"polarisation", "NotSet"},
                                 {"symbolRate", -1},
                                 {"innerFECRate", "NotSet"},
                                 {"modulation", "NotSet"},
                                 {"spectralInversion", "NotSet"}};
  EXPECT_EQ(expected, list[1]);
  EXPECT_TRUE(home.Json({"transponders", "list", "X"}).empty());
  ExpectRefused(2, "--band: 'ka' is not known; the nearest is ku; known are c, ku",
                home.Run({"transponders", "list", "A1", "--band", "ka"}));
}

TEST(Lnbs, AreListed) {
  const CatalogueHome home(CatalogueFile(
      "",
      "<LNB type='Universal' lowFreq='9750000' highFreq='10600000' switchFreq='11700000'/>"
      "<LNB type='' lowFreq='4294967295'/>"));
  const ordered_json expected = {
      {{"type", "Universal"}, {"low", 9750000}, {"high", 10600000}, {"switch", 11700000}},
      {{"type", ""}, {"low", 4294967295}, {"high", 0}, {"switch", 0}}};
  EXPECT_EQ(expected, home.Json({"lnbs", "list"}));
  EXPECT_EQ(
      "LOW         HIGH      SWITCH    TYPE\n9750000     10600000  11700000  Universal\n"
      "4294967295  0         0         \n",
      home.Run({"lnbs", "list"}).out);
}

TEST(Satellites, AMissingOrUnreadableFileIsAnError) {
  const DataDirectory empty(DataDirectory::Start::Empty);
  const std::string result = "E_FAIL (0x80004005): ";
  for (const char* command : {"satellites", "lnbs"}) {
    ExpectRefused(1, std::string(command) + " list: " + result + "there is no SatelliteInfo.xml",
                  empty.Run({command, "list"}));
    ExpectRefused(1,
                  std::string(command) + " list: " + result +
                      "SatelliteInfo.xml cannot be read: line 1, column 15: the file ends before "
                      "</SAT_TABLE>",
                  CatalogueHome("<S><SAT_TABLE>").Run({command, "list"}));
    EXPECT_TRUE(CatalogueHome("<S/>").Json({command, "list"}).empty());
  }
  ExpectRefused(2, "--dir is required", RunTool({"satellites", "list"}));
  ExpectRefused(2, "a command is missing behind 'satellites'; known are list, show",
                empty.Run({"satellites"}));
}

TEST(Satellites, OfTheSampleAreThere) {
  const std::string home = std::string(ZORTUNEDEX_SAMPLES) + "/home";
  const ordered_json list = RunTool({"--dir", home, "--json", "satellites", "list"}).Json();
  EXPECT_EQ(16U, list.size());
  std::size_t transponders = 0;
  for (const ordered_json& satellite : list) {
    transponders += satellite["cBand"].get<std::size_t>() + satellite["kuBand"].get<std::size_t>();
  }
  EXPECT_EQ(576U, transponders);
  EXPECT_EQ(10U, RunTool({"--dir", home, "--json", "lnbs", "list"}).Json().size());
}

}  // namespace

}  // namespace zortunedex::kit::tool
