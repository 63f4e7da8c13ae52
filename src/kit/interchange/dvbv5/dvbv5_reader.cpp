#include "kit/interchange/dvbv5/dvbv5_reader.h"

#include <algorithm>
#include <iterator>

#include "kit/failure.h"
#include "kit/interchange/channel_plans.h"
#include "kit/interchange/dvbv5/dvbv5_sections.h"
#include "kit/interchange/dvbv5/dvbv5_words.h"
#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/services/station_values.h"
#include "kit/model/channel_layout.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace interchange::dvbv5 {
namespace {

/// More streams of a kind than any block holds are counted, not listed.
constexpr std::size_t kMostPids = 64;

/// Values that leave it to the receiver.
bool IsOpen(std::string_view text) {
  constexpr const char* kOpen[] = {"AUTO", "QAM/AUTO", "NONE", "OFF", "0", "-1", "4294967295"};
  return text.empty() || std::ranges::any_of(kOpen, [text](const char* open) {
           return EqualIgnoringCase(open, text);
         });
}

/// One-segment services are told from the others by the type in their service id, unless their
/// layer is the only one.
bool IsOneSegment(const Section& section) {
  if (section.Text("ISDBT_PARTIAL_RECEPTION") != "1") return false;
  const std::string_view layers = section.Text("ISDBT_LAYER_ENABLED");
  if (layers.empty() || layers == "1") return true;
  const std::int64_t id = ParseNumber(section.Text("SERVICE_ID"), 0, UINT16_MAX).value_or(0);
  return (id >> 7 & 3) == 3;
}

class SectionImport {
 public:
  SectionImport(const Section& section, const ImportRequest& request, Losses& losses)
      : m_section(section),
        m_request(request),
        m_losses(losses),
        m_place{std::nullopt, section.name, section.line} {}

  /// Nothing for a section that is left out.
  std::optional<ImportedChannel> Make() {
    if (!m_section.isUnderstood) return std::nullopt;
    const std::string_view system = m_section.Text("DELIVERY_SYSTEM");
    const auto [signal, generation] =
        ParseSystem(system, m_section.Text("MODULATION"), IsOneSegment(m_section));
    if (signal != m_request.context.signal) {
      m_losses.Add(Code::SignalNotOfList, "DELIVERY_SYSTEM", m_place, std::string(system));
      return std::nullopt;
    }
    const std::string_view id = m_section.Text("SERVICE_ID");
    if (ParseNumber(id, 1, UINT16_MAX) == std::nullopt) {
      m_losses.Add(Code::NoIdentity, "SERVICE_ID", m_place, std::string(id));
      return std::nullopt;
    }
    m_service.delivery = signal;
    m_service.tuning.system = generation;
    m_service.name = m_section.name;
    TakeSystem();
    for (const auto& [key, value] : m_section.values) TakeKey(key, value);
    TakePids();
    AssumeServiceType(m_place, m_service, m_losses);
    ImportedChannel made{ToChannel(m_service, m_section.line, m_request, m_losses), m_section.line};
    PutLnb(made.channel);
    return made;
  }

 private:
  using Take = void (SectionImport::*)(const Value& value);
  struct KeyTake {
    const char* key;
    Take take;
  };

  bool IsSatellite() const { return m_service.delivery == InputSignalDVBSatellite; }

  void Lose(Code code, std::string_view key, const Value& value, FieldValue became = {}) {
    m_losses.Add(code, key, {std::nullopt, m_section.name, value.line}, value.text,
                 std::move(became));
  }

  std::optional<std::uint64_t> Number(std::string_view key, const Value& value,
                                      std::int64_t highest) {
    if (const std::optional<std::int64_t> number = ParseNumber(value.text, 0, highest)) {
      return static_cast<std::uint64_t>(*number);
    }
    Lose(Code::ValueOutOfRange, key, value);
    return std::nullopt;
  }

