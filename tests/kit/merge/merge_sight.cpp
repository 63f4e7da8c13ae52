#include "kit/merge/merge_sight.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "kit/model/channel_layout.h"

namespace zortunedex::kit {

namespace {

bool IsOfDvb(InputSignalType signal) {
  return signal == InputSignalDVBSatellite || signal == InputSignalDVBTerrestrial ||
         signal == InputSignalDVBHandheld;
}

bool IsOfAnalogue(InputSignalType signal) {
  return signal == InputSignalAnalogAntenna || signal == InputSignalAnalogCable;
}

std::uint32_t ReachOf(InputSignalType signal) {
  if (signal == InputSignalDVBSatellite) return 2000;
  if (IsOfDvb(signal)) return 1000;
  return IsOfAnalogue(signal) ? 250 : 0;
}

/// Known on both sides and the same.
template <typename T>
bool IsSameKnown(const T& a, const T& b) {
  return a == b && a != T{};
}

std::uint32_t SiteOf(const Sight& sight) {
  return sight.signal == InputSignalISDBTerrestrialOneSeg ? sight.rf : sight.frequency;
}

std::uint32_t DistanceOf(const Sight& a, const Sight& b) {
  return SiteOf(a) < SiteOf(b) ? SiteOf(b) - SiteOf(a) : SiteOf(a) - SiteOf(b);
}

bool IsSiteKnown(const Sight& sight) { return SiteOf(sight) != 0; }

/// Both known, one polarisation, within reach.
bool IsOneSite(const Sight& a, const Sight& b) {
  return IsSiteKnown(a) && IsSiteKnown(b) && a.polarisation == b.polarisation &&
         DistanceOf(a, b) <= ReachOf(a.signal);
}

/// What a tier compares. Needed: known and the same. Open: places where 0 may stand.
struct Asked {
  bool service = false;
  bool name = false;
  bool label = false;
  bool rf = false;
  bool isKind = false;
  int station = -1;
  bool isFrequency = false;  ///< within reach, and nothing else
  bool isPosition = false;
  std::vector<std::uint32_t Sight::*> open = {};
};

enum class Site { Hint, Needed, WhereNotUnique };

struct AskedTier {
  Asked asked;
  Site site = Site::Hint;
};

std::vector<AskedTier> TiersOf(InputSignalType signal) {
  if (IsOfAnalogue(signal)) {
    return {{{.isFrequency = true}, Site::Needed},
            {{.rf = true}, Site::Needed},
            {{.station = 0}},
            {{.station = 1}},
            {{.name = true}}};
  }
  if (signal == InputSignalISDBTerrestrialOneSeg) {
    return {{{.service = true, .open = {&Sight::network}}, Site::WhereNotUnique},
            {{.name = true, .rf = true}}};
  }
  if (signal == InputSignalTDMBMobile) {
    return {{{.service = true}, Site::Needed},
            {{.service = true, .label = true}},
            {{.name = true, .label = true}}};
  }
  std::vector<AskedTier> tiers = {
      {{.service = true, .open = {&Sight::network, &Sight::stream}}, Site::WhereNotUnique},
      {{.service = true, .name = true, .open = {&Sight::network}}},
      {{.name = true, .isKind = true, .open = {&Sight::network, &Sight::stream}}}};
  if (signal != InputSignalDVBSatellite) return tiers;
  for (AskedTier& tier : tiers) tier.asked.isPosition = true;
  return tiers;
}

bool HasNeeded(const Asked& asked, const Sight& a, const Sight& b) {
  if (asked.isFrequency) return IsSiteKnown(a) && IsSiteKnown(b);
  if (asked.service && !IsSameKnown(a.service, b.service)) return false;
  if (asked.name && !IsSameKnown(a.name, b.name)) return false;
  if (asked.label && !IsSameKnown(a.label, b.label)) return false;
  if (asked.rf && !IsSameKnown(a.rf, b.rf)) return false;
  if (asked.isKind && a.serviceType != b.serviceType) return false;
  if (asked.station < 0) return true;
  return IsSameKnown(a.station[asked.station], b.station[asked.station]);
}

/// The open places, positions first, of either side.
std::vector<std::pair<std::uint32_t, std::uint32_t>> OpenPlaces(const Look& look,
                                                                const Asked& asked, const Sight& a,
                                                                const Sight& b) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> places;
  if (asked.isPosition) {
    const std::int32_t offset = a.position != 0 && b.position != 0 ? look.offset : 0;
    places.emplace_back(a.position + offset, b.position);
  }
  for (const auto place : asked.open) places.emplace_back(a.*place, b.*place);
  return places;
}

bool FitsLook(const Look& look, const Sight& a, const Sight& b) {
  const Asked asked = TiersOf(a.signal)[look.tier].asked;
  if (!HasNeeded(asked, a, b)) return false;
  std::uint32_t bit = 1;
  for (const auto& [ours, theirs] : OpenPlaces(look, asked, a, b)) {
    const bool isUnknown = (look.unknown & bit) != 0;
    bit <<= 1;
    const std::uint32_t lacking = look.isOfList ? ours : theirs;
    const std::uint32_t known = look.isOfList ? theirs : ours;
    if (isUnknown && (lacking != 0 || known == 0)) return false;
    if (isUnknown) continue;
    if (ours != theirs || (look.unknown != 0 && ours == 0)) return false;
    const bool isPosition = bit == 2 && asked.isPosition;
    if (isPosition && look.offset != 0 && theirs == 0) return false;
  }
  return look.unknown < bit;
}

bool IsWeakNetwork(const Sight& sight) {
  if (sight.signal != InputSignalDVBSatellite) return false;
  return sight.network == 0 || sight.network >= 0xFF00 || (sight.network == 1 && sight.stream < 2);
}

const station_blocks::Field& LabelRow() {
  return *station_blocks::FindField(LayoutOf(InputSignalTDMBMobile).channel, "EnsembelLab");
}

}  // namespace

