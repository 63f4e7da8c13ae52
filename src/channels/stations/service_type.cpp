#include "channels/stations/service_type.h"

namespace service_type {

namespace {

EServiceType FromAtsc(std::uint32_t code) {
  switch (code) {
    case 1:
      return ServiceAnalogTV;
    case 2:
      return ServiceDigitalTV;
    case 3:
      return ServiceDigitalAudio;
    case 4:
      return ServiceDataBroadcast;
    default:
      return ServiceOthers;
  }
}

// The codes of the DVB service descriptor.
EServiceType FromDvb(std::uint32_t code) {
  switch (code) {
    case 1:
    case 17:
    case 22:
    case 25:
    case 154:
      return ServiceDigitalTV;
    case 2:
    case 10:
      return ServiceDigitalRadio;
    case 12:
    case 16:
      return ServiceDataBroadcast;
    default:
      return ServiceOthers;
  }
}

EServiceType FromTdmb(std::uint32_t code) {
  if (code == 1) return ServiceDigitalTV;
  return code == 2 ? ServiceDigitalAudio : ServiceOthers;
}

}  // namespace

HRESULT FromCode(InputSignalType signalType, const std::optional<std::uint32_t>& code,
                 EServiceType& serviceType) {
  switch (signalType) {
    case InputSignalAnalogAntenna:
    case InputSignalAnalogCable:
    case InputSignalFMRadio:
      // Matches every mask.
      serviceType = ServiceAll;
      return S_OK;
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
      if (!code) return E_FAIL;
      serviceType = FromAtsc(*code);
      return S_OK;
    case InputSignalDVBCable:
    case InputSignalDVBSatellite:
    case InputSignalDVBTerrestrial:
      if (!code) return E_FAIL;
      serviceType = FromDvb(*code);
      return S_OK;
    case InputSignalDVBHandheld:
      return E_FAIL;
    case InputSignalTDMBMobile:
      if (!code) return E_FAIL;
      serviceType = FromTdmb(*code);
      return S_OK;
    default:
      return S_OK;
  }
}

}  // namespace service_type
