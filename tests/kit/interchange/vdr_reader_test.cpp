// What becomes of the lines of a channels.conf.
#include <algorithm>
#include <ctime>

#include "kit/failure.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/selection/channel_field.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Import;

/// A list that one file made.
class TakenList {
 public:
  TakenList(InputSignalType signal, const std::string& bytes)
      : m_exchange(999, signal), m_import(m_exchange.In("vdr", bytes)) {}

  /// Values of a channel: "freq=474000 serviceID=5".
  std::string Values(const std::vector<const char*>& fields, std::size_t channel = 0) const {
    if (m_import.table.channels.size() <= channel) return "no channel";
    std::string text;
    for (const char* field : fields) {
      text += (text.empty() ? "" : " ") + std::string(field) + "=" +
              FieldText(ChannelField(m_exchange.Signal(), field)
                            .Of(m_import.table.channels[channel], m_exchange.Narrow()));
    }
    return text;
  }
  std::string Codes() const { return CodesOf(m_import.losses); }
  const Import& Made() const { return m_import; }

 private:
  Exchange m_exchange;
  Import m_import;
};

TakenList SatelliteList(const std::string& bytes) { return {InputSignalDVBSatellite, bytes}; }

/// A line of one channel with these parameters and streams.
std::string VdrLineWith(const std::string& parameters, const std::string& streams = "0:0:0:0") {
  return "Name:11494:" + parameters + ":S19.2E:22000:" + streams + ":5:1:2:0\n";
}

std::string NamesOfField(const std::string& field) {
  return SatelliteList(field + ":11494:HC23M2S0:S19.2E:22000:0:0:0:0:5:1:2:0\n")
      .Values({"name", "networkName"});
}

TEST(VdrReader, TakesAWholeLine) {
  const TakenList taken = SatelliteList(
      "SAT.1;ProSiebenSat.1:12545:HC56I1M2S0:S19.2E:22000:255+256=27:256=deu@3;259=eng@106:32;33="
      "fra:"
      "1702:17500:1:1107:0\n");
  EXPECT_EQ(
      "name=SAT.1 networkName=ProSiebenSat.1 freq=12545000 polarisation=LinearH "
      "innerFECRate=5/6 spectralInversion=inverted modulation=QPSK orbitalPosition=192 "
      "westPosition=0 symbolRate=22000",
      taken.Values({"name", "networkName", "freq", "polarisation", "innerFECRate",
                    "spectralInversion", "modulation", "orbitalPosition", "westPosition",
                    "symbolRate"}));
  EXPECT_EQ("serviceID=17500 ONID=1 TSID=1107 PcrPID=256 CA=5890 block.serviceType=1",
            taken.Values({"serviceID", "ONID", "TSID", "PcrPID", "CA", "block.serviceType"}));
  EXPECT_EQ(
      "VideoStream[1].pid=255 VideoStream[1].type=27 AudioStream[1].pid=256 "
      "AudioStream[1].type=3 AudioStream[1].lang=1364 AudioStream[2].pid=259 "
      "AudioStream[2].type=6 TeletextStream[1].pid=32 TeletextStream[1].type=6 "
      "SubtitleStream[1].pid=33 SubtitleStream[1].lang=294",
      taken.Values({"VideoStream[1].pid", "VideoStream[1].type", "AudioStream[1].pid",
                    "AudioStream[1].type", "AudioStream[1].lang", "AudioStream[2].pid",
                    "AudioStream[2].type", "TeletextStream[1].pid", "TeletextStream[1].type",
                    "SubtitleStream[1].pid", "SubtitleStream[1].lang"}));
  EXPECT_EQ(
      "L204 networkName, L312 SubtitleStream.type, L312 TeletextStream.type, L312 serviceType",
      taken.Codes());
}