void SetLabel(Channel& channel, const std::string& label) {
  BYTE* place = channel.block.data() + LabelRow().offset;
  std::fill_n(place, LabelRow().width, BYTE{0});
  std::copy(label.begin(), label.end(), place);
}

Sight SightOf(const Channel& channel, InputSignalType signal) {
  const auto value = [&](const char* attribute) { return ValueIn(channel, signal, attribute); };
  Sight sight;
  sight.signal = signal;
  sight.name = channel.name;
  sight.frequency = channel.frequency;
  const bool isTunedByRf = signal == InputSignalISDBTerrestrialOneSeg || IsOfAnalogue(signal);
  sight.rf = isTunedByRf ? channel.number : 0;
  if (IsOfDvb(signal)) {
    sight.service = value("serviceID");
    sight.stream = value("TSID");
    sight.network = value("ONID");
    sight.serviceType = value("serviceType");
  }
  if (signal == InputSignalDVBSatellite) {
    const auto position = static_cast<std::int32_t>(value("orbitalPosition"));
    sight.position = value("westPosition") != 0 ? -position : position;
    const std::uint32_t word = value("polarisation");
    sight.polarisation = word == UINT32_MAX ? 0 : word;
  }
  if (signal == InputSignalISDBTerrestrialOneSeg) {
    sight.service = value("ServiceID");
    sight.network = value("NetworkID");
  }
  if (signal == InputSignalTDMBMobile) {
    sight.service = value("ServiceID");
    const BYTE* label = channel.block.data() + LabelRow().offset;
    sight.label.assign(label, std::find(label, label + LabelRow().width, BYTE{0}));
  }
  if (IsOfAnalogue(signal)) {
    sight.station[0] = value("CNI0");
    sight.station[1] = value("CNI1");
  }
  return sight;
}

bool AreCopies(const Sight& a, const Sight& b) { return SiteOf(a) == SiteOf(b) && AreTwins(a, b); }

