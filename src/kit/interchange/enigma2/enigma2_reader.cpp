#include "kit/interchange/enigma2/enigma2_reader.h"

#include <algorithm>
#include <iterator>

#include "kit/failure.h"
#include "kit/interchange/enigma2/bouquets.h"
#include "kit/interchange/enigma2/lamedb.h"
#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/text_parts.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace interchange::enigma2 {
namespace {

constexpr std::size_t kMostStreams = 64;

/// A parameter for which the list has no place, and the value that leaves it to the receiver.
struct OpenParameter {
  std::size_t place;
  const char* name;
  std::string_view open;
};
constexpr OpenParameter kTerrestrial[] = {
    {2, "code_rate_HP", "5"},      {3, "code_rate_LP", "5"},   {4, "modulation", "3"},
    {5, "transmission_mode", "2"}, {6, "guard_interval", "4"}, {7, "hierarchy", "4"},
    {8, "inversion", "2"},         {9, "flags", "0"},
};
constexpr OpenParameter kNewerTerrestrial[] = {{10, "system", "0"}, {11, "plp_id", "0"}};

InputSignalType SignalOf(char kind) {
  return kind == 's'   ? InputSignalDVBSatellite
         : kind == 't' ? InputSignalDVBTerrestrial
                       : InputSignalUnknown;
}

class ServiceImport {
 public:
  ServiceImport(const ServiceEntry& entry, const Transponder* transponder,
                const ImportRequest& request, Losses& losses)
      : m_entry(entry),
        m_transponder(transponder),
        m_request(request),
        m_losses(losses),
        m_place{std::nullopt, entry.name, entry.line} {}

  /// Nothing for a service that is left out.
  std::optional<ImportedChannel> Make(const Bouquets& bouquets) {
    if (m_transponder == nullptr) return Without(Code::NoIdentity, "transponder", {});
    const InputSignalType signal = SignalOf(m_transponder->kind);
    if (signal != m_request.context.signal) {
      return Without(Code::SignalNotOfList, "transponder", std::string(1, m_transponder->kind));
    }
    if (m_entry.key.service == 0) return Without(Code::NoIdentity, "serviceID", std::int64_t{0});
    m_service.delivery = signal;
    m_service.name = m_entry.name;
    m_service.serviceId = m_entry.key.service;
    m_service.transportStream = m_entry.key.transponder.stream;
    m_service.network = m_entry.key.transponder.network;
    m_service.serviceType = m_entry.type;
    m_service.favorite = bouquets.favorites.contains(m_entry.key);
    if (const auto own = bouquets.names.find(m_entry.key); own != bouquets.names.end()) {
      m_service.userName = own->second;
    }
    if (!IsOpen(m_entry.rest)) Lose(Code::NoPlace, "service_number", m_entry.rest);
    signal == InputSignalDVBSatellite ? TakeSatellite() : TakeTerrestrial();
    if (!m_transponder->more.empty()) {
      Lose(Code::SecondGenerationDropped, "transponder", Excerpt(m_transponder->more));
    }
    TakeData();
    return ImportedChannel{ToChannel(m_service, m_entry.line, m_request, m_losses), m_entry.line};
  }

 private:
  std::optional<ImportedChannel> Without(Code code, std::string_view field, FieldValue value) {
    m_losses.Add(code, field, m_place, std::move(value));
    return std::nullopt;
  }

  void Lose(Code code, std::string_view field, std::string_view value, FieldValue became = {}) {
    m_losses.Add(code, field, m_place, std::string(value), std::move(became));
  }

  /// Nothing but noughts.
  static bool IsOpen(std::string_view text) {
    return text.find_first_not_of("0:") == std::string_view::npos;
  }

  std::uint32_t Parameter(std::size_t place, std::string_view name) {
    const std::string_view text = m_transponder->Value(place);
    if (text.empty()) return 0;
    if (const auto number = ParseNumber(text, 0, UINT32_MAX)) {
      return static_cast<std::uint32_t>(*number);
    }
    Lose(Code::ValueOutOfRange, name, Excerpt(text));
    return 0;
  }

  /// In thousands of what the settings have.
  std::uint64_t Thousands(std::size_t place, std::string_view name) {
    const std::uint64_t whole = Parameter(place, name);
    const std::uint64_t rounded = (whole + 500) / 1'000;
    if (whole % 1'000 != 0) {
      Lose(Code::NumberRounded, name, std::to_string(whole), static_cast<std::int64_t>(rounded));
    }
    return rounded;
  }

  template <typename Word>
  void TakeWord(std::size_t place, std::string_view name, std::span<const Number> numbers,
                Word& word) {
    const std::uint32_t number = Parameter(place, name);
    if (const std::optional<std::int32_t> value = ValueOf(numbers, number)) {
      word = static_cast<Word>(*value);
    } else {
      Lose(Code::WordLacking, name, std::to_string(number), std::string("NotSet"));
    }
  }

