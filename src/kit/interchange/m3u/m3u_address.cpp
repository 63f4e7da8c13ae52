#include "kit/interchange/m3u/m3u_address.h"

#include <algorithm>
#include <iterator>

#include "kit/failure.h"
#include "kit/interchange/services/service_names.h"
#include "kit/interchange/services/station_values.h"

namespace zortunedex::kit::interchange::m3u {
namespace {

template <typename Value>
struct Word {
  Value value;
  const char* text;
};

constexpr Word<BinaryConvolutionCodeRate> kRates[] = {
    {BDA_BCC_RATE_1_2, "12"}, {BDA_BCC_RATE_2_3, "23"}, {BDA_BCC_RATE_3_4, "34"},
    {BDA_BCC_RATE_3_5, "35"}, {BDA_BCC_RATE_4_5, "45"}, {BDA_BCC_RATE_5_6, "56"},
    {BDA_BCC_RATE_7_8, "78"}, {BDA_BCC_RATE_8_9, "89"}, {BDA_BCC_RATE_9_10, "910"},
};
constexpr Word<Polarisation> kPolarisations[] = {
    {BDA_POLARISATION_LINEAR_H, "h"},
    {BDA_POLARISATION_LINEAR_V, "v"},
    {BDA_POLARISATION_CIRCULAR_L, "l"},
    {BDA_POLARISATION_CIRCULAR_R, "r"},
};
constexpr Word<ModulationType> kModulations[] = {
    {BDA_MOD_QPSK, "qpsk"},
    {BDA_MOD_8PSK, "8psk"},
};
constexpr Word<InputSignalType> kSystems[] = {
    {InputSignalDVBTerrestrial, "dvbt"},
    {InputSignalDVBHandheld, "dvbh"},
    {InputSignalATSCAntenna, "atsc"},
    {InputSignalATSCCable, "qam"},
    {InputSignalISDBTerrestrialOneSeg, "isdbt"},
    {InputSignalTDMBMobile, "tdmb"},
    {InputSignalFMRadio, "fm"},
};

/// Empty for a value without a word.
template <typename Value, std::size_t size>
std::string TextOf(const Word<Value> (&words)[size], Value value) {
  const auto found = std::ranges::find(words, value, &Word<Value>::value);
  return found != std::end(words) ? found->text : std::string();
}

std::string SystemText(const Service& service) {
  if (service.delivery == InputSignalDVBSatellite) {
    return service.tuning.system == System::Second ? "dvbs2" : "dvbs";
  }
  const std::string text = TextOf(kSystems, service.delivery);
  return text.empty() ? "analog" : text;
}

/// "12544.75" of kHz.
std::string Megahertz(std::uint64_t frequency) {
  std::string text = std::to_string(frequency / 1'000);
  std::string rest = std::to_string(1'000 + frequency % 1'000).substr(1);
  rest.erase(rest.find_last_not_of('0') + 1);
  return rest.empty() ? text : text + "." + rest;
}

std::string PercentEncoded(const std::string& text) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string encoded;
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    const bool isPlain = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
                         (letter >= '0' && letter <= '9') ||
                         std::string_view("-._~").find(letter) != std::string_view::npos;
    if (isPlain) {
      encoded += letter;
    } else {
      encoded += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
    }
  }
  return encoded;
}

/// The values that templates name.
constexpr Word<std::string (*)(const Service&)> kValues[] = {
    {[](const Service& service) { return std::to_string(service.index); }, "index"},
    {[](const Service& service) { return PercentEncoded(service.name); }, "name"},
    {[](const Service& service) { return std::to_string(service.serviceId); }, "sid"},
    {[](const Service& service) { return std::to_string(service.transportStream); }, "tsid"},
    {[](const Service& service) { return std::to_string(service.network); }, "onid"},
    {[](const Service& service) { return std::to_string(service.tuning.frequency * 1'000); },
     "freq_hz"},
    {[](const Service& service) { return Megahertz(service.tuning.frequency); }, "freq_mhz"},
    {[](const Service& service) { return TextOf(kPolarisations, service.tuning.polarisation); },
     "pol"},
    {[](const Service& service) { return std::to_string(service.tuning.symbolRate); }, "sr"},
    {[](const Service& service) { return TextOf(kRates, service.tuning.fec); }, "fec"},
    {[](const Service& service) { return SystemText(service); }, "msys"},
};

/// Calls for each piece of a template whose braces are closed: text, or the name of a value.
template <typename Take>
void ForPieces(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t open = std::min(text.find('{'), text.size());
    if (open != 0) take(text.substr(0, open), false);
    text.remove_prefix(open);
    if (text.empty()) return;
    const std::size_t close = text.find('}');
    take(text.substr(1, close - 1), true);
    text.remove_prefix(close + 1);
  }
}

std::string Filled(const std::string& pattern, const Service& service) {
  std::string address;
  ForPieces(pattern, [&](std::string_view piece, bool isName) {
    if (!isName) {
      address += piece;
      return;
    }
    for (const auto& [value, name] : kValues) {
      if (piece == name) address += value(service);
    }
  });
  return address;
}

/// A parameter of a query where it has a value.
std::string Parameter(const char* name, const std::string& value) {
  return value.empty() ? value : std::string("&") + name + "=" + value;
}

std::string SatipAddress(const Service& service, const std::string& host) {
  const Tuning& tuning = service.tuning;
  std::string address = "rtsp://" + host + "/?";
  if (service.delivery == InputSignalDVBTerrestrial) {
    return address + "freq=" + Megahertz(tuning.frequency) +
           "&bw=" + std::to_string(tuning.bandwidth) + "&msys=dvbt&pids=all";
  }
  if (service.delivery != InputSignalDVBSatellite) return {};
  return address + "src=" + std::to_string(tuning.dish == 0 ? 1 : tuning.dish) +
         "&freq=" + Megahertz(tuning.frequency) +
         Parameter("pol", TextOf(kPolarisations, tuning.polarisation)) +
         "&msys=" + SystemText(service) +
         Parameter("mtype", TextOf(kModulations, tuning.modulation)) +
         (tuning.rollOff == 0 ? "" : "&ro=0." + std::to_string(tuning.rollOff)) +
         (tuning.pilot ? *tuning.pilot ? "&plts=on" : "&plts=off" : "") +
         "&sr=" + std::to_string(tuning.symbolRate) + Parameter("fec", TextOf(kRates, tuning.fec)) +
         "&pids=all";
}

/// DVB-H sends to addresses in the channel.
std::string OwnAddress(const Channel& channel, const ListContext& context) {
  const StationValues values(channel, context.signal, context.narrow);
  const bool hasVideo = !values.Text("VideoIP").empty();
  const std::string address = values.Text(hasVideo ? "VideoIP" : "AudioIP");
  if (address.empty()) return {};
  const bool isLong = address.find(':') != std::string::npos;
  return "rtp://@" + (isLong ? "[" + address + "]" : address) + ":" +
         std::to_string(values.Number(hasVideo ? "VideoPort" : "AudioPort"));
}

}  // namespace

void RequireAddresses(const ExportRequest& request) {
  const std::size_t open = request.urlTemplate.rfind('{');
  if (open != std::string::npos && request.urlTemplate.find('}', open) == std::string::npos) {
    throw Failure{E_INVALIDARG, "the template has a { without a }"};
  }
  ForPieces(request.urlTemplate, [](std::string_view piece, bool isName) {
    const bool isKnown =
        std::ranges::any_of(kValues, [&](const auto& known) { return piece == known.text; });
    if (isName && !isKnown) {
      throw Failure{E_INVALIDARG, "the template names {" + std::string(piece) +
                                      "}, which is no value of a channel"};
    }
  });
  const bool hasOwn = request.context.signal == InputSignalDVBHandheld;
  if (request.urlTemplate.empty() && request.satipHost.empty() && !hasOwn) {
    throw Failure{E_INVALIDARG,
                  "a playlist needs addresses: --url TEMPLATE, or --target satip --host HOST"};
  }
}

std::string AddressOf(const Channel& channel, const Service& service,
                      const ExportRequest& request) {
  std::string address = !request.urlTemplate.empty() ? Filled(request.urlTemplate, service)
                        : !request.satipHost.empty() ? SatipAddress(service, request.satipHost)
                                                     : OwnAddress(channel, request.context);
  // A line is an address.
  std::ranges::replace_if(
      address, [](char letter) { return static_cast<unsigned char>(letter) < ' '; }, ' ');
  return address;
}

}  // namespace zortunedex::kit::interchange::m3u
