// Kinds of signal and of service.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "api/zortunedex/error.hpp"
#include "core/station_blocks.h"

namespace zortunedex {

/// Kinds of signal whose channels the file keeps; the values are those of InputSignalType.
enum class signal : std::int32_t {
  analog_antenna = InputSignalAnalogAntenna,
  analog_cable = InputSignalAnalogCable,
  fm_radio = InputSignalFMRadio,
  atsc_antenna = InputSignalATSCAntenna,
  atsc_cable = InputSignalATSCCable,
  dvb_satellite = InputSignalDVBSatellite,
  dvb_terrestrial = InputSignalDVBTerrestrial,
  dvb_handheld = InputSignalDVBHandheld,
  tdmb = InputSignalTDMBMobile,
  isdb_one_seg = InputSignalISDBTerrestrialOneSeg,
};

/// Kinds of service; the values are those of EServiceType.
enum class service : std::int32_t {
  unknown = ServiceUnknown,  ///< the channel names none
  analog_tv = ServiceAnalogTV,
  digital_tv = ServiceDigitalTV,
  digital_audio = ServiceDigitalAudio,
  digital_radio = ServiceDigitalRadio,
  data = ServiceDataBroadcast,
  others = ServiceOthers,
  all = ServiceAll,  ///< analogue and FM: every kind is asked for with it
};

/// A kind of signal and its word.
struct named_signal {
  zortunedex::signal value;  ///< the kind
  std::string_view name;     ///< as `tunedex --signal` takes it
};

/// All kinds with their words.
inline constexpr named_signal signals[] = {
    {signal::analog_antenna, "AnalogAntenna"},
    {signal::analog_cable, "AnalogCable"},
    {signal::fm_radio, "FMRadio"},
    {signal::atsc_antenna, "ATSCAntenna"},
    {signal::atsc_cable, "ATSCCable"},
    {signal::dvb_satellite, "DVBSatellite"},
    {signal::dvb_terrestrial, "DVBTerrestrial"},
    {signal::dvb_handheld, "DVBHandheld"},
    {signal::tdmb, "TDMBMobile"},
    {signal::isdb_one_seg, "ISDBTerrestrialOneSeg"},
};

/// The word of a kind of signal; "unknown" for a value that is none.
constexpr std::string_view name_of(signal kind) {
  for (const named_signal& known : signals) {
    if (known.value == kind) return known.name;
  }
  return "unknown";
}

/// The kind of signal with a word. Raises an error for a word that is none.
inline signal signal_named(std::string_view name) {
  for (const named_signal& known : signals) {
    if (known.name == name) return known.value;
  }
  throw error(E_INVALIDARG, "find the signal type", std::string(name),
              "there is none of that name");
}

namespace detail {

inline InputSignalType TypeOf(signal kind) { return static_cast<InputSignalType>(kind); }

/// Raises an error for a value that is no kind of signal.
inline const station_blocks::Layout& LayoutOf(signal kind) {
  const station_blocks::Layout* layout = station_blocks::Find(TypeOf(kind));
  if (layout != nullptr) return *layout;
  throw error(E_INVALIDARG, "use the signal type", std::to_string(static_cast<std::int32_t>(kind)),
              "the file keeps no channels of it");
}

}  // namespace detail
}  // namespace zortunedex