bool AreTwins(const Sight& a, const Sight& b) {
  if (DistanceOf(a, b) > ReachOf(a.signal) || IsSiteKnown(a) != IsSiteKnown(b)) return false;
  if (a.polarisation != b.polarisation && a.polarisation != 0 && b.polarisation != 0) return false;
  if (IsOfAnalogue(a.signal)) return IsSiteKnown(a) || a.rf == b.rf;
  return a.service == b.service && (a.network == b.network || a.network == 0 || b.network == 0);
}

void SightModel::Run() {
  const auto takeEqual = [this](auto isEqual) {
    for (std::size_t l = 0; l < m_list.size(); ++l) {
      for (std::size_t s = 0; s < m_scan.size(); ++s) {
        if (IsFree(l) && IsNew(s) && isEqual(m_list[l], m_scan[s])) Take(l, s);
      }
    }
  };
  if (m_list.empty()) return;
  takeEqual([](const Sight& a, const Sight& b) { return a == b; });
  const std::vector<AskedTier> tiers = TiersOf(m_list.front().signal);
  takeEqual([&](const Sight& a, const Sight& b) {
    const bool isPlace = SiteOf(a) == SiteOf(b) && a.polarisation == b.polarisation;
    if (IsOfAnalogue(a.signal)) return isPlace && (IsSiteKnown(a) || IsSameKnown(a.rf, b.rf));
    return isPlace && FitsLook({}, a, b);
  });
  // What is matched is in nobody's way any more.
  for (std::size_t before = m_list.size() + 1; before != pairs.size();) {
    before = pairs.size();
    for (std::size_t tier = 0; tier < tiers.size(); ++tier) RunTier(tier);
  }
}

/// As they are; then positions beside each other, the nearest first; then what is left open.
void SightModel::RunTier(std::size_t tier) {
  const std::int32_t sign = m_isReversed ? 1 : -1;
  const auto runOffsets = [&](Look look) {
    for (const std::int32_t offset : {0, 1, -1, 2, -2, 3, -3}) {
      look.offset = sign * offset;
      RunLook(look);
    }
  };
  runOffsets({tier});
  for (std::uint32_t i = 1; i < 8; ++i) {
    for (const bool isList : {!m_isReversed, m_isReversed}) {
      runOffsets({tier, 0, m_isReversed ? 8 - i : i, isList});
    }
  }
}

void SightModel::RunLook(const Look& look) {
  for (std::size_t l = 0; l < m_list.size(); ++l) {
    if (!IsFree(l)) continue;
    const Group group = GroupOf(l, look);
    if (!group.scan.empty()) Resolve(group, look);
  }
}

/// All that fit each other, matched ones of the scan, too.
SightModel::Group SightModel::GroupOf(std::size_t l, const Look& look) const {
  Group group;
  for (std::size_t s = 0; s < m_scan.size(); ++s) {
    if (FitsLook(look, m_list[l], m_scan[s])) group.scan.push_back(s);
  }
  if (group.scan.empty()) return group;
  for (std::size_t other = 0; other < m_list.size(); ++other) {
    if (pairs.contains(other)) continue;
    if (FitsLook(look, m_list[other], m_scan[group.scan[0]])) group.list.push_back(other);
  }
  return group;
}

void SightModel::KeepFree(Group& group) const {
  std::erase_if(group.list, [this](std::size_t l) { return !IsFree(l); });
  std::erase_if(group.scan, [this](std::size_t s) { return !IsNew(s); });
}

