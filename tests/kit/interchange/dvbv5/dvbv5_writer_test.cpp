#include "kit/interchange/dvbv5/dvbv5_writer.h"

#include "kit/interchange/exchange.h"
#include "kit/interchange/vdr_channels.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Export;

std::string FileOf(const Exchange& exchange) {
  Export out = exchange.Out("dvbv5");
  return out.output.Bytes();
}

/// The line of a key in the file of a list with one channel; empty where there is none.
std::string LineOf(InputSignalType signal, const std::string& values, const std::string& key,
                   const ChannelTexts& texts = {"Name"}) {
  Exchange exchange(999, signal);
  AddChannel(exchange, 1, values, texts);
  const std::string file = FileOf(exchange);
  const std::size_t begin = file.find('\t' + key + " = ");
  if (begin == std::string::npos) return {};
  return file.substr(begin + 1, file.find('\n', begin) - begin - 1);
}

std::string Satellite(const std::string& values, const std::string& key) {
  return LineOf(InputSignalDVBSatellite, "serviceID=5 " + values, key);
}

std::string TitleOf(const ChannelTexts& texts) {
  Exchange exchange(999, InputSignalDVBTerrestrial);
  AddChannel(exchange, 1, "serviceID=5", texts);
  const std::string file = FileOf(exchange);
  return file.substr(0, file.find('\n'));
}

TEST(Dvbv5Writer, WritesAllOfASatelliteChannel) {
  Exchange exchange(999, InputSignalDVBSatellite);
  exchange.Context().dishes = {{2, 192}};
  AddChannel(exchange, 7,
             "serviceID=17501 ONID=1 TSID=1107 freq=12544750 symbolRate=22000 polarisation=LinearH"
             " innerFECRate=5/6 modulation=QPSK spectralInversion=automatic orbitalPosition=192"
             " LNB_LowFreq=9750000 LNB_HighFreq=10600000 LNB_SwitchFreq=11700000"
             " VideoStream[1].pid=511 VideoStream[1].type=2 AudioStream[1].pid=512"
             " AudioStream[2].pid=515 TeletextStream[1].pid=33 SubtitleStream[1].pid=34"
             " DsmccStream[1].pid=50 DsmccStream[1].type=11 DsmccStream[2].pid=51"
             " DsmccStream[2].type=13 MhpAitStream[1].pid=60",
             {"ProSieben"});
  EXPECT_EQ(
      "[ProSieben]\n"
      "\tVCHANNEL = 7\n"
      "\tSERVICE_ID = 17501\n"
      "\tNETWORK_ID = 1\n"
      "\tTRANSPORT_ID = 1107\n"
      "\tVIDEO_PID = 511\n"
      "\tAUDIO_PID = 512 515\n"
      "\tPID_0b = 50\n"
      "\tPID_0d = 51\n"
      "\tPID_06 = 33 34\n"
      "\tSAT_NUMBER = 1\n"
      "\tLNB = EXTENDED\n"
      "\tDELIVERY_SYSTEM = DVBS\n"
      "\tFREQUENCY = 12544750\n"
      "\tMODULATION = QPSK\n"
      "\tPOLARIZATION = HORIZONTAL\n"
      "\tSYMBOL_RATE = 22000000\n"
      "\tINNER_FEC = 5/6\n"
      "\tINVERSION = AUTO\n\n",
      FileOf(exchange));
}

TEST(Dvbv5Writer, WritesTerrestrialChannelsInHertz) {
  Exchange exchange(49, InputSignalDVBTerrestrial);
  exchange.Channels().clear();
  AddChannel(exchange, 1, "serviceID=16 freq=522000 VideoStream[1].pid=33");
  AddChannel(exchange, 2, "serviceID=17 freq=191500");
  const std::string file = FileOf(exchange);
  EXPECT_NE(std::string::npos, file.find("\tDELIVERY_SYSTEM = DVBT\n\tFREQUENCY = 522000000\n"
                                         "\tMODULATION = QAM/AUTO\n\tBANDWIDTH_HZ = 8000000\n"));
  EXPECT_NE(std::string::npos, file.find("\tFREQUENCY = 191500000\n"
                                         "\tMODULATION = QAM/AUTO\n\tBANDWIDTH_HZ = 7000000\n"));
}

