#include "kit/saving/save_table.h"

#include <filesystem>

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/inventory.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

const std::pair<DWORD, InputSignalType> kGermanSatellites = {49, InputSignalDVBSatellite};

ChannelTable Satellites(const Home& home) {
  return ReadTable(home.At(kGermanSatellites.first, kGermanSatellites.second));
}

/// What the file holds is the table, and all other sets are as before.
void ExpectSaved(const Home& home, const Inventory& before, const ChannelTable& table) {
  Inventory meant = before;
  meant[{table.country, table.signal}] = table.channels;
  const Inventory found = TakeInventory(home.Path());
  ASSERT_EQ(meant.size(), found.size());
  for (const auto& [key, channels] : meant) {
    ASSERT_TRUE(found.contains(key));
    EXPECT_TRUE(SameChannels(channels, found.at(key))) << SignalTypeName(key.second);
  }
}

void ExpectRefused(const Home& home, const ChannelTable& table, const std::string& message,
                   const SaveOptions& options = {}) {
  const std::string before = home.Channels();
  ExpectRaised<Failure>(message, [&] { SaveTable(home.Path(), table, options); });
  EXPECT_EQ(before, home.Channels());
}

TEST(SaveTable, WritesNothingWhereNothingDiffers) {
  const Home home;
  const std::string before = home.Channels();
  const ChannelTable table = Satellites(home);
  const ChannelTable saved = SaveTable(home.Path(), table);
  EXPECT_TRUE(SameChannels(table.channels, saved.channels));
  EXPECT_EQ(before, home.Channels());
}

TEST(SaveTable, ChangesChannelsWhereTheyStand) {
  const Home home;
  const Inventory before = TakeInventory(home.Path());
  ChannelTable table = Satellites(home);
  table.channels[4].displayName = Wide("Mine & yours");
  table.channels[7].favorite = 3;
  ExpectSaved(home, before, SaveTable(home.Path(), table));
  EXPECT_EQ(Wide("Mine & yours"), Satellites(home).channels[4].displayName);
  EXPECT_EQ(3U, Satellites(home).channels[7].favorite);
}

// Attributes that the library does not know go when a list is written afresh, and not before.
TEST(SaveTable, KeepsWhatItDoesNotKnowOfChannelsThatStay) {
  const Home home;
  std::string bytes = home.Channels();
  const std::string set = "inputSignalType=\"64\"";
  bytes.insert(bytes.find(" nameDisplay=", bytes.find(set)), " note=\"kept\"");
  home.Files().Write("ChanInfo.xml", bytes);
  ChannelTable table = Satellites(home);
  table.channels[1].lock = 1;
  SaveTable(home.Path(), table);
  EXPECT_NE(std::string::npos, home.Channels().find(" note=\"kept\""));
  EXPECT_EQ(1, Satellites(home).channels[1].lock);
}

TEST(SaveTable, ReplacesTheWholeList) {
  const Home home;
  const Inventory before = TakeInventory(home.Path());
  ChannelTable table = Satellites(home);
  std::swap(table.channels[0], table.channels[9]);
  table.channels.resize(10);
  for (UINT i = 0; i < 10; ++i) table.channels[i].index = 2 * i + 1;
  const ChannelTable saved = SaveTable(home.Path(), table);
  EXPECT_TRUE(SameChannels(table.channels, saved.channels));
  ExpectSaved(home, before, table);
}

TEST(SaveTable, TakesOneChannelAndNone) {
  const Home home;
  const Inventory before = TakeInventory(home.Path());
  ChannelTable table = Satellites(home);
  table.channels.resize(1);
  table.channels[0].index = 7;
  SaveTable(home.Path(), table);
  ExpectSaved(home, before, table);
  table.channels.clear();
  SaveTable(home.Path(), table);
  ExpectSaved(home, before, table);
}

TEST(SaveTable, MakesTheFileForEveryType) {
  for (const InputSignalType signal : StorableSignalTypes()) {
    for (const EStorageType format : {StorageXML, StoragePreFmtXML}) {
      const Home home(Home::Start::Empty);
      ChannelTable table{49, signal, {}};
      for (UINT index = 1; index <= 3; ++index) {
        table.channels.push_back(EmptyChannel(LayoutOf(signal)));
        table.channels.back().index = index;
        table.channels.back().displayName = Wide("Number " + std::to_string(index));
      }
      const ChannelTable saved = SaveTable(home.Path(), table, {format, {}});
      ASSERT_EQ(3U, saved.channels.size()) << SignalTypeName(signal);
      EXPECT_EQ(Wide("Number 2"), saved.channels[1].displayName);
      EXPECT_TRUE(SameChannels(saved.channels, ReadTable(home.At(49, signal)).channels));
    }
  }
}

TEST(SaveTable, RefusesIndexesThatDoNotAscend) {
  const Home home;
  const std::string message = "the indexes of the channels do not ascend";
  ChannelTable table = Satellites(home);
  std::swap(table.channels[0], table.channels[1]);
  ExpectRefused(home, table, message);
  table = Satellites(home);
  table.channels[1].index = 1;
  ExpectRefused(home, table, message);
  table = Satellites(home);
  table.channels.back().index = 0xFFFFFFFF;
  ExpectRefused(home, table, message);
}

