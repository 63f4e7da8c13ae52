#include "kit/interchange/dvbv5/dvbv5_reader.h"

#include <chrono>

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/interchange/services/channel_values.h"
#include "kit/interchange/services/station_values.h"
#include "kit/interchange/vdr_channels.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Import;
using interchange::Loss;
using interchange::StationValues;

/// What a file becomes in an empty list.
class Dvbv5File {
 public:
  explicit Dvbv5File(const std::string& bytes, InputSignalType signal = InputSignalDVBSatellite,
                     DWORD country = 999)
      : m_exchange(country, signal) {
    m_exchange.Channels().clear();
    Read(bytes);
  }

  void Read(const std::string& bytes) { m_import = m_exchange.In("dvbv5", bytes); }
  Exchange& List() { return m_exchange; }
  const Import& Result() const { return *m_import; }
  std::string Codes() const { return CodesOf(m_import->losses); }
  std::size_t Count() const { return m_import->table.channels.size(); }

  const Channel& At(std::size_t i) const { return m_import->table.channels.at(i); }
  std::uint32_t Number(const char* attribute) const { return Values().Number(attribute); }
  template <typename Word>
  Word WordOf(const char* attribute) const {
    return Values().WordOf<Word>(attribute);
  }
  std::string Name() const { return utf::FromWide(At(0).name); }
  /// "type:pid" of each.
  std::string Streams(const char* element) const {
    std::string text;
    for (const auto& stream : Values().Streams(element)) {
      text += (text.empty() ? "" : " ") + std::to_string(stream.type) + ":" +
              std::to_string(stream.pid);
    }
    return text;
  }
  /// Line of the first loss with the code.
  std::size_t LineOf(Code code) const {
    for (const Loss& loss : m_import->losses.All()) {
      if (loss.code == code) return loss.place.line;
    }
    return 0;
  }

 private:
  StationValues Values() const { return {At(0), m_exchange.Signal(), m_exchange.Narrow()}; }

  Exchange m_exchange;
  std::optional<Import> m_import;
};

const std::string kScanned =
    "[ProSieben]\n\tSERVICE_ID = 17501\n\tDELIVERY_SYSTEM = DVBS\n\tFREQUENCY = 12544750\n";

std::string Scanned(const std::string& lines) { return kScanned + lines; }

TEST(Dvbv5Reader, ReadsWhatAScannerWrites) {
  const Dvbv5File file(
      Scanned("\tVCHANNEL = 3\n\tNETWORK_ID = 1\n\tTRANSPORT_ID = 1107\n\tVIDEO_PID = 511\n"
              "\tAUDIO_PID = 512 515\n\tPID_0b = 50 51\n\tPID_0d = 52\n\tPID_0a = 53\n"
              "\tMODULATION = QPSK\n\tPOLARIZATION = RIGHT\n\tSYMBOL_RATE = 22000000\n"
              "\tINNER_FEC = 5/6\n\tINVERSION = AUTO\n\tLNB = EXTENDED\n"));
  EXPECT_EQ("L312 serviceType, L313 orbitalPosition", file.Codes());
  EXPECT_EQ("ProSieben", file.Name());
  EXPECT_EQ(3U, file.At(0).index);
  EXPECT_EQ(12544750U, file.At(0).frequency);
  EXPECT_EQ(1107, file.At(0).tsid);
  EXPECT_EQ(17501U, file.Number("serviceID"));
  EXPECT_EQ(1U, file.Number("ONID"));
  EXPECT_EQ(1U, file.Number("serviceType"));
  EXPECT_EQ(22000U, file.Number("symbolRate"));
  EXPECT_EQ(9750000U, file.Number("LNB_LowFreq"));
  EXPECT_EQ(10600000U, file.Number("LNB_HighFreq"));
  EXPECT_EQ(11700000U, file.Number("LNB_SwitchFreq"));
  EXPECT_EQ(BDA_POLARISATION_CIRCULAR_R, file.WordOf<Polarisation>("polarisation"));
  EXPECT_EQ(BDA_BCC_RATE_5_6, file.WordOf<BinaryConvolutionCodeRate>("innerFECRate"));
  EXPECT_EQ(BDA_MOD_QPSK, file.WordOf<ModulationType>("modulation"));
  EXPECT_EQ(BDA_SPECTRAL_INVERSION_AUTOMATIC, file.WordOf<SpectralInversion>("spectralInversion"));
  EXPECT_EQ("0:511", file.Streams("VideoStream"));
  EXPECT_EQ("0:512 0:515", file.Streams("AudioStream"));
  EXPECT_EQ("11:50 11:51 13:52 10:53", file.Streams("DsmccStream"));
}

