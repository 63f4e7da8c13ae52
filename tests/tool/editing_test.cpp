#include "core/station_blocks.h"
#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

using nlohmann::ordered_json;
using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Source;
using station_blocks::StreamList;
using station_blocks::Use;

using Texts = std::vector<std::string>;

Texts Column(const ordered_json& channels, const char* key) {
  Texts texts;
  for (const auto& channel : channels) {
    const ordered_json& value = channel[key];
    texts.push_back(value.is_string() ? value.get<std::string>() : value.dump());
  }
  return texts;
}

TEST(Add, PutsAChannelBehindTheLast) {
  const DataDirectory directory;
  const Outcome outcome = directory.Run(kGermany, "64",
                                        {"channels", "add", "--name", "New", "--display-name",
                                         "Newest", "--number", "7", "--freq", "12345678"});
  EXPECT_EQ("5\n", outcome.out);
  ExpectStatus(0, outcome);
  const ordered_json channel = directory.Channel(kGermany, "64", "5");
  EXPECT_EQ("New", channel["name"]);
  EXPECT_EQ("Newest", channel["displayName"]);
  EXPECT_EQ(7, channel["number"]);
  EXPECT_EQ(12345678, channel["frequency"]);
  // Nothing was said about it, and the file says so.
  EXPECT_EQ("NotSet", channel["block"]["SatelliteParams"]["polarisation"]);
}

TEST(Add, MakesTheFirstFile) {
  const DataDirectory directory(DataDirectory::Start::Empty);
  const Outcome outcome =
      directory.Run("44", "FMRadio", {"channels", "add", "--name", "One", "--json"});
  EXPECT_EQ(1, outcome.Json()[0]["index"]);
  EXPECT_EQ("One", outcome.Json()[0]["displayName"]);
  EXPECT_EQ("COUNTRY  SIGNAL   CHANNELS  NAME\n44       FMRadio  1         United Kingdom\n",
            directory.Run({"info"}).out);
}

TEST(Add, LeavesEverythingElseAlone) {
  const DataDirectory directory;
  const auto others = [&] {
    return std::vector<ordered_json>{
        directory.Channel("1", "16", "1"), directory.Channel("49", "64", "1"),
        directory.Channel("81", "176", "2"), directory.Channels("44", "5")};
  };
  const std::vector<ordered_json> before = others();
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "add", "--name", "New"}));
  ExpectStatus(0, directory.Run("82", "160", {"channels", "add", "--name", "New"}));
  EXPECT_EQ(before, others());
}

TEST(Add, FillsAnAtscDisplayNameFromTheNumbers) {
  const DataDirectory directory;
  const Outcome outcome = directory.Run("1", "ATSCCable",
                                        {"channels", "add", "--name", "KABC", "--set",
                                         "majorChannel=7", "--set", "minorChannel=2", "--json"});
  EXPECT_EQ("7.2 KABC", outcome.Json()[0]["displayName"]);
}

// One value for every attribute that the type's channels have, and what must read back.
struct EveryAttribute {
  Arguments sets;
  ordered_json block = ordered_json::object();
  int next = 200;

  void Set(const std::string& field, const std::string& value) {
    sets.insert(sets.end(), {"--set", field + "=" + value});
  }

  void AddField(const Field& field, const std::string& name, ordered_json& target) {
    switch (field.form) {
      case Form::Text:
      case Form::Base64:
        return Add(field, name, std::string("t") + std::to_string(next++), target);
      case Form::Polarisation:
        return Add(field, name, "CircularR", target);
      case Form::FecRate:
        return Add(field, name, "5/11", target);
      case Form::Modulation:
        return Add(field, name, "QPSK", target);
      case Form::SpectralInversion:
        return Add(field, name, "inverted", target);
      default:
        Set(name, std::to_string(next));
        target[field.attribute] = field.width == 1 ? next % 256 : next;
        ++next;
    }
  }

  void Add(const Field& field, const std::string& name, const std::string& text,
           ordered_json& target) {
    Set(name, text);
    target[field.attribute] = text;
  }

  void AddRows(station_blocks::Rows<Field> rows, const Layout& layout, ordered_json& target) {
    for (const Field& field : rows) {
      if (field.source != Source::Block || field.use == Use::ReadOnly) continue;
      if (IsCount(field, layout)) continue;
      AddField(field, field.attribute, target);
      // It is written and never read back.
      if (field.use == Use::WriteOnly) target[field.attribute] = 0;
    }
  }

  static bool IsCount(const Field& field, const Layout& layout) {
    for (const StreamList& list : layout.lists) {
      if (list.countOffset == field.offset) return true;
    }
    return layout.components != nullptr && layout.components->countOffset == field.offset;
  }