  void TakeSatellite() {
    Tuning& tuning = m_service.tuning;
    tuning.frequency = Parameter(0, "freq");
    tuning.symbolRate = Thousands(1, "symbolRate");
    constexpr std::uint32_t kPolarisations = 4;
    const std::uint32_t polarisation = Parameter(2, "polarisation");
    if (polarisation < kPolarisations) {
      tuning.polarisation = static_cast<Polarisation>(polarisation + 1);
    } else {
      Lose(Code::WordLacking, "polarisation", std::to_string(polarisation), std::string("NotSet"));
    }
    TakeWord(3, "innerFECRate", FecRates(), tuning.fec);
    TakePosition();
    TakeWord(5, "spectralInversion", Inversions(), tuning.inversion);
    if (!IsOpen(m_transponder->Value(6))) {
      Lose(Code::NoPlace, "flags", Excerpt(m_transponder->Value(6)));
    }
    TakeGeneration();
  }

  void TakePosition() {
    const std::string_view text = m_transponder->Value(4);
    const auto number = ParseNumber(text, -kHalfCircle, kWholeCircle);
    if (!number) return Lose(Code::ValueOutOfRange, "orbitalPosition", Excerpt(text));
    const auto position = static_cast<std::int32_t>(*number);
    m_service.tuning.position = position > kHalfCircle ? position - kWholeCircle : position;
  }

  /// The first generation has one modulation, whatever is left open.
  void TakeGeneration() {
    Tuning& tuning = m_service.tuning;
    tuning.system = Parameter(7, "system") == 0 ? System::First : System::Second;
    TakeWord(8, "modulation", Modulations(), tuning.modulation);
    if (tuning.system == System::First) {
      if (tuning.modulation == BDA_MOD_NOT_SET) tuning.modulation = BDA_MOD_QPSK;
      return;
    }
    constexpr OpenParameter kNewer[] = {{9, "rolloff", "3"}, {10, "pilot", "2"}};
    LoseParameters(kNewer, Code::SecondGenerationDropped);
    for (std::size_t place = 11; place < m_transponder->values.size(); ++place) {
      const std::string_view text = m_transponder->Value(place);
      if (!IsOpen(text) && text != "-1")
        Lose(Code::SecondGenerationDropped, "is_id", Excerpt(text));
    }
  }

  void LoseParameters(std::span<const OpenParameter> parameters, Code code) {
    for (const OpenParameter& parameter : parameters) {
      const std::string_view text = m_transponder->Value(parameter.place);
      if (!text.empty() && text != parameter.open) Lose(code, parameter.name, Excerpt(text));
    }
  }

  void TakeTerrestrial() {
    Tuning& tuning = m_service.tuning;
    tuning.frequency = Thousands(0, "freq");
    const std::uint32_t bandwidth = Parameter(1, "bandwidth");
    if (const std::optional<std::int32_t> megahertz = ValueOf(Bandwidths(), bandwidth)) {
      tuning.bandwidth = static_cast<std::uint32_t>(*megahertz);
    } else {
      Lose(Code::NoPlace, "bandwidth", std::to_string(bandwidth));
    }
    LoseParameters(kTerrestrial, Code::NoPlace);
    LoseParameters(kNewerTerrestrial, Code::SecondGenerationDropped);
  }

  void TakeData() {
    std::string_view rest = m_entry.data;
    while (!rest.empty()) {
      const std::string_view part = TakeUpTo(',', rest);
      if (part.starts_with("p:")) {
        m_service.provider = PlainText(part.substr(2));
      } else if (part.starts_with("c:")) {
        TakeCached(part);
      } else if (part.starts_with("C:")) {
        TakeCaId(part);
      } else if (part.starts_with("f:")) {
        if (!IsOpen(part.substr(2))) Lose(Code::NoPlace, "f", Excerpt(part.substr(2)));
      } else if (!part.empty()) {
        Lose(Code::KeyUnknown, "data", Excerpt(part));
      }
    }
    // Nothing is said of the first kind that there was.
    if (m_hasVideoType || m_service.Of(StreamKind::Video).empty()) return;
    m_service.Of(StreamKind::Video).front().type = kMpegVideo;
    m_losses.Add(Code::TypeAssumed, "VideoStream.type", m_place, {}, std::int64_t{kMpegVideo});
  }

  /// "c:" with an identifier of two decimal and a value of four hexadecimal digits.
  void TakeCached(std::string_view part) {
    const std::string_view text = part.substr(2);
    const auto id = ParseNumber(text.substr(0, 2), 0, 99);
    const auto value =
        text.size() < 3 ? std::optional<std::uint32_t>() : ParseHex(text.substr(2), UINT16_MAX);
    if (!id || !value) return Lose(Code::ValueOutOfRange, "c", Excerpt(part));
    const auto known = static_cast<std::uint32_t>(*id);
    const std::optional<std::int32_t> sound = ValueOf(AudioTypes(), known);
    if (known == kVideoType) return TakeVideoType(*value);
    const bool isPid = known == kVideoPid || known == kTeletextPid || known == kPcrPid || sound;
    if (!isPid) return Lose(Code::KeyUnknown, "c", Excerpt(part));
    if (*value > kLastPid) return Lose(Code::ValueOutOfRange, "c", Excerpt(part));
    if (known == kPcrPid) {
      m_service.pcrPid = *value;
    } else if (known == kVideoPid) {
      AddStream(StreamKind::Video, m_videoType, *value);
    } else if (known == kTeletextPid) {
      AddStream(StreamKind::Teletext, kTeletextType, *value);
    } else {
      AddStream(StreamKind::Audio, static_cast<std::uint32_t>(*sound), *value);
    }
  }