TEST(SaveTable, RefusesBlocksOfAnotherType) {
  const Home home;
  const std::string before = home.Channels();
  for (const std::size_t size : {std::size_t{0}, std::size_t{10}, std::size_t{100000}}) {
    ChannelTable table = Satellites(home);
    table.channels[2].block.resize(size);
    ExpectRaised<InvalidArgument>("channel 3 has no station block of DVBSatellite",
                                  [&] { SaveTable(home.Path(), table); });
    EXPECT_EQ(before, home.Channels());
  }
}

TEST(SaveTable, RefusesTextsThatTheFileCannotKeep) {
  const Home home;
  ChannelTable table = Satellites(home);
  table.channels[2].displayName = WideText(1, OLECHAR{1});
  ExpectRefused(home, table, "channel 3: nameDisplay holds U+0001, which the file cannot keep");
  table.channels[2].displayName = Wide("a & b");
  ExpectRefused(home, table,
                "channel 3: nameDisplay holds '&', which the pre-formatted form cannot keep",
                {StoragePreFmtXML, {}});
  table.channels[2].displayName = WideText(300, OLECHAR{'x'});
  ExpectRefused(home, table, "channel 3: nameDisplay has more than 259 bytes in the code page");
}

TEST(SaveTable, RefusesTypesWithoutAForm) {
  const Home home;
  ExpectRefused(home, {49, InputSignalDVBCable, {}}, "the file cannot hold channels of DVBCable");
}

TEST(SaveTable, SaysThatTheFileDoesNotHoldIt) {
  const Home home(Home::Start::Empty);
  std::filesystem::create_directory(home.Files().File("ChanInfo.xml"));
  ChannelTable table{49, InputSignalFMRadio, {EmptyChannel(LayoutOf(InputSignalFMRadio))}};
  table.channels[0].index = 1;
  ExpectRaised<Failure>("ChanInfo.xml could not be written: it is a folder; the file is unchanged",
                        [&] {
                          SaveTable(home.Path(), table, {{}, {}, Unreadable::TakeAsEmpty});
                        });
  EXPECT_TRUE(std::filesystem::is_directory(home.Files().File("ChanInfo.xml")));
}

TEST(SaveTable, ReplacesAnUnreadableFileOnlyWhereThatIsAskedFor) {
  const Home home(Home::Start::Empty);
  home.Files().Write("ChanInfo.xml", "<not xml");
  ChannelTable table{49, InputSignalFMRadio, {EmptyChannel(LayoutOf(InputSignalFMRadio))}};
  table.channels[0].index = 1;
  EXPECT_THROW(SaveTable(home.Path(), table), UnreadableFile);
  EXPECT_EQ("<not xml", home.Channels());
  std::vector<std::string> notes;
  SaveTable(home.Path(), table,
            {std::nullopt, [&notes](const std::string& note) { notes.push_back(note); },
             Unreadable::TakeAsEmpty});
  EXPECT_EQ(
      std::vector<std::string>{
          "the old ChanInfo.xml could not be read and was kept beside the new one"},
      notes);
  EXPECT_EQ("<not xml", home.Files().Read("ChanInfo.xml.unreadable"));
  // Without somebody who listens it is done all the same.
  home.Files().Write("ChanInfo.xml", "<not xml");
  SaveTable(home.Path(), table, {{}, {}, Unreadable::TakeAsEmpty});
  EXPECT_EQ("<not xml", home.Files().Read("ChanInfo.xml.unreadable.2"));
}

TEST(RewriteFile, KeepsEveryChannel) {
  const Home home;
  const Inventory before = TakeInventory(home.Path());
  ASSERT_EQ(9U, before.size());
  std::string oneLine = home.Channels();
  std::erase_if(oneLine, [](char c) { return c == '\t' || c == '\r' || c == '\n'; });
  home.Files().Write("ChanInfo.xml", oneLine);
  RewriteFile(home.Path(), StoragePreFmtXML);
  EXPECT_GT(home.Channels().size(), oneLine.size());
  const Inventory after = TakeInventory(home.Path());
  ASSERT_EQ(before.size(), after.size());
  for (const auto& [key, channels] : before) {
    EXPECT_TRUE(SameChannels(channels, after.at(key))) << SignalTypeName(key.second);
  }
}

TEST(RewriteFile, NeedsAFileThatCanBeRead) {
  const Home home(Home::Start::Empty);
  ExpectRaised<Failure>("there is no ChanInfo.xml", [&] { RewriteFile(home.Path(), StorageXML); });
  home.Files().Write("ChanInfo.xml", "<not xml");
  ExpectRaised<UnreadableFile>(
      "ChanInfo.xml cannot be read: line 1, column 9: the file ends before <not> does",
      [&] { RewriteFile(home.Path(), StorageXML); });
  EXPECT_EQ("<not xml", home.Channels());
}

}  // namespace

}  // namespace zortunedex::kit
