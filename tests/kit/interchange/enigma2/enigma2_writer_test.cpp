#include "kit/interchange/enigma2/enigma2_writer.h"

#include <iterator>

#include "kit/interchange/exchange.h"
#include "kit/interchange/vdr_channels.h"

namespace zortunedex::kit {

namespace {

using interchange::Export;

std::string FileIn(const Export& made, const std::string& name) {
  for (const interchange::OutputFile& file : made.output.files) {
    if (file.name == name) return file.bytes;
  }
  return "no " + name;
}

constexpr char kProSieben[] =
    "serviceID=17501 ONID=1 TSID=1107 freq=12544750 symbolRate=22000 polarisation=LinearH"
    " innerFECRate=5/6 modulation=QPSK spectralInversion=automatic orbitalPosition=192"
    " serviceType=1 PcrPID=511 CA=5890 VideoStream[1].pid=511 VideoStream[1].type=2"
    " AudioStream[1].pid=512 AudioStream[1].type=3 TeletextStream[1].pid=33 favor=1";

/// The channels of the golden files.
void AddGoldenChannels(Exchange& exchange) {
  AddChannel(exchange, 1, kProSieben, {"ProSieben \"7\"", "My seven", "ProSiebenSat.1, Media"});
  AddChannel(exchange, 2,
             "serviceID=28400 ONID=1 TSID=1093 freq=12265500 symbolRate=27500 polarisation=LinearH"
             " innerFECRate=3/4 modulation=QPSK spectralInversion=normal orbitalPosition=192"
             " serviceType=2 AudioStream[1].pid=101 AudioStream[1].type=6",
             {"Bayern 1"});
  AddChannel(exchange, 3,
             "serviceID=10301 ONID=1 TSID=1 freq=11493750 symbolRate=22000 polarisation=CircularR"
             " orbitalPosition=300 westPosition=1 serviceType=25 VideoStream[1].pid=5101"
             " VideoStream[1].type=27 AudioStream[1].pid=5102 AudioStream[1].type=17",
             {"Das Erste HD"});
}

TEST(Enigma2Writer, WritesTheGoldenFiles) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddGoldenChannels(exchange);
  const Export made = exchange.Out("enigma2");
  ASSERT_EQ(8U, made.output.files.size());
  for (const interchange::OutputFile& file : made.output.files) {
    EXPECT_EQ(BytesOf(ZORTUNEDEX_TEST_DATA "/interchange/enigma2/" + file.name), file.bytes)
        << file.name;
  }
  EXPECT_EQ((std::vector<std::size_t>{0, 2, 1}), made.output.written);
}

std::string TransponderOf(const std::string& values,
                          InputSignalType signal = InputSignalDVBSatellite, DWORD country = 999) {
  Exchange exchange(country, signal);
  exchange.Channels().clear();
  AddChannel(exchange, 1, "serviceID=5 " + values);
  const std::string file = FileIn(exchange.Out("enigma2"), "lamedb");
  const std::size_t begin = file.find("transponders\n") + 13;
  return file.substr(begin, file.find("\n/\n") - begin);
}

TEST(Enigma2Writer, WritesTransponders) {
  const std::string base = "ONID=2 TSID=3 freq=11000000 symbolRate=22000 orbitalPosition=192 ";
  const std::string key = "00c00000:0003:0002\n\ts 11000000:22000000:";
  EXPECT_EQ(key + "0:0:192:2:0:1:0:3:2", TransponderOf(base));
  EXPECT_EQ(key + "1:1:192:0:0:0:1:0:2",
            TransponderOf(base + "polarisation=LinearV innerFECRate=1/2 modulation=QPSK"
                                 " spectralInversion=normal"));
  EXPECT_EQ(key + "2:0:192:1:0:0:1:0:2",
            TransponderOf(base + "polarisation=CircularL innerFECRate=5/11 modulation=QPSK"
                                 " spectralInversion=inverted"));
  EXPECT_EQ(key + "3:0:192:2:0:0:3:0:2",
            TransponderOf(base + "polarisation=CircularR modulation=16QAM"));
  constexpr const char* kRates[] = {"1/2", "2/3", "3/4", "5/6", "7/8", nullptr, "3/5", "4/5"};
  for (std::size_t i = 0; i < std::size(kRates); ++i) {
    if (kRates[i] == nullptr) continue;
    EXPECT_EQ(key + "0:" + std::to_string(i + 1) + ":192:2:0:1:0:3:2",
              TransponderOf(base + "innerFECRate=" + kRates[i]));
  }
  EXPECT_EQ("0ce40000:0003:0002\n\ts 11000000:22000000:0:0:-300:2:0:1:0:3:2",
            TransponderOf("ONID=2 TSID=3 freq=11000000 symbolRate=22000 orbitalPosition=300"
                          " westPosition=1"));
}

TEST(Enigma2Writer, TellsTranspondersWithoutReliableIdentifiersByFrequency) {
  const auto nameSpace = [](const std::string& values) {
    return TransponderOf("orbitalPosition=192 freq=11493750 " + values).substr(0, 8);
  };
  EXPECT_EQ("00c00000", nameSpace("ONID=1 TSID=2"));
  EXPECT_EQ("00c02ce5", nameSpace("ONID=0 TSID=2"));
  EXPECT_EQ("00c02ce5", nameSpace("ONID=1 TSID=1 polarisation=LinearH"));
  EXPECT_EQ("00c0ace5", nameSpace("ONID=65280 TSID=9 polarisation=LinearV"));
  EXPECT_EQ("00c00000", nameSpace("ONID=65279 TSID=9 polarisation=LinearV"));
}

TEST(Enigma2Writer, TellsTranspondersWithTheSameIdentifiersByFrequency) {
  Exchange exchange(999, InputSignalDVBSatellite);
  const std::string same = " ONID=2 TSID=3 orbitalPosition=192 modulation=QPSK";
  AddChannel(exchange, 1, "serviceID=5 freq=11000000" + same);
  AddChannel(exchange, 2, "serviceID=5 freq=12000000" + same);
  AddChannel(exchange, 3, "serviceID=5 freq=11000000" + same);
  const Export made = exchange.Out("enigma2");
  EXPECT_EQ((std::vector<std::size_t>{0, 1}), made.output.written);
  EXPECT_TRUE(made.losses.Has(interchange::Code::IdentityTwice));
  EXPECT_NE(std::string::npos, FileIn(made, "lamedb").find("\n0005:00c00000:0003:0002:0:0\n"));
  EXPECT_NE(std::string::npos, FileIn(made, "lamedb").find("\n0005:00c02ee0:0003:0002:0:0\n"));
}

TEST(Enigma2Writer, WritesTerrestrialTransponders) {
  EXPECT_EQ("eeee0000:0003:0002\n\tt 522000000:0:5:5:3:2:4:4:2:0:0:0",
            TransponderOf("ONID=2 TSID=3 freq=522000", InputSignalDVBTerrestrial));
  EXPECT_EQ("eeee0000:0003:0002\n\tt 191500000:1:5:5:3:2:4:4:2:0:0:0",
            TransponderOf("ONID=2 TSID=3 freq=191500", InputSignalDVBTerrestrial, 49));
}

std::string DataOf(const std::string& values, const ChannelTexts& texts = {"Name"}) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 " + values, texts);
  const std::string file = FileIn(exchange.Out("enigma2"), "lamedb");
  const std::size_t begin = file.find("\np:") + 1;
  return file.substr(begin, file.find('\n', begin) - begin);
}