  void AddStream(StreamKind kind, std::uint32_t type, std::uint32_t pid) {
    std::vector<Stream>& streams = m_service.Of(kind);
    if (streams.size() < kMostStreams) {
      streams.push_back({type, pid, {}});
    } else {
      Lose(Code::StreamsDropped, "c", std::to_string(pid));
    }
  }

  void TakeVideoType(std::uint32_t number) {
    const std::optional<std::int32_t> type = ValueOf(VideoTypes(), number);
    if (!type) return Lose(Code::WordLacking, "VideoStream.type", std::to_string(number));
    m_hasVideoType = true;
    m_videoType = static_cast<std::uint32_t>(*type);
    for (Stream& stream : m_service.Of(StreamKind::Video)) stream.type = m_videoType;
  }

  void TakeCaId(std::string_view part) {
    const auto id = ParseHex(part.substr(2), UINT16_MAX);
    if (!id || (*id != 0 && *id < kLowestCaId)) {
      return Lose(Code::ValueOutOfRange, "C", Excerpt(part));
    }
    auto& ids = m_service.caIds;
    if (*id == 0 || std::ranges::find(ids, *id) != ids.end()) return;
    if (ids.size() >= kMostStreams) return Lose(Code::CaIdsBecameFlag, "CA", Excerpt(part));
    ids.push_back(static_cast<std::uint16_t>(*id));
  }

  static constexpr std::uint32_t kMpegVideo = 2;
  static constexpr std::uint32_t kTeletextType = 6;

  const ServiceEntry& m_entry;
  const Transponder* m_transponder;
  const ImportRequest& m_request;
  Losses& m_losses;
  Place m_place;
  Service m_service;
  std::uint32_t m_videoType = 0;
  bool m_hasVideoType = false;
};

/// Places of the services: first those that bouquets name, in their order. A reference to a
/// service that is not there is a loss.
std::vector<std::size_t> OrderOf(const Lamedb& lamedb, const Bouquets& bouquets, Losses& losses) {
  std::map<ServiceKey, std::size_t> places;
  for (std::size_t i = 0; i < lamedb.services.size(); ++i) {
    places.try_emplace(lamedb.services[i].key, i);
  }
  std::vector<std::size_t> order;
  std::vector<bool> isTaken(lamedb.services.size());
  for (const ServiceKey& key : bouquets.order) {
    const auto found = places.find(key);
    if (found == places.end()) {
      losses.Add(Code::NoIdentity, "#SERVICE", {}, Hex(key.service, 4));
    } else {
      isTaken[found->second] = true;
      order.push_back(found->second);
    }
  }
  for (std::size_t i = 0; i < isTaken.size(); ++i) {
    if (!isTaken[i]) order.push_back(i);
  }
  return order;
}

std::string LamedbOf(const Input& input) {
  if (!input.isFolder) return input.bytes;
  for (const char* name : {"lamedb", "lamedb5"}) {
    if (std::optional<std::string> bytes = input.read(name)) return std::move(*bytes);
  }
  throw Failure{E_INVALIDARG, "the folder has neither lamedb nor lamedb5"};
}

}  // namespace
}  // namespace interchange::enigma2

namespace interchange {

ImportResult ReadEnigma2(const Input& input, const ImportRequest& request, Losses& losses) {
  const enigma2::Lamedb lamedb = enigma2::ReadLamedb(enigma2::LamedbOf(input), losses);
  enigma2::Bouquets bouquets;
  if (input.isFolder) bouquets = enigma2::ReadBouquets(input, losses);
  ImportResult result;
  result.read = lamedb.services.size();
  std::set<enigma2::ServiceKey> seen;
  for (const std::size_t place : enigma2::OrderOf(lamedb, bouquets, losses)) {
    const enigma2::ServiceEntry& entry = lamedb.services[place];
    if (!seen.insert(entry.key).second) {
      losses.Add(Code::IdentityTwice, "serviceID", {std::nullopt, entry.name, entry.line},
                 std::int64_t{entry.key.service});
      continue;
    }
    const auto found = lamedb.transponders.find(entry.key.transponder);
    enigma2::ServiceImport service(
        entry, found == lamedb.transponders.end() ? nullptr : &found->second, request, losses);
    if (std::optional<ImportedChannel> made = service.Make(bouquets)) {
      result.Add(std::move(*made), request);
    }
  }
  return result;
}

}  // namespace interchange

}  // namespace zortunedex::kit