TEST(Dvbv5Writer, WritesAtscByItsPlan) {
  constexpr InputSignalType kAntenna = InputSignalATSCAntenna;
  const std::string channel = "programNumber=3 majorChannel=2 minorChannel=1 physicalChannel=";
  EXPECT_EQ("FREQUENCY = 57028615", LineOf(kAntenna, channel + "2", "FREQUENCY"));
  EXPECT_EQ("FREQUENCY = 79028615", LineOf(kAntenna, channel + "5", "FREQUENCY"));
  EXPECT_EQ("FREQUENCY = 177028615", LineOf(kAntenna, channel + "7", "FREQUENCY"));
  EXPECT_EQ("FREQUENCY = 473028615", LineOf(kAntenna, channel + "14", "FREQUENCY"));
  EXPECT_EQ("VCHANNEL = 2.1", LineOf(kAntenna, channel + "2", "VCHANNEL"));
  EXPECT_EQ("DELIVERY_SYSTEM = ATSC", LineOf(kAntenna, channel + "2", "DELIVERY_SYSTEM"));
  EXPECT_EQ("MODULATION = VSB/8", LineOf(kAntenna, channel + "2", "MODULATION"));
  EXPECT_EQ("DELIVERY_SYSTEM = DVBC/ANNEX_B",
            LineOf(InputSignalATSCCable, channel + "78", "DELIVERY_SYSTEM"));
  EXPECT_EQ("MODULATION = QAM/AUTO", LineOf(InputSignalATSCCable, channel + "78", "MODULATION"));
}

TEST(Dvbv5Writer, WritesTheSegmentInTheMiddle) {
  Exchange exchange(81, InputSignalISDBTerrestrialOneSeg);
  exchange.Channels().resize(1);
  const std::string file = FileOf(exchange);
  EXPECT_NE(std::string::npos,
            file.find("\tDELIVERY_SYSTEM = ISDBT\n\tFREQUENCY = 557142857\n"
                      "\tBANDWIDTH_HZ = 6000000\n\tISDBT_PARTIAL_RECEPTION = 1\n"
                      "\tISDBT_LAYER_ENABLED = 1\n\tISDBT_LAYERA_SEGMENT_COUNT = 1\n"))
      << file;
}

TEST(Dvbv5Writer, KeepsNamesFromEndingEarly) {
  EXPECT_EQ("[a(b))]", TitleOf({"a(b]]"}));
  EXPECT_EQ("[CHANNEL.]", TitleOf({"CHANNEL"}));
  EXPECT_EQ("[Channel.]", TitleOf({"Channel"}));
  EXPECT_EQ("[CHANNEL 4]", TitleOf({"CHANNEL 4"}));
  EXPECT_EQ("[CHANNEL]", TitleOf({""}));
  EXPECT_EQ("[x]", TitleOf({"  x"}));
  EXPECT_EQ("[Mine]", TitleOf({"Theirs", "Mine"}));
}

TEST(Dvbv5Writer, WritesTheNameThatIsAskedFor) {
  Exchange exchange(999, InputSignalDVBTerrestrial);
  AddChannel(exchange, 1, "serviceID=5", {"Theirs", "Mine"});
  interchange::ExportRequest request = exchange.Request();
  request.names = interchange::Names::Broadcast;
  Export out = ExportChannels(*interchange::FindFormat("dvbv5"), request);
  EXPECT_TRUE(out.output.Bytes().starts_with("[Theirs]\n"));
}

TEST(Dvbv5Writer, WritesPolarisationsRatesAndInversions) {
  EXPECT_EQ("POLARIZATION = VERTICAL", Satellite("polarisation=LinearV", "POLARIZATION"));
  EXPECT_EQ("POLARIZATION = LEFT", Satellite("polarisation=CircularL", "POLARIZATION"));
  EXPECT_EQ("POLARIZATION = RIGHT", Satellite("polarisation=CircularR", "POLARIZATION"));
  EXPECT_EQ("", Satellite("", "POLARIZATION"));
  for (const char* rate : {"1/2", "2/3", "3/4", "3/5", "4/5", "5/6", "7/8"}) {
    EXPECT_EQ(std::string("INNER_FEC = ") + rate,
              Satellite(std::string("innerFECRate=") + rate, "INNER_FEC"));
  }
  EXPECT_EQ("INNER_FEC = AUTO", Satellite("innerFECRate=5/11", "INNER_FEC"));
  EXPECT_EQ("INNER_FEC = AUTO", Satellite("", "INNER_FEC"));
  EXPECT_EQ("INVERSION = OFF", Satellite("spectralInversion=normal", "INVERSION"));
  EXPECT_EQ("INVERSION = ON", Satellite("spectralInversion=inverted", "INVERSION"));
  EXPECT_EQ("INVERSION = AUTO", Satellite("spectralInversion=automatic", "INVERSION"));
  EXPECT_EQ("", Satellite("", "INVERSION"));
}

