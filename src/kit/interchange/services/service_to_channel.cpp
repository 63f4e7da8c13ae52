#include <algorithm>
#include <limits>

#include "kit/interchange/channel_plans.h"
#include "kit/interchange/languages.h"
#include "kit/interchange/services/channel_builder.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/services/service_names.h"
#include "kit/interchange/services/station_values.h"
#include "kit/interchange/services/tuning_texts.h"
#include "kit/model/channel_layout.h"
#include "kit/text/ascii.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Source;
using station_blocks::StreamList;

namespace interchange {
namespace {

constexpr std::uint32_t kHighestPid = 0x1FFF;

class Entering {
 public:
  Entering(const Service& service, std::size_t line, const ImportRequest& request, Losses& losses)
      : m_service(service),
        m_request(request),
        m_signal(request.context.signal),
        m_layout(LayoutOf(m_signal)),
        m_losses(losses),
        m_place{std::nullopt, service.name, line} {
    if (service.index != 0) m_place.index = service.index;
  }

  Channel Make() {
    m_channel = EmptyChannel(m_layout);
    m_channel.index = m_service.index;
    m_channel.favorite = m_service.favorite ? 1 : 0;
    PutNames();
    PutIdentifiers();
    PutTuning();
    for (std::size_t kind = 0; kind < kStreamKinds; ++kind) PutStreams(kind);
    return Completed(m_channel, m_request.context);
  }

 private:
  void Lose(Code code, std::string_view field, FieldValue value, FieldValue became = {}) {
    m_losses.Add(code, field, m_place, std::move(value), std::move(became));
  }

  void PutNames() {
    PutText("name", m_service.name);
    PutDisplayName();
    if (FindAttribute(m_layout, "networkName") != nullptr) {
      PutText("networkName", m_service.provider);
      if (!m_service.provider.empty()) {
        Lose(Code::ProviderTaken, "networkName", m_service.provider, m_service.provider);
      }
    } else if (!m_service.provider.empty()) {
      Lose(Code::NoPlace, "provider", m_service.provider);
    }
  }

  /// Without one of the user's the record fills it in.
  void PutDisplayName() {
    const Field& field = *FindAttribute(m_layout, "nameDisplay");
    const FittedText fitted =
        FitText(m_service.userName, TextLimit(field), field.form == station_blocks::Form::Text,
                m_request.context.narrow);
    m_channel.displayName = fitted.wide;
    if (fitted.changed) {
      Lose(Code::NameChanged, "nameDisplay", m_service.userName, utf::FromWide(fitted.wide));
    }
  }

  void PutText(const char* attribute, const std::string& utf8) {
    const Field& field = *FindAttribute(m_layout, attribute);
    const FittedText fitted = FitText(
        utf8, TextLimit(field), field.form == station_blocks::Form::Text, m_request.context.narrow);
    std::ranges::copy(fitted.narrow, m_channel.block.begin() + field.offset);
    if (fitted.changed) Lose(Code::NameChanged, attribute, utf8, utf::FromWide(fitted.wide));
  }

  void PutNumber(std::string_view attribute, std::uint64_t value,
                 std::uint64_t highest = UINT32_MAX) {
    if (value == 0) return;
    const Field* field = FindAttribute(m_layout, attribute);
    const auto shown = static_cast<std::int64_t>(
        std::min<std::uint64_t>(value, std::numeric_limits<std::int64_t>::max()));
    if (field == nullptr) return Lose(Code::NoPlace, attribute, shown);
    if (value > highest) return Lose(Code::ValueOutOfRange, attribute, shown, std::int64_t{0});
    const auto number = static_cast<std::uint32_t>(value);
    if (field->source != Source::Block) SetSourceValue(m_channel, field->source, number);
    if (field->width != 0) {
      station_blocks::Store(m_channel.block.data() + field->offset, field->width, number);
    }
  }

  /// A parameter whose value has a word in the file, or becomes NotSet.
  template <typename Word>
  void PutWord(const char* attribute, Word value) {
    const Field* field = FindAttribute(m_layout, attribute);
    if (value == -1) return;
    if (field == nullptr) return Lose(Code::NoPlace, attribute, TextOf(value));
    if (tuning_words::Text(field->form, value) == nullptr) {
      return Lose(Code::WordLacking, attribute, TextOf(value), std::string("NotSet"));
    }
    station_blocks::Store(m_channel.block.data() + field->offset, field->width,
                          static_cast<std::uint32_t>(value));
  }

  void PutIdentifiers() {
    const ServiceNames names = NamesOf(m_signal);
    PutNumber("serviceType", m_service.serviceType);
    PutNumber(names.service, m_service.serviceId, UINT16_MAX);
    PutNumber(names.network, m_service.network, UINT16_MAX);
    PutNumber("TSID", m_service.transportStream, UINT16_MAX);
    PutNumber("majorChannel", m_service.major);
    PutNumber("minorChannel", m_service.minor);
    PutNumber("PcrPID", m_service.pcrPid, kHighestPid);
    const bool isOne = m_service.caIds.size() == 1;
    const bool isFlag = m_service.scrambled || !m_service.caIds.empty();
    PutNumber("CA", isOne ? m_service.caIds.front() : isFlag ? 1 : 0);
    if (m_service.caIds.size() > 1 && FindAttribute(m_layout, "CA") != nullptr) {
      Lose(Code::CaIdsBecameFlag, "CA", CaText(), std::int64_t{1});
    }
  }