  void TakeKey(const std::string& key, const Value& value) {
    static constexpr KeyTake kEverywhere[] = {
        {"DELIVERY_SYSTEM", nullptr},
        {"SERVICE_ID", &SectionImport::TakeServiceId},
        {"TRANSPORT_ID", &SectionImport::TakeTransportStream},
        {"NETWORK_ID", &SectionImport::TakeNetwork},
        {"VCHANNEL", &SectionImport::TakeVirtualChannel},
        {"VIDEO_PID", &SectionImport::TakeVideo},
        {"AUDIO_PID", &SectionImport::TakeAudio},
        {"FREQUENCY", &SectionImport::TakeFrequency},
        {"MODULATION", &SectionImport::TakeModulation},
        {"INVERSION", &SectionImport::TakeInversion},
    };
    static constexpr KeyTake kOfSatellites[] = {
        {"POLARIZATION", &SectionImport::TakePolarisation},
        {"SYMBOL_RATE", &SectionImport::TakeSymbolRate},
        {"INNER_FEC", &SectionImport::TakeFec},
        {"SAT_NUMBER", &SectionImport::TakeDish},
        {"LNB", &SectionImport::TakeLnb},
    };
    for (const KeyTake& known : kEverywhere) {
      if (key == known.key) return known.take == nullptr ? void() : (this->*known.take)(value);
    }
    for (const KeyTake& known : kOfSatellites) {
      if (IsSatellite() && key == known.key) return (this->*known.take)(value);
    }
    TakeOther(key, value);
  }

  /// What the channel file has no place for.
  void TakeOther(const std::string& key, const Value& value) {
    switch (UseOf(key)) {
      case KeyUse::Unknown:
        return Lose(Code::KeyUnknown, Excerpt(key), {Excerpt(value.text), value.line});
      case KeyUse::SecondGeneration:
        // The roll-off of the first generation is a constant.
        if (IsOpen(value.text) && (value.text != "0" || !IsSecond())) return;
        if (key == "ROLLOFF" && value.text == "35" && !IsSecond()) return;
        return Lose(Code::SecondGenerationDropped, key, value);
      case KeyUse::NoPlace:
        if (!IsOpen(value.text) && !FollowsFromSignal(key, value.text)) {
          Lose(Code::NoPlace, key, value);
        }
        return;
    }
  }

  bool IsSecond() const { return m_service.tuning.system == System::Second; }

  bool FollowsFromSignal(std::string_view key, std::string_view text) const {
    if (m_service.delivery != InputSignalISDBTerrestrialOneSeg) return false;
    return (key == "BANDWIDTH_HZ" && text == "6000000") ||
           (text == "1" && (key == "ISDBT_PARTIAL_RECEPTION" || key == "ISDBT_LAYER_ENABLED" ||
                            key == "ISDBT_LAYERA_SEGMENT_COUNT"));
  }

  /// DVB-S has one modulation, which need not be named; the list cannot tell DVB-T2 from DVB-T.
  void TakeSystem() {
    if (IsSatellite() && !IsSecond()) m_service.tuning.modulation = BDA_MOD_QPSK;
    if (m_service.delivery != InputSignalDVBTerrestrial || !IsSecond()) return;
    const Value& system = m_section.values.find("DELIVERY_SYSTEM")->second;
    Lose(Code::SecondGenerationDropped, "DELIVERY_SYSTEM", system, std::string("DVBT"));
  }

  void TakeServiceId(const Value& value) {
    m_service.serviceId =
        static_cast<std::uint32_t>(Number("SERVICE_ID", value, UINT16_MAX).value_or(0));
  }
  void TakeTransportStream(const Value& value) {
    m_service.transportStream =
        static_cast<std::uint32_t>(Number("TRANSPORT_ID", value, UINT16_MAX).value_or(0));
  }
  void TakeNetwork(const Value& value) {
    m_service.network =
        static_cast<std::uint32_t>(Number("NETWORK_ID", value, UINT16_MAX).value_or(0));
  }

