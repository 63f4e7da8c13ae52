// Playlists: what players get, and what comes back of them.
#include <set>

#include "kit/failure.h"
#include "kit/interchange/vdr_channels.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

using interchange::Export;
using interchange::ExportRequest;
using interchange::Import;

Export Playlist(const Exchange& exchange, const std::string& urlTemplate,
                const std::string& host = {}) {
  ExportRequest request = exchange.Request();
  request.urlTemplate = urlTemplate;
  request.satipHost = host;
  return interchange::ExportChannels(*interchange::FindFormat("m3u"), request);
}

std::string PlaylistAddress(InputSignalType signal, const std::string& values,
                            const std::string& urlTemplate, const std::string& host = {},
                            const ChannelTexts& texts = {"Name"}) {
  Exchange exchange(999, signal);
  AddChannel(exchange, 3, values, texts);
  std::string bytes = Playlist(exchange, urlTemplate, host).output.Bytes();
  bytes.pop_back();
  return bytes.substr(bytes.rfind('\n') + 1);
}

constexpr const char* kTransponder =
    "freq=12544750 orbitalPosition=192 polarisation=LinearH symbolRate=22000 innerFECRate=5/6 "
    "serviceID=17500 ONID=1 TSID=1107 ";

TEST(M3uWriter, WritesEntriesForPlayers) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 3, std::string(kTransponder) + "modulation=QPSK serviceType=1 favor=1",
             {"Name \"one\"", "Mine, too"});
  AddChannel(exchange, 7,
             "ONID=1 TSID=2 serviceID=3 serviceType=2 orbitalPosition=300 westPosition=1",
             {"Radio"});
  EXPECT_EQ(
      "#EXTM3U\n"
      "#EXTINF:-1 tvg-chno=\"3\" tvg-id=\"S19.2E-1-1107-17500\" tvg-name=\"Name 'one'\" "
      "group-title=\"TV;Favourites\",Mine, too\n"
      "#EXTVLCOPT:program=17500\n"
      "rtsp://h/?src=1&freq=12544.75&pol=h&msys=dvbs&mtype=qpsk&sr=22000&fec=56&pids=all\n"
      "#EXTINF:-1 tvg-chno=\"7\" tvg-id=\"S30.0W-1-2-3\" tvg-name=\"Radio\" group-title=\"Radio\" "
      "radio=\"true\",Radio\n"
      "#EXTVLCOPT:program=3\n"
      "rtsp://h/?src=1&freq=0&msys=dvbs2&sr=0&pids=all\n",
      Playlist(exchange, "", "h").output.Bytes());
}

TEST(M3uWriter, FillsTemplates) {
  EXPECT_EQ(
      "http://h/3/N%C3%A4me%20%2F1?s=17500-1107-1&f=12544750000,12544.75&p=h&sr=22000&c=56&dvbs2",
      PlaylistAddress(InputSignalDVBSatellite, kTransponder,
                      "http://h/{index}/{name}?s={sid}-{tsid}-{onid}&f={freq_hz},{freq_mhz}&p={pol}"
                      "&sr={sr}&c={fec}&{msys}",
                      "", {"N\xC3\xA4me /1"}));
  EXPECT_EQ("x dvbt 474",
            PlaylistAddress(InputSignalDVBTerrestrial, "freq=474000", "x {msys} {freq_mhz}"));
  EXPECT_EQ("[][]", PlaylistAddress(InputSignalDVBSatellite, "", "[{pol}][{fec}]"));
  for (const auto& [signal, word] :
       {std::pair(InputSignalATSCAntenna, "atsc"), std::pair(InputSignalATSCCable, "qam"),
        std::pair(InputSignalISDBTerrestrialOneSeg, "isdbt"),
        std::pair(InputSignalTDMBMobile, "tdmb"), std::pair(InputSignalFMRadio, "fm"),
        std::pair(InputSignalAnalogCable, "analog"), std::pair(InputSignalDVBHandheld, "dvbh")}) {
    EXPECT_EQ(word, PlaylistAddress(signal, "", "{msys}"));
  }
}

