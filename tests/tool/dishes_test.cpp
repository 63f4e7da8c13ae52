#include <filesystem>

#include "tool/satellite_home.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

const char* const kFile = "UserSettings.xml";
const char* const kEmpty = "<DISH_1/><DISH_2/><DISH_3/><DISH_4/>";
const char* const kAstra =
    "<SAT id='A' band='Ku-Band' LNB_Low='9750000' LNB_High='10600000' LNB_Switch='11700000'/>";
const char* const kHotbird = "<SAT id='H' band='Ku-Band' LNB_Low='1' LNB_High='2' LNB_Switch='3'/>";

/// A directory with three satellites, two LNB types and, if given, these dishes.
class Home {
 public:
  Home() {
    m_directory.Write(
        "SatelliteInfo.xml",
        CatalogueFile("<Satellite id='A' name='Astra' index='0'/><Satellite id='H' name='Hotbird' "
                      "index='1'/><Satellite id=\"it's &quot;R&amp;D&quot;\" name='Odd' "
                      "index='2'/>",
                      "<LNB type='Universal' lowFreq='9750000' highFreq='10600000' "
                      "switchFreq='11700000'/><LNB type='C-Band' lowFreq='5150000' "
                      "highFreq='5150000' switchFreq='0'/>"));
  }
  explicit Home(const std::string& dishes) : Home() {
    m_directory.Write(kFile, SettingsFile(dishes));
  }

  const TempDir& Files() const { return m_directory; }
  std::string File() const { return m_directory.Read(kFile); }
  std::size_t Elements() const { return CountOf("<SAT ", File()); }
  Outcome Run(Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--dir", m_directory.Path()});
    return RunTool(arguments);
  }
  Outcome Assign(const std::string& dish, const std::string& satellite,
                 const std::string& lnb = "Universal", const std::string& band = "ku") const {
    return Run({"dishes", "assign", dish, satellite, "--band", band, "--lnb", lnb});
  }
  /// "1.1 A Ku-Band 9750000/10600000/11700000", one for every assignment.
  std::vector<std::string> List(
      std::source_location where = std::source_location::current()) const {
    return Texts(Run({"dishes", "list", "--json"}).Json(where));
  }
  static std::vector<std::string> Texts(const ordered_json& list) {
    std::vector<std::string> texts;
    for (const ordered_json& entry : list) {
      texts.push_back(entry["dish"].dump() + "." + entry["index"].dump() + " " +
                      std::string(entry["id"]) + " " + std::string(entry["band"]) + " " +
                      entry["low"].dump() + "/" + entry["high"].dump() + "/" +
                      entry["switch"].dump());
    }
    return texts;
  }

 private:
  TempDir m_directory;
};

using Texts = std::vector<std::string>;