  bool HasMajorNumbers() const {
    return FindAttribute(LayoutOf(m_service.delivery), "majorChannel") != nullptr;
  }

  void TakeVirtualChannel(const Value& value) {
    const std::size_t dot = std::min(value.text.find_first_of(".-"), value.text.size());
    const std::string_view text = value.text;
    const auto first = ParseNumber(text.substr(0, dot), 0, UINT32_MAX);
    const auto second = dot == text.size() ? std::optional<std::int64_t>(0)
                                           : ParseNumber(text.substr(dot + 1), 0, UINT32_MAX);
    if (!first || !second) return Lose(Code::ValueOutOfRange, "VCHANNEL", value);
    if (HasMajorNumbers()) {
      m_service.major = static_cast<std::uint32_t>(*first);
      m_service.minor = static_cast<std::uint32_t>(*second);
    } else if (dot != text.size()) {
      Lose(Code::NoPlace, "VCHANNEL", value);
    } else {
      m_service.index = static_cast<std::uint32_t>(*first);
    }
  }

  void TakeVideo(const Value& value) { TakeStreams("VIDEO_PID", StreamKind::Video, 0, value); }
  void TakeAudio(const Value& value) { TakeStreams("AUDIO_PID", StreamKind::Audio, 0, value); }

  void TakeStreams(std::string_view key, StreamKind kind, std::uint32_t type, const Value& value) {
    std::vector<Stream>& streams = m_service.Of(kind);
    std::size_t dropped = 0;
    std::string_view rest = value.text;
    while (true) {
      rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
      if (rest.empty()) break;
      const std::string_view word = rest.substr(0, rest.find_first_of(" \t"));
      rest.remove_prefix(word.size());
      const std::optional<std::int64_t> pid = ParseNumber(word, 0, kLastPid);
      if (streams.size() >= kMostPids) {
        ++dropped;
      } else if (pid) {
        streams.push_back({type, static_cast<std::uint32_t>(*pid), {}});
      } else {
        Lose(Code::ValueOutOfRange, key, {Excerpt(word), value.line});
      }
    }
    if (dropped > 0) {
      m_losses.Add(Code::StreamsDropped, key, {std::nullopt, m_section.name, value.line},
                   static_cast<std::int64_t>(dropped));
    }
  }

  /// Streams of DSM-CC have types of their own. The others are left out rather than mislabelled:
  /// private data may be teletext, subtitles or sound.
  void TakePids() {
    for (const auto& [type, value] : m_section.pids) {
      constexpr std::uint32_t kFirstOfDsmcc = 0x0A;
      constexpr std::uint32_t kLastOfDsmcc = 0x0D;
      const std::string key = KeyOfPids(type);
      if (type < kFirstOfDsmcc || type > kLastOfDsmcc) {
        Lose(Code::StreamUnknown, key, {Excerpt(value.text), value.line});
      } else {
        TakeStreams(key, StreamKind::Dsmcc, type, value);
      }
    }
  }

  static std::string KeyOfPids(std::uint32_t type) {
    constexpr char kDigits[] = "0123456789abcdef";
    return std::string("PID_") + kDigits[type >> 4] + kDigits[type & 0xF];
  }

  void TakeFrequency(const Value& value) {
    const std::uint64_t number = Number("FREQUENCY", value, UINT32_MAX).value_or(0);
    Tuning& tuning = m_service.tuning;
    if (IsSatellite()) {
      tuning.frequency = number;
      return;
    }
    tuning.frequency = (number + 500) / 1'000;
    const DWORD country = m_request.context.country;
    const auto channel = RfChannelOf(m_service.delivery, country, number);
    if (HasMajorNumbers()) {
      if (!channel && number != 0) Lose(Code::NoPlace, "FREQUENCY", value);
    } else if (number % 1'000 != 0 &&
               (!channel || FrequencyOf(m_service.delivery, country, *channel) != number)) {
      Lose(Code::NumberRounded, "FREQUENCY", value, static_cast<std::int64_t>(tuning.frequency));
    }
  }

