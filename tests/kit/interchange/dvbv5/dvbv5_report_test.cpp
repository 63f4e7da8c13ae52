// The report of libdvbv5's channel files is complete, and the form is stable after one round.
#include "kit/interchange/complete_report.h"
#include "kit/interchange/dvbv5/dvbv5_words.h"
#include "kit/model/field_setter.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

/// Private data goes out, so that players find it, but nothing tells what it is when it comes in.
std::string WithoutPrivateData(const std::string& file) {
  std::string left;
  for (std::size_t begin = 0; begin < file.size();) {
    const std::size_t end = file.find('\n', begin) + 1;
    const std::string line = file.substr(begin, end - begin);
    if (!line.starts_with("\tPID_06 = ")) left += line;
    begin = end;
  }
  return left;
}

TEST(Dvbv5Report, NamesEveryDifferenceOfTheSamplesAndNothingElse) {
  std::size_t sets = 0;
  for (const file_scan::ChannelSet& set : SampleSets()) {
    if (!interchange::Holds(interchange::dvbv5::Signals(), set.signal)) continue;
    SCOPED_TRACE(SignalTypeName(set.signal));
    ExpectCompleteReport(Exchange(set.country, set.signal), "dvbv5", WithoutPrivateData);
    ++sets;
  }
  EXPECT_EQ(5U, sets);
}

struct PositionValue {
  const char* tenths;
  const char* west;
};
constexpr PositionValue kReceived[] = {{"192", "0"}, {"130", "0"}, {"300", "1"}};

TEST(Dvbv5Report, NamesEveryDifferenceOfChannelsMadeAtRandomAndNothingElse) {
  Random random(11);
  for (const InputSignalType signal : interchange::dvbv5::Signals()) {
    SCOPED_TRACE(SignalTypeName(signal));
    Exchange exchange(49, signal);
    exchange.Channels().clear();
    const FieldSetter setter(signal, exchange.Narrow());
    for (UINT i = 0; i < 200; ++i) {
      const UINT last = i == 0 ? 0 : exchange.Channels().back().index;
      Channel channel = RandomChannel(exchange, random, last + 1 + random(3));
      if (signal == InputSignalDVBSatellite && random(2) == 0) {
        const PositionValue& at = kReceived[random(3)];
        setter.Set(channel, {"orbitalPosition", at.tenths});
        setter.Set(channel, {"westPosition", at.west});
      }
      exchange.Channels().push_back(exchange.Stored(channel));
    }
    ExpectCompleteReport(exchange, "dvbv5", WithoutPrivateData);
  }
}

}  // namespace

}  // namespace zortunedex::kit