TEST(Enigma2Writer, WritesTheFirstStreamOfAKind) {
  EXPECT_EQ("p:", DataOf(""));
  EXPECT_EQ("p:One  Two", DataOf("", {"Name", "", "One, Two"}));
  EXPECT_EQ("p:,c:000021,c:050000,c:010022,c:020025,c:030021",
            DataOf("VideoStream[1].pid=33 VideoStream[1].type=2 AudioStream[1].pid=34"
                   " AudioStream[1].type=3 AudioStream[2].pid=35 TeletextStream[1].pid=37"
                   " PcrPID=33"));
  EXPECT_EQ("p:,c:000021,c:050001", DataOf("VideoStream[1].pid=33 VideoStream[1].type=27"));
  EXPECT_EQ("p:,c:000021,c:050007", DataOf("VideoStream[1].pid=33 VideoStream[1].type=36"));
  const auto sound = [](int type) {
    return DataOf("AudioStream[1].pid=34 AudioStream[1].type=" + std::to_string(type));
  };
  EXPECT_EQ("p:,c:010022", sound(4));
  EXPECT_EQ("p:,c:040022", sound(6));
  EXPECT_EQ("p:,c:040022", sound(129));
  EXPECT_EQ("p:,c:120022", sound(17));
  EXPECT_EQ("p:,c:140022", sound(15));
}

TEST(Enigma2Writer, WritesTheIdentifierOfACaSystem) {
  EXPECT_EQ("p:,C:1702", DataOf("CA=5890"));
  EXPECT_EQ("p:", DataOf("CA=1"));
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 CA=1 modulation=QPSK");
  EXPECT_NE(std::string::npos, CodesOf(exchange.Out("enigma2").losses).find("L203 CA"));
}

TEST(Enigma2Writer, CutsNamesBetweenLetters) {
  Exchange exchange(999, InputSignalDVBSatellite);
  std::string name = "x";
  for (int i = 0; i < 125; ++i) name += "\xC3\xA4";
  AddChannel(exchange, 1, "serviceID=5 modulation=QPSK", {name});
  const Export made = exchange.Out("enigma2");
  EXPECT_NE(std::string::npos, FileIn(made, "lamedb").find("\n" + name.substr(0, 239) + "\n"));
  EXPECT_NE(std::string::npos, CodesOf(made.losses).find("L201 name"));
}

TEST(Enigma2Writer, KeepsBothNames) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 modulation=QPSK", {"Theirs", "Mine"});
  const std::string bouquet = "#SERVICE 1:0:0:5:0:0:0:0:0:0:\n";
  EXPECT_EQ("#NAME Tunedex\n" + bouquet + "#DESCRIPTION Mine\n",
            FileIn(exchange.Out("enigma2"), "userbouquet.tunedex.tv"));
  EXPECT_NE(std::string::npos, FileIn(exchange.Out("enigma2"), "lamedb").find("\nTheirs\n"));
  interchange::ExportRequest request = exchange.Request();
  request.names = interchange::Names::Broadcast;
  EXPECT_EQ("#NAME Tunedex\n" + bouquet,
            FileIn(ExportChannels(*interchange::FindFormat("enigma2"), request),
                   "userbouquet.tunedex.tv"));
}

}  // namespace

}  // namespace zortunedex::kit
