#include "kit/interchange/list/importing.h"

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using interchange::Import;
using interchange::Into;

Import Take(const Exchange& exchange, const std::string& table, Into into) {
  interchange::Input input;
  input.bytes = table;
  return interchange::ImportChannels(*interchange::FindFormat("csv"), input,
                                     {exchange.Context(), exchange.Channels()}, into);
}

std::string IndexesOf(const Import& import) {
  std::string text;
  for (const Channel& channel : import.table.channels) {
    text += std::to_string(channel.index) + utf::FromWide(channel.name) + " ";
  }
  return text;
}

TEST(Importing, KeepsIndexesThatAscend) {
  const Exchange exchange(999, InputSignalFMRadio);
  const Import in = Take(exchange, "index,name\n2,a\n,b\n7,c\n", Into::Empty);
  EXPECT_EQ("2a 3b 7c ", IndexesOf(in));
  EXPECT_EQ("", CodesOf(in.losses));
}

TEST(Importing, NumbersChannelsWhoseIndexesDoNotAscend) {
  const Exchange exchange(999, InputSignalFMRadio);
  for (const char* table : {"index,name\n2,a\n2,b\n", "index,name\n2,a\n1,b\n",
                            "index,name\n2,a\n4294967295,b\n", "index,name\n4294967294,a\n,b\n"}) {
    const Import in = Take(exchange, table, Into::Replace);
    EXPECT_EQ("1a 2b ", IndexesOf(in)) << table;
    EXPECT_EQ("L104 index", CodesOf(in.losses));
  }
}

TEST(Importing, AppendsBehindTheLastChannel) {
  Exchange exchange(49, InputSignalFMRadio);
  exchange.Channels().resize(2);
  exchange.Channels()[1].index = 9;
  const Import in = Take(exchange, "index,name\n1,a\n11,b\n,c\n", Into::Append);
  ASSERT_EQ(5U, in.table.channels.size());
  EXPECT_TRUE(SameChannels({exchange.Channels()[0]}, {in.table.channels[0]}));
  EXPECT_EQ(10U, in.table.channels[2].index);
  EXPECT_EQ(11U, in.table.channels[3].index);
  EXPECT_EQ(12U, in.table.channels[4].index);
  EXPECT_EQ(3U, in.taken);
  ASSERT_EQ(1U, in.losses.All().size());
  EXPECT_EQ(FieldValue{std::int64_t{1}}, in.losses.All()[0].value);
  EXPECT_EQ(2U, in.losses.All()[0].place.line);
}

TEST(Importing, LosesNoIndexWhereTheFileSaysNone) {
  Exchange exchange(49, InputSignalFMRadio);
  exchange.Channels().resize(2);
  const Import in = Take(exchange, "index,name\n,a\n,b\n7,c\n", Into::Append);
  ASSERT_EQ(5U, in.table.channels.size());
  EXPECT_EQ(4U, in.table.channels[3].index);
  ASSERT_EQ(1U, in.losses.All().size());
  EXPECT_EQ(FieldValue{std::int64_t{7}}, in.losses.All()[0].value);
}

TEST(Importing, TellsWhatTheChannelFileDoesNotKeep) {
  const Exchange exchange(82, InputSignalTDMBMobile);
  const Import in =
      Take(exchange, "name,Component_index,AudioStream\na,5,3|100|0\n", Into::Replace);
  EXPECT_EQ("L101 AudioStream, L101 Component_index", CodesOf(in.losses));
  EXPECT_EQ(1U, in.table.channels.size());
}

TEST(Importing, RefusesMoreChannelsThanItMayTake) {
  Exchange exchange(49, InputSignalDVBSatellite);
  exchange.Channels().resize(3);
  const std::vector<Channel> none;
  for (const char* name : {"csv", "json", "dvbv5", "vdr", "enigma2"}) {
    const interchange::Format& format = *interchange::FindFormat(name);
    const interchange::Export out = exchange.Out(name);
    const interchange::Input input = interchange::InputOf(format, out.output);
    interchange::ImportRequest request{exchange.Context(), none};
    request.mostChannels = 3;
    EXPECT_EQ(3U, interchange::ImportChannels(format, input, request, Into::Empty).taken) << name;
    request.mostChannels = 2;
    ExpectRaised<Failure>("the file has more than 2 channels", [&] {
      interchange::ImportChannels(format, input, request, Into::Empty);
    });
  }
  EXPECT_EQ(200'000U, (interchange::ImportRequest{exchange.Context(), none}.mostChannels));
}

TEST(Importing, KeepsAMillionLossesAndCountsTheOthers) {
  const Exchange exchange(999, InputSignalFMRadio);
  std::string table = "name,freq\n";
  for (int i = 0; i < 1'000'007; ++i) table += "x\n";
  const Import in = Take(exchange, table, Into::Empty);
  EXPECT_EQ(1'000'000U, in.losses.All().size());
  EXPECT_EQ(7U, in.losses.Beyond().at(interchange::Code::LineNotUnderstood));
}

TEST(Importing, LetsAFormatMakeTheWholeList) {
  const Exchange exchange(49, InputSignalFMRadio);
  const interchange::Format format = {
      "marks",
      StorableSignalTypes(),
      StorableSignalTypes(),
      false,
      nullptr,
      [](const interchange::Input&, const interchange::ImportRequest& request,
         interchange::Losses&) {
        interchange::ImportResult result;
        for (const Channel& channel : request.current) result.channels.push_back({channel, 1});
        result.channels[0].channel.favorite = 7;
        result.isWhole = true;
        return result;
      }};
  const Import in = interchange::ImportChannels(
      format, {}, {exchange.Context(), exchange.Channels()}, Into::Append);
  EXPECT_EQ(exchange.Channels().size(), in.table.channels.size());
  EXPECT_EQ(7U, in.table.channels[0].favorite);
  EXPECT_EQ("", CodesOf(in.losses));
}

}  // namespace

}  // namespace zortunedex::kit
