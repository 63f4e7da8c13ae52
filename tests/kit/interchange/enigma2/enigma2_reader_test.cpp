#include "kit/interchange/enigma2/enigma2_reader.h"

#include <chrono>
#include <map>

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/interchange/services/station_values.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Import;
using interchange::StationValues;

using Files = std::map<std::string, std::string>;

/// What a folder of settings becomes in an empty list.
class Enigma2Folder {
 public:
  explicit Enigma2Folder(const Files& files, InputSignalType signal = InputSignalDVBSatellite)
      : m_exchange(999, signal) {
    interchange::Input input;
    input.isFolder = true;
    for (const auto& [name, bytes] : files) input.names.push_back(name);
    input.read = [&files](const std::string& name) -> std::optional<std::string> {
      const auto found = files.find(name);
      return found == files.end() ? std::nullopt : std::optional(found->second);
    };
    m_import = m_exchange.In("enigma2", input);
  }

  std::string Codes() const { return CodesOf(m_import->losses); }
  std::size_t Count() const { return m_import->table.channels.size(); }
  const Import& Result() const { return *m_import; }
  const Channel& At(std::size_t i) const { return m_import->table.channels.at(i); }
  StationValues Values(std::size_t i = 0) const {
    return {At(i), m_exchange.Signal(), m_exchange.Narrow()};
  }
  std::string Names() const {
    std::string names;
    for (const Channel& channel : m_import->table.channels) {
      names += (names.empty() ? "" : ",") + utf::FromWide(channel.displayName);
    }
    return names;
  }

 private:
  Exchange m_exchange;
  std::optional<Import> m_import;
};

const std::string kTransponder = "00c00000:0453:0001\n\ts 12544750:22000000:0:4:192:2:0\n/\n";

std::string Four(const std::string& services, const std::string& transponders = kTransponder) {
  return "eDVB services /4/\ntransponders\n" + transponders + "end\nservices\n" + services +
         "end\nsigned\n";
}

std::string Service(const std::string& id, const std::string& name,
                    const std::string& data = "p:") {
  return id + ":00c00000:0453:0001:1:0\n" + name + "\n" + data + "\n";
}

std::string DataCodes(const std::string& data) {
  return Enigma2Folder({{"lamedb", Four(Service("445d", "A", data))}}).Codes();
}

std::string TransponderCodes(const std::string& parameters) {
  return Enigma2Folder({{"lamedb", Four(Service("445d", "A"),
                                        "00c00000:0453:0001\n\t" + parameters + "\n/\n")}})
      .Codes();
}

void ExpectProSieben(const Enigma2Folder& folder) {
  EXPECT_EQ("L204 networkName", folder.Codes());
  ASSERT_EQ(1U, folder.Count());
  EXPECT_EQ("ProSieben", folder.Names());
  EXPECT_EQ(12544750U, folder.At(0).frequency);
  EXPECT_EQ(1107, folder.At(0).tsid);
  const StationValues values = folder.Values();
  EXPECT_EQ(0x445DU, values.Number("serviceID"));
  EXPECT_EQ(1U, values.Number("ONID"));
  EXPECT_EQ(25U, values.Number("serviceType"));
  EXPECT_EQ(22000U, values.Number("symbolRate"));
  EXPECT_EQ(192U, values.Number("orbitalPosition"));
  EXPECT_EQ(511U, values.Number("PcrPID"));
  EXPECT_EQ(0x1702U, values.Number("CA"));
  EXPECT_EQ("P7S1", values.Text("networkName"));
  EXPECT_EQ(BDA_POLARISATION_LINEAR_V, values.WordOf<Polarisation>("polarisation"));
  EXPECT_EQ(BDA_BCC_RATE_5_6, values.WordOf<BinaryConvolutionCodeRate>("innerFECRate"));
  EXPECT_EQ(BDA_MOD_QPSK, values.WordOf<ModulationType>("modulation"));
  ASSERT_EQ(1U, values.Streams("VideoStream").size());
  EXPECT_EQ(27U, values.Streams("VideoStream")[0].type);
  EXPECT_EQ(511U, values.Streams("VideoStream")[0].pid);
  ASSERT_EQ(2U, values.Streams("AudioStream").size());
  EXPECT_EQ(3U, values.Streams("AudioStream")[0].type);
  EXPECT_EQ(6U, values.Streams("AudioStream")[1].type);
  EXPECT_EQ(1U, values.Streams("TeletextStream").size());
}

TEST(Enigma2Reader, ReadsBothForms) {
  const std::string data = "p:P7S1,c:0001ff,c:010200,c:040203,c:020021,c:0301ff,c:050001,C:1702";
  ExpectProSieben(Enigma2Folder(
      {{"lamedb", Four("445d:00c00000:0453:0001:25:0\nProSieben\n" + data + "\n",
                       "00C00000:0453:0001\n\ts 12544750:22000000:1:4:192:2:0\n/\n")}}));
  ExpectProSieben(Enigma2Folder(
      {{"lamedb5",
        "eDVB services /5/\n# a comment\nt:00c00000:0453:0001,s:12544750:22000000:1:4:192:2:0\n"
        "s:445d:00c00000:0453:0001:25:0:0,\"ProSieben\"," +
            data + "\n"}}));
}

