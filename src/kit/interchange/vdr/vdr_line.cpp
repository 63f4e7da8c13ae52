#include "kit/interchange/vdr/vdr_line.h"

#include <algorithm>
#include <utility>

#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/services/service_names.h"
#include "kit/interchange/text_parts.h"
#include "kit/interchange/vdr/vdr_parameters.h"
#include "kit/interchange/vdr/vdr_words.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::interchange::vdr {
namespace {

std::string WithColons(std::string text) {
  std::ranges::replace(text, '|', ':');
  return text;
}

/// One line that is a channel, of which the service is made.
class LineReader {
 public:
  LineReader(const Line& line, InputSignalType signal, Losses& losses)
      : m_line(line), m_losses(losses) {
    m_service.delivery = signal;
    m_place.line = line.number;
  }

  /// False for a line that is not understood.
  bool Take() {
    for (const Part part : {kFrequency, kSymbolRate, kService}) {
      if (!DigitsOf(At(part))) return false;
    }
    for (const Part part : {kNetwork, kStream, kRadio}) {
      if (!At(part).empty() && !DigitsOf(At(part))) return false;
    }
    TakeName();
    if (!TakeSource()) return false;
    TakeTuning();
    TakeIdentifiers();
    TakeVideo();
    TakeAudio();
    TakeTexts();
    TakeCa();
    AssumeServiceType(m_place, m_service, m_losses);
    if (!m_line.rest.empty()) Lose(Code::KeyUnknown, "field", Utf8Of(m_line.rest));
    return true;
  }

  TakenLine Made() { return {std::move(m_service), m_place, m_radioId}; }

 private:
  bool IsAtsc() const {
    return m_service.delivery != InputSignalDVBSatellite &&
           m_service.delivery != InputSignalDVBTerrestrial;
  }

  std::string_view At(Part part) const { return m_line.parts[part]; }

  void Lose(Code code, std::string_view field, FieldValue value = {}, FieldValue became = {}) {
    m_losses.Add(code, field, m_place, std::move(value), std::move(became));
  }

  /// "Name,Short;Provider".
  void TakeName() {
    std::string_view text = At(kName);
    std::string_view name = TakeUpTo(';', text);
    const std::size_t comma = name.rfind(',');
    const std::string_view shortName =
        comma == std::string_view::npos ? std::string_view() : name.substr(comma + 1);
    name = name.substr(0, comma);
    m_service.name = WithColons(Utf8Of(name));
    m_service.provider = WithColons(Utf8Of(text));
    m_place.name = m_service.name;
    if (!shortName.empty()) Lose(Code::NoPlace, "shortName", Utf8Of(shortName));
    if (!utf::ToWide(At(kName))) {
      Lose(Code::NameChanged, "name", std::string("not UTF-8"), m_service.name);
    }
  }

  /// Without a position it is for others to say.
  bool TakeSource() {
    if (m_service.delivery != InputSignalDVBSatellite) return true;
    const std::string_view position = At(kSource).substr(1);
    if (position.empty()) return true;
    m_service.tuning.position = PositionOf(position);
    return m_service.tuning.position.has_value();
  }

  void TakeTuning() {
    const std::uint64_t field = *DigitsOf(At(kFrequency));
    m_service.tuning.frequency = FrequencyOf(field, m_service.delivery);
    const bool isSatellite = m_service.delivery == InputSignalDVBSatellite;
    if (!isSatellite && field > kHighestKilohertz && field % 1'000 != 0) {
      Lose(Code::NumberRounded, NamesOf(m_service.delivery).frequency, Shown(field),
           Shown(m_service.tuning.frequency));
    }
    // Of the others the field says nothing.
    if (isSatellite) m_service.tuning.symbolRate = *DigitsOf(At(kSymbolRate));
    TakeParameters(At(kParameters), m_place, m_service, m_losses);
  }

  std::uint32_t Identifier(Part part, std::string_view field) {
    const std::uint64_t number = DigitsOf(At(part)).value_or(0);
    if (number <= UINT16_MAX) return static_cast<std::uint32_t>(number);
    Lose(Code::ValueOutOfRange, field, Shown(number), std::int64_t{0});
    return 0;
  }

  void TakeIdentifiers() {
    const ServiceNames names = NamesOf(m_service.delivery);
    m_service.serviceId = Identifier(kService, names.service);
    m_service.network = Identifier(kNetwork, names.network);
    m_service.transportStream = Identifier(kStream, "TSID");
    m_radioId = Identifier(kRadio, "RID");
    if (m_radioId != 0) Lose(Code::NoPlace, "RID", std::int64_t{m_radioId});
  }

  /// A PID or a type; 0 for what is none, with a loss.
  std::uint32_t NumberOf(std::string_view text, std::uint32_t highest, const char* field) {
    const std::optional<std::uint64_t> number = DigitsOf(text);
    if (number && *number <= highest) return static_cast<std::uint32_t>(*number);
    Lose(Code::ValueOutOfRange, field, Utf8Of(text));
    return 0;
  }

  std::uint32_t TypeOf(std::string_view text, std::uint32_t usual, const char* field) {
    if (!text.empty()) {
      const std::uint32_t type = NumberOf(text, UINT8_MAX, field);
      if (type != 0) return type;
    }
    Lose(Code::TypeAssumed, field, {}, std::int64_t{usual});
    return usual;
  }

