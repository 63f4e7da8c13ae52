#include <array>
#include <filesystem>

#include "tool/satellite_home.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;

/// A section that becomes a transponder, with lines of its own behind.
std::string Section(const std::string& more = "", const std::string& frequency = "11362000") {
  return "[CHANNEL]\n\tDELIVERY_SYSTEM = DVBS2\n\tFREQUENCY = " + frequency +
         "\n\tPOLARIZATION = HORIZONTAL\n\tSYMBOL_RATE = 22000000\n" + more;
}

/// The one transponder that a section of these lines becomes.
ordered_json OnlyTransponder(const std::string& table) {
  const TableFolder folder({{"Sat-1.0E", table}});
  EXPECT_EQ(1, folder.Report()["transponders"]);
  const ordered_json list = folder.Ask({"transponders", "list", "Sat-1.0E"});
  return list.size() == 1 ? list[0] : ordered_json();
}

std::size_t CountNotHeld(const ordered_json& report, const std::string& value) {
  for (const ordered_json& entry : report["notHeld"]) {
    if (entry["value"] == value) return entry["count"];
  }
  return 0;
}

TEST(CatalogueBuild, ReadsSectionsOfValues) {
  const ordered_json transponder = OnlyTransponder(
      "\xEF\xBB\xBF# a comment\r\n; another\r\n[Sky & \"M\xC3\xA9xico\" <1>]\r\n"
      "  delivery_system=DVBS\r\n\tFREQUENCY =  12207500 \r\n\tPOLARIZATION = right\r\n"
      "SYMBOL_RATE = 27500000\r\n\tINNER_FEC = 3/4\r\n\tINVERSION = ON");
  EXPECT_EQ("Ku-Band", transponder["band"]);
  EXPECT_EQ(0, transponder["index"]);
  EXPECT_EQ("12207.5 R Sky & \"M\xC3\xA9xico\" <1>", transponder["name"]);
  EXPECT_EQ(12207500, transponder["frequency"]);
  EXPECT_EQ("CircularR", transponder["polarisation"]);
  EXPECT_EQ(27500, transponder["symbolRate"]);
  EXPECT_EQ("3/4", transponder["innerFECRate"]);
  // The first system has one modulation, which tables leave out.
  EXPECT_EQ("QPSK", transponder["modulation"]);
  EXPECT_EQ("inverted", transponder["spectralInversion"]);
}

TEST(CatalogueBuild, ReadsLinesOfColumns) {
  const TableFolder folder({{"Sat-1.0E",
                             "# freq pol sr fec\n"
                             "S 11509500 V 22000000 3/4\n"
                             "S1\t11510000 h 22000000 AUTO # the other side\n"
                             "S2 11511000 L 30000000 5/6 35 8PSK\n"
                             "S2 11512000 R 30000000\n"}});
  const ordered_json report = folder.Report();
  EXPECT_EQ(4, report["transponders"]);
  EXPECT_EQ(1U, CountNotHeld(report, "ROLLOFF"));
  EXPECT_EQ(1U, CountNotHeld(report, "MODULATION 8PSK (written as NotSet)"));
  EXPECT_EQ(1U, CountNotHeld(report, "INNER_FEC AUTO (written as NotSet)"));
  const ordered_json list = folder.Ask({"transponders", "list", "Sat-1.0E"});
  ASSERT_EQ(4U, list.size());
  const auto expect = [&list](std::size_t i, const char* name, const char* polarisation, int rate,
                              const char* fec, const char* modulation) {
    EXPECT_EQ(name, list[i]["name"]);
    EXPECT_EQ(polarisation, list[i]["polarisation"]);
    EXPECT_EQ(rate, list[i]["symbolRate"]);
    EXPECT_EQ(fec, list[i]["innerFECRate"]);
    EXPECT_EQ(modulation, list[i]["modulation"]);
    EXPECT_EQ("NotSet", list[i]["spectralInversion"]);
  };
  expect(0, "11509.5 V", "LinearV", 22000, "3/4", "QPSK");
  expect(1, "11510 H", "LinearH", 22000, "NotSet", "QPSK");
  expect(2, "11511 L", "CircularL", 30000, "5/6", "NotSet");
  expect(3, "11512 R", "CircularR", 30000, "NotSet", "NotSet");
}