  // The first entry and the last one: the count follows from it.
  void AddList(const StreamList& list) {
    ordered_json entries = ordered_json::array();
    for (int i = 1; i <= list.capacity; ++i) {
      ordered_json entry = ordered_json::object();
      const bool used = i == 1 || i == list.capacity;
      for (const Field& field : station_blocks::EntryFields(list.entrySize)) {
        entry[field.attribute] = 0;
        if (!used) continue;
        if (field.width == 1 && next > 255) next = 1;
        AddField(field,
                 std::string(list.element) + "[" + std::to_string(i) + "]." + field.attribute,
                 entry);
      }
      entries.push_back(std::move(entry));
    }
    block[list.element] = std::move(entries);
  }

  void AddLayout(const Layout& layout) {
    AddRows(layout.channel, layout, block);
    AddRows(layout.elementStreams, layout, block);
    for (const StreamList& list : layout.lists) {
      if (list.use != Use::ReadOnly) AddList(list);
    }
    if (!layout.satelliteParams.Empty()) {
      ordered_json params = ordered_json::object();
      AddRows(layout.satelliteParams, layout, params);
      block["SatelliteParams"] = std::move(params);
    }
    if (layout.components == nullptr) return;
    Set("Components[2].name", "seven77");
    Set("Components[2].type", "4294967295");
    block["Components"] = {{{"name", ""}, {"type", 0}}, {{"name", "seven77"}, {"type", -1}}};
  }
};

class EveryType : public testing::TestWithParam<InputSignalType> {};

TEST_P(EveryType, TakesEveryAttributeAndGivesItBack) {
  const std::string signal = std::to_string(GetParam());
  EveryAttribute every;
  every.AddLayout(*station_blocks::Find(GetParam()));
  Arguments add = {"channels", "add", "--name", "N1", "--set", "favor=5", "--set", "lock=1"};
  add.insert(add.end(), every.sets.begin(), every.sets.end());
  const DataDirectory directory(DataDirectory::Start::Empty);
  ExpectStatus(0, directory.Run("49", signal, add));
  const ordered_json plain = directory.Channel("49", signal, "1");
  for (const auto& [name, value] : every.block.items()) {
    EXPECT_EQ(value, plain["block"][name]) << name;
  }
  EXPECT_EQ("N1", plain["name"]);
  EXPECT_EQ(5, plain["favorite"]);
  EXPECT_EQ(true, plain["lock"]);
  // The other form holds the same.
  ExpectStatus(0, directory.Run({"format", "preformatted"}));
  EXPECT_EQ(plain, directory.Channel("49", signal, "1"));
  // The attributes of a channel that is changed stay but for the one that is set.
  ExpectStatus(0, directory.Run("49", signal, {"channels", "set", "1", "--name", "N2"}));
  ordered_json changed = directory.Channel("49", signal, "1");
  EXPECT_EQ("N2", changed["name"]);
  changed["name"] = "N1";
  EXPECT_EQ(plain, changed);
}

INSTANTIATE_TEST_SUITE_P(Storable, EveryType,
                         testing::Values(InputSignalAnalogAntenna, InputSignalAnalogCable,
                                         InputSignalFMRadio, InputSignalATSCAntenna,
                                         InputSignalATSCCable, InputSignalDVBSatellite,
                                         InputSignalDVBTerrestrial, InputSignalDVBHandheld,
                                         InputSignalTDMBMobile, InputSignalISDBTerrestrialOneSeg));

TEST(Set, ChangesWhatIsNamed) {
  const DataDirectory directory;
  ordered_json expected = directory.Channel(kGermany, "64", "1");
  const Outcome outcome =
      directory.Run(kGermany, "64",
                    {"channels", "set", "1", "--number", "31", "--freq", "0xFFFFFFFF",
                     "--display-name", "ARD", "--set", "TSID=-1", "--set", "freqOffset=-7", "--set",
                     "polarisation=linearv", "--set", "AudioStream[2].pid=0x1FFF", "--json"});
  expected["number"] = 31;
  expected["frequency"] = 4294967295;
  expected["displayName"] = "ARD";
  expected["tsid"] = -1;
  expected["offset"] = -7;
  expected["block"]["SatelliteParams"]["polarisation"] = "LinearV";
  expected["block"]["AudioStream"][1]["pid"] = 8191;
  EXPECT_EQ(expected, directory.Channel(kGermany, "64", "1"));
  EXPECT_EQ(expected, outcome.Json()[0]);
}