TEST(VdrReader, TakesNames) {
  EXPECT_EQ("name=One networkName=", NamesOfField("One"));
  EXPECT_EQ("name=One:Two networkName=", NamesOfField("One|Two"));
  EXPECT_EQ("name=One,Two networkName=", NamesOfField("One,Two,"));
  EXPECT_EQ("name=One networkName=Two;3:4,5", NamesOfField("One;Two;3|4,5"));
  // Older files are Latin-1.
  EXPECT_EQ(
      "name=S\xC3\xBC"
      "d networkName=",
      NamesOfField("S\xFC"
                   "d"));
  const TakenList taken = SatelliteList("One,1;\xFC:11494:HC23M2S0:S19.2E:22000:0:0:0:0:5:1:2:0\n");
  EXPECT_EQ("L101 shortName, L201 name, L204 networkName", taken.Codes());
}

TEST(VdrReader, TakesFrequenciesInAnyUnit) {
  const auto frequency = [](const std::string& field) {
    const TakenList taken(InputSignalDVBTerrestrial, "N:" + field + ":B8:T:0:0:0:0:0:5:1:2:0\n");
    return taken.Values({"freq"}) + " " + taken.Codes();
  };
  EXPECT_EQ("freq=474000 L101 bandwidth", frequency("474"));
  EXPECT_EQ("freq=474000 L101 bandwidth", frequency("474000"));
  EXPECT_EQ("freq=474000 L101 bandwidth", frequency("474000000"));
  EXPECT_EQ("freq=474167 L101 bandwidth, L202 freq", frequency("474166667"));
  EXPECT_EQ("freq=0 L101 bandwidth", frequency("0"));
  EXPECT_EQ("freq=0 L101 bandwidth, L202 freq, L503 freq",
            frequency("99999999999999999999999999999"));
}

TEST(VdrReader, TakesParametersOfSatellites) {
  const auto read = [](const std::string& parameters) {
    const TakenList taken = SatelliteList(VdrLineWith(parameters));
    return taken.Values({"polarisation", "innerFECRate", "modulation", "spectralInversion"}) +
           (taken.Codes().empty() ? "" : " " + taken.Codes());
  };
  EXPECT_EQ("polarisation=LinearV innerFECRate=7/8 modulation=QPSK spectralInversion=normal",
            read("vc78i0m2s0"));
  // Without a modulation it is QPSK, without a system the first one.
  EXPECT_EQ(
      "polarisation=CircularR innerFECRate=NotSet modulation=QPSK spectralInversion=automatic",
      read("RC999I999"));
  EXPECT_EQ(
      "polarisation=CircularL innerFECRate=NotSet modulation=NotSet spectralInversion=automatic",
      read("LC999M999S1"));
  EXPECT_EQ(
      "polarisation=LinearH innerFECRate=NotSet modulation=NotSet spectralInversion=automatic "
      "L310 modulation",
      read("HC999M999S0"));
  EXPECT_EQ(
      "polarisation=LinearH innerFECRate=NotSet modulation=NotSet spectralInversion=automatic "
      "L110 innerFECRate, L110 modulation, L111 pilot, L111 rollOff, L111 streamId",
      read("HC910M5N1O20P3S1"));
  EXPECT_EQ("polarisation=LinearH innerFECRate=2/3 modulation=QPSK spectralInversion=automatic",
            read("HC23M2O35S0"));
  EXPECT_EQ(
      "polarisation=LinearH innerFECRate=NotSet modulation=NotSet spectralInversion=automatic "
      "L110 innerFECRate, L110 modulation, L502 parameter, L503 spectralInversion, "
      "L503 system",
      read("HC0I7M12S2Z4#"));
}

TEST(VdrReader, NamesTheParametersThatTerrestrialListsLack) {
  const auto codes = [](const std::string& parameters) {
    return TakenList(InputSignalDVBTerrestrial,
                     "N:474000:" + parameters + ":T:27500:0:0:0:0:5:1:2:0\n")
        .Codes();
  };
  EXPECT_EQ(
      "L101 bandwidth, L101 codeRateHigh, L101 codeRateLow, L101 guardInterval, "
      "L101 hierarchy, L101 modulation, L101 spectralInversion, L101 transmissionMode",
      codes("I0C23D12M16B8T8G8Y0"));
  EXPECT_EQ("", codes("B999C999D999G999I999M999S0T999Y999"));
  EXPECT_EQ("L101 bandwidth, L111 misoMode, L111 streamId, L111 system, L111 systemId",
            codes("B1712P0Q1S1X0"));
  EXPECT_EQ("L502 parameter, L503 bandwidth", codes("B77HW"));
}