TEST(CatalogueBuild, WritesTheseBytes) {
  const TableFolder folder({{"Far-West_1-97W",
                             "# Channel table for A \"&<> B at 97.0\xC2\xB0W\n\n[x]\n"
                             "DELIVERY_SYSTEM=DVBS\nFREQUENCY=3940000\nPOLARIZATION=LEFT\n"
                             "SYMBOL_RATE=30000000\nINVERSION=AUTO\n"},
                            {"East-5.0E.conf", Section("", "10714250")}});
  folder.Report();
  EXPECT_EQ(ToolData("SatelliteInfo.xml"), folder.Home().Read("SatelliteInfo.xml"));
}

TEST(CatalogueBuild, TakesPositionsFromNamesAndHeaders) {
  const std::string section = Section();
  const TableFolder folder(
      {{"Astra-2E-28.5E", section},
       {"EutelsatW2-16E", section},
       {"Eutelsat5_5.0W", section},
       {"End-180.0w", section},
       {"Fine-19.25E", section},
       {"plain", "# PAS 2E/3R at 43.0W\n" + section},
       {"galaxy.conf", "# Channel table for Galaxy 19 @ 97W C-BAND\n" + section},
       {"both-1.0E",
        "# Channel table for One at 2.0\xC2\xB0"
        "E\n" +
            section}});
  const ordered_json report = folder.Report();
  EXPECT_EQ(8, report["satellites"]);
  EXPECT_EQ(1U, CountNotHeld(report, "parts of a tenth of a degree (Fine-19.25E)"));
  EXPECT_EQ(4U,
            CountNotHeld(report, "the side of positions in the west (written as a negative pos)"));
  std::vector<std::array<std::string, 4>> found;
  for (const ordered_json& satellite : folder.Ask({"satellites", "list"})) {
    found.push_back(
        {satellite["id"], satellite["name"], satellite["position"], satellite["longitude"].dump()});
    EXPECT_EQ(false, satellite["west"]);
  }
  const std::vector<std::array<std::string, 4>> expected = {
      {"End-180.0w", "End 180.0W", "180.0W", "-1800"},
      {"galaxy", "galaxy 97.0W", "97.0W", "-970"},
      {"plain", "plain 43.0W", "43.0W", "-430"},
      {"Eutelsat5_5.0W", "Eutelsat5 5.0W", "5.0W", "-50"},
      {"both-1.0E", "One 1.0E", "1.0E", "10"},
      {"EutelsatW2-16E", "EutelsatW2 16.0E", "16.0E", "160"},
      {"Fine-19.25E", "Fine 19.3E", "19.3E", "193"},
      {"Astra-2E-28.5E", "Astra 2E 28.5E", "28.5E", "285"}};
  EXPECT_EQ(expected, found);
}

TEST(CatalogueBuild, TellsRegionsByThePosition) {
  const std::string section = Section();
  TableFolder folder;
  const std::vector<std::pair<std::string, std::string>> regions = {
      {"0.0E", "Europe"},   {"72.9E", "Europe"},   {"73.0E", "Asia"},
      {"180.0E", "Asia"},   {"0.1W", "Atlantic"},  {"60.9W", "Atlantic"},
      {"61.0W", "America"}, {"160.0W", "America"}, {"160.1W", "Asia"}};
  for (const auto& [position, region] : regions) folder.Tables().Write("A-" + position, section);
  EXPECT_EQ(regions.size(), folder.Report()["satellites"]);
  const ordered_json list = folder.Ask({"satellites", "list"});
  std::size_t found = 0;
  for (const auto& [position, region] : regions) {
    for (const ordered_json& satellite : list) {
      if (satellite["position"] != position) continue;
      EXPECT_EQ(region, satellite["region"]) << position;
      ++found;
    }
  }
  EXPECT_EQ(regions.size(), found);
  EXPECT_EQ(2U, folder.Ask({"satellites", "list", "--region", "europe"}).size());
  EXPECT_EQ(9U, folder.Ask({"satellites", "list", "--division", "0"}).size());
}