TEST(Set, GrowsAndCutsLists) {
  const DataDirectory directory;
  ExpectStatus(
      0, directory.Run(kGermany, "64", {"channels", "set", "1", "--set", "AudioStream[4].pid=9"}));
  ordered_json block = directory.Channel(kGermany, "64", "1")["block"];
  EXPECT_EQ(4, block["numOfAudioStreams"]);
  EXPECT_EQ(R"({"type":0,"pid":0,"lang":0})", block["AudioStream"][2].dump());
  ExpectStatus(0, directory.Run(kGermany, "64",
                                {"channels", "set", "1", "--set", "numOfAudioStreams=1", "--set",
                                 "numOfAudioStreams=2"}));
  block = directory.Channel(kGermany, "64", "1")["block"];
  EXPECT_EQ(2, block["AudioStream"].size());
  EXPECT_EQ(5102, block["AudioStream"][0]["pid"]);
  EXPECT_EQ(0, block["AudioStream"][1]["pid"]);
}

TEST(Set, KeepsBothHomesOfAOneSegmentNumber) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run("81", "176", {"channels", "set", "2", "--number", "24"}));
  EXPECT_EQ(24, directory.Channel("81", "176", "2")["number"]);
  // Stations are matched by the number in the block.
  ExpectStatus(0, directory.Run("81", "176", {"channels", "add", "--number", "24"}));
  const ordered_json like =
      directory.Run("81", "176", {"channels", "find", "--like", "3", "--json"}).Json();
  EXPECT_EQ(2, like[0]["index"]);
}

TEST(Set, WithTheSameValuesWritesNothing) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "set", "1", "--number", "30"}));
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "favor", "1"}));
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "lock", "3"}));
  ExpectStatus(0, directory.Run(kGermany, "80", {"channels", "sort", "number"}));
}

TEST(Remove, TakesChannelsOutAndRenumbers) {
  const DataDirectory directory;
  const Outcome outcome =
      directory.Run(kGermany, "64", {"channels", "remove", "3", "1", "3", "--json"});
  EXPECT_EQ((Texts{"BAYERN 1", "Data"}), Column(outcome.Json(), "name"));
  const ordered_json left = directory.Channels(kGermany, "64");
  EXPECT_EQ(outcome.Json(), left);
  EXPECT_EQ((Texts{"1", "2"}), Column(left, "index"));
  EXPECT_EQ(std::string::npos, directory.File().find("Das Erste"));
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "remove", "1", "2"}));
  EXPECT_EQ("[]\n", directory.Run(kGermany, "64", {"channels", "list", "--json"}).out);
}

TEST(Remove, OfTheLoneChannelOfAHandEditedFile) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run(kGermany, "5", {"channels", "remove", "7"}));
  EXPECT_EQ("[]\n", directory.Run(kGermany, "5", {"channels", "list", "--json"}).out);
}

TEST(Remove, RefusesAllWhenOneIsMissing) {
  const DataDirectory directory;
  const NothingWritten nothing(directory);
  ExpectRefused(1, "channels remove: E_FAIL (0x80004005): no channel with index 9",
                directory.Run(kGermany, "64", {"channels", "remove", "1", "9"}));
}

TEST(Rename, ChangesBothNamesOrOne) {
  const DataDirectory directory;
  const auto names = [&] {
    const ordered_json channel = directory.Channel(kGermany, "64", "2");
    return Texts{channel["name"], channel["displayName"]};
  };
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "rename", "2", "list"}));
  EXPECT_EQ((Texts{"list", "list"}), names());
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "rename", "2", "A", "--name-only"}));
  EXPECT_EQ((Texts{"A", "list"}), names());
  ExpectStatus(0,
               directory.Run(kGermany, "64", {"channels", "rename", "2", "B", "--display-only"}));
  EXPECT_EQ((Texts{"A", "B"}), names());
  // An empty display name is filled from the name when the file is read.
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "rename", "2", "", "--display-only"}));
  EXPECT_EQ((Texts{"A", "A"}), names());
  ExpectStatus(2, directory.Run(kGermany, "64",
                                {"channels", "rename", "2", "C", "--name-only", "--display-only"}));
}

TEST(Rename, WorksForTdmbWhoseRecordsTakeNoName) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run("82", "160", {"channels", "rename", "1", "KBS"}));
  const ordered_json channel = directory.Channel("82", "160", "1");
  EXPECT_EQ("KBS", channel["name"]);
  EXPECT_EQ("KBS", channel["displayName"]);
}

