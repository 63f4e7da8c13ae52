#include "kit/interchange/channel_plans.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace zortunedex::kit::interchange {
namespace {

constexpr std::uint64_t kKilohertz = 1'000;
constexpr std::uint64_t kMegahertz = 1'000'000;
constexpr std::uint64_t kStep = 6 * kMegahertz;
constexpr std::uint64_t kTolerance = 500 * kKilohertz;

/// Channels that lie one behind the other, the first one at a frequency in MHz.
struct Run {
  std::uint32_t first;
  std::uint32_t last;
  std::uint32_t megahertz;
};

constexpr Run kOverTheAir[] = {{2, 4, 57}, {5, 6, 79}, {7, 13, 177}, {14, 69, 473}};
constexpr Run kCable[] = {{2, 4, 57},    {5, 6, 79},   {7, 13, 177},   {14, 22, 123},
                          {23, 94, 219}, {95, 99, 93}, {100, 158, 651}};
/// Incrementally related carriers: all at one distance, 5 and 6 two MHz higher.
constexpr Run kCableIrc[] = {{1, 1, 75},    {2, 4, 57},    {5, 6, 81},   {7, 13, 177},
                             {14, 22, 123}, {23, 94, 219}, {95, 99, 93}, {100, 158, 651}};
constexpr Run kOneSegment[] = {{13, 62, 473}};

constexpr DWORD kHrcCountry = 1001;
constexpr DWORD kIrcCountry = 1002;

std::span<const Run> PlanOf(InputSignalType signal, DWORD country) {
  if (signal == InputSignalATSCAntenna) return kOverTheAir;
  if (signal == InputSignalISDBTerrestrialOneSeg) return kOneSegment;
  if (signal != InputSignalATSCCable) return {};
  if (country == kHrcCountry || country == kIrcCountry) return kCableIrc;
  return kCable;
}

/// From the nominal centre of a channel to the frequency that tuners are given.
std::uint64_t Tuned(InputSignalType signal, DWORD country, std::uint64_t centre) {
  // Beside the pilot, as scanners name it.
  if (signal == InputSignalATSCAntenna) return centre + 28'615;
  // A seventh of a MHz above the middle of the channel.
  if (signal == InputSignalISDBTerrestrialOneSeg) return centre + 142'857;
  // Harmonically related carriers: multiples of 6.0003 MHz, 1.75 MHz below the centre.
  if (country == kHrcCountry) {
    return (centre - 3 * kMegahertz) / kStep * 6'000'300 + 1'750 * kKilohertz;
  }
  return centre;
}

/// The Americas without the Pacific ones.
bool IsAmerican(DWORD country) {
  constexpr DWORD kOthers[] = {1, 2, 242, 297, 340, 345, 441, 787, 809, 876, 1001, 1002};
  if (std::ranges::find(kOthers, country) != std::end(kOthers)) return true;
  return (country >= 51 && country <= 58) || (country >= 501 && country <= 509) ||
         (country >= 591 && country <= 599) || (country >= 1200 && country <= 1999);
}

bool IsEuropean(DWORD country) {
  return (country >= 30 && country <= 49) || (country >= 350 && country <= 389) ||
         (country >= 420 && country <= 423) || country == 298 || country == 299;
}

}  // namespace

std::optional<std::uint64_t> FrequencyOf(InputSignalType signal, DWORD country,
                                         std::uint32_t rfChannel) {
  for (const Run& run : PlanOf(signal, country)) {
    if (rfChannel < run.first || rfChannel > run.last) continue;
    return Tuned(signal, country, run.megahertz * kMegahertz + (rfChannel - run.first) * kStep);
  }
  return std::nullopt;
}

std::optional<std::uint32_t> RfChannelOf(InputSignalType signal, DWORD country,
                                         std::uint64_t frequency) {
  for (const Run& run : PlanOf(signal, country)) {
    for (std::uint32_t channel = run.first; channel <= run.last; ++channel) {
      const std::uint64_t of = *FrequencyOf(signal, country, channel);
      if (std::max(of, frequency) - std::min(of, frequency) <= kTolerance) return channel;
    }
  }
  return std::nullopt;
}

std::uint32_t TerrestrialBandwidth(DWORD country, std::uint64_t frequency) {
  constexpr DWORD kAustralia = 61;
  constexpr DWORD kTaiwan = 886;
  constexpr std::uint64_t kUhf = 300'000;
  if (IsAmerican(country) || country == kTaiwan) return 6;
  if (country == kAustralia) return 7;
  return IsEuropean(country) && frequency < kUhf ? 7 : 8;
}

}  // namespace zortunedex::kit::interchange