TEST(VdrReader, TakesPositions) {
  const auto position = [](const std::string& source) {
    const TakenList taken =
        SatelliteList("N:11494:HC23M2S0:" + source + ":22000:0:0:0:0:5:1:2:0\n" + VdrLineWith("H"));
    return taken.Values({"orbitalPosition", "westPosition"}) + " " + taken.Codes();
  };
  EXPECT_EQ("orbitalPosition=130 westPosition=0 ", position("S13.0E"));
  EXPECT_EQ("orbitalPosition=300 westPosition=1 ", position("S30W"));
  EXPECT_EQ("orbitalPosition=0 westPosition=0 L313 orbitalPosition", position("S"));
  for (const char* none : {"S180.1E", "S19.2", "S19.22E", "S19.E", "SE", "S1e9E", "S-3.0W"}) {
    EXPECT_EQ("orbitalPosition=192 westPosition=0 L501 line", position(none)) << none;
  }
}

TEST(VdrReader, TakesAPositionThatIsGiven) {
  const Exchange exchange(999, InputSignalDVBSatellite);
  const std::vector<Channel> none;
  interchange::Input input;
  input.bytes = "N:11494:HC23M2S0:S:22000:0:0:0:0:5:1:2:0\n";
  const Import made =
      interchange::ImportChannels(*interchange::FindFormat("vdr"), input,
                                  {exchange.Context(), none, -300}, interchange::Into::Empty);
  ASSERT_EQ(1U, made.table.channels.size());
  const auto value = [&](const char* field) {
    return FieldText(
        ChannelField(exchange.Signal(), field).Of(made.table.channels.front(), exchange.Narrow()));
  };
  EXPECT_EQ("300", value("orbitalPosition"));
  EXPECT_EQ("1", value("westPosition"));
  EXPECT_EQ("", CodesOf(made.losses));
}

TEST(VdrReader, TakesStreams) {
  const auto read = [](const std::string& streams, const std::vector<const char*>& fields) {
    const TakenList taken = SatelliteList(VdrLineWith("H", streams));
    return taken.Values(fields) + " " + taken.Codes();
  };
  // The clock is in the video unless another PID is said.
  EXPECT_EQ(
      "PcrPID=33 VideoStream[1].pid=33 VideoStream[1].type=2 L312 VideoStream.type, "
      "L312 serviceType",
      read("33:0:0:0", {"PcrPID", "VideoStream[1].pid", "VideoStream[1].type"}));
  EXPECT_EQ("PcrPID=34 numOfVideoStreams=0 block.serviceType=2 L312 serviceType",
            read("0+34:35=@3:0:0", {"PcrPID", "numOfVideoStreams", "block.serviceType"}));
  EXPECT_EQ(
      "AudioStream[1].type=4 AudioStream[2].type=6 AudioStream[3].type=129 "
      "AudioStream[4].type=6 L103 AudioStream.type, L312 AudioStream.type, L312 serviceType",
      read("0:35;36,37=eng@129,38=@122:0:0", {"AudioStream[1].type", "AudioStream[2].type",
                                              "AudioStream[3].type", "AudioStream[4].type"}));
  // Two languages on two sides.
  EXPECT_EQ("AudioStream[1].lang=2021 L103 AudioStream.lang, L312 serviceType",
            read("0:35=eng+spa@3:0:0", {"AudioStream[1].lang"}));
  EXPECT_EQ("AudioStream[1].lang=0 L103 AudioStream.lang, L312 serviceType",
            read("0:35=2ch@3:0:0", {"AudioStream[1].lang"}));
  // More than the list has room for, and more than are looked at.
  std::string many = "0:35=@3";
  for (int pid = 36; pid < 135; ++pid) many += "," + std::to_string(pid) + "=@3";
  EXPECT_EQ("numOfAudioStreams=16 L102 AudioStream, L312 serviceType",
            read(many + ":0:0", {"numOfAudioStreams"}));
  EXPECT_EQ("numOfAudioStreams=1 L312 serviceType, L503 AudioStream.pid, L503 VideoStream.pid",
            read("8192:x,99999999999999999999,8191=@3:0:0", {"numOfAudioStreams"}));
}

