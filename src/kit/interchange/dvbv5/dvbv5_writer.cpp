#include "kit/interchange/dvbv5/dvbv5_writer.h"

#include <algorithm>

#include "kit/interchange/channel_plans.h"
#include "kit/interchange/dvbv5/dvbv5_words.h"
#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/services/service_names.h"
#include "kit/interchange/services/station_values.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace interchange::dvbv5 {
namespace {

constexpr FieldCode kCodes[] = {
    // 5/11 goes out as automatic.
    {"innerFECRate", Code::NumberRounded},
    // The number of a dish stands for the first position that it receives.
    {"orbitalPosition", Code::NoPlace},
    {"westPosition", Code::NoPlace},
    {"serviceType", Code::TypeAssumed},
    // Their PIDs are in the file, but nothing tells the two apart.
    {"TeletextStream", Code::StreamKindDropped},
    {"SubtitleStream", Code::StreamKindDropped},
};

/// Stream type of sections of DSM-CC of any kind; every other one goes out as 0x0b.
constexpr std::uint32_t kSections = 0x0D;

/// A closing bracket would end the name, a name alone would stand for none.
std::string TitleOf(const std::string& name) {
  std::string title = PlainText(name);
  std::ranges::replace(title, ']', ')');
  title.erase(0, std::min(title.find_first_not_of(' '), title.size()));
  if (title.empty()) return "CHANNEL";
  return EqualIgnoringCase(title, "CHANNEL") ? title + '.' : title;
}

class Entry {
 public:
  Entry(const Service& service, std::string& text) : m_service(service), m_text(text) {}

  void Write(const StationValues& values, DWORD country) {
    m_text += '[' + TitleOf(m_service.name) + "]\n";
    WriteIdentity();
    WriteStreams();
    const bool isSatellite = m_service.delivery == InputSignalDVBSatellite;
    if (isSatellite) WriteDish(values);
    isSatellite ? WriteSatellite() : WriteTerrestrial(country);
    m_text += '\n';
  }

 private:
  void Put(std::string_view key, std::string_view value) {
    m_text += '\t';
    m_text += key;
    m_text += " = ";
    m_text += value;
    m_text += '\n';
  }
  void Put(std::string_view key, std::uint64_t number) { Put(key, std::to_string(number)); }

  void WriteIdentity() {
    if (FindAttribute(LayoutOfService(), "majorChannel") != nullptr) {
      if (m_service.major != 0 || m_service.minor != 0) {
        Put("VCHANNEL", std::to_string(m_service.major) + "." + std::to_string(m_service.minor));
      }
    } else if (m_service.index != 0) {
      Put("VCHANNEL", m_service.index);
    }
    Put("SERVICE_ID", m_service.serviceId);
    const std::uint64_t network = Within(m_service.network, UINT16_MAX);
    const std::uint64_t stream = Within(m_service.transportStream, UINT16_MAX);
    if (network != 0) Put("NETWORK_ID", network);
    if (stream != 0) Put("TRANSPORT_ID", stream);
  }

  const station_blocks::Layout& LayoutOfService() const {
    return *station_blocks::Find(m_service.delivery);
  }

  void PutPids(std::string_view key, const std::vector<std::uint32_t>& pids) {
    std::string text;
    for (const std::uint32_t pid : pids) {
      if (!text.empty()) text += ' ';
      text += std::to_string(Within(pid, kLastPid));
    }
    if (!pids.empty()) Put(key, text);
  }

  static void AddPids(const std::vector<Stream>& streams, std::vector<std::uint32_t>& pids) {
    for (const Stream& stream : streams) pids.push_back(stream.pid);
  }

  /// All PIDs of a type stand in one line. The tools themselves keep the last line alone.
  void WriteStreams() {
    std::vector<std::uint32_t> video, audio, data, dsmcc, sections;
    AddPids(m_service.Of(StreamKind::Video), video);
    AddPids(m_service.Of(StreamKind::Audio), audio);
    AddPids(m_service.Of(StreamKind::Teletext), data);
    AddPids(m_service.Of(StreamKind::Subtitle), data);
    for (const Stream& stream : m_service.Of(StreamKind::Dsmcc)) {
      (stream.type == kSections ? sections : dsmcc).push_back(stream.pid);
    }
    PutPids("VIDEO_PID", video);
    PutPids("AUDIO_PID", audio);
    PutPids("PID_0b", dsmcc);
    PutPids("PID_0d", sections);
    PutPids("PID_06", data);
  }

