#include "kit/interchange/m3u/m3u_identity.h"

#include <cstdlib>

#include "kit/interchange/services/station_values.h"

namespace zortunedex::kit::interchange::m3u {
namespace {

std::string Decimal(std::uint32_t number) { return std::to_string(number); }

std::string Hexadecimal(std::uint32_t number) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  do {
    text.insert(text.begin(), kDigits[number & 0xF]);
  } while ((number >>= 4) != 0);
  return text;
}

/// "S19.2E".
std::string PositionText(const StationValues& values) {
  const std::uint32_t tenths = values.Number("orbitalPosition");
  return "S" + Decimal(tenths / 10) + "." + Decimal(tenths % 10) +
         (values.Number("westPosition") != 0 ? "W" : "E");
}

std::string AtscText(const char* kind, const StationValues& values) {
  const std::uint32_t major = values.Number("majorChannel");
  const std::uint32_t minor = values.Number("minorChannel");
  if (major == 0 && minor == 0) return {};
  return kind + Decimal(values.Number("physicalChannel")) + "-" + Decimal(major) + "." +
         Decimal(minor);
}

std::string FrequencyText(const char* kind, std::uint32_t frequency) {
  return frequency == 0 ? std::string() : kind + Decimal(frequency);
}

std::string DvbText(const std::string& source, const StationValues& values) {
  if (values.Number("serviceID") == 0) return {};
  return source + "-" + Decimal(values.Number("ONID")) + "-" + Decimal(values.Number("TSID")) +
         "-" + Decimal(values.Number("serviceID"));
}

}  // namespace

std::string IdentityOf(const Channel& channel, const ListContext& context) {
  const StationValues values(channel, context.signal, context.narrow);
  switch (context.signal) {
    case InputSignalDVBSatellite:
      return DvbText(PositionText(values), values);
    case InputSignalDVBTerrestrial:
      return DvbText("T", values);
    case InputSignalDVBHandheld:
      return DvbText("H", values);
    case InputSignalATSCAntenna:
      return AtscText("A", values);
    case InputSignalATSCCable:
      return AtscText("C", values);
    case InputSignalISDBTerrestrialOneSeg:
      if (values.Number("ServiceID") == 0) return {};
      return "1SEG-" + Decimal(values.Number("NetworkID")) + "-" +
             Decimal(values.Number("ServiceID"));
    case InputSignalTDMBMobile:
      if (values.Number("ServiceID") == 0) return {};
      return "DMB-" + Hexadecimal(values.Number("ServiceID")) + "-" + Decimal(channel.frequency);
    case InputSignalFMRadio:
      return FrequencyText("FM-", channel.frequency);
    default:
      return FrequencyText("TV-", channel.frequency);
  }
}

std::string TripletOf(const Channel& channel, const ListContext& context) {
  const bool isDvb = context.signal == InputSignalDVBSatellite ||
                     context.signal == InputSignalDVBTerrestrial ||
                     context.signal == InputSignalDVBHandheld;
  if (!isDvb) return {};
  const std::string whole = DvbText({}, StationValues(channel, context.signal, context.narrow));
  return whole.empty() ? whole : whole.substr(1);
}

}  // namespace zortunedex::kit::interchange::m3u