TEST(Dishes, StartEmptyAndTakeSatellites) {
  const Home home;
  EXPECT_EQ(Texts{}, home.List());
  EXPECT_FALSE(home.Files().Has(kFile));
  EXPECT_EQ("1\n", home.Assign("1", "A").out);
  EXPECT_EQ("2\n", home.Assign("1", "Hotbird").out);
  EXPECT_EQ("3\n", home.Assign("1", "A", "C-Band", "C").out);
  EXPECT_EQ("1\n", home.Assign("4", "A").out);
  const Texts expected = {
      "1.1 A Ku-Band 9750000/10600000/11700000", "1.2 H Ku-Band 9750000/10600000/11700000",
      "1.3 A C-Band 5150000/5150000/0", "4.1 A Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, home.List());
  EXPECT_EQ(4U, home.Elements());
  ExpectPrints("dishes.txt", home.Run({"dishes", "list"}));
}

TEST(Dishes, TakeFrequenciesThatAreGiven) {
  const Home home;
  const auto assign = [&home](const std::string& dish, Arguments frequencies) {
    frequencies.insert(frequencies.begin(), {"dishes", "assign", dish, "A", "--band", "c"});
    ExpectStatus(0, home.Run(frequencies));
  };
  assign("1", {"--low", "5150000"});
  assign("2", {"--low", "1", "--high", "2", "--switch", "3"});
  // Written as a number with a sign, which reads back as itself.
  assign("3", {"--low", "4294967295", "--high", "2147483648", "--switch", "0"});
  const Texts expected = {"1.1 A C-Band 5150000/5150000/0", "2.1 A C-Band 1/2/3",
                          "3.1 A C-Band 4294967295/2147483648/0"};
  EXPECT_EQ(expected, home.List());
}

TEST(Dishes, AnAssignmentThatChangesLeavesNothingBehind) {
  const Home home;
  ExpectStatus(0, home.Assign("1", "A"));
  ExpectStatus(0, home.Assign("1", "H"));
  EXPECT_EQ("1\n", home.Assign("1", "A", "C-Band").out);
  const Texts expected = {"1.1 A Ku-Band 5150000/5150000/0",
                          "1.2 H Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, home.List());
  EXPECT_EQ(2U, home.Elements());
  EXPECT_EQ(0U, CountOf("LNB_Low=\"9750000\"", home.File().substr(0, home.File().find("id=\"H"))));
}

TEST(Dishes, SatellitesAreRemovedByPlace) {
  const Home home(std::string("<DISH_1>") + kAstra + kHotbird + "</DISH_1><DISH_2>" + kAstra +
                  "</DISH_2><DISH_3/><DISH_4/>");
  const ordered_json left = home.Run({"dishes", "remove", "1", "1", "--json"}).Json();
  const Texts expected = {"1.1 H Ku-Band 1/2/3", "2.1 A Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, Home::Texts(left));
  EXPECT_EQ("Hotbird", left[0]["name"]);
  EXPECT_EQ(expected, home.List());
  EXPECT_EQ(2U, home.Elements());
  const FilesUnchanged unchanged(home.Files());
  for (const char* index : {"0", "2", "4294967295"}) {
    ExpectRefused(1,
                  "dishes remove: E_FAIL (0x80004005): dish 1 has no satellite with index " +
                      std::string(index),
                  home.Run({"dishes", "remove", "1", index}));
  }
}

TEST(Dishes, AreCleared) {
  const Home home(std::string("<DISH_1>") + kAstra + "</DISH_1><DISH_2/><DISH_3/><DISH_4>" +
                  kHotbird + "</DISH_4>");
  EXPECT_EQ("", home.Run({"dishes", "clear"}).out);
  EXPECT_EQ(Texts{}, home.List());
  EXPECT_EQ(0U, home.Elements());
  ExpectStatus(0, home.Assign("4", "A"));
  EXPECT_EQ(1U, home.Elements());
}

TEST(Dishes, WhatTheCatalogueLacksCannotBeAssigned) {
  const Home home(kEmpty);
  const FilesUnchanged unchanged(home.Files());
  const std::string start = "dishes assign: E_FAIL (0x80004005): the catalogue has no ";
  ExpectRefused(1, start + "satellite 'B'; it has A, H, it's \"R&D\"", home.Assign("1", "B"));
  ExpectRefused(1, start + "LNB type 'universal'; it has Universal, C-Band",
                home.Assign("1", "A", "universal"));
  const DataDirectory empty(DataDirectory::Start::Empty);
  ExpectRefused(1, "dishes assign: E_FAIL (0x80004005): there is no SatelliteInfo.xml",
                empty.Run({"dishes", "assign", "1", "A", "--band", "c", "--low", "1"}));
}

TEST(Dishes, WrongUsageIsNamed) {
  const Home home(kEmpty);
  const FilesUnchanged unchanged(home.Files());
  for (const char* dish : {"0", "5", "x"}) {
    ExpectRefused(2, "DISH: '" + std::string(dish) + "' is not 1, 2, 3 or 4",
                  home.Assign(dish, "A"));
  }
  ExpectRefused(2, "--band: 'ka' is not known; the nearest is ku; known are c, ku",
                home.Assign("1", "A", "Universal", "ka"));
  ExpectRefused(2, "--band is required", home.Run({"dishes", "assign", "1", "A", "--low", "1"}));
  const auto refuse = [&home](const std::string& message, Arguments more) {
    more.insert(more.begin(), {"dishes", "assign", "1", "A", "--band", "c"});
    ExpectRefused(2, message, home.Run(more));
  };
  refuse("dishes assign takes either --lnb or --low", {});
  refuse("dishes assign takes either --lnb or --low", {"--lnb", "C-Band", "--low", "1"});
  refuse("--high and --switch go with --low", {"--lnb", "C-Band", "--switch", "1"});
  refuse("--low: '4294967296' is no number of 32 bits", {"--low", "4294967296"});
}

TEST(Dishes, AnIdMayBeEmpty) {
  const Home home(kEmpty);
  home.Files().Write("SatelliteInfo.xml", CatalogueFile("<Satellite id='' name='Odd'/>"));
  EXPECT_EQ("1\n", home.Run({"dishes", "assign", "2", "Odd", "--band", "c", "--low", "1"}).out);
  EXPECT_EQ(std::vector<std::string>{"2.1  C-Band 1/1/0"}, home.List());
}

TEST(Dishes, IdsWithQuotesAreWrittenOnce) {
  const Home home;
  ExpectStatus(0, home.Assign("1", "Odd"));
  ExpectStatus(0, home.Assign("2", "A"));
  ExpectStatus(0, home.Assign("3", "A"));
  const Texts expected = {"1.1 it's \"R&D\" Ku-Band 9750000/10600000/11700000",
                          "2.1 A Ku-Band 9750000/10600000/11700000",
                          "3.1 A Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, home.List());
  EXPECT_EQ(3U, home.Elements());
}

TEST(Dishes, AMissingDishElementHoldsNothing) {
  const Home home(std::string("<DISH_1>") + kAstra + "</DISH_1><DISH_2/><DISH_4/>");
  {
    const FilesUnchanged unchanged(home.Files());
    ExpectRefused(1,
                  "dishes assign: E_FAIL (0x80004005): UserSettings.xml has no DISH_3 element: it "
                  "cannot hold satellites of dish 3. It was left as it was",
                  home.Assign("3", "A"));
  }
  ExpectStatus(0, home.Assign("4", "H"));
  const Texts expected = {"1.1 A Ku-Band 9750000/10600000/11700000",
                          "4.1 H Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, home.List());
  const Home bare;
  bare.Files().Write(kFile, "<USER_SETTINGS/>");
  EXPECT_EQ(Texts{}, bare.List());
  ExpectRefused(1,
                "dishes assign: E_FAIL (0x80004005): UserSettings.xml has no DISH_1 element: it "
                "cannot hold satellites of dish 1. It was left as it was",
                bare.Assign("1", "A"));
  EXPECT_EQ("<USER_SETTINGS/>", bare.File());
}

TEST(Dishes, ElementsMayStandTwiceAndInAnyOrder) {
  const std::string other = "<SAT id='other' band='x' LNB_Low='7' LNB_High='8' LNB_Switch='9'/>";
  const Home home("<DISH_4/><DISH_2>" + std::string(kHotbird) + "</DISH_2><DISH_2>" + other +
                  "</DISH_2><DISH_3/><DISH_1>" + kAstra + "</DISH_1>");
  ExpectStatus(0, home.Assign("4", "A"));
  const Texts expected = {"1.1 A Ku-Band 9750000/10600000/11700000", "2.1 H Ku-Band 1/2/3",
                          "4.1 A Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, home.List());
  // The second element of a dish is nobody's, and stays.
  EXPECT_EQ(4U, home.Elements());
  EXPECT_EQ(1U, CountOf("id=\"other\"", home.File()));
}

TEST(Dishes, EqualAssignmentsBecomeOne) {
  const Home home("<DISH_1>" + std::string(kAstra) + kHotbird + kAstra +
                  "</DISH_1><DISH_2/><DISH_3/><DISH_4/>");
  EXPECT_EQ(3U, home.List().size());
  const Outcome outcome = home.Assign("2", "H");
  ExpectStatus(0, outcome);
  EXPECT_EQ("tunedex: dish 1 had an assignment more than once; it is kept once\n", outcome.err);
  const Texts expected = {"1.1 A Ku-Band 9750000/10600000/11700000", "1.2 H Ku-Band 1/2/3",
                          "2.1 H Ku-Band 9750000/10600000/11700000"};
  EXPECT_EQ(expected, home.List());
  EXPECT_EQ(3U, home.Elements());
}

TEST(Dishes, OlderAssignmentsOfTheSameBandAreChangedTogether) {
  const std::string second = "<SAT id='A' band='Ku-Band' LNB_Low='7' LNB_High='8' LNB_Switch='9'/>";
  const Home home("<DISH_1>" + std::string(kAstra) + kHotbird + second +
                  "</DISH_1><DISH_2/><DISH_3/><DISH_4/>");
  ExpectStatus(0, home.Assign("1", "A", "C-Band"));
  EXPECT_EQ((Texts{"1.1 A Ku-Band 5150000/5150000/0", "1.2 H Ku-Band 1/2/3"}), home.List());
}

TEST(Dishes, TextsThatWouldNotComeBackAreNotTouched) {
  const std::string longId(300, 'y');
  const Home home("<DISH_1><SAT id='" + longId +
                  "' band='b' LNB_Low='1' LNB_High='2' LNB_Switch='3'/></DISH_1><DISH_2/>"
                  "<DISH_3/><DISH_4/>");
  EXPECT_EQ((Texts{"1.1 " + longId.substr(41) + " b 1/2/3"}), home.List());
  const FilesUnchanged unchanged(home.Files());
  ExpectRefused(1,
                "dishes assign: E_INVALIDARG (0x80070057): id of an assignment has more than 259 "
                "bytes in the code page",
                home.Assign("2", "A"));
}

TEST(Dishes, NumbersThatWouldNotComeBackAreNotTouched) {
  const auto dishes = [](const std::string& low) {
    return "<DISH_1><SAT id='A' band='Ku-Band' LNB_Low='1' LNB_High='2' LNB_Switch='" + low +
           "'/></DISH_1><DISH_2>" + kHotbird + kAstra + "</DISH_2><DISH_3/><DISH_4/>";
  };
  for (const std::string number : {"9750000.5", "10 600 000", "5000000000", "-2147483649", "0x10",
                                   "9,75", "x", "-", "+-1", "--1", "1-1"}) {
    const Home home(dishes(number));
    const FilesUnchanged unchanged(home.Files());
    const std::string message = ": E_INVALIDARG (0x80070057): LNB_Switch of an assignment is '" +
                                number + "', which is no number of 32 bits";
    ExpectRefused(1, "dishes assign" + message, home.Assign("3", "A"));
    ExpectRefused(1, "dishes remove" + message, home.Run({"dishes", "remove", "2", "1"}));
  }
  const std::pair<const char*, const char*> numbers[] = {
      {"4294967295", "4294967295"},
      {"-1", "4294967295"},
      {"-2147483648", "2147483648"},
      {"007", "7"},
      {" +7 ", "7"},
      {"", "0"},
  };
  for (const auto& [written, kept] : numbers) {
    const Home home(dishes(written));
    ExpectStatus(0, home.Run({"dishes", "remove", "2", "1"}));
    EXPECT_EQ((Texts{std::string("1.1 A Ku-Band 1/2/") + kept,
                     "2.1 A Ku-Band 9750000/10600000/11700000"}),
              home.List());
  }
}

TEST(Dishes, WhatStandsInAnAssignmentIsNotTouched) {
  const auto dishes = [](const std::string& content) {
    return "<DISH_1><SAT id='A' band='Ku-Band' LNB_Low='1' LNB_High='2' LNB_Switch='3'>" + content +
           "</SAT></DISH_1><DISH_2>" + kHotbird + kAstra + "</DISH_2><DISH_3/><DISH_4/>";
  };
  for (const char* content : {"<Motor/>", "<Motor>1</Motor>", "north", "<!-- north -->",
                              "<![CDATA[north]]>", "\n<?north?>\n"}) {
    const Home home(dishes(content));
    const FilesUnchanged unchanged(home.Files());
    const std::string message =
        ": E_INVALIDARG (0x80070057): an assignment holds elements, text or comments of its own";
    ExpectRefused(1, "dishes assign" + message, home.Assign("3", "A"));
    ExpectRefused(1, "dishes remove" + message, home.Run({"dishes", "remove", "2", "1"}));
  }
  const Home home(dishes("\n\t"));
  ExpectStatus(0, home.Run({"dishes", "remove", "2", "1"}));
  EXPECT_EQ(2U, home.List().size());
}

TEST(Dishes, AreClearedWhateverTheyHold) {
  const Home home("<DISH_1><SAT id='" + std::string(300, 'y') +
                  "' LNB_Low='1.5'><Motor/></SAT></DISH_1><DISH_2/><DISH_3/><DISH_4/>");
  ExpectStatus(0, home.Run({"dishes", "clear"}));
  EXPECT_EQ(Texts{}, home.List());
  EXPECT_EQ(0U, home.Elements());
}

TEST(Dishes, AssignmentsThatNobodyKnowsStay) {
  const Home home("<DISH_1><SAT id='gone' LNB_Low='1'/></DISH_1><DISH_2/><DISH_3/><DISH_4/>");
  // A missing band reads as the id, and a missing number as 0.
  EXPECT_EQ((Texts{"1.1 gone gone 1/0/0"}), home.List());
  EXPECT_EQ(nullptr, home.Run({"dishes", "list", "--json"}).Json()[0]["name"]);
  ExpectStatus(0, home.Assign("1", "A"));
  EXPECT_EQ((Texts{"1.1 gone gone 1/0/0", "1.2 A Ku-Band 9750000/10600000/11700000"}), home.List());
}

TEST(Dishes, AnUnreadableFileIsKept) {
  const Home home;
  home.Files().Write(kFile, "<USER_SETTINGS>");
  {
    const FilesUnchanged unchanged(home.Files());
    const std::string message =
        ": E_FAIL (0x80004005): UserSettings.xml cannot be read: line 1, column 16: the file ends "
        "before </USER_SETTINGS>";
    ExpectRefused(1, "dishes list" + message, home.Run({"dishes", "list"}));
    ExpectRefused(1, "dishes assign" + message, home.Assign("1", "A"));
  }
  const Outcome outcome = home.Run(
      {"dishes", "assign", "1", "A", "--band", "ku", "--lnb", "Universal", "--replace-unreadable"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("tunedex: the old UserSettings.xml could not be read and was kept beside the new one\n",
            outcome.err);
  EXPECT_EQ("<USER_SETTINGS>", home.Files().Read("UserSettings.xml.unreadable"));
  EXPECT_EQ((Texts{"1.1 A Ku-Band 9750000/10600000/11700000"}), home.List());
}

TEST(Dishes, AFolderInThePlaceOfTheFileIsAnError) {
  const Home home;
  std::filesystem::create_directory(home.Files().File(kFile));
  ExpectRefused(
      1, "dishes assign: E_FAIL (0x80004005): UserSettings.xml cannot be read: it is a folder",
      home.Assign("1", "A"));
}

TEST(Dishes, OfTheSampleAreThere) {
  const std::string home = std::string(ZORTUNEDEX_SAMPLES) + "/home";
  const ordered_json list = RunTool({"--dir", home, "--json", "dishes", "list"}).Json();
  const Texts expected = {"1.1 Astra-1L-19.2E Ku-Band 9750000/10600000/11700000",
                          "1.2 Hotbird-13B-13.0E Ku-Band 9750000/10600000/11700000",
                          "2.1 Thaicom-6-78.5E C-Band 5150000/5150000/0"};
  EXPECT_EQ(expected, Home::Texts(list));
  for (const ordered_json& entry : list) EXPECT_FALSE(entry["name"].is_null());
}

}  // namespace

}  // namespace zortunedex::kit::tool