  void TakeSymbolRate(const Value& value) {
    const std::uint64_t rate = Number("SYMBOL_RATE", value, UINT32_MAX).value_or(0);
    m_service.tuning.symbolRate = (rate + 500) / 1'000;
    if (rate % 1'000 == 0) return;
    Lose(Code::NumberRounded, "SYMBOL_RATE", value,
         static_cast<std::int64_t>(m_service.tuning.symbolRate));
  }

  template <typename Parameter>
  void TakeWord(std::string_view key, std::span<const Word> words, const Value& value,
                Parameter& parameter) {
    if (const std::optional<std::int32_t> known = ValueOf(words, value.text)) {
      parameter = static_cast<Parameter>(*known);
    } else {
      Lose(Code::WordLacking, key, value, std::string("NotSet"));
    }
  }

  void TakePolarisation(const Value& value) {
    TakeWord("POLARIZATION", Polarisations(), value, m_service.tuning.polarisation);
  }
  void TakeFec(const Value& value) {
    TakeWord("INNER_FEC", FecRates(), value, m_service.tuning.fec);
  }

  void TakeModulation(const Value& value) {
    ModulationType modulation = m_service.tuning.modulation;
    TakeWord("MODULATION", Modulations(), value, modulation);
    // Over the air ATSC has one; on satellites the first system has.
    const bool isImplied =
        (m_service.delivery == InputSignalATSCAntenna && modulation == BDA_MOD_8VSB) ||
        (IsSatellite() && !IsSecond() && modulation == BDA_MOD_NOT_SET);
    if (!isImplied) m_service.tuning.modulation = modulation;
  }

  /// Only satellites have a place for it, and everywhere else AUTO says nothing.
  void TakeInversion(const Value& value) {
    if (!IsSatellite() && IsOpen(value.text)) return;
    TakeWord("INVERSION", Inversions(), value, m_service.tuning.inversion);
  }

  void TakeDish(const Value& value) {
    if (value.text == "-1") return;
    constexpr std::int64_t kDishes = 4;
    if (const auto number = Number("SAT_NUMBER", value, kDishes - 1)) {
      m_service.tuning.dish = static_cast<std::uint32_t>(*number) + 1;
    }
  }

  void TakeLnb(const Value& value) {
    for (const Lnb& lnb : Lnbs()) {
      if (EqualIgnoringCase(lnb.name, value.text)) m_lnb = &lnb;
    }
    if (m_lnb == nullptr) Lose(Code::WordLacking, "LNB", value);
  }

  void PutLnb(Channel& channel) const {
    if (m_lnb == nullptr) return;
    const station_blocks::Layout& layout = LayoutOf(m_service.delivery);
    for (const auto& [attribute, number] :
         {std::pair("LNB_LowFreq", m_lnb->low), std::pair("LNB_HighFreq", m_lnb->high),
          std::pair("LNB_SwitchFreq", m_lnb->switchAt)}) {
      const station_blocks::Field* field = FindAttribute(layout, attribute);
      station_blocks::Store(channel.block.data() + field->offset, field->width, number);
    }
  }

  const Section& m_section;
  const ImportRequest& m_request;
  Losses& m_losses;
  Place m_place;
  Service m_service;
  const Lnb* m_lnb = nullptr;
};

}  // namespace
}  // namespace interchange::dvbv5

namespace interchange {

ImportResult ReadDvbv5(const Input& input, const ImportRequest& request, Losses& losses) {
  ImportResult result;
  const bool isOfTheKind =
      dvbv5::ReadSections(input.bytes, losses, [&](const dvbv5::Section& section) {
        ++result.read;
        std::optional<ImportedChannel> made = dvbv5::SectionImport(section, request, losses).Make();
        if (made) result.Add(std::move(*made), request);
      });
  if (!isOfTheKind) throw Failure{E_INVALIDARG, "the file is no channel file of libdvbv5"};
  return result;
}

}  // namespace interchange

}  // namespace zortunedex::kit