TEST(Dvbv5Reader, TakesAnyLineEndCommentsAndSpelling) {
  const Dvbv5File file(
      "\xEF\xBB\xBF# a comment\r\n\r\n[A [b] c]\r\n service_id=5\r\nDelivery_System = dvbt\r\n"
      "FREQUENCY = 506000000# Berlin\r\n; another\r\n[CHANNEL] # none\nSERVICE_ID = 6\n"
      "DELIVERY_SYSTEM = DVBT",
      InputSignalDVBTerrestrial);
  EXPECT_EQ("", file.Codes());
  ASSERT_EQ(2U, file.Count());
  EXPECT_EQ("A [b] c", file.Name());
  EXPECT_EQ(506000U, file.At(0).frequency);
  EXPECT_EQ(Wide(""), file.At(1).name);
}

TEST(Dvbv5Reader, ReadsTheSampleOfAScan) {
  const std::string sample = BytesOf(ZORTUNEDEX_SAMPLES "/scans/dvbv5-scan.conf");
  const Dvbv5File satellites(sample);
  EXPECT_EQ(4U, satellites.Result().read);
  ASSERT_EQ(3U, satellites.Count());
  EXPECT_EQ("Das Erste HD", satellites.Name());
  EXPECT_EQ(Wide("Bayern 1"), satellites.At(2).name);
  EXPECT_EQ(
      "L110 modulation, L111 ROLLOFF, L111 STREAM_ID, L120 PID_05, L120 PID_06, L312 serviceType,"
      " L313 orbitalPosition, L402 DELIVERY_SYSTEM",
      satellites.Codes());
  const Dvbv5File terrestrial(sample, InputSignalDVBTerrestrial);
  EXPECT_EQ(1U, terrestrial.Count());
  EXPECT_EQ(522000U, terrestrial.At(0).frequency);
}

TEST(Dvbv5Reader, LeavesPrivateStreamsOut) {
  const Dvbv5File file(Scanned("PID_06 = 32 33\nPID_05 = 34\nPID_86 = 35\n"));
  EXPECT_EQ("L120 PID_05, L120 PID_06, L120 PID_86, L313 orbitalPosition", file.Codes());
  EXPECT_EQ(5U, file.LineOf(Code::StreamUnknown));
  EXPECT_EQ("", file.Streams("TeletextStream"));
}

TEST(Dvbv5Reader, TakesThePositionThatIsGivenElseThatOfTheDish) {
  Dvbv5File file(Scanned("SAT_NUMBER = 1\n"));
  EXPECT_EQ("L313 orbitalPosition", file.Codes());
  file.List().Context().dishes = {{1, 192}, {2, -300}};
  file.Read(Scanned("SAT_NUMBER = 1\n"));
  EXPECT_EQ("", file.Codes());
  EXPECT_EQ(300U, file.Number("orbitalPosition"));
  EXPECT_EQ(1U, file.Number("westPosition"));
  interchange::Input input;
  input.bytes = Scanned("SAT_NUMBER = 1\n");
  const std::vector<Channel> none;
  const Import given = ImportChannels(*interchange::FindFormat("dvbv5"), input,
                                      {file.List().Context(), none, 130}, interchange::Into::Empty);
  const StationValues values(given.table.channels.at(0), InputSignalDVBSatellite,
                             file.List().Narrow());
  EXPECT_EQ(130U, values.Number("orbitalPosition"));
  file.Read(Scanned("SAT_NUMBER = -1\n"));
  EXPECT_EQ("L313 orbitalPosition", file.Codes());
}

TEST(Dvbv5Reader, ReportsWhatTheListHasNoWordFor) {
  const auto codes = [](const std::string& lines) { return Dvbv5File(Scanned(lines)).Codes(); };
  const std::string position = ", L313 orbitalPosition";
  EXPECT_EQ("L110 innerFECRate" + position, codes("INNER_FEC = 9/10\n"));
  EXPECT_EQ("L110 innerFECRate" + position, codes("INNER_FEC = 8/9\n"));
  EXPECT_EQ("L110 INNER_FEC" + position, codes("INNER_FEC = 19/20\n"));
  EXPECT_EQ("L110 POLARIZATION" + position, codes("POLARIZATION = SIDEWAYS\n"));
  EXPECT_EQ("L110 LNB" + position, codes("LNB = AMAZONAS\n"));
  EXPECT_EQ(
      "L110 modulation" + position,
      Dvbv5File("[X]\nSERVICE_ID = 5\nDELIVERY_SYSTEM = DVBS2\nMODULATION = PSK/8\n").Codes());
  EXPECT_EQ("L202 SYMBOL_RATE" + position, codes("SYMBOL_RATE = 27500400\n"));
  EXPECT_EQ("L101 FREQ_BPF" + position, codes("FREQ_BPF = 1210\n"));
  EXPECT_EQ("L313 orbitalPosition", codes("INNER_FEC = NONE\nPOLARIZATION = OFF\n"));
}

