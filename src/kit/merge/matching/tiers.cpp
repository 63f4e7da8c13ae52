#include "kit/merge/matching/tiers.h"

namespace zortunedex::kit::merge {
namespace {

using enum Part;

constexpr KeyPart kSatelliteExact[] = {
    {Number, Need::Known}, {Position, Need::Near}, {Network, Need::Open}, {Stream, Need::Open}};
constexpr KeyPart kSatelliteMoved[] = {
    {Number, Need::Known}, {Position, Need::Near}, {Network, Need::Open}, {Name, Need::Known}};
constexpr KeyPart kSatelliteRenumbered[] = {{Position, Need::Near},
                                            {Network, Need::Open},
                                            {Stream, Need::Open},
                                            {Kind, Need::Equal},
                                            {Name, Need::Known}};
constexpr Tier kSatellite[] = {{kSatelliteExact, SiteUse::IfTwice},
                               {kSatelliteMoved, SiteUse::Hint},
                               {kSatelliteRenumbered, SiteUse::Hint}};

constexpr KeyPart kTerrestrialExact[] = {
    {Number, Need::Known}, {Network, Need::Open}, {Stream, Need::Open}};
constexpr KeyPart kTerrestrialMoved[] = {
    {Number, Need::Known}, {Network, Need::Open}, {Name, Need::Known}};
constexpr KeyPart kTerrestrialRenumbered[] = {
    {Network, Need::Open}, {Stream, Need::Open}, {Kind, Need::Equal}, {Name, Need::Known}};
constexpr Tier kTerrestrial[] = {{kTerrestrialExact, SiteUse::IfTwice},
                                 {kTerrestrialMoved, SiteUse::Hint},
                                 {kTerrestrialRenumbered, SiteUse::Hint}};

constexpr KeyPart kAtscExact[] = {{Rf, Need::Known}, {Major, Need::Known}, {Minor, Need::Equal}};
constexpr KeyPart kAtscMoved[] = {{Major, Need::Known}, {Minor, Need::Equal}};
constexpr KeyPart kAtscRenumbered[] = {{Rf, Need::Known}, {Program, Need::Known}};
constexpr Tier kAtsc[] = {
    {kAtscExact, SiteUse::Hint}, {kAtscMoved, SiteUse::Hint}, {kAtscRenumbered, SiteUse::Hint}};

constexpr KeyPart kOneSegExact[] = {{Number, Need::Known}, {Network, Need::Open}};
constexpr KeyPart kOneSegRenumbered[] = {{Rf, Need::Known}, {Name, Need::Known}};
constexpr Tier kOneSeg[] = {{kOneSegExact, SiteUse::IfTwice}, {kOneSegRenumbered, SiteUse::Hint}};

constexpr KeyPart kTdmbExact[] = {{Number, Need::Known}};
constexpr KeyPart kTdmbMoved[] = {{Number, Need::Known}, {Label, Need::Known}};
constexpr KeyPart kTdmbRenumbered[] = {{Label, Need::Known}, {Name, Need::Known}};
constexpr Tier kTdmb[] = {
    {kTdmbExact, SiteUse::Required}, {kTdmbMoved, SiteUse::Hint}, {kTdmbRenumbered, SiteUse::Hint}};

constexpr Tier kFm[] = {{{}, SiteUse::Known}};

constexpr KeyPart kAnalogRf[] = {{Rf, Need::Known}};
constexpr KeyPart kAnalogCni0[] = {{Cni0, Need::Known}};
constexpr KeyPart kAnalogCni1[] = {{Cni1, Need::Known}};
constexpr KeyPart kAnalogName[] = {{Name, Need::Known}};
constexpr Tier kAnalog[] = {{{}, SiteUse::Known},
                            {kAnalogRf, SiteUse::Required},
                            {kAnalogCni0, SiteUse::Hint},
                            {kAnalogCni1, SiteUse::Hint},
                            {kAnalogName, SiteUse::Hint}};

constexpr Recognition kOfSatellite = {kSatellite, Frequency, 2000, true};
constexpr Recognition kOfTerrestrial = {kTerrestrial, Frequency, 1000, true};
constexpr Recognition kOfAtsc = {kAtsc, Rf, 0, true};
constexpr Recognition kOfOneSeg = {kOneSeg, Rf, 0, true};
constexpr Recognition kOfTdmb = {kTdmb, Frequency, 0, true};
constexpr Recognition kOfFm = {kFm, Frequency, 50, false};
constexpr Recognition kOfAnalog = {kAnalog, Frequency, 250, false};

constexpr std::uint32_t kFirstTemporaryNetwork = 0xFF00;

}  // namespace

const Recognition& RecognitionOf(InputSignalType signal) {
  switch (signal) {
    case InputSignalDVBSatellite:
      return kOfSatellite;
    case InputSignalDVBTerrestrial:
    case InputSignalDVBHandheld:
      return kOfTerrestrial;
    case InputSignalATSCAntenna:
    case InputSignalATSCCable:
      return kOfAtsc;
    case InputSignalISDBTerrestrialOneSeg:
      return kOfOneSeg;
    case InputSignalTDMBMobile:
      return kOfTdmb;
    case InputSignalFMRadio:
      return kOfFm;
    default:
      return kOfAnalog;
  }
}

Site SiteOf(const Service& service, const Recognition& recognition) {
  return {service[recognition.site], service[Part::Polarisation]};
}

bool AreApart(const Site& a, const Site& b, std::uint32_t tolerance) {
  if (a.line != 0 && b.line != 0 && a.line != b.line) return true;
  if (a.value == 0 || b.value == 0) return false;
  return (a.value < b.value ? b.value - a.value : a.value - b.value) > tolerance;
}

bool IsWeak(const Service& service, InputSignalType signal) {
  if (signal != InputSignalDVBSatellite) return false;
  const std::uint32_t network = service[Network];
  return network == 0 || network >= kFirstTemporaryNetwork || (network == 1 && service[Stream] < 2);
}

bool IsIdentified(const Service& service, InputSignalType signal) {
  const Recognition& recognition = RecognitionOf(signal);
  for (const Tier& tier : recognition.tiers) {
    const bool isFrequency = tier.site == SiteUse::Known;
    if (isFrequency && service[recognition.site] != 0) return true;
    if (isFrequency) continue;
    for (const KeyPart& key : tier.key) {
      if (key.need == Need::Known && service[key.part] == 0) return false;
    }
    return true;
  }
  return false;
}

Service IdentityKey(const Service& service, InputSignalType signal) {
  if (!IsIdentified(service, signal)) return service;
  const Recognition& recognition = RecognitionOf(signal);
  Service key;
  key[recognition.site] = service[recognition.site];
  key[Polarisation] = service[Polarisation];
  for (const Tier& tier : recognition.tiers) {
    if (tier.site == SiteUse::Known) {
      if (service[recognition.site] != 0) break;
      continue;
    }
    for (const KeyPart& part : tier.key) key[part.part] = service[part.part];
    break;
  }
  return key;
}

}  // namespace zortunedex::kit::merge