TEST(Enigma2Reader, FollowsTheBouquets) {
  Files files;
  files["lamedb"] = Four(Service("1", "A") + Service("2", "B") + Service("3", "C") +
                         Service("4", "D") + Service("5", "E"));
  files["bouquets.tv"] =
      "#NAME Bouquets\n"
      "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.favourites.tv\" ORDER BY bouquet\n"
      "#SERVICE: 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.a.tv\" ORDER BY bouquet\n"
      "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"../../elsewhere\" ORDER BY bouquet\n";
  files["bouquets.radio"] = "#NAME Bouquets\n";
  files["userbouquet.a.tv"] =
      "#NAME A\r\n#SERVICE 1:0:1:3:453:1:C00000:0:0:0:\r\n"
      "#SERVICE 1:64:0:0:0:0:0:0:0:0::-- marker --\n#DESCRIPTION -- marker --\n"
      "#SERVICE 1:0:1:1:453:1:c00000:0:0:0:\n#DESCRIPTION: Mine\n"
      "#SERVICE 1:0:1:3:453:1:C00000:0:0:0:\n#SERVICE 1:0:1:77:453:1:C00000:0:0:0:\n"
      "#SERVICE 4097:0:1:0:0:0:0:0:0:0:http%3a//x:X\nstray\n";
  files["userbouquet.favourites.tv"] =
      "#NAME F\n#SERVICE 1:0:1:4:453:1:C00000:0:0:0:\n#SERVICE 1:0:1:1:453:1:C00000:0:0:0:\n";
  const Enigma2Folder folder(files);
  EXPECT_EQ("C,Mine,D,B,E", folder.Names());
  EXPECT_EQ("L101 #SERVICE, L404 #SERVICE, L501 #SERVICE", folder.Codes());
  EXPECT_EQ(0U, folder.At(0).favorite);
  EXPECT_EQ(1U, folder.At(1).favorite);
  EXPECT_EQ(1U, folder.At(2).favorite);
}

TEST(Enigma2Reader, ReportsWhatTheListHasNoWordFor) {
  const std::string base = "s 11000000:22000000:0:";
  EXPECT_EQ("", TransponderCodes(base + "0:192:2:0"));
  EXPECT_EQ("", TransponderCodes(base + "15:192:2:0:0:0:0:2"));
  for (const char* rate : {"6", "9", "10"}) {
    EXPECT_EQ("L110 innerFECRate", TransponderCodes(base + rate + ":192:2:0"));
  }
  EXPECT_EQ("L110 innerFECRate", TransponderCodes(base + "99:192:2:0"));
  EXPECT_EQ("", TransponderCodes(base + "0:192:2:0:1:0:3:2"));
  EXPECT_EQ("L110 modulation, L111 pilot, L111 rolloff",
            TransponderCodes(base + "0:192:2:0:1:2:0:1"));
  EXPECT_EQ("L111 is_id", TransponderCodes(base + "0:192:2:0:1:0:3:2:5:1:262140"));
  EXPECT_EQ("L202 symbolRate", TransponderCodes("s 11000000:22000400:0:0:192:2:0"));
  EXPECT_EQ("L313 orbitalPosition, L503 orbitalPosition", TransponderCodes(base + "0:4000:2:0"));
}

TEST(Enigma2Reader, ReadsPositionsOfBothForms) {
  for (const char* position : {"-300", "3300"}) {
    const Enigma2Folder folder(
        {{"lamedb",
          Four(Service("445d", "A"), std::string("00c00000:0453:0001\n\ts ") +
                                         "11000000:22000000:0:0:" + position + ":2:0\n/\n")}});
    EXPECT_EQ(300U, folder.Values().Number("orbitalPosition"));
    EXPECT_EQ(1U, folder.Values().Number("westPosition"));
  }
}

TEST(Enigma2Reader, ReadsTerrestrialTransponders) {
  const auto codes = [](const std::string& parameters) {
    const Enigma2Folder folder({{"lamedb", Four("1:eeee0000:1:2:1:0\nA\np:\n",
                                                "eeee0000:1:2\n\tt " + parameters + "\n/\n")}},
                               InputSignalDVBTerrestrial);
    return folder.Codes() + "/" + std::to_string(folder.At(0).frequency);
  };
  EXPECT_EQ("L101 bandwidth/522000", codes("522000000:0:5:5:3:2:4:4:2:0:0:0"));
  EXPECT_EQ("/522000", codes("522000000:3:5:5:3:2:4:4:2"));
  EXPECT_EQ(
      "L101 code_rate_HP, L101 guard_interval, L101 modulation, L111 plp_id, L111 system,"
      " L202 freq/522167",
      codes("522166667:3:1:5:2:2:3:4:2:0:1:7"));
}

