#include "kit/merge/matching/service.h"

#include <cstdio>

#include "kit/model/narrow_text.h"
#include "kit/text/letter_case.h"

namespace zortunedex::kit {

using station_blocks::Field;
using station_blocks::Layout;
using station_blocks::Source;

namespace merge {
namespace {

/// The values of one channel by the names that its signal type has for them.
class Values {
 public:
  Values(const Channel& channel, const Layout& layout) : m_channel(channel), m_layout(layout) {}

  std::uint32_t Number(const char* attribute) const {
    for (const auto& rows : {m_layout.channel, m_layout.elementStreams, m_layout.satelliteParams}) {
      const Field* row = station_blocks::FindField(rows, attribute);
      if (row == nullptr) continue;
      if (row->source != Source::Block) return SourceValue(m_channel, row->source);
      if (row->offset + std::size_t{row->width} > m_channel.block.size()) return 0;
      return station_blocks::Fetch(m_channel.block.data() + row->offset, row->width);
    }
    return 0;
  }

  /// The bytes of a text, one unit each: they are compared and never shown.
  WideText Text(const char* attribute) const {
    const Field* row = station_blocks::FindField(m_layout.channel, attribute);
    if (row == nullptr || row->offset + std::size_t{row->width} > m_channel.block.size()) return {};
    WideText text;
    for (const char byte : UpToZero(m_channel.block.data() + row->offset, row->width)) {
      text.push_back(static_cast<OLECHAR>(static_cast<unsigned char>(byte)));
    }
    return text;
  }

 private:
  const Channel& m_channel;
  const Layout& m_layout;
};

WideText LooseName(const WideText& name) {
  WideText text;
  for (const OLECHAR unit : WithoutCase(name)) {
    if (unit > u' ') text.push_back(unit);
  }
  const WideText ending = WithoutCase(WideText(OLESTR("HD")));
  if (text.size() > ending.size() && text.ends_with(ending)) {
    text.resize(text.size() - ending.size());
  }
  return text;
}

/// Only a word counts: "not set" and "not defined" are not known.
std::uint32_t KnownWord(std::uint32_t value) {
  return static_cast<std::int32_t>(value) < 0 ? 0 : value;
}

std::uint32_t SignedPosition(const Values& values) {
  const std::uint32_t position = values.Number("orbitalPosition");
  return values.Number("westPosition") == 1 ? 0 - position : position;
}

void ReadIdentifiers(const Values& values, InputSignalType signal, Service& service) {
  const bool isOneSeg = signal == InputSignalISDBTerrestrialOneSeg;
  service[Part::Network] = values.Number(isOneSeg ? "NetworkID" : "ONID");
  service[Part::Stream] = values.Number("TSID");
  const bool isOther = isOneSeg || signal == InputSignalTDMBMobile;
  service[Part::Number] = values.Number(isOther ? "ServiceID" : "serviceID");
  service[Part::Major] = values.Number("majorChannel");
  service[Part::Minor] = values.Number("minorChannel");
  service[Part::Program] = values.Number("programNumber");
  service[Part::Kind] = values.Number("serviceType");
  service[Part::Cni0] = values.Number("CNI0");
  service[Part::Cni1] = values.Number("CNI1");
}

bool IsTunedByRf(InputSignalType signal) {
  switch (signal) {
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
    case InputSignalISDBTerrestrialOneSeg:
    case InputSignalAnalogAntenna:
    case InputSignalAnalogCable:
      return true;
    default:
      return false;
  }
}

std::string Joined(std::string text, std::initializer_list<std::uint32_t> numbers) {
  for (const std::uint32_t number : numbers) text += "-" + std::to_string(number);
  return text;
}

std::string PositionText(std::uint32_t position) {
  const auto tenths = std::int64_t{static_cast<std::int32_t>(position)};
  const std::int64_t size = tenths < 0 ? -tenths : tenths;
  return std::to_string(size / 10) + "." + std::to_string(size % 10) + (tenths < 0 ? "W" : "E");
}

std::string Hexadecimal(std::uint32_t number) {
  char text[9];
  std::snprintf(text, sizeof(text), "%x", number);
  return text;
}

std::string AtscText(const char* kind, const Service& service) {
  return kind + std::to_string(service[Part::Rf]) + "-" + std::to_string(service[Part::Major]) +
         "." + std::to_string(service[Part::Minor]);
}

}  // namespace

std::uint32_t Texts::NumberOf(const WideText& text) {
  if (text.empty()) return 0;
  return m_numbers.try_emplace(text, static_cast<std::uint32_t>(m_numbers.size() + 1))
      .first->second;
}

Service ReadService(const Channel& channel, const Reading& reading, Texts& texts) {
  Service service;
  const Layout* layout = station_blocks::Find(reading.signal);
  if (layout == nullptr) return service;
  const Values values(channel, *layout);
  ReadIdentifiers(values, reading.signal, service);
  service[Part::Frequency] =
      values.Number(reading.signal == InputSignalISDBTerrestrialOneSeg ? "Frequency" : "freq");
  if (IsTunedByRf(reading.signal)) service[Part::Rf] = channel.number;
  service[Part::Polarisation] = KnownWord(values.Number("polarisation"));
  service[Part::Position] = SignedPosition(values);
  service[Part::Label] = texts.NumberOf(values.Text("EnsembelLab"));
  service[Part::Name] = texts.NumberOf(reading.looseNames ? LooseName(channel.name) : channel.name);
  return service;
}

std::vector<Service> ReadServices(const std::vector<Channel>& channels, const Reading& reading,
                                  Texts& texts) {
  std::vector<Service> services;
  services.reserve(channels.size());
  for (const Channel& channel : channels) services.push_back(ReadService(channel, reading, texts));
  return services;
}

Service Overlaid(Service service, const Service& known) {
  for (std::size_t i = 0; i < kParts; ++i) {
    if (known.parts[i] != 0) service.parts[i] = known.parts[i];
  }
  return service;
}

std::string IdentityText(const Service& service, InputSignalType signal) {
  const auto dvb = [&service](const std::string& kind) {
    return Joined(kind, {service[Part::Network], service[Part::Stream], service[Part::Number]});
  };
  switch (signal) {
    case InputSignalDVBSatellite:
      return dvb("S" + PositionText(service[Part::Position]));
    case InputSignalDVBTerrestrial:
      return dvb("T");
    case InputSignalDVBHandheld:
      return dvb("H");
    case InputSignalATSCAntenna:
      return AtscText("A", service);
    case InputSignalATSCCable:
      return AtscText("C", service);
    case InputSignalISDBTerrestrialOneSeg:
      return Joined("1SEG", {service[Part::Network], service[Part::Number]});
    case InputSignalTDMBMobile:
      return "DMB-" + Hexadecimal(service[Part::Number]) + "-" +
             std::to_string(service[Part::Frequency]);
    case InputSignalFMRadio:
      return Joined("FM", {service[Part::Frequency]});
    default:
      if (service[Part::Frequency] == 0) return "TV-RF" + std::to_string(service[Part::Rf]);
      return Joined("TV", {service[Part::Frequency]});
  }
}

}  // namespace merge

}  // namespace zortunedex::kit