TEST(Rename, KeepsMarkupInThePlainForm) {
  const DataDirectory directory;
  const std::string name = "<A&B> \"C\" 'D' &amp;";
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "rename", "2", name}));
  EXPECT_EQ(name, directory.Channel(kGermany, "64", "2")["name"]);
}

TEST(Marks, AreSetAndTaken) {
  const DataDirectory directory;
  const auto favorite = [&](Arguments arguments) {
    arguments.insert(arguments.begin(), {"channels", "favor", "--json"});
    return directory.Run(kGermany, "64", arguments).Json()[0]["favorite"].get<unsigned>();
  };
  EXPECT_EQ(1U, favorite({"2"}));
  EXPECT_EQ(0U, favorite({"2", "--off"}));
  EXPECT_EQ(1U, favorite({"2"}));
  EXPECT_EQ(4294967295U, favorite({"2", "--mark", "4294967295"}));
  EXPECT_EQ(4294967295U, directory.Channel(kGermany, "64", "2")["favorite"]);
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "lock", "2"}));
  EXPECT_EQ(true, directory.Channel(kGermany, "64", "2")["lock"]);
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "lock", "2", "--off"}));
  EXPECT_EQ(false, directory.Channel(kGermany, "64", "2")["lock"]);
  ExpectRefused(1, "channels favor: E_FAIL (0x80004005): no channel with index 9",
                directory.Run(kGermany, "64", {"channels", "favor", "9"}));
}

TEST(Move, PutsAChannelElsewhere) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "move", "4", "2"}));
  const ordered_json channels = directory.Channels(kGermany, "64");
  EXPECT_EQ((Texts{"Das Erste", "Data", "BAYERN 1", "Sky"}), Column(channels, "name"));
  EXPECT_EQ((Texts{"1", "2", "3", "4"}), Column(channels, "index"));
  ExpectRefused(1, "channels move: E_INVALIDARG (0x80070057): channel 2 cannot be moved to 2",
                directory.Run(kGermany, "64", {"channels", "move", "2", "2"}));
  ExpectRefused(1, "channels move: E_FAIL (0x80004005): no channel with index 7",
                directory.Run(kGermany, "64", {"channels", "move", "7", "2"}));
}

TEST(Sort, ByNumberBothWays) {
  const DataDirectory directory;
  const Outcome up = directory.Run(kGermany, "64", {"channels", "sort", "number", "--json"});
  EXPECT_EQ((Texts{"10", "20", "30", "40"}), Column(up.Json(), "number"));
  const Outcome down =
      directory.Run(kGermany, "64", {"channels", "sort", "number", "--descending", "--json"});
  EXPECT_EQ((Texts{"40", "30", "20", "10"}), Column(down.Json(), "number"));
  EXPECT_EQ((Texts{"1", "2", "3", "4"}), Column(down.Json(), "index"));
  EXPECT_EQ(down.Json(), directory.Channels(kGermany, "64"));
}

// The last of the three passes takes a channel forward that has the smaller number and the greater
// service type than the first one: that is what the list does, and no plain order of types.
TEST(Sort, ByService) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "sort", "service"}));
  EXPECT_EQ((Texts{"BAYERN 1", "Sky", "Das Erste", "Data"}),
            Column(directory.Channels(kGermany, "64"), "name"));
  ExpectStatus(0, directory.Run(kGermany, "64", {"channels", "sort", "service", "--descending"}));
  EXPECT_EQ((Texts{"Data", "Sky", "Das Erste", "BAYERN 1"}),
            Column(directory.Channels(kGermany, "64"), "name"));
}

TEST(Sort, GivesTwinsIndexesOfTheirOwn) {
  const DataDirectory directory;
  ExpectRefused(1,
                "channels favor: E_FAIL (0x80004005): two channels have index 9 and would become "
                "one; sort the list first",
                directory.Run("44", "5", {"channels", "favor", "5"}));
  ExpectStatus(0, directory.Run("44", "5", {"channels", "sort", "number"}));
  const ordered_json channels = directory.Channels("44", "5");
  EXPECT_EQ((Texts{"1", "2", "3"}), Column(channels, "index"));
  EXPECT_EQ((Texts{"Five", "Nine again", "Nine"}), Column(channels, "name"));
}

TEST(HandEditedFile, KeepsItsIndexes) {
  const DataDirectory directory;
  ExpectStatus(0, directory.Run(kGermany, "5", {"channels", "favor", "7", "--off"}));
  ExpectStatus(0, directory.Run(kGermany, "5", {"channels", "add", "--name", "Next"}));
  EXPECT_EQ((Texts{"7", "8"}), Column(directory.Channels(kGermany, "5"), "index"));
}

}  // namespace

}  // namespace zortunedex::kit::tool
