#pragma once

#include <cstdint>
#include <optional>

#include "core/interfaces.h"

namespace service_type {

/// The service type of a channel with that service-type code in its block (none: no block). E_FAIL
/// for DVB-H and where the block is needed and missing. Types that name no service answer S_OK and
/// leave `serviceType` as it was: counting and navigation then judge the channel by the one before.
HRESULT FromCode(InputSignalType signalType, std::optional<std::uint32_t> code,
                 EServiceType& serviceType);

}  // namespace service_type
