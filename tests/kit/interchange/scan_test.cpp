#include "kit/interchange/list/scan.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using interchange::Format;
using interchange::Input;

Input FileOf(const std::string& bytes) {
  Input input;
  input.bytes = bytes;
  return input;
}

Input FolderOf(const std::vector<std::string>& names) {
  Input input;
  input.isFolder = true;
  input.names = names;
  return input;
}

std::string Recognised(const Input& input) {
  const Format* format = interchange::RecogniseFormat(input);
  return format == nullptr ? "none" : format->name;
}

TEST(Scan, RecognisesWhatIsExported) {
  for (const file_scan::ChannelSet& set : SampleSets()) {
    const Exchange exchange(set.country, set.signal);
    for (const Format& format : interchange::Formats()) {
      if (!interchange::Holds(format.out, set.signal)) continue;
      interchange::ExportRequest request = exchange.Request();
      request.urlTemplate = "http://host/{index}";
      const interchange::Export made = interchange::ExportChannels(format, request);
      EXPECT_EQ(format.name, Recognised(interchange::InputOf(format, made.output)))
          << SignalTypeName(set.signal);
    }
  }
}

TEST(Scan, RecognisesOnlyWhatIsCertain) {
  EXPECT_EQ("vdr", Recognised(FileOf("# of the receiver\n\n:Group\n")));
  EXPECT_EQ("vdr", Recognised(FileOf("A;B:11494:H:S19.2E:22000:0:0:0:0:1:1:1:0\r\n")));
  EXPECT_EQ("dvbv5", Recognised(FileOf("# written by hand\n[A]\n")));
  EXPECT_EQ("json", Recognised(FileOf("\xEF\xBB\xBF \n{}")));
  EXPECT_EQ("csv", Recognised(FileOf("freq;name\n")));
  EXPECT_EQ("enigma2", Recognised(FileOf("eDVB services /5/\n")));
  EXPECT_EQ("enigma2", Recognised(FolderOf({"bouquets.tv", "lamedb"})));
  EXPECT_EQ("none", Recognised(FolderOf({"notes.txt"})));
  EXPECT_EQ("none", Recognised(FileOf("")));
  EXPECT_EQ("none", Recognised(FileOf("\n \n")));
  EXPECT_EQ("none", Recognised(FileOf("one;two;three\n")));
  EXPECT_EQ("none", Recognised(FileOf("http://host:8080/\n")));
  EXPECT_EQ("none", Recognised(FileOf(std::string("\0\1\2", 3))));
}

TEST(Scan, IsNoOrderOfTheChannelsThatThereAre) {
  const Exchange exchange(49, InputSignalFMRadio);
  try {
    interchange::ReadScan(*interchange::FindFormat("m3u"), FileOf("#EXTM3U\n"),
                          {exchange.Context(), exchange.Channels()});
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(std::string("a file of the format m3u orders the channels of a list, and is no scan"),
              failure.what());
  }
}

/// But for the place and the marks, which a scan has none of.
void TakeMarks(std::vector<Channel>& channels) {
  for (Channel& channel : channels) {
    channel.index = 0;
    channel.favorite = 0;
    channel.lock = 0;
  }
}

TEST(Scan, ReadsAsItIsTold) {
  for (const file_scan::ChannelSet& set : SampleSets()) {
    const Exchange exchange(set.country, set.signal);
    for (const Format& format : interchange::Formats()) {
      if (!interchange::Holds(format.in, set.signal) || format.readBack != nullptr) continue;
      SCOPED_TRACE(std::string(format.name) + " " + SignalTypeName(set.signal));
      interchange::ExportRequest request = exchange.Request();
      request.names = interchange::Names::Broadcast;
      const interchange::Export made = interchange::ExportChannels(format, request);
      interchange::Scan scan =
          interchange::ReadScan(format, interchange::InputOf(format, made.output),
                                {exchange.Context(), exchange.Channels()});
      EXPECT_EQ(made.output.written.size(), scan.table.channels.size());
      std::vector<Channel> told =
          interchange::AsToldBy(format, interchange::InputOf(format, made.output), request);
      ASSERT_EQ(exchange.Channels().size(), told.size());
      std::vector<Channel> written;
      for (const std::size_t place : made.output.written) written.push_back(told[place]);
      TakeMarks(written);
      TakeMarks(scan.table.channels);
      EXPECT_TRUE(SameChannels(written, scan.table.channels));
    }
  }
}

TEST(Scan, IsToldOfEachOfTwoChannelsWithOneIdentity) {
  Exchange exchange(49, InputSignalDVBSatellite);
  exchange.Channels().resize(4);
  std::vector<Channel>& channels = exchange.Channels();
  channels.push_back(channels[1]);
  channels.push_back(channels[1]);
  for (const char* name : {"vdr", "csv", "dvbv5", "enigma2"}) {
    std::vector<Channel> told = interchange::AsToldBy(
        *interchange::FindFormat(name),
        FileOf(name == std::string("csv") ? "name,freq,serviceID\n" : ""), exchange.Request());
    ASSERT_EQ(6U, told.size());
    if (name == std::string("csv")) {
      EXPECT_EQ(channels[1].frequency, told[1].frequency);
      EXPECT_NE(0U, channels[1].number);
      EXPECT_EQ(0U, told[1].number);
    }
    TakeMarks(told);
    EXPECT_TRUE(SameChannels({told[1], told[1]}, {told[4], told[5]})) << name;
  }
}

}  // namespace

}  // namespace zortunedex::kit
