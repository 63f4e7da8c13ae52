// What the Video Disk Recorder itself makes of the files that are written for it.
//
// Linux only: the program runs there
#include "kit/linux/vdr_peer.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "kit/interchange/list/exporting.h"
#include "kit/interchange/list/formats.h"
#include "kit/interchange/vdr_channels.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Export;

class VdrProgram : public testing::Test {
 protected:
  void SetUp() override {
    if (!Peer().IsThere()) {
      GTEST_SKIP() << "left out: vdr and vdr-dev are missing, scripts/setup --peers installs them";
    }
  }

  static const VdrPeer& Peer() {
    static const VdrPeer peer;
    return peer;
  }
};

/// The lines that differ first; empty where nothing does.
std::string FirstDifferentLines(const std::string& a, const std::string& b) {
  const std::size_t place = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
  if (place == a.size() && a.size() == b.size()) return {};
  const auto lineAt = [place](const std::string& text) {
    const std::size_t before = place == 0 ? std::string::npos : text.rfind('\n', place - 1);
    const std::size_t first = before == std::string::npos ? 0 : before + 1;
    return text.substr(first, text.find('\n', first) - first);
  };
  return lineAt(a) + "\n" + lineAt(b);
}

TEST_F(VdrProgram, TakesEveryChannelOfTheSamplesAndPrintsItBack) {
  std::size_t channels = 0;
  for (const auto& [country, signal] : kVdrSampleSets) {
    const Exchange exchange(country, signal);
    Export out = exchange.Out("vdr");
    EXPECT_EQ(exchange.Channels().size(), out.output.written.size());
    EXPECT_EQ("", FirstDifferentLines(out.output.Bytes(), Peer().Printed(out.output.Bytes())));
    channels += out.output.written.size();
  }
  // 58 of DVB-S, 20 of DVB-T, 19 and 10 of ATSC.
  EXPECT_EQ(107U, channels);
}

TEST_F(VdrProgram, TakesWhatChannelsMadeAtRandomBecome) {
  Random random(1);
  for (const auto& [country, signal] : kVdrSampleSets) {
    Exchange exchange(999, signal);
    FillWithRandomChannels(exchange, random, 300);
    Export out = exchange.Out("vdr");
    EXPECT_LT(100U, out.output.written.size());
    EXPECT_EQ("", FirstDifferentLines(out.output.Bytes(), Peer().Printed(out.output.Bytes())));
  }
}

TEST_F(VdrProgram, PrintsBackWhatTablesOfTranspondersFill) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1,
             "serviceID=5 ONID=1 TSID=2 freq=11493000 polarisation=LinearH orbitalPosition=192");
  interchange::ExportRequest request = exchange.Request();
  interchange::Tuning tuning;
  tuning.frequency = 11'493'000;
  tuning.polarisation = BDA_POLARISATION_LINEAR_H;
  tuning.position = 192;
  tuning.system = interchange::System::Second;
  for (const ModulationType modulation : {BDA_MOD_QPSK, BDA_MOD_8PSK, BDA_MOD_16APSK}) {
    for (const std::uint32_t rollOff : {20U, 25U, 35U}) {
      tuning.modulation = modulation;
      tuning.rollOff = rollOff;
      tuning.pilot = rollOff != 25;
      request.tuning = {tuning};
      Export out = interchange::ExportChannels(*interchange::FindFormat("vdr"), request);
      EXPECT_EQ("", FirstDifferentLines(out.output.Bytes(), Peer().Printed(out.output.Bytes())));
    }
  }
}

TEST_F(VdrProgram, UnderstandsNamesNumbersAndParametersAsTheyAreMeant) {
  Exchange exchange(999, InputSignalDVBSatellite);
  const std::string common = "serviceID=5 ONID=1 TSID=2 freq=11493000 orbitalPosition=300";
  AddChannel(exchange, 3, common + " westPosition=1 polarisation=LinearH modulation=QPSK",
             {"A:B, C", "", "x;y"});
  AddChannel(exchange, 9,
             common + " polarisation=CircularL innerFECRate=5/6 spectralInversion=normal",
             {"", "", ""});
  Export out = exchange.Out("vdr");
  EXPECT_EQ("3|A:B, C||x,y|S30.0W-1-2-5|HM2S0\n9|#5|||S30.0E-1-2-5|LC56I0O0P0S1\n",
            Peer().Understood(out.output.Bytes()));
}

TEST_F(VdrProgram, KeepsOneChannelOfEachIdentityAsTheReportSays) {
  // The writer leaves the second one out; put back, the program drops it.
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 freq=11493000 polarisation=LinearH", {"First"});
  AddChannel(exchange, 2, "serviceID=5 freq=11493400 polarisation=LinearH", {"Second"});
  AddChannel(exchange, 3, "serviceID=5 freq=11493000 polarisation=LinearV", {"Third"});
  Export out = exchange.Out("vdr");
  EXPECT_EQ((std::vector<std::size_t>{0, 2}), out.output.written);
  EXPECT_TRUE(out.losses.Has(Code::IdentityTwice));
  const std::string first = out.output.Bytes().substr(0, out.output.Bytes().find('\n') + 1);
  std::string second = first;
  second.replace(0, 5, "Second");
  const std::string third = out.output.Bytes().substr(out.output.Bytes().find("Third"));
  EXPECT_EQ(first + third, Peer().Printed(first + second + third));
}

/// Channels in what the program understood whose source is a satellite, or terrestrial.
std::size_t ChannelsFrom(InputSignalType signal, const std::string& understood) {
  const char source = signal == InputSignalDVBSatellite ? 'S' : 'T';
  std::size_t count = 0;
  std::istringstream lines(understood);
  for (std::string line; std::getline(lines, line);) {
    // Behind the provider.
    const std::size_t last = line.rfind('|');
    const std::size_t before = line.rfind('|', last - 1);
    count += line[before + 1] == source;
  }
  return count;
}

/// Every line of the examples is a channel of the list, or a loss names it.
TEST_F(VdrProgram, ComesWithExamplesWhoseEveryLineIsAccountedFor) {
  const std::filesystem::path folder = "/usr/share/vdr/channels.conf-examples";
  std::size_t lines = 0;
  std::size_t taken = 0;
  std::size_t kept = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string bytes = BytesOf(entry.path());
    for (const InputSignalType signal : {InputSignalDVBSatellite, InputSignalDVBTerrestrial}) {
      const Exchange exchange(999, signal);
      const Accounts accounts = AccountsOf(exchange, bytes);
      EXPECT_EQ("", accounts.missing) << entry.path();
      EXPECT_EQ(0U, accounts.notUnderstood) << entry.path();
      taken += accounts.taken;
      kept += ChannelsFrom(signal, Peer().Understood(bytes));
      if (signal == InputSignalDVBSatellite) lines += accounts.lines;
    }
  }
  EXPECT_EQ(512U, lines);
  EXPECT_EQ(293U, taken);
  EXPECT_EQ(kept, taken);
}

}  // namespace

}  // namespace zortunedex::kit
