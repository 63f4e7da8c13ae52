#include <algorithm>
#include <optional>
#include <span>

#include "kit/check/rules/rewriting.h"
#include "kit/check/rules/rules.h"

namespace zortunedex::kit::check {
namespace {

using markup::Attribute;
using markup::Document;
using markup::Element;
using markup::Index;
using markup::kNone;

/// In kHz.
struct Band {
  std::uint32_t lowest;
  std::uint32_t highest;
};

constexpr Band kFm[] = {{65'000, 108'000}};
constexpr Band kTdmb[] = {{174'000, 240'000}};
constexpr Band kOneSeg[] = {{470'000, 770'000}};
constexpr Band kTerrestrial[] = {{44'000, 1'002'000}};
constexpr Band kSatellite[] = {{2'500'000, 2'700'000},
                               {3'400'000, 4'800'000},
                               {10'700'000, 12'750'000},
                               {17'300'000, 22'200'000}};
constexpr Band kSymbolRates[] = {{100, 80'000}};

std::span<const Band> BandsOf(InputSignalType signal) {
  switch (signal) {
    case InputSignalFMRadio:
      return kFm;
    case InputSignalTDMBMobile:
      return kTdmb;
    case InputSignalISDBTerrestrialOneSeg:
      return kOneSeg;
    case InputSignalDVBSatellite:
      return kSatellite;
    default:
      return kTerrestrial;
  }
}

bool Fits(std::span<const Band> bands, std::uint64_t value) {
  return std::ranges::any_of(
      bands, [value](const Band& band) { return value >= band.lowest && value <= band.highest; });
}

/// The value in the usual unit, where it fits in one a thousand times as large or as small.
std::optional<std::uint64_t> InUsualUnit(std::span<const Band> bands, std::uint64_t value) {
  if (Fits(bands, value * 1000)) return value * 1000;
  const std::uint64_t rounded = (value + 500) / 1000;
  return Fits(bands, rounded) ? std::optional(rounded) : std::nullopt;
}

class TuningRules : public ChannelRules {
 public:
  TuningRules(const Subject& subject, const ChannelGroup& group)
      : m_subject(subject), m_document(subject.document), m_signal(group.signal) {}

  void Check(Index channel) override {
    const bool oneSeg = m_signal == InputSignalISDBTerrestrialOneSeg;
    const auto frequency = Find(channel, oneSeg ? "Frequency" : "freq");
    if (frequency) CheckFrequency(channel, *frequency);
    if (oneSeg) CheckOneSeg(channel, frequency);
    if (m_signal != InputSignalDVBSatellite) return;
    const Index params = FirstChild(m_document, At(channel), "SatelliteParams");
    if (params != kNone) CheckSatellite(params);
  }

 private:
  struct Value {
    const Attribute* attribute;
    std::int32_t number;
  };

  const Element& At(Index index) const { return m_document.Elements()[index]; }

  /// A number that is there and not 0, which stands for what is not known.
  std::optional<Value> Find(Index element, const char* name) const {
    const Attribute* attribute = m_document.Find(At(element), name);
    if (attribute == nullptr) return std::nullopt;
    const std::int32_t number = ReadNumber(m_document.ValueOf(*attribute)).value;
    return number == 0 ? std::nullopt : std::optional(Value{attribute, number});
  }

  void CheckFrequency(Index channel, const Value& frequency) {
    const std::span<const Band> bands = BandsOf(m_signal);
    const std::uint32_t value = Unsigned(frequency.number);
    // ATSC keeps no frequency; a row that is not there is not read.
    if (m_signal == InputSignalATSCAntenna || m_signal == InputSignalATSCCable) return;
    if (Fits(bands, value)) return;
    if (const auto usual = InUsualUnit(bands, value)) {
      m_subject.report
          .Add("ZT111", channel, *frequency.attribute,
               "the frequency is not in kHz: " + std::to_string(*usual) + " would be")
          .edits = SetValue(*frequency.attribute, std::to_string(*usual));
    } else {
      m_subject.report.Add("ZT110", channel, *frequency.attribute,
                           "the signal has no band at this frequency");
    }
  }

  void CheckSatellite(Index params) {
    if (const auto rate = Find(params, "symbolRate")) CheckSymbolRate(params, *rate);
    if (const auto position = Find(params, "orbitalPosition")) {
      if (position->number < 0 || position->number > 1800) {
        m_subject.report.Add("ZT113", params, *position->attribute,
                             "a position has 0 to 1800 tenths of a degree");
      }
    }
    if (const auto west = Find(params, "westPosition")) {
      if (west->number != 1) {
        m_subject.report.Add("ZT113", params, *west->attribute, "west is 0 or 1");
      }
    }
  }

  void CheckSymbolRate(Index params, const Value& rate) {
    const std::uint64_t value = Unsigned(rate.number);
    if (Fits(kSymbolRates, value)) return;
    const std::uint64_t usual = (value + 500) / 1000;
    const bool isInSymbols = value > 80'000 && Fits(kSymbolRates, usual);
    Finding& finding = m_subject.report.Add(
        "ZT112", params, *rate.attribute,
        isInSymbols ? "the symbol rate is not in thousands: " + std::to_string(usual) + " would be"
                    : "a symbol rate has 100 to 80000 thousands");
    if (isInSymbols) finding.edits = SetValue(*rate.attribute, std::to_string(usual));
    Settle(finding);
  }

  void CheckOneSeg(Index channel, const std::optional<Value>& frequency) {
    const auto number = Find(channel, "physicalChannel");
    if (number && frequency && Fits(kOneSeg, Unsigned(frequency->number))) {
      const std::int64_t expected = 473143 + 6000 * (std::int64_t{number->number} - 13);
      if (std::int64_t{frequency->number} - expected > 1 ||
          expected - std::int64_t{frequency->number} > 1) {
        m_subject.report.Add("ZT114", channel, *number->attribute,
                             "RF channel " + std::to_string(number->number) + " is at " +
                                 std::to_string(expected) + " kHz");
      }
    }
    CheckOneSegIds(channel);
  }

  // The service's identifier has the region in its upper six bits, then a flag of prefectures, two
  // bits of type, four of the broadcaster and three of the service; the network's follows from
  // them.
  void CheckOneSegIds(Index channel) {
    const auto network = Find(channel, "NetworkID");
    const auto service = Find(channel, "ServiceID");
    if (!network || !service) return;
    const std::uint32_t id = Unsigned(service->number);
    const std::uint32_t region = id >> 10 & 0x3F;
    const std::uint32_t prefecture = id >> 9 & 1;
    const std::uint32_t broadcaster = id >> 3 & 0xF;
    const std::uint32_t expected = 0x7FF0 - 16 * region + broadcaster - 0x400 * prefecture;
    if ((id >> 7 & 3) != 3) {
      m_subject.report.Add("ZT115", channel, *service->attribute,
                           "the identifier is not that of a one-segment service");
    } else if (Unsigned(network->number) != expected) {
      m_subject.report.Add(
          "ZT115", channel, *network->attribute,
          "a service with this identifier is in network " + std::to_string(expected));
    }
  }

  const Subject& m_subject;
  const Document& m_document;
  InputSignalType m_signal;
};

}  // namespace

ChannelRulesPtr MakeTuningRules(const Subject& subject, const ChannelGroup& group) {
  return std::make_unique<TuningRules>(subject, group);
}

}  // namespace zortunedex::kit::check
