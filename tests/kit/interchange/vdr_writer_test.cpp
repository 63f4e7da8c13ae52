// How values of the list are written into a channels.conf.
#include "kit/interchange/vdr_channels.h"
#include "kit/model/channel_layout.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Export;
using interchange::ExportRequest;

/// The only channel's line, or the lines of several.
std::string VdrLines(const Exchange& exchange) { return exchange.Out("vdr").output.Bytes(); }

std::string VdrLine(InputSignalType signal, const std::string& values,
                    const ChannelTexts& texts = {"Name"}, DWORD country = 999) {
  Exchange exchange(country, signal);
  exchange.Channels().clear();
  AddChannel(exchange, 1, values, texts);
  return VdrLines(exchange);
}

/// What stands in a field of the line of a channel that has an identity; the name is field 0.
std::string VdrField(std::size_t field, InputSignalType signal, const std::string& values) {
  std::string rest = VdrLine(
      signal, values + (signal == InputSignalDVBSatellite || signal == InputSignalDVBTerrestrial
                            ? " serviceID=5 ONID=1"
                            : ""));
  while (field-- > 0) rest.erase(0, rest.find(':') + 1);
  return rest.substr(0, rest.find_first_of(":\n"));
}
std::string SatelliteField(std::size_t field, const std::string& values) {
  return VdrField(field, InputSignalDVBSatellite, values);
}

enum VdrPart : std::size_t {
  kFrequency = 1,
  kParameters,
  kSource,
  kSymbolRate,
  kVideo,
  kAudio,
  kText,
  kCa
};

TEST(VdrWriter, WritesAWholeLine) {
  EXPECT_EQ(
      "SAT.1;ProSiebenSat.1:12545:HC56I1M2S0:S19.2E:22000:255+256=2:"
      "256=deu@3,258=eng@15;259=deu@106:32;33=deu,34:1702:17500:1:1107:0\n",
      VdrLine(InputSignalDVBSatellite,
              "freq=12544750 orbitalPosition=192 polarisation=LinearH symbolRate=22000 "
              "innerFECRate=5/6 modulation=QPSK spectralInversion=inverted serviceID=17500 ONID=1 "
              "TSID=1107 PcrPID=256 CA=5890 "
              "VideoStream[1].pid=255 VideoStream[1].type=2 AudioStream[1].pid=256 "
              "AudioStream[1].type=3 AudioStream[1].lang=1364 AudioStream[2].pid=259 "
              "AudioStream[2].type=6 AudioStream[2].lang=1364 AudioStream[3].pid=258 "
              "AudioStream[3].type=15 AudioStream[3].lang=2021 TeletextStream[1].pid=32 "
              "SubtitleStream[1].pid=33 SubtitleStream[1].lang=1364 SubtitleStream[2].pid=34",
              {"SAT.1", "SAT.1", "ProSiebenSat.1"}));
}

TEST(VdrWriter, KeepsSeparatorsOutOfNames) {
  const std::string values = "serviceID=5 ONID=1";
  const auto name = [&](const ChannelTexts& texts) {
    const std::string line = VdrLine(InputSignalDVBSatellite, values, texts);
    return line.substr(0, line.find(":0:"));
  };
  EXPECT_EQ("One|Two", name({"One:Two"}));
  EXPECT_EQ("One/Two", name({"One|Two"}));
  // What follows the last comma would be a short name.
  EXPECT_EQ("One,Two,", name({"One,Two"}));
  EXPECT_EQ("One,Two,", name({"One;Two"}));
  EXPECT_EQ("One;Two,Three|4", name({"One", "", "Two;Three:4"}));
  EXPECT_EQ("One", name({"One", "", "  "}));
  EXPECT_EQ("One  Two", name({"One\r\nTwo"}));
  EXPECT_EQ("#5", name({""}));
  EXPECT_EQ("Mine", name({"Theirs", "Mine"}));
}

TEST(VdrWriter, WritesTheNameThatIsAskedFor) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 ONID=1", {"Theirs", "Mine"});
  ExportRequest request = exchange.Request();
  request.names = interchange::Names::Broadcast;
  Export out = interchange::ExportChannels(*interchange::FindFormat("vdr"), request);
  EXPECT_TRUE(out.output.Bytes().starts_with("Theirs:"));
  EXPECT_NE(std::string::npos, CodesOf(out.losses).find("L101 nameDisplay"));
}

TEST(VdrWriter, RoundsFrequenciesOfSatellitesToMegahertzHalfUp) {
  EXPECT_EQ("12545", SatelliteField(kFrequency, "freq=12544750"));
  EXPECT_EQ("12545", SatelliteField(kFrequency, "freq=12544500"));
  EXPECT_EQ("12544", SatelliteField(kFrequency, "freq=12544499"));
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 ONID=1 freq=12544750");
  EXPECT_NE(std::string::npos, CodesOf(exchange.Out("vdr").losses).find("L202 freq"));
}

