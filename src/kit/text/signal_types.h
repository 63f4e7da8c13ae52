// The names of signal and service types on the command line and in the output.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/interfaces.h"

namespace zortunedex::kit {

/// Enumerator without "InputSignal" in any letter case, or its number.
std::optional<InputSignalType> ParseSignalType(std::string_view text);
/// Enumerator without "InputSignal".
std::string SignalTypeName(InputSignalType signalType);
/// The signal types whose channels the file can hold, in ascending order of their values.
std::span<const InputSignalType> StorableSignalTypes();

/// tv, radio, data, other, all or a number.
std::optional<DWORD> ParseServiceMask(std::string_view text);
/// Enumerator without "Service"; "-" for ServiceUnknown.
std::string ServiceTypeName(EServiceType serviceType);
/// The service type of such a name in any letter case.
std::optional<EServiceType> ParseServiceType(std::string_view text);
/// "AnalogTV, DigitalTV, ... or All".
std::string ServiceTypeChoices();

}  // namespace zortunedex::kit
