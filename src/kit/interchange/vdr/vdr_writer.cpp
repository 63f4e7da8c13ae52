#include "kit/interchange/vdr/vdr_writer.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_set>
#include <utility>

#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/services/service_names.h"
#include "kit/interchange/vdr/vdr_words.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::interchange::vdr {
namespace {

/// Beyond it the numbers that follow might not fit.
constexpr std::uint32_t kHighestJump = 1'000'000'000;

/// The characters that separate fields stand for others; names have no line breaks.
std::string InField(std::string_view text) {
  std::string field;
  for (const char letter : text) {
    const bool isControl = static_cast<unsigned char>(letter) < ' ';
    field += letter == ':'   ? '|'
             : letter == '|' ? '/'
             : letter == ';' ? ','
             : isControl     ? ' '
                             : letter;
  }
  return field;
}

/// What follows the last comma is a short name: a name with commas has an empty one.
std::string NameField(const Service& service) {
  std::string name = InField(service.name);
  if (name.empty()) name = "#" + std::to_string(service.serviceId);
  if (name.find(',') != std::string::npos) name += ',';
  // The program drops one of blanks alone.
  const std::string provider = InField(service.provider);
  const bool isBlank = provider.find_first_not_of(' ') == std::string::npos;
  return isBlank ? name : name + ";" + provider;
}

std::string SatelliteParameters(const Tuning& tuning) {
  std::string text;
  if (const char letter = PolarisationLetter(tuning.polarisation)) text += letter;
  text += "C" + std::to_string(FecNumber(tuning.fec));
  if (tuning.inversion == BDA_SPECTRAL_INVERSION_NORMAL) text += "I0";
  if (tuning.inversion == BDA_SPECTRAL_INVERSION_INVERTED) text += "I1";
  const std::uint32_t modulation = ModulationNumber(tuning.modulation).value_or(kAutomatic);
  text += "M" + std::to_string(modulation);
  if (tuning.pilot) text += *tuning.pilot ? "N1" : "N0";
  if (tuning.rollOff != 0) text += "O" + std::to_string(tuning.rollOff);
  // What has no number here is found out like what is not set: both are second generation.
  return text + (modulation == kAutomatic || tuning.system == System::Second ? "S1" : "S0");
}

std::string Parameters(const Service& service) {
  switch (service.delivery) {
    case InputSignalDVBSatellite:
      return SatelliteParameters(service.tuning);
    case InputSignalDVBTerrestrial:
      // Without a modulation the program would take QPSK.
      return "B" + std::to_string(service.tuning.bandwidth) + "C999D999G999I999M999S0T999Y999";
    case InputSignalATSCAntenna:
      return "M10";
    default:
      return "M999";
  }
}

bool IsPid(const Stream& stream) { return stream.pid != 0 && stream.pid <= kHighestPid; }

/// "163+17=2". A service without video still has a clock.
std::string VideoField(const Service& service) {
  const std::vector<Stream>& streams = service.Of(StreamKind::Video);
  const auto video = std::ranges::find_if(streams, IsPid);
  const bool isRadio = video == streams.end();
  const std::uint32_t pid = isRadio ? 0 : video->pid;
  std::string field = std::to_string(pid);
  const bool hasClock = service.pcrPid != 0 && service.pcrPid <= kHighestPid;
  if (hasClock && service.pcrPid != pid) field += "+" + std::to_string(service.pcrPid);
  if (!isRadio) field += "=" + std::to_string(video->type == 0 ? kUsualVideo : video->type);
  return field;
}

bool IsDolby(const Stream& stream) {
  return stream.type == kPrivateData || stream.type == kAtscAc3;
}

/// "256=deu@3".
std::string AudioText(const Stream& stream) {
  const std::uint32_t type = stream.type == 0              ? kUsualAudio
                             : stream.type == kPrivateData ? kAc3Tag
                                                           : stream.type;
  return std::to_string(stream.pid) + "=" + stream.language + "@" + std::to_string(type);
}

/// "256=deu@3,257=eng@3;259=deu@106".
std::string AudioField(const Service& service) {
  std::string others;
  std::string dolby;
  for (const Stream& stream : service.Of(StreamKind::Audio)) {
    if (!IsPid(stream)) continue;
    std::string& list = IsDolby(stream) ? dolby : others;
    if (!list.empty()) list += ',';
    list += AudioText(stream);
  }
  if (others.empty()) others = "0";
  return dolby.empty() ? others : others + ";" + dolby;
}

/// "105;110=deu,111".
std::string TextField(const Service& service) {
  const std::vector<Stream>& texts = service.Of(StreamKind::Teletext);
  const auto text = std::ranges::find_if(texts, IsPid);
  std::string field = text != texts.end() ? std::to_string(text->pid) : "0";
  char separator = ';';
  for (const Stream& stream : service.Of(StreamKind::Subtitle)) {
    if (!IsPid(stream)) continue;
    field += std::exchange(separator, ',') + std::to_string(stream.pid);
    if (!stream.language.empty()) field += "=" + stream.language;
  }
  return field;
}

/// Lower numbers would be those of devices.
std::string CaField(const Service& service) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string field;
  for (const std::uint16_t id : service.caIds) {
    if (!field.empty()) field += ',';
    for (int shift = id >= 0x1000 ? 12 : 8; shift >= 0; shift -= 4) {
      field += kDigits[id >> shift & 0xF];
    }
  }
  return field.empty() ? "0" : field;
}

