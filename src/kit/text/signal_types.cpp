#include "kit/text/signal_types.h"

#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace {

struct SignalName {
  InputSignalType type;
  std::string_view name;
};

constexpr SignalName kSignals[] = {
    {InputSignalUnknown, "Unknown"},
    {InputSignalAnalogAntenna, "AnalogAntenna"},
    {InputSignalAnalogCable, "AnalogCable"},
    {InputSignalAnalogComposite, "AnalogComposite"},
    {InputSignalAnalogSVideo, "AnalogSVideo"},
    {InputSignalFMRadio, "FMRadio"},
    {InputSignalAMRadio, "AMRadio"},
    {InputSignalATSCAntenna, "ATSCAntenna"},
    {InputSignalATSCCable, "ATSCCable"},
    {InputSignalDVBCable, "DVBCable"},
    {InputSignalDVBSatellite, "DVBSatellite"},
    {InputSignalDVBTerrestrial, "DVBTerrestrial"},
    {InputSignalDVBHandheld, "DVBHandheld"},
    {InputSignalISDBCable, "ISDBCable"},
    {InputSignalISDBSatellite, "ISDBSatellite"},
    {InputSignalISDBTerrestrial, "ISDBTerrestrial"},
    {InputSignalTDMBMobile, "TDMBMobile"},
    {InputSignalISDBTerrestrialOneSeg, "ISDBTerrestrialOneSeg"},
};

constexpr InputSignalType kStorable[] = {
    InputSignalAnalogAntenna,         InputSignalAnalogCable, InputSignalFMRadio,
    InputSignalATSCAntenna,           InputSignalATSCCable,   InputSignalDVBSatellite,
    InputSignalDVBTerrestrial,        InputSignalDVBHandheld, InputSignalTDMBMobile,
    InputSignalISDBTerrestrialOneSeg,
};

struct ServiceName {
  EServiceType type;
  const char* name;
};

constexpr ServiceName kServices[] = {
    {ServiceUnknown, "-"},
    {ServiceAnalogTV, "AnalogTV"},
    {ServiceDigitalTV, "DigitalTV"},
    {ServiceDigitalAudio, "DigitalAudio"},
    {ServiceDigitalRadio, "DigitalRadio"},
    {ServiceDataBroadcast, "DataBroadcast"},
    {ServiceOthers, "Others"},
    {ServiceAll, "All"},
};

struct ServiceMask {
  std::string_view word;
  DWORD mask;
};

constexpr ServiceMask kMasks[] = {
    {"tv", ServiceAnalogTV | ServiceDigitalTV},
    {"radio", ServiceDigitalAudio | ServiceDigitalRadio},
    {"data", ServiceDataBroadcast},
    {"other", static_cast<DWORD>(ServiceOthers)},
    {"all", static_cast<DWORD>(ServiceAll)},
};

}  // namespace

std::optional<InputSignalType> ParseSignalType(std::string_view text) {
  constexpr std::string_view kPrefix = "InputSignal";
  if (EqualIgnoringCase(text.substr(0, kPrefix.size()), kPrefix)) {
    text.remove_prefix(kPrefix.size());
  }
  const std::optional<std::int64_t> number = ParseNumber(text);
  for (const SignalName& signal : kSignals) {
    if (EqualIgnoringCase(signal.name, text) || number == signal.type) return signal.type;
  }
  return std::nullopt;
}

std::string SignalTypeName(InputSignalType signalType) {
  for (const SignalName& signal : kSignals) {
    if (signal.type == signalType) return std::string(signal.name);
  }
  return std::to_string(signalType);
}

std::span<const InputSignalType> StorableSignalTypes() { return kStorable; }

std::optional<DWORD> ParseServiceMask(std::string_view text) {
  for (const ServiceMask& mask : kMasks) {
    if (EqualIgnoringCase(mask.word, text)) return mask.mask;
  }
  const std::optional<std::int64_t> number = ParseNumber(text, INT32_MIN, UINT32_MAX);
  if (!number) return std::nullopt;
  return static_cast<DWORD>(*number);
}

std::string ServiceTypeName(EServiceType serviceType) {
  for (const ServiceName& service : kServices) {
    if (service.type == serviceType) return service.name;
  }
  return std::to_string(serviceType);
}

std::optional<EServiceType> ParseServiceType(std::string_view text) {
  for (const ServiceName& service : kServices) {
    if (EqualIgnoringCase(service.name, text)) return service.type;
  }
  return std::nullopt;
}

std::string ServiceTypeChoices() {
  std::string text;
  for (const ServiceName& service : kServices) {
    if (service.type == ServiceUnknown) continue;
    text += (text.empty() ? "" : service.type == ServiceAll ? " or " : ", ");
    text += service.name;
  }
  return text;
}

}  // namespace zortunedex::kit