TEST(CatalogueBuild, TellsBandsByTheFrequency) {
  const TableFolder folder(
      {{"Sat-1.0E", Section("", "9999999") + Section("", "10000000") + Section("", "1000000") +
                        Section("", "17300000") + Section("", "50000000")}});
  EXPECT_EQ(2U,
            CountNotHeld(folder.Report(), "the Ka band (such transponders stand under Ku-Band)"));
  const auto frequencies = [&folder](const char* band) {
    std::vector<int> found;
    for (const ordered_json& transponder :
         folder.Ask({"transponders", "list", "Sat-1.0E", "--band", band})) {
      found.push_back(transponder["frequency"]);
    }
    return found;
  };
  EXPECT_EQ((std::vector<int>{9999999, 1000000}), frequencies("c"));
  EXPECT_EQ((std::vector<int>{10000000, 17300000, 50000000}), frequencies("KU"));
}

TEST(CatalogueBuild, SaysWhatTheFormatCannotHold) {
  const TableFolder folder(
      {{"Sat-1.0E", Section("MODULATION = PSK/8\nINNER_FEC = 9/10\nROLLOFF = 20\nPILOT = ON\n"
                            "STREAM_ID = 3\nPLS_MODE = 0\nPLS_CODE = 8\nNEW_KEY = x\n") +
                        "[A]\nFREQUENCY=11400000\nPOLARIZATION=V\nSYMBOL_RATE=22000499\n" +
                        "[B]\nFREQUENCY=11400000\nPOLARIZATION=H\nSYMBOL_RATE=22000500\n"}});
  const ordered_json report = folder.Report();
  const ordered_json expected = {
      {{"value", "DELIVERY_SYSTEM"}, {"count", 1}},
      {{"value", "INNER_FEC 9/10 (written as NotSet)"}, {"count", 1}},
      {{"value", "MODULATION PSK/8 (written as NotSet)"}, {"count", 1}},
      {{"value", "NEW_KEY"}, {"count", 1}},
      {{"value", "PILOT"}, {"count", 1}},
      {{"value", "PLS_CODE"}, {"count", 1}},
      {{"value", "PLS_MODE"}, {"count", 1}},
      {{"value", "ROLLOFF"}, {"count", 1}},
      {{"value", "STREAM_ID"}, {"count", 1}},
      {{"value", "divisions: the tables do not tell them (written as Unknown)"}, {"count", 1}},
      {{"value", "parts of a thousand symbols a second"}, {"count", 2}}};
  EXPECT_EQ(expected, report["notHeld"]);
  const ordered_json list = folder.Ask({"transponders", "list", "Sat-1.0E"});
  EXPECT_EQ("NotSet", list[0]["modulation"]);
  EXPECT_EQ("NotSet", list[0]["innerFECRate"]);
  EXPECT_EQ("NotSet", list[1]["modulation"]);
  EXPECT_EQ(22000, list[1]["symbolRate"]);
  EXPECT_EQ(22001, list[2]["symbolRate"]);
}

TEST(CatalogueBuild, KeepsEveryWordThatTheFileHas) {
  for (const char* rate : {"1/2", "2/3", "3/4", "3/5", "4/5", "5/6", "5/11", "7/8"}) {
    EXPECT_EQ(rate, OnlyTransponder(Section(std::string("INNER_FEC=") + rate))["innerFECRate"]);
  }
  EXPECT_EQ("64QAM", OnlyTransponder(Section("MODULATION=qam/64"))["modulation"]);
  EXPECT_EQ("normal", OnlyTransponder(Section("INVERSION=OFF"))["spectralInversion"]);
  EXPECT_EQ("automatic", OnlyTransponder(Section("INVERSION=AUTO"))["spectralInversion"]);
}

