#include "kit/model/channel_table.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/model/channel_layout.h"

namespace zortunedex::kit {

namespace {

TEST(ChannelTable, HoldsTheChannelsOfOneCountryAndType) {
  const Home home;
  const ChannelTable table = ReadTable(home.At(49, InputSignalDVBSatellite));
  EXPECT_EQ(49U, table.country);
  EXPECT_EQ(InputSignalDVBSatellite, table.signal);
  ASSERT_EQ(58U, table.channels.size());
  for (std::size_t i = 0; i < table.channels.size(); ++i) {
    EXPECT_EQ(i + 1, table.channels[i].index);
    EXPECT_EQ(LayoutOf(table.signal).size, table.channels[i].block.size());
    EXPECT_FALSE(table.channels[i].name.empty());
  }
}

TEST(ChannelTable, IsEmptyWhereTheFileHasNone) {
  const Home home;
  EXPECT_TRUE(ReadTable(home.At(44, InputSignalDVBSatellite)).channels.empty());
  const Home nothing(Home::Start::Empty);
  EXPECT_TRUE(ReadTable(nothing.At(49, InputSignalFMRadio)).channels.empty());
  EXPECT_EQ(0U, nothing.Files().Count());
}

// Reading by position renumbers the library's list; the file's own numbers are what counts.
TEST(ChannelTable, KeepsIndexesWithGaps) {
  const Home home(Home::Start::Empty);
  home.Files().Write("ChanInfo.xml",
                     "<CHANNELTABLE><Country name=\"Germany\" countrycode=\"49\">"
                     "<ChannelSet type=\"FM-Radio\" inputSignalType=\"5\">"
                     "<Channel name=\"One\" index=\"3\" freq=\"88000\"/>"
                     "<Channel name=\"Two\" index=\"9\" freq=\"99000\"/>"
                     "</ChannelSet></Country></CHANNELTABLE>");
  const ChannelTable table = ReadTable(home.At(49, InputSignalFMRadio));
  ASSERT_EQ(2U, table.channels.size());
  EXPECT_EQ(3U, table.channels[0].index);
  EXPECT_EQ(Wide("One"), table.channels[0].name);
  EXPECT_EQ(9U, table.channels[1].index);
  EXPECT_EQ(99000U, table.channels[1].frequency);
}

TEST(ChannelTable, NeedsADirectory) {
  const Home home;
  EXPECT_THROW(ReadTable({home.Path() + "/none", 49, InputSignalFMRadio}), Failure);
  ExpectRaised<InvalidArgument>("an argument is not UTF-8", [] {
    ReadTable({"\xFF", 49, InputSignalFMRadio});
  });
}

TEST(Channels, TellWhatDiffersFirst) {
  const Home home;
  const ChannelTable table = ReadTable(home.At(49, InputSignalDVBSatellite));
  const Channel& channel = table.channels.front();
  const station_blocks::Layout& layout = LayoutOf(table.signal);
  EXPECT_EQ(nullptr, FirstDifference(channel, channel, &layout));
  Channel other = channel;
  other.displayName += OLECHAR{'x'};
  EXPECT_STREQ("display name", FirstDifference(channel, other, &layout));
  other = channel;
  other.favorite = 7;
  EXPECT_STREQ("favourite mark", FirstDifference(channel, other, &layout));
  other = channel;
  const std::size_t place = station_blocks::OffsetOf(layout.channel, "serviceID");
  other.block[place] = static_cast<BYTE>(other.block[place] + 1);
  EXPECT_STREQ("serviceID", FirstDifference(channel, other, &layout));
  EXPECT_STREQ("block", FirstDifference(channel, other, nullptr));
  EXPECT_FALSE(SameChannels({channel}, {other}));
  EXPECT_FALSE(SameChannels({channel}, {}));
  EXPECT_TRUE(SameChannels(table.channels, table.channels));
}

}  // namespace

}  // namespace zortunedex::kit