TEST(M3uWriter, RefusesTemplatesThatNameNoValue) {
  const Exchange exchange(49, InputSignalDVBSatellite);
  ExpectRaised<Failure>("the template names {sidd}, which is no value of a channel",
                        [&] { Playlist(exchange, "http://h/{sidd}"); });
  ExpectRaised<Failure>("the template has a { without a }",
                        [&] { Playlist(exchange, "http://h/{sid"); });
  ExpectRaised<Failure>("a playlist needs addresses: --url TEMPLATE, or --target satip --host HOST",
                        [&] { Playlist(exchange, ""); });
}

TEST(M3uWriter, AsksServersForTransponders) {
  EXPECT_EQ("rtsp://h/?freq=498&bw=8&msys=dvbt&pids=all",
            PlaylistAddress(InputSignalDVBTerrestrial, "freq=498000", "", "h"));
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 3, kTransponder);
  exchange.Context().dishes = {{2, 130}, {3, 192}};
  EXPECT_NE(std::string::npos, Playlist(exchange, "", "h").output.Bytes().find("/?src=3&"));
}

TEST(M3uWriter, LeavesOutWhatServersDoNotKnow) {
  for (const auto& [country, signal] :
       {std::pair<DWORD, InputSignalType>{1, InputSignalATSCAntenna},
        {81, InputSignalISDBTerrestrialOneSeg},
        {82, InputSignalTDMBMobile},
        {49, InputSignalFMRadio},
        {49, InputSignalAnalogCable}}) {
    const Exchange exchange(country, signal);
    Export out = Playlist(exchange, "", "h");
    EXPECT_EQ("#EXTM3U\n", out.output.Bytes());
    EXPECT_EQ("L401 channel", CodesOf(out.losses));
    EXPECT_EQ(exchange.Channels().size(), out.losses.All().size());
  }
}

TEST(M3uWriter, GivesHandheldsTheirOwnAddresses) {
  const auto address = [](const std::string& values) {
    return PlaylistAddress(InputSignalDVBHandheld, values, "");
  };
  EXPECT_EQ("rtp://@239.255.1.10:4096",
            address("VideoIP=239.255.1.10 VideoPort=4096 AudioIP=239.255.1.11 AudioPort=4098"));
  EXPECT_EQ("rtp://@[ff15::1]:4098", address("AudioIP=ff15::1 AudioPort=4098"));
  Exchange exchange(999, InputSignalDVBHandheld);
  AddChannel(exchange, 1, "");
  EXPECT_EQ("L401 channel", CodesOf(Playlist(exchange, "").losses));
}

TEST(M3uWriter, NamesChannelsByWhatReceiversTellThemApartBy) {
  const auto id = [](InputSignalType signal, const std::string& values) {
    Exchange exchange(999, signal);
    AddChannel(exchange, 3, values);
    const std::string bytes = Playlist(exchange, "x").output.Bytes();
    const std::size_t place = bytes.find("tvg-id=\"");
    if (place == std::string::npos) return std::string();
    return bytes.substr(place + 8, bytes.find('"', place + 8) - place - 8);
  };
  EXPECT_EQ("T-8468-770-1", id(InputSignalDVBTerrestrial, "ONID=8468 TSID=770 serviceID=1"));
  EXPECT_EQ("H-1-2-3", id(InputSignalDVBHandheld, "ONID=1 TSID=2 serviceID=3"));
  EXPECT_EQ("A33-2.1",
            id(InputSignalATSCAntenna, "physicalChannel=33 majorChannel=2 minorChannel=1"));
  EXPECT_EQ("C79-2.1",
            id(InputSignalATSCCable, "physicalChannel=79 majorChannel=2 minorChannel=1"));
  EXPECT_EQ("1SEG-32736-1024",
            id(InputSignalISDBTerrestrialOneSeg, "NetworkID=32736 ServiceID=1024"));
  EXPECT_EQ("DMB-e1234567-181280", id(InputSignalTDMBMobile, "ServiceID=3777185127 freq=181280"));
  EXPECT_EQ("FM-88800", id(InputSignalFMRadio, "freq=88800"));
  EXPECT_EQ("TV-224250", id(InputSignalAnalogCable, "freq=224250"));
  EXPECT_EQ("", id(InputSignalDVBTerrestrial, "ONID=8468 TSID=770"));
}