class Writer {
 public:
  Writer(const ExportRequest& request, Output& output, Losses& losses)
      : m_request(request), m_output(output), m_bytes(output.Bytes()), m_losses(losses) {}

  void Take(std::size_t number) {
    const Channel& channel = m_request.channels[number];
    m_place = {channel.index, utf::FromWide(channel.displayName)};
    Losses assumed;
    Service service = FromChannel(channel, m_request, assumed);
    if (!Fits(service)) return;
    // What the field holds is what the program tells transponders apart by.
    const std::uint64_t frequency = *FrequencyField(service.tuning.frequency, service.delivery);
    service.tuning.frequency = FrequencyOf(frequency, service.delivery);
    const std::string identity = IdentityOf(service, 0);
    if (identity.empty()) return m_losses.Add(Code::NoIdentity, "channel", m_place);
    if (!m_identities.insert(identity).second) {
      return m_losses.Add(Code::IdentityTwice, "channel", m_place, identity);
    }
    AddTypesAssumed(service, assumed);
    m_losses.Take(std::move(assumed));
    Jump(service.index);
    AddLine(service, frequency);
    m_output.written.push_back(number);
  }

 private:
  bool Holds(std::string_view field, std::uint64_t value, std::uint64_t highest) {
    if (value <= highest) return true;
    m_losses.Add(Code::ValueOutOfRange, field, m_place, static_cast<std::int64_t>(value));
    return false;
  }

  bool Fits(const Service& service) {
    const ServiceNames names = NamesOf(service.delivery);
    if (!FrequencyField(service.tuning.frequency, service.delivery)) {
      return Holds(names.frequency, service.tuning.frequency, 0);
    }
    const auto position =
        static_cast<std::uint64_t>(std::abs(std::int64_t{service.tuning.position.value_or(0)}));
    return Holds(names.service, service.serviceId, UINT16_MAX) &&
           Holds(names.network, service.network, UINT16_MAX) &&
           Holds("TSID", service.transportStream, UINT16_MAX) &&
           Holds("orbitalPosition", position, kFarthest) &&
           Holds("symbolRate", service.tuning.symbolRate, kHighestNumber);
  }

  /// The program takes a stream without a type for the usual one.
  void AddTypesAssumed(const Service& service, Losses& losses) const {
    const auto add = [&](const Stream& stream, const char* field, std::uint32_t usual) {
      if (stream.type != 0 || !IsPid(stream)) return;
      losses.Add(Code::TypeAssumed, field, m_place, std::int64_t{0}, std::int64_t{usual});
    };
    const std::vector<Stream>& videos = service.Of(StreamKind::Video);
    const auto video = std::ranges::find_if(videos, IsPid);
    if (video != videos.end()) add(*video, "VideoStream.type", kUsualVideo);
    for (const Stream& audio : service.Of(StreamKind::Audio)) {
      add(audio, "AudioStream.type", kUsualAudio);
    }
  }

  /// Channels are counted; a line of its own says where the count goes on.
  void Jump(std::uint32_t index) {
    if (index > m_next && index <= kHighestJump) {
      m_next = index;
      m_bytes += ":@" + std::to_string(index) + " \n";
    }
    ++m_next;
  }

  void AddLine(const Service& service, std::uint64_t frequency) {
    const bool isSatellite = service.delivery == InputSignalDVBSatellite;
    const std::string fields[] = {
        std::to_string(frequency),
        Parameters(service),
        SourceText(service),
        std::to_string(isSatellite ? service.tuning.symbolRate : 0),
        VideoField(service),
        AudioField(service),
        TextField(service),
        CaField(service),
        std::to_string(service.serviceId),
        std::to_string(service.network),
        std::to_string(service.transportStream),
        "0",
    };
    m_bytes += NameField(service);
    for (const std::string& field : fields) m_bytes += ":" + field;
    m_bytes += '\n';
  }

  const ExportRequest& m_request;
  Output& m_output;
  std::string& m_bytes;
  Losses& m_losses;
  Place m_place;
  std::uint32_t m_next = 1;
  std::unordered_set<std::string> m_identities;
};

}  // namespace

void Write(const ExportRequest& request, Output& output, Losses& losses) {
  Writer writer(request, output, losses);
  for (std::size_t i = 0; i < request.channels.size(); ++i) writer.Take(i);
}

}  // namespace zortunedex::kit::interchange::vdr