  void WriteDish(const StationValues& values) {
    if (m_service.tuning.dish != 0) Put("SAT_NUMBER", m_service.tuning.dish - 1);
    const std::uint32_t low = values.Number("LNB_LowFreq");
    const std::uint32_t high = values.Number("LNB_HighFreq");
    const std::uint32_t switchAt = values.Number("LNB_SwitchFreq");
    for (const Lnb& lnb : Lnbs()) {
      if (lnb.HasFrequencies(low, high, switchAt)) return Put("LNB", lnb.name);
    }
  }

  void WriteSatellite() {
    const Tuning& tuning = m_service.tuning;
    // What has no word is tuned to like everything that is not known.
    const char* modulation = TextOf(Modulations(), tuning.modulation);
    const System system = modulation == nullptr ? System::Second : tuning.system;
    Put("DELIVERY_SYSTEM", SystemText(m_service.delivery, system));
    Put("FREQUENCY", Within(tuning.frequency, UINT32_MAX));
    Put("MODULATION", modulation == nullptr ? "QAM/AUTO" : modulation);
    if (tuning.polarisation != BDA_POLARISATION_NOT_SET) {
      if (const char* text = TextOf(Polarisations(), tuning.polarisation)) {
        Put("POLARIZATION", text);
      }
    }
    Put("SYMBOL_RATE", Within(tuning.symbolRate * 1'000, UINT32_MAX));
    const char* fec = TextOf(FecRates(), tuning.fec);
    Put("INNER_FEC", fec == nullptr ? "AUTO" : fec);
    if (const char* text = TextOf(Inversions(), tuning.inversion)) {
      Put("INVERSION", text);
    }
    if (system != System::Second) return;
    // Without them the tools take the pilot for switched off.
    Put("PILOT", !tuning.pilot ? "AUTO" : *tuning.pilot ? "ON" : "OFF");
    Put("ROLLOFF", tuning.rollOff == 0 ? "AUTO" : std::to_string(tuning.rollOff));
  }

  void WriteTerrestrial(DWORD country) {
    Put("DELIVERY_SYSTEM", SystemText(m_service.delivery, m_service.tuning.system));
    const std::uint64_t frequency = Hertz(country);
    Put("FREQUENCY", frequency);
    if (m_service.delivery == InputSignalISDBTerrestrialOneSeg) return WriteSegment();
    const bool isOverTheAir = m_service.delivery == InputSignalATSCAntenna;
    Put("MODULATION", isOverTheAir ? "VSB/8" : "QAM/AUTO");
    // It was told by the frequency.
    if (m_service.tuning.bandwidth != 0 && frequency != 0) {
      Put("BANDWIDTH_HZ", m_service.tuning.bandwidth * std::uint64_t{1'000'000});
    }
    Put("INVERSION", "AUTO");
  }

  /// To the hertz where a plan has the frequency that the list has in thousands.
  std::uint64_t Hertz(DWORD country) const {
    const Tuning& tuning = m_service.tuning;
    const std::uint64_t known = tuning.frequency * 1'000;
    for (const std::optional<std::uint32_t> channel :
         {std::optional(tuning.rfChannel), RfChannelOf(m_service.delivery, country, known)}) {
      if (!channel) continue;
      const std::optional<std::uint64_t> planned =
          FrequencyOf(m_service.delivery, country, *channel);
      if (planned && (*planned + 500) / 1'000 == tuning.frequency) return *planned;
    }
    return Within(known, UINT32_MAX);
  }

  /// The segment in the middle, which is received by itself.
  void WriteSegment() {
    Put("BANDWIDTH_HZ", 6'000'000);
    Put("ISDBT_PARTIAL_RECEPTION", 1);
    Put("ISDBT_LAYER_ENABLED", 1);
    Put("ISDBT_LAYERA_SEGMENT_COUNT", 1);
    Put("INVERSION", "AUTO");
  }

  const Service& m_service;
  std::string& m_text;
};

}  // namespace
}  // namespace interchange::dvbv5

namespace interchange {

void WriteDvbv5(const ExportRequest& request, Output& output, Losses& losses) {
  const ListContext& context = request.context;
  std::string& text = output.Bytes();
  for (std::size_t i = 0; i < request.channels.size(); ++i) {
    const Channel& channel = request.channels[i];
    const StationValues values(channel, context.signal, context.narrow);
    const std::uint32_t id = values.Number(NamesOf(context.signal).service);
    if (Within(id, UINT16_MAX) == 0) {
      losses.Add(Code::NoIdentity, NamesOf(context.signal).service,
                 {channel.index, utf::FromWide(channel.displayName)}, std::int64_t{id});
      continue;
    }
    const Service service = FromChannelWithoutLanguages(channel, request, losses);
    dvbv5::Entry(service, text).Write(values, context.country);
    output.written.push_back(i);
  }
}

std::span<const FieldCode> Dvbv5Codes() { return dvbv5::kCodes; }

}  // namespace interchange

}  // namespace zortunedex::kit