TEST(Dvbv5Reader, ReportsValuesOfTheSecondGeneration) {
  const std::string second =
      "[X]\nSERVICE_ID = 5\nDELIVERY_SYSTEM = DVBS2\nFREQUENCY = 11000000\n"
      "MODULATION = QAM/AUTO\n";
  EXPECT_EQ(
      "L111 PILOT, L111 PLS_CODE, L111 ROLLOFF, L111 STREAM_ID, L313 orbitalPosition",
      Dvbv5File(second + "STREAM_ID = 5\nROLLOFF = 25\nPILOT = ON\nPLS_CODE = 121212\n").Codes());
  EXPECT_EQ("L313 orbitalPosition",
            Dvbv5File(second + "STREAM_ID = 4294967295\nROLLOFF = AUTO\nPILOT = AUTO\n").Codes());
  EXPECT_EQ("L313 orbitalPosition", Dvbv5File(Scanned("STREAM_ID = 0\nROLLOFF = 35\n")).Codes());
  EXPECT_EQ("L101 modulation, L111 DELIVERY_SYSTEM",
            Dvbv5File("[X]\nSERVICE_ID = 5\nDELIVERY_SYSTEM = DVBT2\nFREQUENCY = 506000000\n"
                      "MODULATION = QAM/256\n",
                      InputSignalDVBTerrestrial)
                .Codes());
}

TEST(Dvbv5Reader, LeavesOutOtherSignals) {
  const auto codes = [](const std::string& system, InputSignalType signal,
                        const std::string& id = "5") {
    const Dvbv5File file("[X]\nSERVICE_ID = " + id + "\nFREQUENCY = 557142857\n" + system, signal);
    return file.Codes() + "/" + std::to_string(file.Count());
  };
  constexpr InputSignalType kCable = InputSignalATSCCable;
  EXPECT_EQ("L402 DELIVERY_SYSTEM/0", codes("DELIVERY_SYSTEM = DVBC/ANNEX_A\n", kCable));
  EXPECT_EQ("L402 DELIVERY_SYSTEM/0", codes("DELIVERY_SYSTEM = TURBO\n", InputSignalDVBSatellite));
  EXPECT_EQ("L402 DELIVERY_SYSTEM/0", codes("DELIVERY_SYSTEM = DVBT\n", InputSignalDVBSatellite));
  EXPECT_EQ("L402 DELIVERY_SYSTEM/0", codes("", InputSignalDVBSatellite));
  EXPECT_EQ("L402 DELIVERY_SYSTEM/0",
            codes("DELIVERY_SYSTEM = ISDBT\n", InputSignalISDBTerrestrialOneSeg));
  const std::string partial = "DELIVERY_SYSTEM = ISDBT\nISDBT_PARTIAL_RECEPTION = 1\n";
  EXPECT_EQ("L314 physicalChannel/1", codes(partial, InputSignalISDBTerrestrialOneSeg));
  EXPECT_EQ("L402 DELIVERY_SYSTEM/0",
            codes(partial + "ISDBT_LAYER_ENABLED = 7\n", InputSignalISDBTerrestrialOneSeg));
  EXPECT_EQ(
      "L101 ISDBT_LAYER_ENABLED, L314 physicalChannel/1",
      codes(partial + "ISDBT_LAYER_ENABLED = 7\n", InputSignalISDBTerrestrialOneSeg, "0x588"));
  EXPECT_EQ("L314 physicalChannel/1",
            codes("DELIVERY_SYSTEM = ATSC\nMODULATION = VSB/8\n", InputSignalATSCAntenna));
  EXPECT_EQ("L101 FREQUENCY, L101 modulation/1",
            codes("DELIVERY_SYSTEM = ATSC\nMODULATION = QAM/256\n", kCable));
}

TEST(Dvbv5Reader, LeavesOutWhatHasNoServiceId) {
  const Dvbv5File file(
      "[X]\nDELIVERY_SYSTEM = DVBS\nFREQUENCY = 11000000\n[Y]\nSERVICE_ID = 0\n"
      "DELIVERY_SYSTEM = DVBS\n");
  EXPECT_EQ("L404 SERVICE_ID", file.Codes());
  EXPECT_EQ(2U, file.Result().read);
  EXPECT_EQ(0U, file.Count());
}

