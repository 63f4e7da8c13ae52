#include "kit/json/channel_json.h"

#include <nlohmann/json.hpp>

#include "kit/home.h"
#include "kit/json/channel_text.h"
#include "kit/model/channel_table.h"

namespace zortunedex::kit {

namespace {

using nlohmann::ordered_json;

TEST(ChannelJson, HoldsTheRecordAndItsBlock) {
  const Home home;
  const Location location = home.At(1, InputSignalATSCAntenna);
  const Channel channel = ReadTable(location).channels.front();
  const Database database(location);
  const NarrowText narrow(database);
  const ordered_json whole = channel_json::Whole(channel, location.signal, narrow);
  EXPECT_EQ(13U, whole.size());
  EXPECT_EQ(1, whole.at("index"));
  EXPECT_EQ("WCBS-HD", whole.at("name"));
  EXPECT_EQ("2.1 WCBS-HD", whole.at("displayName"));
  EXPECT_EQ(false, whole.at("lock"));
  const ordered_json& block = whole.at("block");
  EXPECT_FALSE(block.contains("name"));  // what the record answers stands once
  EXPECT_EQ(3, block.at("programNumber"));
  EXPECT_EQ(ordered_json::parse(R"([{"type":129,"pid":52,"lang":2021},
                                    {"type":129,"pid":53,"lang":259}])"),
            block.at("AudioStream"));
  ordered_json rest = whole;
  rest.erase("block");
  EXPECT_EQ(rest, channel_json::Summary(channel));
  EXPECT_EQ(whole.dump(2), ChannelJson(channel, location.signal, narrow));
}

TEST(ChannelJson, HasNoBlockWhereTheChannelHasNone) {
  const Home home(Home::Start::Empty);
  const Database database(home.At(49, InputSignalFMRadio));
  const NarrowText narrow(database);
  const Channel channel;
  EXPECT_EQ(ordered_json::object(), channel_json::Block(channel, InputSignalFMRadio, narrow));
  EXPECT_EQ(ordered_json::object(), channel_json::Block(channel, InputSignalDVBCable, narrow));
  EXPECT_TRUE(channel_json::Summary(channel).at("serviceType").is_null());
}

}  // namespace

}  // namespace zortunedex::kit
