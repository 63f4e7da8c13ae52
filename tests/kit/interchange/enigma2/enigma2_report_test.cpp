// The report of Enigma2's settings is complete, and the form is stable after one round.
#include "kit/interchange/complete_report.h"
#include "kit/interchange/enigma2/enigma2_words.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

TEST(Enigma2Report, NamesEveryDifferenceOfTheSamplesAndNothingElse) {
  for (const InputSignalType signal : interchange::enigma2::Signals()) {
    SCOPED_TRACE(SignalTypeName(signal));
    ExpectCompleteReport(Exchange(49, signal), "enigma2");
  }
}

TEST(Enigma2Report, NamesEveryDifferenceOfChannelsMadeAtRandomAndNothingElse) {
  Random random(5);
  for (const InputSignalType signal : interchange::enigma2::Signals()) {
    SCOPED_TRACE(SignalTypeName(signal));
    Exchange exchange(999, signal);
    FillWithRandomChannels(exchange, random, 200);
    ExpectCompleteReport(exchange, "enigma2");
  }
}

}  // namespace

}  // namespace zortunedex::kit
