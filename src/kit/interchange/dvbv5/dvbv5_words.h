// The words of libdvbv5's channel files.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "core/interfaces.h"
#include "kit/interchange/service.h"

namespace zortunedex::kit::interchange::dvbv5 {

/// The signal types that the files hold.
std::span<const InputSignalType> Signals();

struct Word {
  const char* text;
  std::int32_t value;  ///< of the enumeration; -1: a receiver has to find out
};
std::span<const Word> Polarisations();
std::span<const Word> FecRates();
std::span<const Word> Modulations();
std::span<const Word> Inversions();

/// The first word for the value; null when there is none.
const char* TextOf(std::span<const Word> words, std::int32_t value);
/// In any letter case.
std::optional<std::int32_t> ValueOf(std::span<const Word> words, std::string_view text);

/// What DELIVERY_SYSTEM says of the types that have a form here.
const char* SystemText(InputSignalType signal, System system);
struct DeliverySystem {
  InputSignalType signal = InputSignalUnknown;  ///< unknown: no form here
  System system = System::Unknown;
};
/// The modulation tells ATSC over the air from cable, `isPartial` one-segment from the other ISDB.
DeliverySystem ParseSystem(std::string_view text, std::string_view modulation, bool isPartial);

/// A low-noise block. Frequencies in kHz; one oscillator stands as both, with no switch.
struct Lnb {
  const char* name;
  std::uint32_t low;
  std::uint32_t high;
  std::uint32_t switchAt;

  bool HasFrequencies(std::uint32_t low, std::uint32_t high, std::uint32_t switchAt) const;
};
/// The first of those with the same frequencies is written.
std::span<const Lnb> Lnbs();

/// Where a value has no place in the channel file: which code that has.
enum class KeyUse { Unknown, NoPlace, SecondGeneration };
KeyUse UseOf(std::string_view key);

}  // namespace zortunedex::kit::interchange::dvbv5
