#include "kit/interchange/vdr/vdr_words.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "kit/interchange/text_parts.h"

namespace zortunedex::kit::interchange::vdr {
namespace {

template <typename Value>
struct Number {
  Value value;
  std::uint32_t number;
};

constexpr Number<BinaryConvolutionCodeRate> kRates[] = {
    {BDA_BCC_RATE_1_2, 12},
    {BDA_BCC_RATE_2_3, 23},
    {BDA_BCC_RATE_3_4, 34},
    {BDA_BCC_RATE_3_5, 35},
    {BDA_BCC_RATE_4_5, 45},
    {BDA_BCC_RATE_5_6, 56},
    {BDA_BCC_RATE_6_7, 67},
    {BDA_BCC_RATE_7_8, 78},
    {BDA_BCC_RATE_8_9, 89},
    {BDA_BCC_RATE_9_10, 910},
    {BDA_BCC_RATE_NOT_SET, kAutomatic},
};

constexpr Number<ModulationType> kModulations[] = {
    {BDA_MOD_QPSK, 2},     {BDA_MOD_8PSK, 5},     {BDA_MOD_16APSK, 6},
    {BDA_MOD_32APSK, 7},   {BDA_MOD_8VSB, 10},    {BDA_MOD_16VSB, 11},
    {BDA_MOD_16QAM, 16},   {BDA_MOD_32QAM, 32},   {BDA_MOD_64QAM, 64},
    {BDA_MOD_128QAM, 128}, {BDA_MOD_256QAM, 256}, {BDA_MOD_NOT_SET, kAutomatic},
};

constexpr Number<Polarisation> kPolarisations[] = {
    {BDA_POLARISATION_LINEAR_H, 'H'},
    {BDA_POLARISATION_LINEAR_V, 'V'},
    {BDA_POLARISATION_CIRCULAR_L, 'L'},
    {BDA_POLARISATION_CIRCULAR_R, 'R'},
};

bool IsOnAir(std::uint64_t modulation) { return modulation == 10 || modulation == 11; }
bool IsOnCable(std::uint64_t modulation) {
  return modulation != kAutomatic && !IsOnAir(modulation);
}

bool HasModulation(std::string_view parameters, bool (*is)(std::uint64_t)) {
  const std::size_t letter = parameters.find_first_of("Mm");
  if (letter == std::string_view::npos) return false;
  parameters.remove_prefix(letter + 1);
  const std::size_t end = parameters.find_first_not_of("0123456789");
  const std::optional<std::uint64_t> modulation = DigitsOf(parameters.substr(0, end));
  return modulation && is(*modulation);
}

std::uint64_t Transponder(const Service& service) {
  std::uint64_t transponder = service.tuning.frequency;
  while (transponder > 20'000) transponder /= 1'000;
  const auto found =
      std::ranges::find(kPolarisations, service.tuning.polarisation, &Number<Polarisation>::value);
  if (found == std::end(kPolarisations)) return transponder;
  return transponder + static_cast<std::uint64_t>(found - kPolarisations + 1) * 100'000;
}

}  // namespace

std::uint32_t FecNumber(BinaryConvolutionCodeRate fec) {
  const auto found = std::ranges::find(kRates, fec, &Number<BinaryConvolutionCodeRate>::value);
  return found != std::end(kRates) ? found->number : kAutomatic;
}

std::optional<BinaryConvolutionCodeRate> FecOf(std::uint32_t number) {
  const auto found = std::ranges::find(kRates, number, &Number<BinaryConvolutionCodeRate>::number);
  if (found == std::end(kRates)) return std::nullopt;
  return found->value;
}

std::optional<std::uint32_t> ModulationNumber(ModulationType modulation) {
  const auto found = std::ranges::find(kModulations, modulation, &Number<ModulationType>::value);
  if (found == std::end(kModulations)) return std::nullopt;
  return found->number;
}

std::optional<ModulationType> ModulationOf(std::uint32_t number) {
  const auto found = std::ranges::find(kModulations, number, &Number<ModulationType>::number);
  if (found == std::end(kModulations)) return std::nullopt;
  return found->value;
}

char PolarisationLetter(Polarisation polarisation) {
  const auto found = std::ranges::find(kPolarisations, polarisation, &Number<Polarisation>::value);
  return found != std::end(kPolarisations) ? static_cast<char>(found->number) : '\0';
}

Polarisation PolarisationOf(char letter) {
  const auto found = std::ranges::find(kPolarisations, static_cast<std::uint32_t>(letter),
                                       &Number<Polarisation>::number);
  return found != std::end(kPolarisations) ? found->value : BDA_POLARISATION_NOT_SET;
}

std::string SourceText(const Service& service) {
  if (service.delivery == InputSignalDVBTerrestrial) return "T";
  if (service.delivery != InputSignalDVBSatellite) return "A";
  const std::int32_t position = service.tuning.position.value_or(0);
  if (position == 0) return "S";
  const std::int32_t tenths = std::abs(position);
  return "S" + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) +
         (position < 0 ? "W" : "E");
}

bool IsSourceOf(std::string_view source, std::string_view parameters, InputSignalType signal) {
  switch (signal) {
    case InputSignalDVBSatellite:
      return source.starts_with('S');
    case InputSignalDVBTerrestrial:
      return source == "T";
    case InputSignalATSCAntenna:
      return source == "A" && !HasModulation(parameters, IsOnCable);
    case InputSignalATSCCable:
      return source == "A" && !HasModulation(parameters, IsOnAir);
    default:
      return false;
  }
}

std::optional<std::int32_t> PositionOf(std::string_view text) {
  if (text.empty() || text.size() > 6) return std::nullopt;
  const char side = text.back();
  if (side != 'E' && side != 'W') return std::nullopt;
  text.remove_suffix(1);
  const std::size_t point = text.find('.');
  const auto degrees = DigitsOf(text.substr(0, point));
  const std::string_view tenth =
      point == std::string_view::npos ? std::string_view("0") : text.substr(point + 1);
  const auto tenths = DigitsOf(tenth);
  if (!degrees || !tenths || tenth.size() != 1) return std::nullopt;
  const auto position = static_cast<std::int64_t>(*degrees * 10 + *tenths);
  if (position > std::int64_t{kFarthest}) return std::nullopt;
  return static_cast<std::int32_t>(side == 'W' ? -position : position);
}

std::uint64_t FrequencyOf(std::uint64_t field, InputSignalType signal) {
  constexpr std::uint64_t kMegahertz = 1'000'000;
  if (signal == InputSignalDVBSatellite) {
    return std::min<std::uint64_t>(field, UINT32_MAX) * 1'000;
  }
  if (field == 0) return 0;
  std::uint64_t hertz = field;
  while (hertz <= kMegahertz) hertz *= 1'000;
  return hertz / 1'000 + (hertz % 1'000 >= 500 ? 1 : 0);
}

std::optional<std::uint64_t> FrequencyField(std::uint64_t kilohertz, InputSignalType signal) {
  if (signal == InputSignalDVBSatellite) return (kilohertz + 500) / 1'000;
  for (const std::uint64_t field : {kilohertz, kilohertz * 1'000}) {
    if (field <= kHighestNumber && FrequencyOf(field, signal) == kilohertz) return field;
  }
  return std::nullopt;
}

std::string IdentityOf(const Service& service, std::uint32_t radioId) {
  const bool isKnown = service.network != 0 || service.transportStream != 0;
  const std::uint64_t stream = isKnown ? service.transportStream : Transponder(service);
  if (service.serviceId == 0 || (service.network == 0 && stream == 0)) return {};
  std::string identity = SourceText(service);
  for (const std::uint64_t part : {std::uint64_t{service.network}, stream,
                                   std::uint64_t{service.serviceId}, std::uint64_t{radioId}}) {
    identity += '-' + std::to_string(part);
  }
  return identity;
}

}  // namespace zortunedex::kit::interchange::vdr
