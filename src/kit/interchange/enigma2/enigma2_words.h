// The numbers and names of Enigma2's settings.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "core/interfaces.h"
#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange::enigma2 {

/// The signal types that the settings hold.
std::span<const InputSignalType> Signals();

/// What identifies a transponder. The namespace is made of the position and, where the identifiers
/// are none that can be relied on, of the frequency.
struct TransponderKey {
  std::uint32_t nameSpace = 0;
  std::uint32_t stream = 0;
  std::uint32_t network = 0;

  bool operator<(const TransponderKey& other) const {
    return std::tie(nameSpace, stream, network) <
           std::tie(other.nameSpace, other.stream, other.network);
  }
};
struct ServiceKey {
  TransponderKey transponder;
  std::uint32_t service = 0;

  bool operator<(const ServiceKey& other) const {
    return std::tie(transponder, service) < std::tie(other.transponder, other.service);
  }
};

/// A number of the settings and the value that it stands for.
struct Number {
  std::uint32_t number;
  std::int32_t value;
};
std::span<const Number> FecRates();
std::span<const Number> Modulations();
std::span<const Number> Inversions();
std::span<const Number> Bandwidths();  ///< in MHz
std::span<const Number> VideoTypes();
/// Stream types of sound by the identifier of the PID; of several the first is read.
std::span<const Number> AudioTypes();

std::optional<std::uint32_t> NumberOf(std::span<const Number> numbers, std::int32_t value);
std::optional<std::int32_t> ValueOf(std::span<const Number> numbers, std::uint32_t number);

/// Identifiers of cached PIDs.
inline constexpr std::uint32_t kVideoPid = 0;
inline constexpr std::uint32_t kTeletextPid = 2;
inline constexpr std::uint32_t kPcrPid = 3;
inline constexpr std::uint32_t kVideoType = 5;

inline constexpr std::uint32_t kTerrestrialNamespace = 0xEEEE0000;
/// Tenths of a degree around the earth.
inline constexpr std::int32_t kWholeCircle = 3600;
inline constexpr std::int32_t kHalfCircle = kWholeCircle / 2;

/// Radio of the first kind and with a newer codec.
inline bool IsRadio(std::uint32_t serviceType) { return serviceType == 2 || serviceType == 10; }

/// "0065": at least that many digits.
std::string Hex(std::uint64_t number, std::size_t digits = 1, bool capitals = false);
/// Hexadecimal digits alone, up to `highest`.
std::optional<std::uint32_t> ParseHex(std::string_view text, std::uint32_t highest = UINT32_MAX);

}  // namespace zortunedex::kit::interchange::enigma2