TEST(VdrReader, TakesIdentifiersOfCaSystems) {
  const auto read = [](const std::string& list) {
    const TakenList taken = SatelliteList(VdrLineWith("H", "0:0:0:" + list));
    return taken.Values({"CA"}) + " " + taken.Codes();
  };
  EXPECT_EQ("CA=0 ", read("0"));
  EXPECT_EQ("CA=2500 ", read("9C4"));
  EXPECT_EQ("CA=1 L112 CA", read("9c4,98C"));
  EXPECT_EQ("CA=0 L203 CA", read("F"));
  EXPECT_EQ("CA=0 L503 CA", read("10000,x"));
}

TEST(VdrReader, TakesNumbersOfChannels) {
  const std::string first = "A:11494:H:S19.2E:0:0:0:0:0:1:1:2:0\n";
  const std::string second = "B:11494:H:S19.2E:0:0:0:0:0:2:1:2:0\n";
  const TakenList taken = SatelliteList(":@5 Films\n" + first + ":Others\n:@3\n" + second);
  EXPECT_EQ("index=5", taken.Values({"index"}));
  EXPECT_EQ("index=6", taken.Values({"index"}, 1));
  // Titles have no place; a number that would go back is passed over.
  EXPECT_EQ("L101 group, L104 index", taken.Codes());
  EXPECT_EQ("index=201", SatelliteList(first + ":@201\n" + second).Values({"index"}, 1));
}

TEST(VdrReader, LeavesOutWhatTheProgramDoesNotKeep) {
  const TakenList taken = SatelliteList(
      "No service:11494:H:S19.2E:0:0:0:0:0:0:1:2:0\n"
      "First:11494:H:S19.2E:0:0:0:0:0:7:0:0:0\n"
      "Second:11494:H:S19.2E:0:0:0:0:0:7:0:0:0\n"
      "Other polarisation:11494:V:S19.2E:0:0:0:0:0:7:0:0:0\n"
      "Radio id:11494:V:S19.2E:0:0:0:0:0:7:0:0:3\n");
  EXPECT_EQ(5U, taken.Made().read);
  EXPECT_EQ("name=Other polarisation", taken.Values({"name"}, 1));
  EXPECT_EQ("L101 RID, L403 channel, L404 channel", taken.Codes());
  EXPECT_EQ(3U, taken.Made().taken);
}

TEST(VdrReader, LeavesOutOtherSignals) {
  const std::string bytes =
      "S:11494:HM2:S19.2E:0:0:0:0:0:1:1:2:0\nT:474:B8:T:0:0:0:0:0:2:1:2:0\n"
      "C:474:M64:C:6900:0:0:0:0:3:1:2:0\nA:57029:M10:A:0:0:0:0:0:4:0:0:0\n"
      "Q:57000:M256:A:0:0:0:0:0:5:0:0:0\nI:1:x:I:0:0:0:0:0:6:0:0:0\n";
  const auto name = [&](InputSignalType signal) {
    const TakenList taken(signal, bytes);
    EXPECT_EQ(6U, taken.Made().read);
    EXPECT_EQ(1U, taken.Made().taken);
    EXPECT_NE(std::string::npos, taken.Codes().find("L402 channel"));
    return taken.Values({"name"});
  };
  EXPECT_EQ("name=S", name(InputSignalDVBSatellite));
  EXPECT_EQ("name=T", name(InputSignalDVBTerrestrial));
  EXPECT_EQ("name=A", name(InputSignalATSCAntenna));
  EXPECT_EQ("name=Q", name(InputSignalATSCCable));
}

