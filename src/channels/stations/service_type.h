#pragma once

#include <cstdint>
#include <optional>

#include "core/interfaces.h"

namespace service_type {

/// The service type of a channel with that service-type code in its block (none: no block). E_FAIL
/// for DVB-H and where the block is needed and missing. Types that name no service answer S_OK and
/// leave `serviceType` as it was: counting and navigation then judge the channel by the one before.
HRESULT FromCode(InputSignalType signalType, const std::optional<std::uint32_t>& code,
                 EServiceType& serviceType);

/// That answer, kept.
class Answer {
 public:
  Answer() = default;

  void Learn(InputSignalType signalType, const std::optional<std::uint32_t>& code) {
    m_serviceType = ServiceUnknown;
    m_result = FromCode(signalType, code, m_serviceType);
  }

  HRESULT Give(EServiceType& serviceType) const {
    if (m_serviceType != ServiceUnknown) serviceType = m_serviceType;
    return m_result;
  }

 private:
  // No code stands for an unknown service.
  EServiceType m_serviceType = ServiceUnknown;
  HRESULT m_result = S_OK;
};

}  // namespace service_type
