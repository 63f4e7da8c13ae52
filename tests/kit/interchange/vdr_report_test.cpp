// The report of channels.conf is complete, and the form is stable after one round.
#include "kit/interchange/complete_report.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

TEST(VdrReport, NamesEveryDifferenceOfTheSamplesAndNothingElse) {
  for (const auto& [country, signal] : kVdrSampleSets) {
    SCOPED_TRACE(SignalTypeName(signal));
    ExpectCompleteReport(Exchange(country, signal), "vdr");
  }
}

TEST(VdrReport, NamesEveryDifferenceOfChannelsMadeAtRandomAndNothingElse) {
  Random random(7);
  for (const auto& [country, signal] : kVdrSampleSets) {
    SCOPED_TRACE(SignalTypeName(signal));
    Exchange exchange(999, signal);
    FillWithRandomChannels(exchange, random, 200);
    ExpectCompleteReport(exchange, "vdr");
  }
}

TEST(VdrReport, AccountsForEveryLineOfAScan) {
  const std::string scan = BytesOf(ZORTUNEDEX_SAMPLES "/scans/w_scan_cpp.channels.conf");
  const Exchange exchange(999, InputSignalDVBSatellite);
  const Accounts accounts = AccountsOf(exchange, scan);
  EXPECT_EQ("", accounts.missing);
  EXPECT_EQ(10U, accounts.lines);
  EXPECT_EQ(8U, accounts.taken);
  EXPECT_EQ(0U, accounts.notUnderstood);
  EXPECT_EQ(
      "L103 AudioStream.lang, L103 AudioStream.type, L110 modulation, L111 pilot, L111 rollOff, "
      "L111 streamId, L112 CA, L204 networkName, L312 SubtitleStream.type, "
      "L312 TeletextStream.type, L312 serviceType, L402 channel, L403 channel",
      CodesOf(exchange.In("vdr", scan).losses));
}

}  // namespace

}  // namespace zortunedex::kit
