// Formats that hold everything: what leaves in them comes back, and nothing is lost.
#include "kit/interchange/exchange.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using interchange::Export;
using interchange::Import;

constexpr const char* kWholeFormats[] = {"csv", "json"};

void ExpectIdentity(const Exchange& exchange, const char* format) {
  Export out = exchange.Out(format);
  EXPECT_EQ("", CodesOf(out.losses)) << format;
  EXPECT_EQ(exchange.Channels().size(), out.output.written.size());
  const Import in = exchange.In(format, out.output.Bytes());
  EXPECT_EQ("", CodesOf(in.losses)) << format;
  ASSERT_EQ(exchange.Channels().size(), in.table.channels.size());
  for (std::size_t i = 0; i < in.table.channels.size(); ++i) {
    EXPECT_STREQ(nullptr, FirstDifference(exchange.Channels()[i], in.table.channels[i],
                                          station_blocks::Find(exchange.Signal())))
        << format << ", channel " << i;
  }
}

TEST(WholeFormats, KeepEverySampleSet) {
  ASSERT_EQ(9U, SampleSets().size());
  for (const file_scan::ChannelSet& set : SampleSets()) {
    const Exchange exchange(set.country, set.signal);
    ASSERT_EQ(set.channels, exchange.Channels().size());
    for (const char* format : kWholeFormats) ExpectIdentity(exchange, format);
  }
}

TEST(WholeFormats, KeepRandomChannelsOfEveryType) {
  Random random(1);
  for (const InputSignalType signal : StorableSignalTypes()) {
    SCOPED_TRACE(SignalTypeName(signal));
    Exchange exchange(999, signal);
    for (UINT i = 0; i < 40; ++i) {
      const UINT last = i == 0 ? 0 : exchange.Channels().back().index;
      exchange.Channels().push_back(RandomChannel(exchange, random, last + 1 + random(3)));
    }
    for (const char* format : kWholeFormats) ExpectIdentity(exchange, format);
  }
}

}  // namespace

}  // namespace zortunedex::kit