TEST(CatalogueBuild, LeavesOutEntriesAndSaysWhy) {
  const std::string good = Section();
  const auto expect = [&good](const std::string& reason, const std::string& bad) {
    const TableFolder folder({{"Sat-1.0E", good + bad}});
    const ordered_json report = folder.Report();
    EXPECT_EQ(1, report["transponders"]) << bad;
    const ordered_json expected =
        ordered_json::array({{{"file", "Sat-1.0E"}, {"line", 6}, {"reason", reason}}});
    EXPECT_EQ(expected, report["leftOut"]["transponders"]) << bad;
    EXPECT_TRUE(report["leftOut"]["files"].empty());
  };
  const std::string rest = "POLARIZATION=H\nSYMBOL_RATE=22000000\n";
  expect("it has no FREQUENCY", "[A]\n" + rest);
  expect("it has no POLARIZATION", "[A]\nFREQUENCY=11400000\nSYMBOL_RATE=22000000\n");
  expect("it has no SYMBOL_RATE", "[A]\nFREQUENCY=11400000\nPOLARIZATION=H\n");
  const auto expectFrequency = [&](const std::string& value) {
    expect("FREQUENCY " + value + " is no number from 1000000 to 50000000",
           "[A]\nFREQUENCY=" + value + "\n" + rest);
  };
  for (const char* value : {"12207", "999999", "50000001", "0xFFFFFF", "-11400000", "11,4", "",
                            "99999999999999999999"}) {
    expectFrequency(value);
  }
  for (const std::string rate : {"99999", "1000000001", "22 000 000"}) {
    expect("SYMBOL_RATE " + rate + " is no number from 100000 to 1000000000",
           "[A]\nFREQUENCY=11400000\nPOLARIZATION=H\nSYMBOL_RATE=" + rate + "\n");
  }
  expect("POLARIZATION up is not known",
         "[A]\nFREQUENCY=11400000\nPOLARIZATION=up\nSYMBOL_RATE=22000000\n");
  const std::string whole = "[A]\nFREQUENCY=11400000\n" + rest;
  expect("INNER_FEC 3 is not known", whole + "INNER_FEC=3\n");
  expect("MODULATION MORSE is not known", whole + "MODULATION=MORSE\n");
  expect("INVERSION maybe is not known", whole + "INVERSION=maybe\n");
  expect("DELIVERY_SYSTEM DVBT is none of satellites", whole + "DELIVERY_SYSTEM=DVBT\n");
  expect("FREQUENCY stands twice", whole + "FREQUENCY=11400000\n");
  // What would tell it from the first one is not held.
  expect("the catalogue cannot tell it from one before it", Section("STREAM_ID=4\n"));
  expect("the catalogue cannot tell it from one before it", Section("MODULATION=PSK/8\n"));
}

