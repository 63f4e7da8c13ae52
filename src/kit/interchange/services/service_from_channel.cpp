#include <algorithm>

#include "kit/interchange/channel_plans.h"
#include "kit/interchange/languages.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/services/service_names.h"
#include "kit/interchange/services/shown_name.h"
#include "kit/interchange/services/station_values.h"

namespace zortunedex::kit::interchange {
namespace {

/// Where what the channel lacks is taken from: same position and polarisation, the nearest
/// frequency within this distance.
constexpr std::uint64_t kSameTransponder = 2'000;

class Leaving {
 public:
  Leaving(const Channel& channel, const ExportRequest& request, Losses& losses)
      : m_channel(channel),
        m_request(request),
        m_signal(request.context.signal),
        m_values(channel, m_signal, request.context.narrow),
        m_losses(losses),
        m_place{channel.index, utf::FromWide(channel.displayName)} {}

  Service Make() {
    m_service.delivery = m_signal;
    m_service.index = m_channel.index;
    m_service.favorite = m_channel.favorite != 0;
    TakeNames();
    TakeIdentifiers();
    TakeTuning();
    for (std::size_t kind = 0; kind < kStreamKinds; ++kind) TakeStreams(kind);
    return std::move(m_service);
  }

 private:
  void TakeNames() {
    const std::string broadcast = utf::FromWide(m_channel.name);
    if (!IsFilledName(m_channel, m_request.context)) {
      m_service.userName = utf::FromWide(m_channel.displayName);
    }
    const bool shown = m_request.names == Names::Shown && !m_service.userName.empty();
    m_service.name = shown ? m_service.userName : broadcast;
    m_service.provider = m_values.Text("networkName");
  }

  void TakeIdentifiers() {
    m_service.serviceType = m_values.Number("serviceType");
    m_service.serviceId = m_values.Number(NamesOf(m_signal).service);
    m_service.network = m_values.Number(NamesOf(m_signal).network);
    m_service.transportStream = m_values.Number("TSID");
    m_service.major = m_values.Number("majorChannel");
    m_service.minor = m_values.Number("minorChannel");
    m_service.pcrPid = m_values.Number("PcrPID");
    TakeCa(m_values.Number("CA"));
  }

  /// A flag, or the identifier of the system.
  void TakeCa(std::uint32_t ca) {
    m_service.scrambled = ca != 0;
    if (ca >= kLowestCaId && ca <= UINT16_MAX) {
      m_service.caIds.push_back(static_cast<std::uint16_t>(ca));
    }
  }

  void TakeTuning() {
    Tuning& tuning = m_service.tuning;
    tuning.frequency = m_channel.frequency;
    tuning.rfChannel = m_channel.number;
    if (m_signal == InputSignalDVBSatellite) return TakeSatellite();
    if (m_signal == InputSignalDVBTerrestrial) return TakeTerrestrial();
    if (tuning.frequency != 0) return;
    const std::optional<std::uint64_t> planned =
        FrequencyOf(m_signal, m_request.context.country, tuning.rfChannel);
    if (planned) tuning.frequency = (*planned + 500) / 1'000;
  }

  void TakeTerrestrial() {
    Tuning& tuning = m_service.tuning;
    tuning.bandwidth = m_request.bandwidth;
    if (tuning.bandwidth != 0) return;
    tuning.bandwidth = TerrestrialBandwidth(m_request.context.country, tuning.frequency);
    m_losses.Add(Code::TuningDerived, "bandwidth", m_place, {},
                 std::int64_t{tuning.bandwidth} * 1'000'000);
  }

  void TakeSatellite() {
    Tuning& tuning = m_service.tuning;
    tuning.rfChannel = 0;
    const auto position = static_cast<std::int32_t>(m_values.Number("orbitalPosition"));
    const bool isWest = m_values.Number("westPosition") != 0 && position > 0;
    tuning.position = isWest ? -position : position;
    for (const DishPosition& known : m_request.context.dishes) {
      if (known.position == tuning.position && tuning.dish == 0) tuning.dish = known.dish;
    }
    tuning.symbolRate = m_values.Number("symbolRate");
    tuning.polarisation = m_values.WordOf<Polarisation>("polarisation");
    tuning.fec = m_values.WordOf<BinaryConvolutionCodeRate>("innerFECRate");
    tuning.modulation = m_values.WordOf<ModulationType>("modulation");
    tuning.inversion = m_values.WordOf<SpectralInversion>("spectralInversion");
    if (tuning.modulation == BDA_MOD_QPSK) tuning.system = System::First;
    if (tuning.modulation != BDA_MOD_NOT_SET || TakeTransponder()) return;
    tuning.system = System::Second;
    m_losses.Add(Code::SystemAssumed, "modulation", m_place, std::string("NotSet"),
                 std::string("DVB-S2, automatic"));
  }

  /// What the tables say of the transponder; false when they have none like it.
  bool TakeTransponder() {
    const Tuning* best = nullptr;
    for (const Tuning& known : m_request.tuning) {
      if (IsSame(known) && (best == nullptr || Distance(known) < Distance(*best))) best = &known;
    }
    if (best == nullptr) return false;
    const bool tellsNothing = best->system == System::Unknown;
    if (tellsNothing && best->modulation == BDA_MOD_NOT_SET) return false;
    Tuning& tuning = m_service.tuning;
    tuning.modulation = best->modulation;
    tuning.system = !tellsNothing                      ? best->system
                    : best->modulation == BDA_MOD_QPSK ? System::First
                                                       : System::Second;
    if (tuning.fec == BDA_BCC_RATE_NOT_SET) tuning.fec = best->fec;
    if (tuning.system != System::Second) return true;
    tuning.rollOff = best->rollOff;
    tuning.pilot = best->pilot;
    return true;
  }

  std::uint64_t Distance(const Tuning& known) const {
    const std::uint64_t frequency = m_service.tuning.frequency;
    return std::max(known.frequency, frequency) - std::min(known.frequency, frequency);
  }

  bool IsSame(const Tuning& known) const {
    const Tuning& tuning = m_service.tuning;
    return known.position == tuning.position && known.polarisation == tuning.polarisation &&
           Distance(known) <= kSameTransponder;
  }

  void TakeStreams(std::size_t kind) {
    for (const StreamEntry& entry : m_values.Streams(ListName(kind))) {
      Stream stream{entry.type, entry.pid, {}};
      if (const std::optional<Language> language = LanguageOf(entry.language)) {
        stream.language = language->code;
        if (language->assumed) {
          m_losses.Add(Code::LanguageAssumed, std::string(ListName(kind)) + ".lang", m_place,
                       std::int64_t{entry.language}, stream.language);
        }
      }
      m_service.streams[kind].push_back(std::move(stream));
    }
  }

  const Channel& m_channel;
  const ExportRequest& m_request;
  InputSignalType m_signal;
  StationValues m_values;
  Losses& m_losses;
  Place m_place;
  Service m_service;
};

}  // namespace

Service FromChannel(const Channel& channel, const ExportRequest& request, Losses& losses) {
  return Leaving(channel, request, losses).Make();
}

}  // namespace zortunedex::kit::interchange
