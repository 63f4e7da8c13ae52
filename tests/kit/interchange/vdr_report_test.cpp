// The report of channels.conf is complete, and the form is stable after one round.
#include "kit/interchange/complete_report.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/text/signal_types.h"

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

}  // namespace
