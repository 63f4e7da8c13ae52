// RF channels and the frequencies that they are on.
#pragma once

#include <cstdint>
#include <optional>

#include "core/interfaces.h"

namespace zortunedex::kit::interchange {

/// Frequency in Hz of an RF channel of ATSC (the carrier that scanners name), cable by the plan of
/// the country code, or of one-segment; nothing for a channel that the plan lacks.
std::optional<std::uint64_t> FrequencyOf(InputSignalType signal, DWORD country,
                                         std::uint32_t rfChannel);
/// The RF channel within 500 kHz of a frequency in Hz.
std::optional<std::uint32_t> RfChannelOf(InputSignalType signal, DWORD country,
                                         std::uint64_t frequency);

/// Bandwidth in MHz of DVB-T on a frequency in kHz where nothing else is known.
std::uint32_t TerrestrialBandwidth(DWORD country, std::uint64_t frequency);

}  // namespace zortunedex::kit::interchange