/// Every sample set leaves, and what stands in the lines of the file is told from what does not.
TEST(M3uWriter, ReportsWhatPlaylistsDoNotHold) {
  for (const file_scan::ChannelSet& set : SampleSets()) {
    SCOPED_TRACE(SignalTypeName(set.signal));
    const Exchange exchange(set.country, set.signal);
    const Export out = Playlist(exchange, "http://h/{index}");
    EXPECT_EQ(set.channels, out.output.written.size());
    std::set<std::string> fields;
    for (const auto& loss : out.losses.All()) fields.insert(loss.field);
    for (const char* held : {"index", "name"}) EXPECT_FALSE(fields.contains(held)) << held;
    const bool hasTuning =
        set.signal != InputSignalATSCAntenna && set.signal != InputSignalATSCCable;
    EXPECT_EQ(hasTuning, fields.contains("freq") || fields.contains("Frequency"));
  }
}

/// Names of the channels that a file makes of a list of four, with a star for favourites.
std::string OrderOf(const std::string& bytes, std::string* codes = nullptr) {
  Exchange exchange(999, InputSignalDVBSatellite);
  AddChannel(exchange, 1, "ONID=1 TSID=2 serviceID=11 orbitalPosition=192 favor=1", {"One"});
  AddChannel(exchange, 2, "ONID=1 TSID=2 serviceID=12 orbitalPosition=192", {"Two", "Mine"});
  AddChannel(exchange, 3, "ONID=1 TSID=2 serviceID=13 orbitalPosition=192", {"Same"});
  AddChannel(exchange, 4, "ONID=1 TSID=2 serviceID=14 orbitalPosition=192", {"Same"});
  interchange::Input input;
  input.bytes = bytes;
  const Import made = interchange::ImportChannels(*interchange::FindFormat("m3u"), input,
                                                  {exchange.Context(), exchange.Channels()},
                                                  interchange::Into::Append);
  if (codes != nullptr) *codes = CodesOf(made.losses);
  std::string text;
  for (const Channel& channel : made.table.channels) {
    const std::uint32_t service = station_blocks::Fetch(channel.block.data() + 4, 4);
    text += (text.empty() ? "" : " ") + std::to_string(channel.index) + ":" +
            std::to_string(service) + (channel.favorite != 0 ? "*" : "");
  }
  return text;
}

TEST(M3uReader, TakesTheOrderOfChannelsItKnows) {
  // By identifier, by the name that is shown, by that of the broadcaster; the rest follows.
  EXPECT_EQ("1:13 2:12 3:11* 4:14",
            OrderOf("#EXTM3U\n#EXTINF:-1 tvg-id=\"S19.2E-1-2-13\",Other name\nx\n"
                    "#EXTINF:-1,Mine\nx\n#EXTINF:-1 tvg-name=\"One\" ,What\nx\n"));
  // Two of one name are taken in turn.
  EXPECT_EQ("1:13 2:14 3:12 4:11*",
            OrderOf("#EXTINF:-1,Same\r\nx\r\n#EXTINF:-1,Same\r\nx\r\n#EXTINF:-1,Two\r\nx\r\n"));
  EXPECT_EQ("1:11* 2:12 3:13 4:14", OrderOf("#EXTM3U\n"));
}

