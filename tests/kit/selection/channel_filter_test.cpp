#include "kit/selection/channel_filter.h"

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/model/channel_layout.h"
#include "kit/model/field_setter.h"

namespace zortunedex::kit {

namespace {

constexpr InputSignalType kSatellite = InputSignalDVBSatellite;

class ChannelFilters : public testing::Test {
 protected:
  ChannelFilters() {
    Make(1, "Das Erste", {{"nameDisplay", "ARD HD"}, {"favor", "1"}, {"serviceType", "25"}});
    Make(2, "K\u00D6LN", {{"lock", "1"}, {"serviceType", "2"}, {"TSID", "-1"}});
    Make(5, "Sky", {{"favor", "7"}, {"lock", "1"}, {"polarisation", "LinearH"}});
    Make(9, "Data", {{"AudioStream[2].pid", "17"}, {"networkName", "ASTRA 1"}});
    m_channels[0].serviceType = ServiceDigitalTV;
    m_channels[1].serviceType = ServiceDigitalRadio;
  }

  void Make(UINT index, const std::string& name, const std::vector<Assignment>& values) {
    Channel channel = EmptyChannel(LayoutOf(kSatellite));
    channel.index = index;
    channel.name = *utf::ToWide(name);
    channel.displayName = channel.name;
    const FieldSetter setter(kSatellite, m_narrow);
    for (const Assignment& value : values) setter.Set(channel, value);
    m_channels.push_back(std::move(channel));
  }

  static std::vector<UINT> IndexesOf(const std::vector<Channel>& channels) {
    std::vector<UINT> indexes;
    for (const Channel& channel : channels) indexes.push_back(channel.index);
    return indexes;
  }
  std::vector<UINT> Matching(const ChannelFilter& filter) const {
    return IndexesOf(ChannelMatcher(filter, kSatellite).Matching(m_channels, m_narrow));
  }
  std::vector<UINT> Where(const std::string& field, const std::string& value) const {
    ChannelFilter filter;
    filter.where.push_back({field, value});
    return Matching(filter);
  }
  std::vector<UINT> Chosen(std::vector<IndexRange> ranges) const {
    ChannelFilter filter;
    filter.indexes = std::move(ranges);
    return IndexesOf(ChannelMatcher(filter, kSatellite).Chosen(m_channels, m_narrow));
  }
  static void ExpectNotTaken(const std::string& field, const std::string& value,
                             const std::string& message) {
    ExpectRaised<InvalidArgument>(message, [&] { FieldTest(kSatellite, {field, value}); });
  }