TEST(Enigma2Reader, ReadsData) {
  EXPECT_EQ("L312 VideoStream.type", DataCodes("p:,c:000021"));
  EXPECT_EQ("L112 CA", DataCodes("p:,C:1702,C:098c,C:1702,C:0000"));
  EXPECT_EQ("L101 f", DataCodes("p:,f:40"));
  EXPECT_EQ("", DataCodes("p:,f:0,"));
  EXPECT_EQ("L502 c, L502 data", DataCodes("p:,c:060001,x:9"));
  EXPECT_EQ("L503 C, L503 c", DataCodes("p:,c:002000,c:00zz,c:,c:0,C:12345,C:1,C:x"));
  EXPECT_EQ("L110 VideoStream.type, L312 VideoStream.type", DataCodes("p:,c:000021,c:050009"));
}

TEST(Enigma2Reader, LeavesOutOtherSignalsAndWhatHasNoTransponder) {
  const Enigma2Folder folder(
      {{"lamedb",
        Four("1:ffff0000:1:2:1:0\nCable\np:\n2:ffff0000:9:9:1:0\nNone\np:\n" +
                 Service("0", "Zero") + Service("1", "A") + Service("1", "Again"),
             kTransponder + "ffff0000:1:2\n\tc 522000000:6900000:2:5:0:0:0\n/\n" + kTransponder)}});
  EXPECT_EQ("A", folder.Names());
  EXPECT_EQ("L402 transponder, L403 serviceID, L403 transponder, L404 serviceID, L404 transponder",
            folder.Codes());
  EXPECT_EQ(5U, folder.Result().read);
}

TEST(Enigma2Reader, AccountsForEveryLine) {
  const Enigma2Folder folder(
      {{"lamedb", Four("nothing\n" + Service("1", "A"), "what\n" + kTransponder + "\ts 1:2\n")}});
  EXPECT_EQ("L501 line", folder.Codes());
  ASSERT_EQ(3U, folder.Result().losses.All().size());
  EXPECT_EQ(3U, folder.Result().losses.All()[0].place.line);
  EXPECT_EQ(7U, folder.Result().losses.All()[1].place.line);
  EXPECT_EQ(10U, folder.Result().losses.All()[2].place.line);
  const Enigma2Folder five(
      Files{{"lamedb5", "eDVB services /5/\nt:0,s:\nx\ns:1:2:3:4:1:0,name\n"}});
  EXPECT_EQ(3U, five.Result().losses.All().size());
  EXPECT_EQ("L501 line", five.Codes());
}

TEST(Enigma2Reader, RefusesWhatIsNothingOfTheKind) {
  ExpectRaised<Failure>("the folder has neither lamedb nor lamedb5",
                        [] { Enigma2Folder folder(Files{}); });
  for (const char* bytes : {"", "eDVB services /3/\n", "[x]\n", "\n"}) {
    ExpectRaised<Failure>("the file is no lamedb of the fourth or fifth form", [&] {
      Enigma2Folder folder(Files{{"lamedb", bytes}});
    });
  }
}

double SecondsOf(const Files& files) {
  const auto start = std::chrono::steady_clock::now();
  Enigma2Folder folder(files);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Enigma2Reader, TakesTimeInProportionToHostileFiles) {
  const auto repeated = [](const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
  };
  const auto expectLinear = [](auto make) {
    const double once = SecondsOf(make(4'000));
    const double tenfold = SecondsOf(make(40'000));
    EXPECT_LT(tenfold, 40 * once + 0.5);
  };
  expectLinear([&](std::size_t n) {
    return Files{{"lamedb", Four(Service("1", repeated("n", 10 * n), repeated(",c:00", n)))}};
  });
  expectLinear([&](std::size_t n) {
    return Files{{"lamedb", Four(Service("1", "A", repeated(",C:1234,C:ffff,c:010001", n)))}};
  });
  expectLinear([&](std::size_t n) {
    return Files{{"lamedb", Four(repeated(std::string("\0\n", 2), n), repeated("1:2:3\n", n))}};
  });
  expectLinear([&](std::size_t n) {
    return Files{{"lamedb", Four(Service("1", "A"), "00c00000:0453:0001\n\ts " + repeated("9", n) +
                                                        repeated(":1", n) + "\n")}};
  });
  expectLinear([&](std::size_t n) {
    return Files{
        {"lamedb", Four("")},
        {"bouquets.tv", repeated("#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"u\" x\n", n)},
        {"u", repeated("#SERVICE 1:0:1:1:453:1:C00000:0:0:0:\n#DESCRIPTION x\n", n)}};
  });
}

}  // namespace

}  // namespace zortunedex::kit
