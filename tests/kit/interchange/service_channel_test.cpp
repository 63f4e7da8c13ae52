#include "kit/interchange/services/service_channel.h"

#include "kit/interchange/exchange.h"
#include "kit/interchange/services/station_values.h"
#include "kit/selection/channel_field.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::ExportRequest;
using interchange::ImportRequest;
using interchange::Losses;
using interchange::Names;
using interchange::Service;
using interchange::StationValues;
using interchange::Stream;
using interchange::StreamKind;
using interchange::System;
using interchange::Tuning;

constexpr InputSignalType kCarried[] = {InputSignalDVBSatellite, InputSignalDVBTerrestrial,
                                        InputSignalATSCAntenna, InputSignalISDBTerrestrialOneSeg};

Exchange Satellite() { return Exchange(49, InputSignalDVBSatellite); }

Service From(const Exchange& exchange, const Channel& channel, Losses& losses) {
  return FromChannel(channel, exchange.Request(), losses);
}

Channel To(const Exchange& exchange, const Service& service, Losses& losses) {
  const std::vector<Channel> none;
  return ToChannel(service, 7, ImportRequest{exchange.Context(), none}, losses);
}

std::string CodesTo(const Exchange& exchange, const Service& service) {
  Losses losses;
  To(exchange, service, losses);
  return CodesOf(losses);
}

/// A service that a list of satellite channels holds whole.
Service Simple() {
  Service service;
  service.delivery = InputSignalDVBSatellite;
  service.name = "News";
  service.serviceId = 100;
  service.tuning.frequency = 11'493'750;
  service.tuning.position = 192;
  service.tuning.system = System::First;
  service.tuning.modulation = BDA_MOD_QPSK;
  return service;
}