TEST(M3uReader, TakesNumbersThatAscend) {
  EXPECT_EQ("5:13 9:12 10:11* 11:14",
            OrderOf("#EXTINF:-1 tvg-chno=\"5\",Same\nx\n#EXTINF:-1 tvg-chno=9,Mine\nx\n"));
  std::string codes;
  EXPECT_EQ("1:13 2:12 3:11* 4:14",
            OrderOf("#EXTINF:-1 tvg-chno=\"9\",Same\nx\n#EXTINF:-1 tvg-chno=5,Mine\nx\n", &codes));
  EXPECT_EQ("L104 index", codes);
}

TEST(M3uReader, TakesFavouritesWhereAFileHasSome) {
  EXPECT_EQ("1:12* 2:11 3:13 4:14",
            OrderOf("#EXTINF:-1 group-title=\"TV;Favourites\",Mine\nx\n#EXTINF:-1,One\nx\n"));
  EXPECT_EQ("1:12* 2:11 3:13 4:14",
            OrderOf("#EXTINF:-1,Mine\n#EXTGRP:favorites\nx\n#EXTINF:-1,One\nx\n"));
  EXPECT_EQ("1:12 2:11* 3:13 4:14",
            OrderOf("#EXTINF:-1 group-title=\"News\",Mine\nx\n#EXTINF:-1,One\nx\n"));
}

TEST(M3uReader, TakesListsOfNumbersNamesAndIdentifiers) {
  std::string codes;
  EXPECT_EQ("1:14 2:12 3:11* 4:13",
            OrderOf("2;Whatever;1-2-12\n3;One;9-9-9\n1;Semi;colon;1-2-14\n", &codes));
  EXPECT_EQ("", codes);
}

TEST(M3uReader, NamesWhatItDoesNotTake) {
  std::string codes;
  OrderOf(
      "#EXTM3U\nhttp://no/head\n#EXTINF:-1 tvg-logo=\"x\",Nobody\nx\n#EXTINF:-1,One\nx\n"
      "#EXTINF:-1,One\nx\n#EXT-X-VERSION:3\n# a comment\n0;x;1-2-11\n1;x;1-2\n",
      &codes);
  EXPECT_EQ("L403 channel, L404 channel, L501 line, L502 attribute, L502 directive", codes);
}

TEST(M3uReader, RefusesAFileThatIsNothingOfTheKind) {
  for (const char* bytes :
       {"", "<xml/>\n", "Name:11494:H:S19.2E:0:0:0:0:0:1:1:2:0\n", "# words\n"}) {
    ExpectRaised<Failure>("the file is no playlist", [&] { OrderOf(bytes); });
  }
}

TEST(M3uReader, SurvivesWhatIsBroken) {
  for (const std::string& bytes : {std::string("#EXTINF:"), std::string("#EXTINF:-1 tvg-id=\"S19"),
                                   std::string("#EXTINF:-1 a="), std::string("#EXTINF:-1 =,x"),
                                   std::string("#EXTINF:,\0x\n", 12),
                                   "#EXTINF:-1 tvg-chno=" + std::string(1000, '9') + ",One"}) {
    EXPECT_NE("", OrderOf(bytes));
  }
}

TEST(M3uFormat, BringsItsOwnListBackAsItIs) {
  const Exchange exchange(49, InputSignalDVBSatellite);
  Export out = Playlist(exchange, "http://h/{index}");
  interchange::Input input;
  input.bytes = out.output.Bytes();
  const Import made = interchange::ImportChannels(*interchange::FindFormat("m3u"), input,
                                                  {exchange.Context(), exchange.Channels()},
                                                  interchange::Into::Append);
  EXPECT_TRUE(SameChannels(exchange.Channels(), made.table.channels));
  EXPECT_EQ("", CodesOf(made.losses));
}

}  // namespace

}  // namespace zortunedex::kit