TEST(VdrWriter, WritesOtherFrequenciesInKilohertz) {
  const auto terrestrial = [](const char* frequency) {
    return VdrField(kFrequency, InputSignalDVBTerrestrial, std::string("freq=") + frequency);
  };
  EXPECT_EQ("498000", terrestrial("498000"));
  EXPECT_EQ("177500", terrestrial("177500"));
  EXPECT_EQ("0", terrestrial("0"));
  // A greater number would be taken for Hz.
  EXPECT_EQ("1500000000", terrestrial("1500000"));
  for (const char* beyond : {"999", "2147484"}) {
    Exchange exchange(999, InputSignalDVBTerrestrial);
    AddChannel(exchange, 1, std::string("serviceID=5 ONID=1 freq=") + beyond);
    EXPECT_EQ("", VdrLines(exchange)) << beyond;
    EXPECT_EQ("L503 freq", CodesOf(exchange.Out("vdr").losses));
  }
}

TEST(VdrWriter, WritesParametersOfSatellites) {
  const auto parameters = [](const std::string& values) {
    return SatelliteField(kParameters, values);
  };
  EXPECT_EQ("C999M999S1", parameters(""));
  EXPECT_EQ("HC999M2S0", parameters("polarisation=LinearH modulation=QPSK"));
  EXPECT_EQ("VC999M999S1", parameters("polarisation=LinearV"));
  EXPECT_EQ("LC999M999S1", parameters("polarisation=CircularL"));
  EXPECT_EQ("RC999M999S1", parameters("polarisation=CircularR"));
  EXPECT_EQ("C12M999S1", parameters("innerFECRate=1/2"));
  EXPECT_EQ("C23M999S1", parameters("innerFECRate=2/3"));
  EXPECT_EQ("C34M999S1", parameters("innerFECRate=3/4"));
  EXPECT_EQ("C35M999S1", parameters("innerFECRate=3/5"));
  EXPECT_EQ("C45M999S1", parameters("innerFECRate=4/5"));
  EXPECT_EQ("C56M999S1", parameters("innerFECRate=5/6"));
  EXPECT_EQ("C78M999S1", parameters("innerFECRate=7/8"));
  EXPECT_EQ("C999M999S1", parameters("innerFECRate=5/11"));
  EXPECT_EQ("C999I0M999S1", parameters("spectralInversion=normal"));
  EXPECT_EQ("C999I1M999S1", parameters("spectralInversion=inverted"));
  EXPECT_EQ("C999M999S1", parameters("spectralInversion=automatic"));
  EXPECT_EQ("C999M64S0", parameters("modulation=64QAM"));
  EXPECT_EQ("C999M999S1", parameters("modulation=80QAM"));
}

TEST(VdrWriter, SaysWhatItAssumesOfSatellites) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 ONID=1 orbitalPosition=192 innerFECRate=5/11");
  EXPECT_EQ("L202 innerFECRate, L310 modulation, L310 spectralInversion",
            CodesOf(exchange.Out("vdr").losses));
}

TEST(VdrWriter, TakesFromTablesWhatTheListLacks) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1,
             "serviceID=5 ONID=1 freq=11493750 polarisation=LinearH orbitalPosition=192");
  ExportRequest request = exchange.Request();
  interchange::Tuning tuning;
  tuning.frequency = 11'493'000;
  tuning.polarisation = BDA_POLARISATION_LINEAR_H;
  tuning.position = 192;
  tuning.modulation = BDA_MOD_8PSK;
  tuning.system = interchange::System::Second;
  tuning.fec = BDA_BCC_RATE_9_10;
  const auto written = [&] {
    request.tuning = {tuning};
    return interchange::ExportChannels(*interchange::FindFormat("vdr"), request).output.Bytes();
  };
  EXPECT_EQ("Name:11494:HC910M5S1:S19.2E:0:0:0:0:0:5:1:0:0\n", written());
  tuning.rollOff = 20;
  tuning.pilot = true;
  EXPECT_EQ("Name:11494:HC910M5N1O20S1:S19.2E:0:0:0:0:0:5:1:0:0\n", written());
  tuning.modulation = BDA_MOD_NOT_SET;
  EXPECT_EQ("Name:11494:HC910M999N1O20S1:S19.2E:0:0:0:0:0:5:1:0:0\n", written());
  // Of the first generation there is one roll-off, and no pilot.
  tuning.modulation = BDA_MOD_QPSK;
  tuning.system = interchange::System::First;
  EXPECT_EQ("Name:11494:HC910M2S0:S19.2E:0:0:0:0:0:5:1:0:0\n", written());
}