TEST(FromChannel, TakesEverythingOfASatelliteChannel) {
  const Exchange exchange = Satellite();
  Losses losses;
  const Service service = From(exchange, exchange.Channels()[0], losses);
  EXPECT_EQ(InputSignalDVBSatellite, service.delivery);
  EXPECT_EQ(1U, service.index);
  EXPECT_TRUE(service.favorite);
  EXPECT_EQ("Das Erste HD", service.name);
  EXPECT_EQ("", service.userName);
  EXPECT_EQ("ASTRA 1", service.provider);
  EXPECT_EQ(11'493'750U, service.tuning.frequency);
  EXPECT_EQ(BDA_POLARISATION_LINEAR_H, service.tuning.polarisation);
  EXPECT_EQ(192, service.tuning.position);
  EXPECT_EQ(22'000U, service.tuning.symbolRate);
  EXPECT_EQ(BDA_BCC_RATE_2_3, service.tuning.fec);
  EXPECT_EQ(BDA_SPECTRAL_INVERSION_AUTOMATIC, service.tuning.inversion);
  EXPECT_EQ(25U, service.serviceType);
  EXPECT_EQ(10301U, service.serviceId);
  EXPECT_EQ(1019U, service.transportStream);
  EXPECT_EQ(1U, service.network);
  EXPECT_EQ(5101U, service.pcrPid);
  EXPECT_FALSE(service.scrambled);
  EXPECT_EQ((std::vector<Stream>{{27, 5101, ""}}), service.Of(StreamKind::Video));
  EXPECT_EQ("deu", service.Of(StreamKind::Audio)[0].language);
  EXPECT_EQ(3U, service.Of(StreamKind::Audio).size());
  EXPECT_EQ(1U, service.Of(StreamKind::Dsmcc).size());
}

TEST(FromChannel, AssumesSecondGenerationWhereTheListHasNoModulation) {
  const Exchange exchange = Satellite();
  Losses losses;
  const Service service = From(exchange, exchange.Channels()[0], losses);
  EXPECT_EQ(System::Second, service.tuning.system);
  EXPECT_EQ(BDA_MOD_NOT_SET, service.tuning.modulation);
  EXPECT_TRUE(losses.Has(Code::SystemAssumed));
}

TEST(FromChannel, TakesTheTransponderOfTables) {
  const Exchange exchange = Satellite();
  ExportRequest request = exchange.Request();
  const Channel& channel = exchange.Channels()[0];
  Losses losses;
  Tuning distant = From(exchange, channel, losses).tuning;
  distant.modulation = BDA_MOD_8PSK;
  distant.frequency -= 2'000;
  Tuning close = distant;
  close.frequency += 1'500;
  close.modulation = BDA_MOD_16APSK;
  Tuning beyond = distant;
  beyond.frequency -= 1;
  Tuning other = close;
  other.polarisation = BDA_POLARISATION_LINEAR_V;
  Losses none;
  request.tuning = {beyond, other, distant};
  EXPECT_EQ(BDA_MOD_8PSK, FromChannel(channel, request, none).tuning.modulation);
  request.tuning = {beyond, other, distant, close};
  EXPECT_EQ(BDA_MOD_16APSK, FromChannel(channel, request, none).tuning.modulation);
  EXPECT_FALSE(none.Has(Code::SystemAssumed));
  distant.modulation = BDA_MOD_NOT_SET;
  distant.system = System::Unknown;
  request.tuning = {distant};
  Losses nothing;
  EXPECT_EQ(System::Second, FromChannel(channel, request, nothing).tuning.system);
  EXPECT_TRUE(nothing.Has(Code::SystemAssumed));
  request.tuning = {beyond, other};
  FromChannel(channel, request, none);
  EXPECT_TRUE(none.Has(Code::SystemAssumed));
}

TEST(FromChannel, TellsTheWestByASign) {
  const Exchange exchange = Satellite();
  Channel channel = exchange.Channels()[0];
  const std::size_t west =
      station_blocks::OffsetOf(station_blocks::kDvbsSatelliteParams, "westPosition");
  station_blocks::Store(channel.block.data() + west, 4, 1);
  Losses losses;
  EXPECT_EQ(-192, From(exchange, channel, losses).tuning.position);
  // The lowest number has no opposite.
  const std::size_t position =
      station_blocks::OffsetOf(station_blocks::kDvbsSatelliteParams, "orbitalPosition");
  station_blocks::Store(channel.block.data() + position, 4, 0x80000000);
  const Service lowest = From(exchange, channel, losses);
  EXPECT_EQ(INT32_MIN, lowest.tuning.position);
  const Channel again = To(exchange, lowest, losses);
  EXPECT_EQ(0x80000000, station_blocks::Fetch(again.block.data() + position, 4));
}

TEST(FromChannel, CarriesTheNameThatIsAskedFor) {
  const Exchange exchange(1, InputSignalATSCAntenna);
  ExportRequest request = exchange.Request();
  Losses losses;
  Channel channel = exchange.Channels()[0];
  // "2.1 WCBS-HD" is what a record fills in by itself.
  EXPECT_EQ("WCBS-HD", FromChannel(channel, request, losses).name);
  EXPECT_EQ("", FromChannel(channel, request, losses).userName);
  channel.displayName = Wide("Second");
  EXPECT_EQ("Second", FromChannel(channel, request, losses).name);
  EXPECT_EQ("Second", FromChannel(channel, request, losses).userName);
  request.names = Names::Broadcast;
  EXPECT_EQ("WCBS-HD", FromChannel(channel, request, losses).name);
}

TEST(FromChannel, DerivesWhatTheFileHasNoPlaceFor) {
  const Exchange air(1, InputSignalATSCAntenna);
  Losses losses;
  const Service service = From(air, air.Channels()[0], losses);
  EXPECT_EQ(33U, service.tuning.rfChannel);
  EXPECT_EQ(587'029U, service.tuning.frequency);
  EXPECT_EQ(2U, service.major);
  EXPECT_EQ(1U, service.minor);
  EXPECT_EQ(3U, service.serviceId);
  const Exchange ground(49, InputSignalDVBTerrestrial);
  ExportRequest request = ground.Request();
  Losses derived;
  EXPECT_EQ(8U, FromChannel(ground.Channels()[0], request, derived).tuning.bandwidth);
  EXPECT_EQ("L314 bandwidth", CodesOf(derived));
  request.bandwidth = 7;
  Losses told;
  EXPECT_EQ(7U, FromChannel(ground.Channels()[0], request, told).tuning.bandwidth);
  EXPECT_EQ("", CodesOf(told));
}

TEST(FromChannel, NamesTheDishThatIsTurnedThere) {
  Exchange exchange = Satellite();
  exchange.Context().dishes = {{1, 130}, {2, 192}, {3, 192}};
  Losses losses;
  EXPECT_EQ(2U, From(exchange, exchange.Channels()[0], losses).tuning.dish);
}

TEST(ToChannel, HoldsWhatTheFileHasPlacesFor) {
  const Exchange exchange = Satellite();
  Losses losses;
  const Channel channel = To(exchange, Simple(), losses);
  EXPECT_EQ("", CodesOf(losses));
  EXPECT_EQ(Wide("News"), channel.name);
  EXPECT_EQ(Wide("News"), channel.displayName);
  EXPECT_EQ(11'493'750U, channel.frequency);
  EXPECT_EQ(0U, channel.index);
  const StationValues values(channel, exchange.Signal(), exchange.Narrow());
  EXPECT_EQ(192U, values.Number("orbitalPosition"));
  EXPECT_EQ(BDA_MOD_QPSK, values.WordOf<ModulationType>("modulation"));
  EXPECT_EQ(100U, values.Number("serviceID"));
}

TEST(ToChannel, TakesThePositionFromTheServiceTheCommandOrTheDish) {
  Exchange exchange = Satellite();
  exchange.Context().dishes = {{1, 130}, {2, -300}};
  Service service = Simple();
  service.tuning.dish = 2;
  const auto position = [&](std::optional<std::int32_t> given) {
    const std::vector<Channel> none;
    Losses losses;
    const Channel channel =
        ToChannel(service, 7, ImportRequest{exchange.Context(), none, given}, losses);
    const StationValues values(channel, exchange.Signal(), exchange.Narrow());
    return std::to_string(values.Number("orbitalPosition")) +
           (values.Number("westPosition") != 0 ? "W" : "E") +
           (losses.Has(Code::PositionUnknown) ? " unknown" : "");
  };
  EXPECT_EQ("192E", position(235));
  service.tuning.position.reset();
  EXPECT_EQ("235E", position(235));
  EXPECT_EQ("300W", position(std::nullopt));
  service.tuning.dish = 3;
  EXPECT_EQ("0E unknown", position(std::nullopt));
}

TEST(ToChannel, AccountsForWhatTheFileLacks) {
  const Exchange exchange = Satellite();
  const auto codes = [&](auto change) {
    Service service = Simple();
    change(service);
    return CodesTo(exchange, service);
  };
  EXPECT_EQ("L204 networkName", codes([](Service& s) { s.provider = "ARD"; }));
  EXPECT_EQ("L110 innerFECRate", codes([](Service& s) { s.tuning.fec = BDA_BCC_RATE_8_9; }));
  EXPECT_EQ("L110 modulation", codes([](Service& s) { s.tuning.modulation = BDA_MOD_8PSK; }));
  EXPECT_EQ("L110 modulation", codes([](Service& s) { s.tuning.system = System::Second; }));
  EXPECT_EQ("", codes([](Service& s) {
              s.tuning.system = System::Second;
              s.tuning.modulation = BDA_MOD_NOT_SET;
            }));
  EXPECT_EQ("L503 serviceID", codes([](Service& s) { s.serviceId = 65536; }));
  EXPECT_EQ("L503 TSID", codes([](Service& s) { s.transportStream = 65536; }));
  EXPECT_EQ("L503 PcrPID", codes([](Service& s) { s.pcrPid = 8192; }));
  EXPECT_EQ("L503 freq", codes([](Service& s) { s.tuning.frequency = 1ULL << 32; }));
  EXPECT_EQ("L503 freq", codes([](Service& s) { s.tuning.frequency = UINT64_MAX; }));
  EXPECT_EQ("L503 symbolRate", codes([](Service& s) { s.tuning.symbolRate = UINT64_MAX; }));
  EXPECT_EQ("L101 majorChannel", codes([](Service& s) { s.major = 2; }));
  EXPECT_EQ("L112 CA", codes([](Service& s) { s.caIds = {0x1702, 0x0500}; }));
  EXPECT_EQ("", codes([](Service& s) { s.scrambled = true; }));
  EXPECT_EQ("L503 AudioStream.pid", codes([](Service& s) {
              s.Of(StreamKind::Audio) = {{3, 8192, ""}};
            }));
  EXPECT_EQ("L503 AudioStream.type", codes([](Service& s) {
              s.Of(StreamKind::Audio) = {{256, 100, ""}};
            }));
  EXPECT_EQ("L103 AudioStream.lang", codes([](Service& s) {
              s.Of(StreamKind::Audio) = {{3, 100, "d1"}};
            }));
  EXPECT_EQ("L102 AudioStream", codes([](Service& s) {
              s.Of(StreamKind::Audio).assign(17, {3, 100, "deu"});
            }));
  EXPECT_EQ("L201 name", codes([](Service& s) { s.name = std::string(336, 'x'); }));
  EXPECT_EQ("L201 name", codes([](Service& s) {
              s.name =
                  "a\x01"
                  "b";
            }));
  EXPECT_EQ("L201 nameDisplay", codes([](Service& s) { s.userName = "\xFF"; }));
}

TEST(ToChannel, TellsLanguagesWhoseBitsStandForAnother) {
  const Exchange exchange = Satellite();
  const auto loss = [&](const char* language) {
    Service service = Simple();
    service.Of(StreamKind::Audio) = {{3, 100, language}};
    Losses losses;
    To(exchange, service, losses);
    if (losses.Empty()) return std::string();
    EXPECT_EQ(FieldValue{std::string(language)}, losses.All()[0].value);
    return CodesOf(losses) + " -> " + FieldText(losses.All()[0].became);
  };
  for (const char* same : {"", "deu", "DEU", "tur"}) EXPECT_EQ("", loss(same)) << same;
  EXPECT_EQ("L311 AudioStream.lang -> ben", loss("run"));
  EXPECT_EQ("L311 AudioStream.lang -> tur", loss("dur"));
  // Bits that no code has.
  EXPECT_EQ("L103 AudioStream.lang -> 273", loss("qaa"));
}

TEST(ToChannel, SaysWhereALossIs) {
  const Exchange exchange = Satellite();
  Service service = Simple();
  service.provider = "ARD";
  Losses losses;
  To(exchange, service, losses);
  ASSERT_EQ(1U, losses.All().size());
  EXPECT_EQ(7U, losses.All()[0].place.line);
  EXPECT_EQ("News", losses.All()[0].place.name);
  EXPECT_FALSE(losses.All()[0].place.index);
  EXPECT_EQ(FieldValue{std::string("ARD")}, losses.All()[0].value);
}

TEST(ToChannel, FindsTheRfChannelOfAFrequency) {
  const Exchange exchange(1, InputSignalATSCAntenna);
  Service service;
  service.delivery = InputSignalATSCAntenna;
  service.name = "WCBS";
  service.tuning.frequency = 587'029;
  Losses losses;
  EXPECT_EQ(33U, To(exchange, service, losses).number);
  EXPECT_EQ("L314 physicalChannel", CodesOf(losses));
}

/// The places in which two channels differ that a service carries.
std::string CarriedDifferences(const Exchange& exchange, const Channel& a, const Channel& b) {
  Losses losses;
  Losses unused;
  const Service first = From(exchange, a, losses);
  const Service second = From(exchange, b, unused);
  std::string text;
  if (first.name != second.name) text += " name";
  if (first.provider != second.provider) text += " provider";
  if (first.favorite != second.favorite) text += " favorite";
  if (first.streams != second.streams) text += " streams";
  if (first.serviceId != second.serviceId) text += " service";
  if (first.network != second.network) text += " network";
  if (first.transportStream != second.transportStream) text += " transport stream";
  if (first.tuning.frequency != second.tuning.frequency) text += " frequency";
  if (first.tuning.position != second.tuning.position) text += " position";
  if (first.tuning.fec != second.tuning.fec) text += " fec";
  if (first.tuning.system != second.tuning.system) text += " system";
  if (first.scrambled != second.scrambled) text += " scrambled";
  return text;
}

TEST(Services, AreStableAfterOneRound) {
  Random random(5);
  for (const InputSignalType signal : kCarried) {
    const Exchange exchange(49, signal);
    for (UINT i = 1; i <= 60; ++i) {
      const Channel channel = RandomChannel(exchange, random, i);
      Losses ignored;
      const Channel once = To(exchange, From(exchange, channel, ignored), ignored);
      const Channel twice = To(exchange, From(exchange, once, ignored), ignored);
      EXPECT_EQ("", CarriedDifferences(exchange, once, twice)) << i;
    }
  }
}

}  // namespace

}  // namespace zortunedex::kit
