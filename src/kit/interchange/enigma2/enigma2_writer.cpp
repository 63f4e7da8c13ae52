#include "kit/interchange/enigma2/enigma2_writer.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

#include "kit/interchange/enigma2/enigma2_words.h"
#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/services/station_values.h"

namespace zortunedex::kit {

namespace interchange::enigma2 {
namespace {

constexpr FieldCode kCodes[] = {
    // 5/11 goes out as automatic.
    {"innerFECRate", Code::NumberRounded},
    {"CA", Code::CaFlagCleared},
    {"name", Code::NameChanged},
};

/// Receivers read lines into buffers of 256 bytes.
constexpr std::size_t kLongestName = 240;

/// In quotes in one of the forms.
std::string NameOf(const std::string& text) {
  std::string name = PlainText(text);
  std::ranges::replace(name, '"', '\'');
  if (name.size() <= kLongestName) return name;
  std::size_t end = kLongestName;
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
  return name.substr(0, end);
}

std::string Joined(std::initializer_list<std::uint64_t> numbers) {
  std::string text;
  for (const std::uint64_t number : numbers) {
    if (!text.empty()) text += ':';
    text += std::to_string(number);
  }
  return text;
}

/// 0 for what is none.
std::int32_t PositionOf(const Tuning& tuning) {
  const std::int32_t position = tuning.position.value_or(0);
  return position >= -kHalfCircle && position <= kHalfCircle ? position : 0;
}

/// "s" or "t" and its parameters.
struct Parameters {
  char kind;
  std::string text;