void SightModel::Resolve(Group group, const Look& look) {
  const Site site = TiersOf(m_list.front().signal)[look.tier].site;
  const bool isUnique = group.list.size() == 1 && group.scan.size() == 1;
  KeepFree(group);
  if (site == Site::Hint) return PairSeveral(group);
  bool isNeeded = site == Site::Needed;
  for (const std::size_t l : group.list) isNeeded = isNeeded || IsWeakNetwork(m_list[l]);
  for (const std::size_t s : group.scan) isNeeded = isNeeded || IsWeakNetwork(m_scan[s]);
  using Line = std::uint32_t;
  while (PairNearest(group, [](Line a, Line b) { return a == b; })) {
  }
  while (PairNearest(group, [](Line a, Line) { return a == 0; })) {
  }
  while (PairNearest(group, [](Line, Line b) { return b == 0; })) {
  }
  KeepFree(group);
  if (!isNeeded && (isUnique || look.unknown != 0)) return PairSeveral(group);
  // A place that is not known fits any.
  Group lost = group;
  std::erase_if(lost.list, [this](std::size_t l) { return IsSiteKnown(m_list[l]); });
  PairSeveral(lost);
  std::erase_if(group.scan, [this](std::size_t s) { return IsSiteKnown(m_scan[s]); });
  PairSeveral(group);
}

/// Pairs the nearest two within reach; of equally near ones the lower.
template <typename Lines>
bool SightModel::PairNearest(const Group& group, Lines lines) {
  using Offer = std::pair<std::uint32_t, std::uint32_t>;
  std::optional<Offer> best;
  std::vector<std::pair<std::size_t, std::size_t>> those;
  for (const std::size_t l : group.list) {
    for (const std::size_t s : group.scan) {
      const Sight& a = m_list[l];
      const Sight& b = m_scan[s];
      if (!IsFree(l) || !IsNew(s) || !lines(a.polarisation, b.polarisation)) continue;
      if (!IsSiteKnown(a) || !IsSiteKnown(b) || DistanceOf(a, b) > ReachOf(a.signal)) continue;
      const Offer offer(DistanceOf(a, b), std::min(SiteOf(a), SiteOf(b)));
      if (!best || offer < *best) those.clear();
      if (!best || offer <= *best) those.emplace_back(l, s);
      best = best ? std::min(*best, offer) : offer;
    }
  }
  for (const auto& [l, s] : those) {
    if (IsFree(l) && IsNew(s)) {
      Take(l, s);
    } else {
      isOpen = true;
    }
  }
  return best.has_value();
}

/// Pairs two that have only each other.
bool SightModel::PairLone(const Group& group, bool isSite, bool isName) {
  const auto is = [&](const Sight& a, const Sight& b) {
    return (!isSite || IsOneSite(a, b)) && (!isName || IsSameKnown(a.name, b.name));
  };
  for (const std::size_t l : group.list) {
    for (const std::size_t s : group.scan) {
      if (!is(m_list[l], m_scan[s])) continue;
      const auto fitsScan = [&](std::size_t other) { return is(m_list[other], m_scan[s]); };
      const auto fitsList = [&](std::size_t other) { return is(m_list[l], m_scan[other]); };
      if (std::ranges::count_if(group.list, fitsScan) != 1) continue;
      if (std::ranges::count_if(group.scan, fitsList) != 1) continue;
      Take(l, s);
      return true;
    }
  }
  return false;
}

void SightModel::PairSeveral(Group group) {
  for (bool isAny = true; isAny;) {
    KeepFree(group);
    isAny = PairLone(group, true, true) || PairLone(group, true, false) ||
            PairLone(group, false, true) || PairLone(group, false, false);
  }
  if (group.list.empty() || group.scan.empty()) return;
  ambiguous.insert(group.list.begin(), group.list.end());
  candidates.insert(group.scan.begin(), group.scan.end());
}

bool SightModel::IsLookedFor(std::size_t l) const {
  const Sight& ours = m_list[l];
  if (IsOfAnalogue(ours.signal)) return true;
  return std::ranges::any_of(m_scan, [&](const Sight& theirs) {
    const bool isLine = ours.polarisation == theirs.polarisation || ours.polarisation == 0 ||
                        theirs.polarisation == 0;
    const bool isPosition = ours.position == 0 || theirs.position == 0 ||
                            std::abs(ours.position - theirs.position) <= 3;
    return isLine && isPosition && IsSiteKnown(ours) && IsSiteKnown(theirs) &&
           DistanceOf(ours, theirs) <= ReachOf(ours.signal);
  });
}

}  // namespace zortunedex::kit