  std::string CaText() const {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint16_t id : m_service.caIds) {
      if (!text.empty()) text += ',';
      for (int shift = 12; shift >= 0; shift -= 4) text += kDigits[id >> shift & 0xF];
    }
    return text;
  }

  void PutTuning() {
    const Tuning& tuning = m_service.tuning;
    if (FindAttribute(m_layout, NamesOf(m_signal).frequency) != nullptr) {
      PutNumber(NamesOf(m_signal).frequency, tuning.frequency);
    }
    PutRfChannel();
    if (m_signal == InputSignalDVBSatellite) return PutSatellite();
    PutNumber("symbolRate", tuning.symbolRate);
    PutWord("innerFECRate", tuning.fec);
    PutWord("modulation", tuning.modulation);
    PutWord("spectralInversion", tuning.inversion);
    if (tuning.bandwidth != 0) {
      Lose(Code::NoPlace, "bandwidth", std::int64_t{tuning.bandwidth} * 1'000'000);
    }
  }

  void PutRfChannel() {
    std::uint32_t channel = m_service.tuning.rfChannel;
    if (channel == 0 && m_service.tuning.frequency < UINT32_MAX) {
      channel = RfChannelOf(m_signal, m_request.context.country, m_service.tuning.frequency * 1'000)
                    .value_or(0);
      if (channel != 0) {
        Lose(Code::TuningDerived, "physicalChannel",
             static_cast<std::int64_t>(m_service.tuning.frequency), std::int64_t{channel});
      }
    }
    PutNumber("physicalChannel", channel);
  }

  void PutSatellite() {
    const Tuning& tuning = m_service.tuning;
    PutPosition();
    PutNumber("symbolRate", tuning.symbolRate, INT32_MAX);
    PutWord("polarisation", tuning.polarisation);
    PutWord("innerFECRate", tuning.fec);
    PutWord("spectralInversion", tuning.inversion);
    // Second generation is what the list knows as NotSet.
    if (tuning.system != System::Second) {
      return PutWord("modulation", tuning.modulation);
    }
    if (tuning.modulation != BDA_MOD_NOT_SET) {
      Lose(Code::WordLacking, "modulation", "S2 " + TextOf(tuning.modulation),
           std::string("NotSet"));
    }
  }

  void PutPosition() {
    std::optional<std::int32_t> position = m_service.tuning.position;
    if (!position) position = m_request.position;
    for (const DishPosition& known : m_request.context.dishes) {
      if (!position && m_service.tuning.dish == known.dish) position = known.position;
    }
    if (!position) Lose(Code::PositionUnknown, "orbitalPosition", {}, std::int64_t{0});
    PutNumber("westPosition", position.value_or(0) < 0 ? 1 : 0);
    const std::int64_t tenths = position.value_or(0);
    PutNumber("orbitalPosition", static_cast<std::uint64_t>(tenths < 0 ? -tenths : tenths));
  }

  void PutStreams(std::size_t kind) {
    const std::vector<Stream>& streams = m_service.streams[kind];
    if (streams.empty()) return;
    const StreamList* list = FindList(m_layout, ListName(kind));
    const bool isKept = list != nullptr && list->use == station_blocks::Use::Both;
    const std::size_t count = isKept ? std::min<std::size_t>(streams.size(), list->capacity) : 0;
    for (std::size_t i = 0; i < streams.size(); ++i) {
      if (i < count) {
        PutStream(*list, i, streams[i]);
      } else {
        Lose(isKept ? Code::StreamsDropped : Code::NoPlace, ListName(kind),
             std::int64_t{streams[i].pid});
      }
    }
    if (isKept) {
      station_blocks::Store(m_channel.block.data() + list->countOffset, 4,
                            static_cast<std::uint32_t>(count));
    }
  }

  void PutStream(const StreamList& list, std::size_t i, const Stream& stream) {
    BYTE* entry = m_channel.block.data() + list.offset + i * list.entrySize;
    const std::string name = list.element;
    if (stream.pid <= kHighestPid) {
      station_blocks::Store(entry + 2, 2, stream.pid);
    } else {
      Lose(Code::ValueOutOfRange, name + ".pid", std::int64_t{stream.pid}, std::int64_t{0});
    }
    if (stream.type <= UINT8_MAX) {
      station_blocks::Store(entry, 1, stream.type);
    } else {
      Lose(Code::ValueOutOfRange, name + ".type", std::int64_t{stream.type}, std::int64_t{0});
    }
    PutLanguage(entry + 4, name + ".lang", stream.language);
  }

  /// The list keeps twelve bits, which may stand for another language, or for none.
  void PutLanguage(BYTE* place, const std::string& field, const std::string& language) {
    const std::uint32_t bits = LanguageBits(language);
    station_blocks::StoreLanguage(place, bits);
    if (language.empty()) return;
    const std::optional<Language> kept = LanguageOf(bits);
    if (!kept) {
      Lose(Code::StreamKindDropped, field, language, std::int64_t{bits});
    } else if (!EqualIgnoringCase(kept->code, language)) {
      Lose(Code::LanguageAssumed, field, language, std::string(kept->code));
    }
  }

  const Service& m_service;
  const ImportRequest& m_request;
  InputSignalType m_signal;
  const station_blocks::Layout& m_layout;
  Losses& m_losses;
  Place m_place;
  Channel m_channel;
};

}  // namespace

Channel ToChannel(const Service& service, std::size_t line, const ImportRequest& request,
                  Losses& losses) {
  return Entering(service, line, request, losses).Make();
}

}  // namespace interchange

}  // namespace zortunedex::kit