  bool operator==(const Parameters&) const = default;
};

/// The first one is that of the first generation, too.
std::uint32_t RollOffNumber(std::uint32_t percent) {
  constexpr std::uint32_t kAutomatic = 3;
  return percent == 35 ? 0 : percent == 25 ? 1 : percent == 20 ? 2 : kAutomatic;
}

Parameters SatelliteParameters(const Tuning& tuning) {
  // What has no number is tuned to like everything that is not known.
  std::optional<std::uint32_t> modulation = NumberOf(Modulations(), tuning.modulation);
  const bool isSecond = tuning.system == System::Second || !modulation || *modulation == 0;
  constexpr std::uint32_t kAutomaticPilot = 2;
  constexpr std::uint32_t kAutomaticInversion = 2;
  const std::uint32_t polarisation =
      tuning.polarisation > 0 ? static_cast<std::uint32_t>(tuning.polarisation) - 1 : 0;
  return {'s', Joined({Within(tuning.frequency, UINT32_MAX),
                       Within(tuning.symbolRate * 1'000, UINT32_MAX), polarisation,
                       NumberOf(FecRates(), tuning.fec).value_or(0)}) +
                   ':' + std::to_string(PositionOf(tuning)) + ':' +
                   Joined({NumberOf(Inversions(), tuning.inversion).value_or(kAutomaticInversion),
                           0, isSecond ? 1U : 0U, modulation.value_or(0),
                           isSecond ? RollOffNumber(tuning.rollOff) : 0,
                           tuning.pilot ? std::uint32_t{*tuning.pilot} : kAutomaticPilot})};
}

/// Everything but frequency and bandwidth is for the receiver to find out.
Parameters TerrestrialParameters(const Tuning& tuning) {
  constexpr std::uint32_t kAutomaticBandwidth = 3;
  const std::uint64_t hertz = Within(tuning.frequency * 1'000, UINT32_MAX);
  // The bandwidth was told by the frequency.
  const auto megahertz = hertz == 0 ? 0 : static_cast<std::int32_t>(tuning.bandwidth);
  return {'t', Joined({hertz, NumberOf(Bandwidths(), megahertz).value_or(kAutomaticBandwidth)}) +
                   ":5:5:3:2:4:4:2:0:0:0"};
}

/// Where identifiers cannot be relied on, frequency and polarisation stand in for them.
std::uint32_t FrequencyPart(const Tuning& tuning) {
  const auto megahertz = static_cast<std::uint32_t>(tuning.frequency / 1'000);
  const std::uint32_t polarisation =
      tuning.polarisation > 0 ? static_cast<std::uint32_t>(tuning.polarisation) - 1 : 0;
  return (megahertz & 0x7FFF) | (polarisation & 1) << 15;
}

bool AreReliable(const TransponderKey& key) {
  constexpr std::uint32_t kFirstOfPrivate = 0xFF00;
  if (key.network == 0 || key.network >= kFirstOfPrivate) return false;
  return key.network != 1 || key.stream >= 2;
}

/// A service of the list with everything that the files say of it.
struct Entry {
  std::size_t place = 0;  ///< in the list
  Service service;
  ServiceKey key;
};

class Settings {
 public:
  Settings(const ExportRequest& request, Losses& losses)
      : m_request(request),
        m_named{request.context, request.channels, Names::Broadcast, request.tuning,
                request.bandwidth},
        m_losses(losses) {}

  void Add(std::size_t place) {
    const Channel& channel = m_request.channels[place];
    Losses assumed;
    Entry entry{place, FromChannelWithoutLanguages(channel, m_named, assumed), {}};
    const Place here{channel.index, utf::FromWide(channel.displayName)};
    if (Within(entry.service.serviceId, UINT16_MAX) == 0) {
      m_losses.Add(Code::NoIdentity, "serviceID", here, std::int64_t{entry.service.serviceId});
      return;
    }
    entry.key = {Transponder(entry.service), entry.service.serviceId};
    if (!m_known.insert(entry.key).second) {
      m_losses.Add(Code::IdentityTwice, "serviceID", here, std::int64_t{entry.key.service});
      return;
    }
    m_losses.Take(std::move(assumed));
    m_entries.push_back(std::move(entry));
  }

  void Write(Output& output) const {
    output.files = {{"lamedb", Lamedb4()}, {"lamedb5", Lamedb5()}};
    for (const bool isRadio : {false, true}) {
      const std::string ending = isRadio ? ".radio" : ".tv";
      output.files.push_back({"bouquets" + ending, Bouquets(ending)});
      output.files.push_back(
          {"userbouquet.tunedex" + ending, Bouquet("Tunedex", isRadio, /*favoritesOnly=*/false)});
      output.files.push_back({"userbouquet.favourites" + ending,
                              Bouquet("Favourites", isRadio, /*favoritesOnly=*/true)});
    }
    for (const Entry& entry : m_entries) output.written.push_back(entry.place);
  }

 private:
  /// The transponder of a service; it is entered when it is new. One that differs from an older
  /// one with the same identifiers is told from it by its frequency, where that is possible.
  TransponderKey Transponder(const Service& service) {
    const bool isSatellite = service.delivery == InputSignalDVBSatellite;
    const Tuning& tuning = service.tuning;
    TransponderKey key{kTerrestrialNamespace,
                       static_cast<std::uint32_t>(Within(service.transportStream, UINT16_MAX)),
                       static_cast<std::uint32_t>(Within(service.network, UINT16_MAX))};
    const Parameters parameters =
        isSatellite ? SatelliteParameters(tuning) : TerrestrialParameters(tuning);
    if (isSatellite) {
      const std::int32_t position = PositionOf(tuning);
      const std::int32_t around = position < 0 ? position + kWholeCircle : position;
      key.nameSpace = static_cast<std::uint32_t>(around) << 16;
      const auto known = m_transponders.find(key);
      const bool isTaken = known != m_transponders.end() && known->second != parameters;
      if (!AreReliable(key) || isTaken) key.nameSpace |= FrequencyPart(tuning);
    }
    m_transponders.emplace(key, parameters);
    return key;
  }

  static std::string KeyText(const TransponderKey& key) {
    return Hex(key.nameSpace, 8) + ':' + Hex(key.stream, 4) + ':' + Hex(key.network, 4);
  }
  static std::string ReferenceText(const Entry& entry) {
    return Hex(entry.key.service, 4) + ':' + KeyText(entry.key.transponder) + ':' +
           Joined({entry.service.serviceType, 0});
  }

  static void AddCached(std::string& data, std::uint32_t id, std::uint32_t value) {
    const std::string decimal = std::to_string(id);
    data += ",c:" + std::string(decimal.size() < 2 ? 1 : 0, '0') + decimal + Hex(value, 4);
  }

  static std::uint32_t PidOf(const Stream& stream) {
    return static_cast<std::uint32_t>(Within(stream.pid, kLastPid));
  }

  /// Provider, PIDs and what it is scrambled with. Receivers have room for one PID of a kind.
  static std::string DataOf(const Service& service) {
    std::string data = PlainText(service.provider);
    std::ranges::replace(data, ',', ' ');
    data.insert(0, "p:");
    const auto first = [&service](StreamKind kind) -> const Stream* {
      return service.Of(kind).empty() ? nullptr : &service.Of(kind).front();
    };
    if (const Stream* video = first(StreamKind::Video)) {
      const auto type = static_cast<std::int32_t>(video->type);
      AddCached(data, kVideoPid, PidOf(*video));
      AddCached(data, kVideoType, NumberOf(VideoTypes(), type).value_or(0));
    }
    if (const Stream* audio = first(StreamKind::Audio)) {
      const auto type = static_cast<std::int32_t>(audio->type);
      AddCached(data, NumberOf(AudioTypes(), type).value_or(AudioTypes().front().number),
                PidOf(*audio));
    }
    if (const Stream* teletext = first(StreamKind::Teletext)) {
      AddCached(data, kTeletextPid, PidOf(*teletext));
    }
    if (Within(service.pcrPid, kLastPid) != 0) AddCached(data, kPcrPid, service.pcrPid);
    for (const std::uint16_t id : service.caIds) data += ",C:" + Hex(id, 4);
    return data;
  }

  std::string Lamedb4() const {
    std::string text = "eDVB services /4/\ntransponders\n";
    for (const auto& [key, parameters] : m_transponders) {
      text += KeyText(key) + "\n\t" + parameters.kind + ' ' + parameters.text + "\n/\n";
    }
    text += "end\nservices\n";
    for (const Entry& entry : m_entries) {
      text += ReferenceText(entry) + '\n' + NameOf(entry.service.name) + '\n' +
              DataOf(entry.service) + '\n';
    }
    return text + "end\n";
  }

  std::string Lamedb5() const {
    std::string text = "eDVB services /5/\n";
    for (const auto& [key, parameters] : m_transponders) {
      text += "t:" + KeyText(key) + ',' + parameters.kind + ':' + parameters.text + '\n';
    }
    for (const Entry& entry : m_entries) {
      text += "s:" + ReferenceText(entry) + ",\"" + NameOf(entry.service.name) + "\"," +
              DataOf(entry.service) + '\n';
    }
    return text;
  }

  static std::string Bouquets(const std::string& ending) {
    std::string text = "#NAME Bouquets\n";
    const char* const kind = ending == ".tv" ? "1" : "2";
    for (const char* name : {"tunedex", "favourites"}) {
      text += std::string("#SERVICE 1:7:") + kind + ":0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet." +
              name + ending + "\" ORDER BY bouquet\n";
    }
    return text;
  }

  std::string Bouquet(const char* name, bool isRadio, bool favoritesOnly) const {
    std::string text = std::string("#NAME ") + name + '\n';
    for (const Entry& entry : m_entries) {
      const Service& service = entry.service;
      if (IsRadio(service.serviceType) != isRadio || (favoritesOnly && !service.favorite)) continue;
      const TransponderKey& transponder = entry.key.transponder;
      text += "#SERVICE 1:0:";
      for (const std::uint32_t part : {service.serviceType, entry.key.service, transponder.stream,
                                       transponder.network, transponder.nameSpace}) {
        text += Hex(part, 1, true) + ':';
      }
      text += "0:0:0:\n";
      if (m_request.names != Names::Shown) continue;
      const std::string own = NameOf(service.userName);
      if (!own.empty() && own != NameOf(service.name)) text += "#DESCRIPTION " + own + '\n';
    }
    return text;
  }

  const ExportRequest& m_request;
  ExportRequest m_named;  ///< the same: the user's names stand beside those of the broadcasters
  Losses& m_losses;
  std::map<TransponderKey, Parameters> m_transponders;
  std::set<ServiceKey> m_known;
  std::vector<Entry> m_entries;
};

}  // namespace
}  // namespace interchange::enigma2

namespace interchange {

void WriteEnigma2(const ExportRequest& request, Output& output, Losses& losses) {
  const ListContext& context = request.context;
  std::vector<std::size_t> order(request.channels.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // Television stands in one bouquet, radio in the other.
  std::stable_partition(order.begin(), order.end(), [&](std::size_t place) {
    const StationValues values(request.channels[place], context.signal, context.narrow);
    return !enigma2::IsRadio(values.Number("serviceType"));
  });
  enigma2::Settings settings(request, losses);
  for (const std::size_t place : order) settings.Add(place);
  settings.Write(output);
}

std::span<const FieldCode> Enigma2Codes() { return enigma2::kCodes; }

}  // namespace interchange

}  // namespace zortunedex::kit