TEST(CatalogueBuild, LeavesOutFilesAndSaysWhy) {
  const std::string good = Section();
  const auto expect = [&good](const std::string& name, const std::string& reason,
                              const std::string& bytes) {
    const TableFolder folder({{"Good-1.0E", good}, {name, bytes}});
    const ordered_json report = folder.Report();
    EXPECT_EQ(1, report["satellites"]) << bytes;
    const ordered_json expected = ordered_json::array({{{"file", name}, {"reason", reason}}});
    EXPECT_EQ(expected, report["leftOut"]["files"]) << bytes;
  };
  const std::string name = "Sat-2.0E";
  expect(name, "it has no transponders", "");
  expect(name, "it has no transponders", "# a comment\n\n");
  expect(name, "none of its transponders can be used", "[A]\nFREQUENCY=1\n");
  expect(name, "line 2 opens a section that is not closed", "\n[A\n");
  expect(name, "line 1 stands outside of a section", "FREQUENCY=11400000\n");
  expect(name, "line 2 stands outside of a section", "S 11509500 V 22000000 3/4\nA=1\n");
  expect(name, "line 2 has no key", "[A]\n=1\n");
  expect(name, "line 6 is neither a section, a value nor a line of a satellite",
         good + "T 177500000 7MHz 2/3\n");
  expect(name, "line 1 has 3 columns instead of 4 to 7", "S 11509500 V\n");
  expect(name, "line 1 has 8 columns instead of 4 to 7", "S2 11509500 V 1 2 3 4 5\n");
  expect(name, "line 6 is not UTF-8", good + "# M\xE9xico\n");
  expect(name, "line 1 holds a control character", "\x01\x02\n" + good);
  expect(name, "line 1 holds a control character", std::string("[\0]\n", 4) + good);
  expect("nowhere", "neither its name nor its header tells an orbital position", good);
  expect("far-181.0E", "neither its name nor its header tells an orbital position", good);
  expect("Good-1.0E.txt", "another file has the same id Good-1.0E", good);
  expect("long-3.0E", "its name is longer than 259 bytes or no text of the code page",
         "# Channel table for " + std::string(260, 'x') + " at 3.0E\n" + good);
}

TEST(CatalogueBuild, KeepsTitlesThatFit) {
  const std::string longest(259 - std::string("11362 H ").size(), 'x');
  const auto nameOf = [](const std::string& title) {
    std::string section = Section();
    section.replace(0, section.find('\n'), "[" + title + "]");
    return OnlyTransponder(section)["name"];
  };
  EXPECT_EQ("11362 H " + longest, nameOf(longest));
  EXPECT_EQ("11362 H", nameOf(longest + "x"));
  EXPECT_EQ("11362 H it's [test card]", nameOf("it's [test card]"));
  EXPECT_EQ("11362 H", nameOf("channel 11362000"));
  EXPECT_EQ("11362 H Channel 4+1", nameOf("Channel 4+1"));
}

TEST(CatalogueBuild, CanBeTried) {
  const TableFolder folder({{"Sat-1.0W", Section()}});
  const Outcome outcome = folder.Build({"--dry-run"});
  ExpectStatus(0, outcome);
  EXPECT_EQ("1 satellites, 1 transponders and 10 LNB types would be written\n", outcome.out);
  EXPECT_FALSE(std::filesystem::exists(folder.Target()));
  folder.Home().Write("SatelliteInfo.xml", "ours");
  ExpectStatus(1, folder.Build({"--dry-run"}));
  ExpectStatus(0, folder.Build({"--dry-run", "--force"}));
  EXPECT_EQ("ours", folder.Home().Read("SatelliteInfo.xml"));
}

TEST(CatalogueBuild, ReportsInWords) {
  const TableFolder folder(
      {{"Sat-1.0W", Section("INNER_FEC=8/9\n") + Section() + Section() + Section()},
       {"notes", "hello\n"}});
  const Outcome outcome = folder.Build();
  ExpectStatus(0, outcome);
  EXPECT_EQ("1 satellites, 1 transponders and 10 LNB types written\n", outcome.out);
  const std::string prefix = "tunedex: catalogue build: ";
  EXPECT_EQ(prefix +
                "left out notes: line 1 is neither a section, a value nor a line of a "
                "satellite\n" +
                prefix +
                "left out 3 transponders: the catalogue cannot tell it from one before "
                "it (first at Sat-1.0W line 7)\n" +
                prefix + "the catalogue does not hold DELIVERY_SYSTEM: 1\n" + prefix +
                "the catalogue does not hold INNER_FEC 8/9 (written as NotSet): 1\n" + prefix +
                "the catalogue does not hold divisions: the tables do not tell them (written as "
                "Unknown): 1\n" +
                prefix +
                "the catalogue does not hold the side of positions in the west (written "
                "as a negative pos): 1\n",
            outcome.err);
}