  /// "163+17=2".
  void TakeVideo() {
    std::string_view type = At(kVideo);
    std::string_view clock = TakeUpTo('=', type);
    const std::uint32_t pid = NumberOf(TakeUpTo('+', clock), kHighestPid, "VideoStream.pid");
    if (!clock.empty()) m_service.pcrPid = NumberOf(clock, kHighestPid, "PcrPID");
    // Lists of ATSC have no clock, so that none is lost where none is said.
    if (m_service.pcrPid == 0 && !IsAtsc()) m_service.pcrPid = pid;
    if (pid == 0) return;
    m_service.Of(StreamKind::Video)
        .push_back({TypeOf(type, kUsualVideo, "VideoStream.type"), pid, {}});
  }

  /// "256=deu+eng@3,257;259=deu@106".
  void TakeAudio() {
    std::string_view dolby = At(kAudio);
    std::string_view others = TakeUpTo(';', dolby);
    while (!others.empty()) TakeSound(TakeUpTo(',', others), false);
    while (!dolby.empty()) TakeSound(TakeUpTo(',', dolby), true);
  }

  void TakeSound(std::string_view text, bool isDolby) {
    std::string_view type = text;
    std::string_view language = TakeUpTo('@', type);
    const std::uint32_t pid = NumberOf(TakeUpTo('=', language), kHighestPid, "AudioStream.pid");
    if (pid == 0) return;
    Stream stream{TypeOf(type, isDolby ? kAc3Tag : kUsualAudio, "AudioStream.type"), pid, {}};
    if (isDolby) stream.type = OfDolby(stream.type);
    const std::string_view all = language;
    stream.language = TakeUpTo('+', language);
    if (!language.empty()) {
      Lose(Code::StreamKindDropped, "AudioStream.lang", Utf8Of(all), Utf8Of(stream.language));
    }
    Keep(StreamKind::Audio, "AudioStream", std::move(stream));
  }

  void Keep(StreamKind kind, const std::string& list, Stream stream) {
    std::vector<Stream>& streams = m_service.Of(kind);
    if (streams.size() >= kMostStreams) {
      return Lose(Code::StreamsDropped, list, std::int64_t{stream.pid});
    }
    streams.push_back(std::move(stream));
  }

  /// Other tags than that of AC-3 are private data, too.
  std::uint32_t OfDolby(std::uint32_t tag) {
    if (tag == kAtscAc3) return tag;
    if (tag != kAc3Tag) {
      Lose(Code::StreamKindDropped, "AudioStream.type", std::int64_t{tag},
           std::int64_t{kPrivateData});
    }
    return kPrivateData;
  }

  /// "105;110=deu,111". The form says no types of these.
  void TakeTexts() {
    std::string_view subtitles = At(kText);
    TakeText(TakeUpTo(';', subtitles), StreamKind::Teletext, "TeletextStream");
    while (!subtitles.empty()) {
      TakeText(TakeUpTo(',', subtitles), StreamKind::Subtitle, "SubtitleStream");
    }
  }

  void TakeText(std::string_view text, StreamKind kind, const std::string& list) {
    if (text.empty()) return;
    std::string_view language = text;
    const std::uint32_t pid =
        NumberOf(TakeUpTo('=', language), kHighestPid, (list + ".pid").c_str());
    if (pid == 0) return;
    Lose(Code::TypeAssumed, list + ".type", {}, std::int64_t{kPrivateData});
    Keep(kind, list, {kPrivateData, pid, std::string(language)});
  }

  /// Hexadecimal; below the identifiers stand numbers of devices.
  void TakeCa() {
    std::string_view list = At(kCa);
    while (!list.empty()) {
      const std::string_view text = TakeUpTo(',', list);
      const std::optional<std::uint64_t> id = DigitsOf(text, 16);
      if (!id || *id > UINT16_MAX) {
        Lose(Code::ValueOutOfRange, "CA", Utf8Of(text));
      } else if (*id >= kLowestCaId) {
        m_service.caIds.push_back(static_cast<std::uint16_t>(*id));
      } else if (*id != 0) {
        Lose(Code::CaFlagCleared, "CA", Shown(*id), std::int64_t{0});
      }
    }
  }

  /// More than any list has room for.
  static constexpr std::size_t kMostStreams = 64;
  /// Greater numbers are in Hz.
  static constexpr std::uint64_t kHighestKilohertz = 1'000'000;

  const Line& m_line;
  Losses& m_losses;
  Service m_service;
  Place m_place;
  std::uint32_t m_radioId = 0;
};

}  // namespace

Line LineOf(const TextLine& text) {
  Line line{text.number, {}, 0, text.text};
  while (line.count < kParts && !line.rest.empty()) {
    line.parts[line.count++] = TakeUpTo(':', line.rest);
  }
  return line;
}

std::string Utf8Of(std::string_view text) {
  if (utf::ToWide(text)) return std::string(text);
  std::string utf8;
  for (const char letter : text) utf::Append(utf8, static_cast<unsigned char>(letter));
  return utf8;
}

FieldValue Shown(std::uint64_t number) {
  return static_cast<std::int64_t>(std::min<std::uint64_t>(number, INT64_MAX));
}

std::optional<TakenLine> TakeLine(const Line& line, InputSignalType signal, Losses& losses) {
  LineReader reader(line, signal, losses);
  if (!reader.Take()) return std::nullopt;
  return reader.Made();
}

}  // namespace zortunedex::kit::interchange::vdr
