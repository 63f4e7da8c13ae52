#include "kit/check/rules/services.h"

#include "kit/check/findings/report.h"
#include "kit/check/subject/channel_tree.h"
#include "kit/check/subject/lookups.h"
#include "kit/check/subject/numbers.h"

namespace zortunedex::kit::check {
namespace {

using markup::Document;
using markup::Element;

/// The identifying values of one channel, put together as they are asked for.
class Identity {
 public:
  Identity(const Document& document, const Element& channel)
      : m_document(document), m_channel(channel), m_values(document, channel) {}

  std::uint32_t Number(const Element& element, const char* attribute) const {
    return ValueOf(AttributeLookup(m_document, element).ValueOf(attribute));
  }
  std::uint32_t Number(const char* attribute) const { return ValueOf(m_values.ValueOf(attribute)); }

  const Element* Child(const char* name) const {
    const markup::Index index = FirstChild(m_document, m_channel, name);
    return index == markup::kNone ? nullptr : &m_document.Elements()[index];
  }

  std::string Word(const Element& element, const char* attribute) const {
    return Shown(AttributeLookup(m_document, element).ValueOf(attribute).value_or(""));
  }

 private:
  static std::uint32_t ValueOf(std::optional<std::string_view> text) {
    return text ? Unsigned(ReadNumber(*text).value) : 0;
  }

  const Document& m_document;
  const Element& m_channel;
  mutable AttributeLookup m_values;
};

std::string Joined(const char* kind, std::initializer_list<std::uint32_t> numbers) {
  constexpr std::size_t kUsualSize = 48;
  std::string text;
  text.reserve(kUsualSize);
  text = kind;
  for (const std::uint32_t number : numbers) text.append("-").append(std::to_string(number));
  return text;
}

// The frequency belongs to it: relays and weak identifiers make one service of several else.
std::string Satellite(const Identity& of) {
  const Element* params = of.Child("SatelliteParams");
  if (params == nullptr || of.Number("serviceID") == 0) return {};
  const std::string position = std::to_string(of.Number(*params, "orbitalPosition")) +
                               (of.Number(*params, "westPosition") == 1 ? "W" : "E");
  return Joined(("S" + position).c_str(),
                {of.Number("ONID"), of.Number("TSID"), of.Number("serviceID"), of.Number("freq")}) +
         "-" + of.Word(*params, "polarisation");
}

std::string Terrestrial(const Identity& of, const char* kind) {
  if (of.Number("serviceID") == 0) return {};
  return Joined(kind,
                {of.Number("ONID"), of.Number("TSID"), of.Number("serviceID"), of.Number("freq")});
}

std::string Atsc(const Identity& of, const char* kind) {
  if (of.Number("majorChannel") == 0) return {};
  return Joined(
      kind, {of.Number("physicalChannel"), of.Number("majorChannel"), of.Number("minorChannel")});
}

std::string OneSeg(const Identity& of) {
  if (of.Number("ServiceID") == 0) return {};
  return Joined("1SEG",
                {of.Number("NetworkID"), of.Number("ServiceID"), of.Number("physicalChannel")});
}

std::string Tdmb(const Identity& of) {
  const Element* streams = of.Child("ElementStreams");
  const std::uint32_t service = streams ? of.Number(*streams, "ServiceID") : 0;
  return service == 0 ? "" : Joined("DMB", {service, of.Number("freq")});
}

std::string Analogue(const Identity& of) {
  const std::uint32_t frequency = of.Number("freq");
  const std::uint32_t number = of.Number("physicalChannel");
  if (frequency != 0) return Joined("TV", {frequency});
  return number == 0 ? "" : Joined("TV-RF", {number});
}

}  // namespace

std::string ServiceIdentity(const Document& document, markup::Index channel,
                            InputSignalType signal) {
  const Identity of(document, document.Elements()[channel]);
  switch (signal) {
    case InputSignalDVBSatellite:
      return Satellite(of);
    case InputSignalDVBTerrestrial:
      return Terrestrial(of, "T");
    case InputSignalDVBHandheld:
      return Terrestrial(of, "H");
    case InputSignalATSCAntenna:
      return Atsc(of, "A");
    case InputSignalATSCCable:
      return Atsc(of, "C");
    case InputSignalISDBTerrestrialOneSeg:
      return OneSeg(of);
    case InputSignalTDMBMobile:
      return Tdmb(of);
    case InputSignalFMRadio:
      return of.Number("freq") == 0 ? "" : Joined("FM", {of.Number("freq")});
    default:
      return Analogue(of);
  }
}

}  // namespace zortunedex::kit::check