  const Home m_home{Home::Start::Empty};
  const Database m_database{m_home.Satellites()};
  const NarrowText m_narrow{m_database};
  std::vector<Channel> m_channels;
};

using Indexes = std::vector<UINT>;

TEST_F(ChannelFilters, WithoutAnythingTakeAll) {
  EXPECT_EQ((Indexes{1, 2, 5, 9}), Matching({}));
  EXPECT_FALSE(IsGiven({}));
  ChannelFilter filter;
  filter.all = true;
  EXPECT_TRUE(IsGiven(filter));
  EXPECT_EQ((Indexes{1, 2, 5, 9}), Matching(filter));
}

TEST_F(ChannelFilters, GoByMarksNamesAndServices) {
  ChannelFilter filter;
  filter.favorites = true;
  EXPECT_EQ((Indexes{1, 5}), Matching(filter));
  filter.locked = true;
  EXPECT_EQ((Indexes{5}), Matching(filter));
  filter = {};
  filter.name = "ard";
  EXPECT_EQ((Indexes{1}), Matching(filter));
  filter.name = "\u00F6l";
  EXPECT_EQ((Indexes{2}), Matching(filter));
  filter.name = "S";
  EXPECT_EQ((Indexes{1, 5}), Matching(filter));
  filter = {};
  filter.services = ServiceDigitalRadio;
  // Those that name no service type are of any.
  EXPECT_EQ((Indexes{2, 5, 9}), Matching(filter));
  filter.services = 0;
  EXPECT_EQ(Indexes{}, Matching(filter));
  EXPECT_TRUE(IsGiven(filter));
}

TEST_F(ChannelFilters, GoByFields) {
  EXPECT_EQ((Indexes{2}), Where("tsid", "-1"));
  EXPECT_EQ((Indexes{2}), Where("TSID", "4294967295"));
  EXPECT_EQ((Indexes{5}), Where("favorite", "0x7"));
  EXPECT_EQ((Indexes{2, 5}), Where("lock", "Yes"));
  EXPECT_EQ((Indexes{1, 9}), Where("lock", "0"));
  EXPECT_EQ((Indexes{5}), Where("polarisation", "linearh"));
  EXPECT_EQ((Indexes{1, 2, 9}), Where("SatelliteParams.polarisation", "notset"));
  EXPECT_EQ(Indexes{}, Where("polarisation", "1"));
  EXPECT_EQ((Indexes{1}), Where("serviceType", "digitaltv"));
  EXPECT_EQ((Indexes{5, 9}), Where("serviceType", "-"));
  EXPECT_EQ((Indexes{1}), Where("block.serviceType", "25"));
  EXPECT_EQ((Indexes{9}), Where("networkName", "ASTRA 1"));
  EXPECT_EQ(Indexes{}, Where("networkName", "astra 1"));
  EXPECT_EQ((Indexes{1, 2, 5}), Where("networkName", ""));
  // What is not there equals nothing.
  EXPECT_EQ((Indexes{9}), Where("AudioStream[1].pid", "0"));
  EXPECT_EQ((Indexes{9}), Where("AudioStream[2].pid", "17"));
}

TEST_F(ChannelFilters, WantEveryConditionToHold) {
  ChannelFilter filter;
  filter.where = {{"lock", "1"}, {"block.serviceType", "2"}};
  EXPECT_EQ((Indexes{2}), Matching(filter));
  filter.indexes = {{5, 9}};
  EXPECT_EQ(Indexes{}, Matching(filter));
  filter.where.pop_back();
  EXPECT_EQ((Indexes{5}), Matching(filter));
}

TEST_F(ChannelFilters, ChooseInTheOrderOfTheListAndOnce) {
  EXPECT_EQ((Indexes{1, 2, 5, 9}), Chosen({{9, 9}, {2, 5}, {1, 2}, {9, 9}}));
  EXPECT_EQ((Indexes{2, 5, 9}), Chosen({{2, 9}}));
}

TEST_F(ChannelFilters, ChooseNothingThatIsNotThere) {
  const auto expect = [this](std::vector<IndexRange> ranges, const std::string& message) {
    ExpectRaised<Failure>(message, [&] { Chosen(ranges); });
  };
  expect({{1, 1}, {3, 3}}, "no channel with index 3");
  expect({{2, 6}}, "no channel with index 6");
  expect({{4, 5}}, "no channel with index 4");
  ChannelFilter filter;
  filter.name = "nobody";
  const ChannelMatcher matcher(filter, kSatellite);
  EXPECT_TRUE(matcher.Matching(m_channels, m_narrow).empty());
  ExpectRaised<Failure>("no channel matches", [&] { matcher.Chosen(m_channels, m_narrow); });
  // Who only looks may ask for more than there is.
  filter = {};
  filter.indexes = {{2, 100}};
  EXPECT_EQ((Indexes{2, 5, 9}), Matching(filter));
}

TEST_F(ChannelFilters, RefuseValuesThatAFieldNeverHas) {
  ExpectNotTaken("TSID", "x", "TSID takes a number of 32 bits, not 'x'");
  ExpectNotTaken("number", "4294967296", "number takes a number of 32 bits, not '4294967296'");
  ExpectNotTaken("lock", "2", "lock takes yes or no, not '2'");
  ExpectNotTaken("polarisation", "up",
                 "polarisation takes NotSet, LinearH, LinearV, CircularL or CircularR, not 'up'");
  ExpectNotTaken("serviceType", "25",
                 "serviceType takes AnalogTV, DigitalTV, DigitalAudio, DigitalRadio, "
                 "DataBroadcast, Others or All (the number in the file is block.serviceType), not "
                 "'25'");
  EXPECT_THROW(FieldTest(kSatellite, {"foo", "1"}), InvalidArgument);
  ChannelFilter filter;
  filter.name = "\xFF";
  EXPECT_THROW(ChannelMatcher(filter, kSatellite), InvalidArgument);
}

}  // namespace

}  // namespace zortunedex::kit