TEST(CatalogueBuild, ReportsPositionsThatDiffer) {
  const std::string head = "# Channel table for ST-1 at ";
  const TableFolder folder({{"ST1_C-80.0E", head + "88.0E\n" + Section()},
                            {"Same-88.0E", head + "88.04E\n" + Section()},
                            {"Side-5.0W", head + "5E\n" + Section()},
                            {"Used-1.0E", Section()},
                            {"Header", head + "3E\n" + Section()},
                            {"Empty-2.0E", head + "3E\n[A]\nFREQUENCY=1\n"}});
  const Outcome outcome = folder.Build();
  ExpectStatus(0, outcome);
  const std::string prefix = "tunedex: catalogue build: ";
  const auto line = [&prefix](const char* file, const char* name, const char* header) {
    return prefix + file + " is taken to be at " + name + ", as its name says; its header says " +
           header + "\n";
  };
  EXPECT_EQ(1U, CountOf(line("ST1_C-80.0E", "80.0E", "88.0E"), outcome.err)) << outcome.err;
  EXPECT_EQ(1U, CountOf(line("Side-5.0W", "5.0W", "5.0E"), outcome.err)) << outcome.err;
  EXPECT_EQ(2U, CountOf("its header says", outcome.err)) << outcome.err;
  const ordered_json expected =
      ordered_json::array({{{"file", "ST1_C-80.0E"}, {"name", "80.0E"}, {"header", "88.0E"}},
                           {{"file", "Side-5.0W"}, {"name", "5.0W"}, {"header", "5.0E"}}});
  EXPECT_EQ(expected, folder.Report()["twoPositions"]);
  EXPECT_EQ(800, folder.Ask({"satellites", "show", "ST1_C-80.0E"})[0]["longitude"]);
}

TEST(CatalogueBuild, ReplacesAFileOnlyWhenAsked) {
  const TableFolder folder({{"Sat-1.0E", Section()}});
  folder.Home().Write("SatelliteInfo.xml", "mine");
  {
    const FilesUnchanged unchanged(folder.Home());
    ExpectRefused(1,
                  "catalogue build: E_FAIL (0x80004005): " + folder.Target() +
                      " is there already; --force replaces it",
                  folder.Build());
  }
  ExpectStatus(0, folder.Build({"--force"}));
  EXPECT_NE("mine", folder.Home().Read("SatelliteInfo.xml"));
  EXPECT_EQ(1U, folder.Home().Count());
}

TEST(CatalogueBuild, WritesNothingWhereThereIsNothing) {
  const TableFolder folder;
  const FilesUnchanged unchanged(folder.Home());
  const std::string path = folder.Tables().Path();
  const std::string none =
      "catalogue build: E_FAIL (0x80004005): " + path + " holds no table that can be used";
  ExpectRefused(1, none, folder.Build());
  folder.Tables().Write("Sat-1.0E", "hello");
  ExpectRefused(1,
                "catalogue build: left out Sat-1.0E: line 1 is neither a section, a value nor a "
                "line of a satellite\ntunedex: " +
                    none,
                folder.Build());
  folder.Tables().Write("Sat-1.0E", Section());
  const std::string missing = folder.Tables().File("missing");
  ExpectRefused(1, "catalogue build: E_INVALIDARG (0x80070057): " + missing + " is no folder",
                RunTool({"catalogue", "build", missing, "-o", folder.Target()}));
  const std::string target = folder.Home().File("no/such/file");
  ExpectRefused(1,
                "catalogue build: E_FAIL (0x80004005): " + target +
                    " could not be written: No such file or directory",
                RunTool({"catalogue", "build", path, "-o", target}));
  ExpectRefused(
      1, "catalogue build: E_INVALIDARG (0x80070057): " + folder.Home().Path() + " is a folder",
      RunTool({"catalogue", "build", path, "--force", "-o", folder.Home().Path()}));
  ExpectRefused(2, "--output is required", RunTool({"catalogue", "build", path}));
  ExpectRefused(2, "FOLDER is required", RunTool({"catalogue", "build", "-o", target}));
}

}  // namespace

}  // namespace zortunedex::kit::tool