TEST(VdrWriter, WritesParametersOfOtherSignals) {
  const std::string rest = "C999D999G999I999M999S0T999Y999";
  const auto terrestrial = [&](DWORD country, const char* frequency) {
    const std::string line =
        VdrLine(InputSignalDVBTerrestrial, std::string("serviceID=5 ONID=1 freq=") + frequency,
                {"N"}, country);
    const std::size_t place = line.find(":B") + 2;
    EXPECT_EQ(rest + ":T:0:0", line.substr(place + 1, rest.size() + 6));
    return line.substr(place, 1);
  };
  EXPECT_EQ("7", terrestrial(49, "177500"));
  EXPECT_EQ("8", terrestrial(49, "498000"));
  EXPECT_EQ("7", terrestrial(61, "498000"));
  EXPECT_EQ("6", terrestrial(886, "557000"));
  EXPECT_EQ("6", terrestrial(57, "473000"));
  EXPECT_EQ("8", terrestrial(91, "177500"));
  EXPECT_EQ("Name:473029:M10:A:0:0:0:0:0:3:0:0:0\n",
            VdrLine(InputSignalATSCAntenna, "programNumber=3 physicalChannel=14"));
  EXPECT_EQ("Name:123000:M999:A:0:0:0:0:0:3:0:0:0\n",
            VdrLine(InputSignalATSCCable, "programNumber=3 physicalChannel=14"));
}

TEST(VdrWriter, WritesPositions) {
  EXPECT_EQ("S19.2E", SatelliteField(kSource, "orbitalPosition=192"));
  EXPECT_EQ("S30.0W", SatelliteField(kSource, "orbitalPosition=300 westPosition=1"));
  EXPECT_EQ("S", SatelliteField(kSource, ""));
  EXPECT_EQ("S180.0E", SatelliteField(kSource, "orbitalPosition=1800"));
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 ONID=1 orbitalPosition=1801");
  EXPECT_EQ("L503 orbitalPosition", CodesOf(exchange.Out("vdr").losses));
}

TEST(VdrWriter, WritesStreams) {
  EXPECT_EQ("0", SatelliteField(kVideo, ""));
  EXPECT_EQ("0+33", SatelliteField(kVideo, "PcrPID=33"));
  EXPECT_EQ("33=27",
            SatelliteField(kVideo, "PcrPID=33 VideoStream[1].pid=33 VideoStream[1].type=27"));
  EXPECT_EQ("0", SatelliteField(kAudio, ""));
  EXPECT_EQ("0;34=@129", SatelliteField(kAudio, "AudioStream[1].pid=34 AudioStream[1].type=129"));
  EXPECT_EQ("0;35", SatelliteField(kText, "SubtitleStream[1].pid=35"));
  // The program takes what has no type for these.
  EXPECT_EQ("33=2", SatelliteField(kVideo, "VideoStream[1].pid=33"));
  EXPECT_EQ("34=@4", SatelliteField(kAudio, "AudioStream[1].pid=34"));
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1,
             "serviceID=5 ONID=1 modulation=QPSK serviceType=1 VideoStream[1].pid=33 "
             "VideoStream[2].pid=34 TeletextStream[1].pid=40 TeletextStream[1].type=6 "
             "TeletextStream[2].pid=41 DsmccStream[1].pid=50 PcrPID=33");
  EXPECT_EQ(
      "L101 DsmccStream, L102 TeletextStream, L102 VideoStream, L310 spectralInversion, "
      "L312 VideoStream.type",
      CodesOf(exchange.Out("vdr").losses));
}

TEST(VdrWriter, WritesIdentifiersOfCaSystemsAndNoFlags) {
  EXPECT_EQ("1702", SatelliteField(kCa, "CA=5890"));
  EXPECT_EQ("100", SatelliteField(kCa, "CA=256"));
  EXPECT_EQ("0", SatelliteField(kCa, "CA=255"));
  EXPECT_EQ("0", SatelliteField(kCa, "CA=1"));
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 ONID=1 modulation=QPSK spectralInversion=automatic CA=1");
  EXPECT_EQ("L203 CA", CodesOf(exchange.Out("vdr").losses));
}

TEST(VdrWriter, SaysWhereNumbersGoOn) {
  Exchange exchange(999, InputSignalDVBSatellite);
  for (const UINT index : {2U, 3U, 7U}) {
    AddChannel(exchange, index, "ONID=1 serviceID=" + std::to_string(index));
  }
  std::string rest = ":0:C999M999S1:S:0:0:0:0:0:";
  EXPECT_EQ(
      ":@2 \nName" + rest + "2:1:0:0\nName" + rest + "3:1:0:0\n:@7 \nName" + rest + "7:1:0:0\n",
      VdrLines(exchange));
  EXPECT_EQ(std::string::npos, CodesOf(exchange.Out("vdr").losses).find("index"));
}

TEST(VdrWriter, LeavesOutWhatTheProgramWouldRefuse) {
  Exchange exchange(999, InputSignalDVBSatellite);
  const std::string common = "freq=11493000 modulation=QPSK polarisation=LinearH ";
  AddChannel(exchange, 1, common + "ONID=1 serviceID=0");
  AddChannel(exchange, 2, common + "ONID=1 serviceID=9");
  AddChannel(exchange, 3, common + "ONID=1 serviceID=9");
  AddChannel(exchange, 4, "modulation=QPSK serviceID=9");
  AddChannel(exchange, 5, common + "ONID=65536 serviceID=9");
  Export out = exchange.Out("vdr");
  EXPECT_EQ((std::vector<std::size_t>{1}), out.output.written);
  EXPECT_EQ("L310 spectralInversion, L403 channel, L404 channel, L503 ONID", CodesOf(out.losses));
}

}  // namespace

}  // namespace zortunedex::kit