TEST(VdrReader, TakesTheChannelOfAtscFromItsFrequency) {
  const TakenList taken(InputSignalATSCAntenna, "A:473029:M11:A:0:33=2:34=@129:0:0:4:0:0:0\n");
  EXPECT_EQ("number=14 programNumber=4 block.serviceType=2",
            taken.Values({"number", "programNumber", "block.serviceType"}));
  EXPECT_EQ("L101 modulation, L312 serviceType, L314 physicalChannel", taken.Codes());
}

TEST(VdrReader, NamesTheLinesThatItDoesNotUnderstand) {
  const std::string good = VdrLineWith("H");
  const TakenList taken =
      SatelliteList(good + "one:two\n\nN:x:H:S19.2E:0:0:0:0:0:1:1:2:0\r\n" +
                    std::string("\0:\n", 3) + "N:1:H:S19.2E:0:0:0:0:0:-1:1:2:0");
  EXPECT_EQ("L501 line", taken.Codes());
  std::vector<std::size_t> lines;
  for (const auto& loss : taken.Made().losses.All()) lines.push_back(loss.place.line);
  EXPECT_EQ((std::vector<std::size_t>{2, 4, 5, 6}), lines);
  EXPECT_EQ(1U, taken.Made().taken);
}

TEST(VdrReader, RefusesAFileThatIsNothingOfTheKind) {
  for (const std::string& bytes : {std::string("<CHANNELTABLE/>\n"),
                                   std::string("a;b;c\r\n1;2;3\r\n"), std::string(3, '\0')}) {
    ExpectRaised<Failure>("the file is no channels.conf", [&] { SatelliteList(bytes); });
  }
  EXPECT_EQ(0U, SatelliteList("").Made().read);
  EXPECT_EQ(0U, SatelliteList("\n\r\n").Made().read);
}

TEST(VdrReader, TakesTheSameWithCrLfAndWithAMark) {
  const std::string line = VdrLineWith("HC23M2S0", "33=2:34=deu@3:35:0");
  std::string other = "\xEF\xBB\xBF" + line;
  other.replace(other.size() - 1, 1, "\r\n");
  const Exchange exchange(999, InputSignalDVBSatellite);
  EXPECT_TRUE(SameChannels(exchange.In("vdr", line).table.channels,
                           exchange.In("vdr", other).table.channels));
}

/// Seconds of processor time that reading takes.
double ReadingTime(const std::string& bytes) {
  const Exchange exchange(999, InputSignalDVBSatellite);
  const std::vector<Channel> none;
  interchange::Losses losses;
  interchange::Input input;
  input.bytes = bytes;
  const std::clock_t start = std::clock();
  interchange::FindFormat("vdr")->read(input, {exchange.Context(), none}, losses);
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(VdrReader, ReadsHostileFilesInTimeThatGrowsWithThem) {
  const auto repeated = [](const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
  };
  const auto hostile = [&](std::size_t size) {
    return std::vector<std::string>{
        VdrLineWith("H") + std::string(20 * size, ':'),
        VdrLineWith("H") + std::string(20 * size, 'x'),
        VdrLineWith("H", "0:0:0:" + std::string(20 * size, '9')),
        VdrLineWith("H" + std::string(20 * size, 'Z')),
        VdrLineWith("H", "0:" + repeated("1,", size) + ":0:0"),
        VdrLineWith("H", "0:0:0:" + repeated("1,", size)),
        VdrLineWith("H") + repeated("\n", size),
        VdrLineWith("H") + repeated(":@1\n", size),
        VdrLineWith("H") + repeated(VdrLineWith("H"), size),
    };
  };
  constexpr std::size_t kSize = 1'000;
  const std::vector<std::string> small = hostile(kSize);
  const std::vector<std::string> large = hostile(8 * kSize);
  for (std::size_t i = 0; i < small.size(); ++i) {
    // Squares would take 64 times as long; what is below a hundredth of a second is noise.
    EXPECT_LT(ReadingTime(large[i]), 24 * std::max(ReadingTime(small[i]), 0.01)) << i;
  }
}

}  // namespace

}  // namespace zortunedex::kit