TEST(Dvbv5Writer, WritesWhatIsNotSetAsSecondGeneration) {
  EXPECT_EQ("DELIVERY_SYSTEM = DVBS2", Satellite("", "DELIVERY_SYSTEM"));
  EXPECT_EQ("MODULATION = QAM/AUTO", Satellite("", "MODULATION"));
  EXPECT_EQ("DELIVERY_SYSTEM = DVBS", Satellite("modulation=QPSK", "DELIVERY_SYSTEM"));
  EXPECT_EQ("PILOT = AUTO", Satellite("", "PILOT"));
  EXPECT_EQ("ROLLOFF = AUTO", Satellite("", "ROLLOFF"));
  EXPECT_EQ("", Satellite("modulation=QPSK", "PILOT"));
  // No word: nothing is known of it there.
  EXPECT_EQ("DELIVERY_SYSTEM = DVBS2", Satellite("modulation=80QAM", "DELIVERY_SYSTEM"));
}

TEST(Dvbv5Writer, FillsTransponders) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "serviceID=5 freq=11362000 polarisation=LinearH orbitalPosition=192");
  interchange::ExportRequest request = exchange.Request();
  interchange::Tuning tuning;
  tuning.frequency = 11'361'500;
  tuning.polarisation = BDA_POLARISATION_LINEAR_H;
  tuning.position = 192;
  tuning.system = interchange::System::Second;
  tuning.modulation = BDA_MOD_8PSK;
  tuning.fec = BDA_BCC_RATE_9_10;
  request.tuning.push_back(tuning);
  Export out = ExportChannels(*interchange::FindFormat("dvbv5"), request);
  EXPECT_NE(std::string::npos, out.output.Bytes().find("\tMODULATION = PSK/8\n"));
  EXPECT_NE(std::string::npos, out.output.Bytes().find("\tINNER_FEC = 9/10\n"));
}

TEST(Dvbv5Writer, NamesTheLnb) {
  const auto lnb = [](int low, int high, int switchAt) {
    return Satellite("LNB_LowFreq=" + std::to_string(low * 1000) +
                         " LNB_HighFreq=" + std::to_string(high * 1000) +
                         " LNB_SwitchFreq=" + std::to_string(switchAt * 1000),
                     "LNB");
  };
  EXPECT_EQ("LNB = EXTENDED", lnb(9750, 10600, 11700));
  EXPECT_EQ("LNB = C-BAND", lnb(5150, 5150, 0));
  EXPECT_EQ("LNB = DBS", lnb(11250, 11250, 0));
  EXPECT_EQ("LNB = STANDARD", lnb(10000, 10000, 0));
  EXPECT_EQ("LNB = L10700", lnb(10700, 10700, 0));
  EXPECT_EQ("LNB = L10750", lnb(10750, 10750, 0));
  EXPECT_EQ("LNB = L11300", lnb(11300, 11300, 0));
  EXPECT_EQ("LNB = ENHANCED", lnb(9750, 9750, 0));
  EXPECT_EQ("", lnb(9750, 10600, 11800));
}

TEST(Dvbv5Writer, LeavesOutWhatHasNoServiceId) {
  Exchange exchange(999, InputSignalDVBTerrestrial);
  AddChannel(exchange, 1, "serviceID=0");
  AddChannel(exchange, 2, "serviceID=65536");
  AddChannel(exchange, 3, "serviceID=65535");
  const Export out = exchange.Out("dvbv5");
  EXPECT_EQ(std::vector<std::size_t>{2}, out.output.written);
  EXPECT_EQ("L314 bandwidth, L404 serviceID", CodesOf(out.losses));
}

TEST(Dvbv5Writer, ReportsEachLossUnderItsCode) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1,
             "serviceID=5 innerFECRate=5/11 modulation=QPSK serviceType=25 orbitalPosition=192"
             " PcrPID=5 CA=1 VideoStream[1].pid=33 VideoStream[1].type=27 AudioStream[1].pid=34"
             " AudioStream[1].lang=1364 TeletextStream[1].pid=35 SubtitleStream[1].pid=36"
             " MhpAitStream[1].pid=37 favor=1",
             {"a]b", "", "Net"});
  EXPECT_EQ(
      "L101 CA, L101 MhpAitStream, L101 PcrPID, L101 networkName, L101 orbitalPosition,"
      " L103 AudioStream.lang, L103 SubtitleStream, L103 TeletextStream, L103 VideoStream.type,"
      " L104 favor, L201 name, L201 nameDisplay, L202 innerFECRate, L312 serviceType",
      CodesOf(exchange.Out("dvbv5").losses));
}

}  // namespace

}  // namespace zortunedex::kit
