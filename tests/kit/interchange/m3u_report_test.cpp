// The report of playlists is complete: every value that does not stand in an entry is in it. What
// an address says is for players, so that no reader brings it back; order, numbers and favourites
// come back into a list that has the channels.
#include <algorithm>
#include <set>
#include <sstream>

#include "kit/interchange/complete_report.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Export;
using interchange::Import;

Export PlaylistOf(const Exchange& exchange) {
  interchange::ExportRequest request = exchange.Request();
  request.urlTemplate = "http://h/{index}";
  return interchange::ExportChannels(*interchange::FindFormat("m3u"), request);
}

/// What stands behind the word and in front of the next quote.
std::string Quoted(const std::string& line, const std::string& word, std::size_t from = 0) {
  const std::size_t place = line.find(word + "=\"", from);
  if (place == std::string::npos) return {};
  const std::size_t begin = place + word.size() + 2;
  return line.substr(begin, line.find('"', begin) - begin);
}

/// A channel with what a line "#EXTINF" says, taken apart by itself.
Channel ToldBy(const std::string& line, InputSignalType signal) {
  Channel channel = EmptyChannel(LayoutOf(signal));
  channel.index = static_cast<UINT>(std::stoul(Quoted(line, " tvg-chno")));
  const std::size_t name = line.find(" tvg-name=");
  channel.name = *utf::ToWide(Quoted(line, " tvg-name", name));
  const std::size_t groups = line.find(" group-title=", name + Quoted(line, " tvg-name").size());
  const bool isFavorite = Quoted(line, " group-title", groups).ends_with(";Favourites");
  channel.favorite = isFavorite ? 1 : 0;
  channel.displayName = *utf::ToWide(line.substr(line.find(',', groups) + 1));
  return channel;
}

std::vector<Channel> ToldBy(const Export& out, InputSignalType signal) {
  std::vector<Channel> told;
  std::istringstream lines(out.output.files.front().bytes);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("#EXTINF")) told.push_back(ToldBy(line, signal));
  }
  return told;
}

void ExpectCompletePlaylist(const Exchange& exchange) {
  const Export out = PlaylistOf(exchange);
  const std::vector<Channel> told = ToldBy(out, exchange.Signal());
  ASSERT_EQ(exchange.Channels().size(), told.size());
  for (std::size_t i = 0; i < told.size(); ++i) {
    const Channel& was = exchange.Channels()[i];
    SCOPED_TRACE("channel " + std::to_string(was.index));
    std::set<std::string> lost;
    for (const interchange::Loss& loss : out.losses.All()) {
      const bool isAssumed = loss.code >= Code::SystemAssumed && loss.code <= Code::TuningDerived;
      if (loss.place.index == was.index && !isAssumed) lost.insert(loss.field);
    }
    const std::vector<std::string> differ = FieldsThatDiffer(exchange, was, told[i]);
    EXPECT_EQ(std::set<std::string>(differ.begin(), differ.end()), lost);
  }
}

TEST(M3uReport, NamesEveryDifferenceOfTheSamplesAndNothingElse) {
  for (const file_scan::ChannelSet& set : SampleSets()) {
    SCOPED_TRACE(SignalTypeName(set.signal));
    ExpectCompletePlaylist(Exchange(set.country, set.signal));
  }
}

TEST(M3uReport, NamesEveryDifferenceOfChannelsMadeAtRandomAndNothingElse) {
  Random random(13);
  for (const InputSignalType signal : StorableSignalTypes()) {
    SCOPED_TRACE(SignalTypeName(signal));
    Exchange exchange(999, signal);
    for (UINT i = 1; i <= 200; ++i) {
      exchange.Channels().push_back(RandomChannel(exchange, random, 3 * i));
    }
    ExpectCompletePlaylist(exchange);
  }
}

/// The list turned round, without a favourite, and numbered afresh.
std::vector<Channel> Shuffled(std::vector<Channel> channels) {
  std::ranges::reverse(channels);
  for (std::size_t i = 0; i < channels.size(); ++i) {
    channels[i].index = static_cast<UINT>(i + 1);
    channels[i].favorite = 0;
  }
  return channels;
}

TEST(M3uReport, IsAboutAllButOrderNumbersAndFavouritesWhichComeBack) {
  std::size_t channels = 0;
  for (const file_scan::ChannelSet& set : SampleSets()) {
    SCOPED_TRACE(SignalTypeName(set.signal));
    const Exchange exchange(set.country, set.signal);
    const Export out = PlaylistOf(exchange);
    for (const interchange::Loss& loss : out.losses.All()) {
      EXPECT_NE("index", loss.field);
      // A mark of another number becomes one.
      if (loss.field != "favor") continue;
      EXPECT_EQ(FieldValue{std::int64_t{1}}, loss.became);
    }
    const interchange::Format& format = *interchange::FindFormat("m3u");
    const std::vector<Channel> shuffled = Shuffled(exchange.Channels());
    const Import made =
        interchange::ImportChannels(format, interchange::InputOf(format, out.output),
                                    {exchange.Context(), shuffled}, interchange::Into::Append);
    EXPECT_EQ("", CodesOf(made.losses));
    std::vector<Channel> expected = exchange.Channels();
    for (Channel& channel : expected) channel.favorite = channel.favorite != 0 ? 1 : 0;
    EXPECT_TRUE(SameChannels(expected, made.table.channels));
    channels += made.table.channels.size();
  }
  EXPECT_EQ(165U, channels);
}

}  // namespace

}  // namespace zortunedex::kit