TEST(Dvbv5Reader, ReadsRfChannelsAndVirtualOnes) {
  const Dvbv5File file(
      "[X]\nSERVICE_ID = 5\nDELIVERY_SYSTEM = ATSC\nFREQUENCY = 557028615\n"
      "VCHANNEL = 4.1\nVIDEO_PID = 49\n",
      InputSignalATSCAntenna, 1);
  EXPECT_EQ("L312 serviceType, L314 physicalChannel", file.Codes());
  EXPECT_EQ(28U, file.At(0).number);
  EXPECT_EQ(4U, file.Number("majorChannel"));
  EXPECT_EQ(1U, file.Number("minorChannel"));
  EXPECT_EQ(2U, file.Number("serviceType"));
}

TEST(Dvbv5Reader, TellsRadioByItsStreams) {
  const Dvbv5File file(Scanned("AUDIO_PID = 33\n"));
  EXPECT_EQ(2U, file.Number("serviceType"));
}

TEST(Dvbv5Reader, AccountsForEveryLine) {
  const Dvbv5File file(
      "stray = 1\n[X]\nSERVICE_ID = 5\nDELIVERY_SYSTEM = DVBS\nno key\n= none\n"
      "SERVICE_ID = 6\nSERVICE_ID = 7\nHUMIDITY = 40\nNETWORK_ID = 65536\n"
      "VIDEO_PID = 33 x 8192 34\n[not closed\nSERVICE_ID = 8\n");
  EXPECT_EQ(
      "L312 serviceType, L313 orbitalPosition, L501 line, L502 HUMIDITY, L503 NETWORK_ID,"
      " L503 VIDEO_PID",
      file.Codes());
  std::vector<std::size_t> lines;
  for (const Loss& loss : file.Result().losses.All()) {
    if (loss.code == Code::LineNotUnderstood) lines.push_back(loss.place.line);
  }
  EXPECT_EQ((std::vector<std::size_t>{1, 5, 6, 3, 7, 12}), lines);
  EXPECT_EQ(9U, file.LineOf(Code::KeyUnknown));
  EXPECT_EQ(1U, file.Count());
  EXPECT_EQ(7U, file.Number("serviceID"));
  EXPECT_EQ("0:33 0:34", file.Streams("VideoStream"));
}

TEST(Dvbv5Reader, RefusesWhatIsNothingOfTheKind) {
  const Exchange exchange(49, InputSignalDVBSatellite);
  for (const std::string& bytes :
       {std::string(), std::string("[]\n"), std::string("<?xml?>\n<a/>"), std::string("{\n[\n]\n}"),
        std::string("S 11509500 V 22000000 3/4\n"), std::string("\0\0[\0]\n", 6)}) {
    ExpectRaised<Failure>("the file is no channel file of libdvbv5",
                          [&] { exchange.In("dvbv5", bytes); });
  }
}

/// Seconds that a file takes.
double TimeOf(const Exchange& exchange, const std::string& bytes) {
  const auto start = std::chrono::steady_clock::now();
  exchange.In("dvbv5", bytes);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Dvbv5Reader, TakesTimeInProportionToHostileFiles) {
  const Exchange exchange(999, InputSignalDVBSatellite);
  const auto repeated = [](const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
  };
  const std::string head = Scanned("");
  const auto expectLinear = [&](auto make) {
    TimeOf(exchange, make(10));
    const double once = TimeOf(exchange, make(4'000));
    const double tenfold = TimeOf(exchange, make(40'000));
    EXPECT_LT(tenfold, 40 * once + 0.5);
  };
  expectLinear([&](std::size_t n) { return head + "AUDIO_PID = " + repeated("17 ", n) + "\n"; });
  expectLinear([&](std::size_t n) { return head + repeated(std::string("\0x\n", 3), n); });
  expectLinear([&](std::size_t n) { return head + repeated("PID_0b = 5\n", n); });
  expectLinear([&](std::size_t n) { return head + repeated("LNB = DBS\n", n); });
  expectLinear([&](std::size_t n) { return "[" + repeated("]name", n) + "]\n" + head.substr(12); });
  expectLinear([&](std::size_t n) { return head + repeated("K=" + std::to_string(n) + "9\n", n); });
  expectLinear([&](std::size_t n) { return head + "FREQUENCY = " + repeated("9", 10 * n); });
}

}  // namespace

}  // namespace zortunedex::kit
