// Which code a channel gets, and whose values it has, held against the rules told one by one: the
// services are far apart, so that who is who is no question.
#include <gtest/gtest.h>

#include <algorithm>

#include "kit/merge/merge_sight.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

/// Attributes of a type that stand for their kind; null: it has none.
struct Standing {
  const char* service = nullptr;
  const char* site = "freq";
  const char* tuning = "freqOffset";
  const char* other = nullptr;
  bool hasStatus = false;
};

Standing StandingOf(InputSignalType signal) {
  switch (signal) {
    case InputSignalDVBSatellite:
      return {"serviceID", "freq", "symbolRate", "PcrPID", true};
    case InputSignalDVBTerrestrial:
    case InputSignalDVBHandheld:
      return {"serviceID", "freq", "freqOffset", "PcrPID", true};
    case InputSignalTDMBMobile:
      return {"ServiceID", "freq", nullptr, "BitRate", true};
    case InputSignalISDBTerrestrialOneSeg:
      return {"ServiceID", "physicalChannel", "Frequency", nullptr, false};
    default:
      return {nullptr, "freq", "freqOffset", "vbiSrvFlag", false};
  }
}

/// One service in the list, as the last scan had it, and in the scan; what was done to it.
struct Told {
  bool isInScan = true;
  bool isDeleted = false;
  bool wasLost = false;
  bool isMoved = false;
  bool isRenumbered = false;
  Channel list;
  Channel base;
  Channel scan;
};

struct Expected {
  merge::Code code = merge::Code::Unchanged;
  std::optional<Channel> result;
};

class MergeOutcomes : public testing::TestWithParam<InputSignalType> {
 protected:
  static constexpr std::uint32_t kGap = 100000;

  Channel Service(std::uint32_t number) const {
    const std::string name = "N" + std::to_string(number);
    Channel channel = MakeStation(GetParam(), number, name, {});
    channel.favorite = m_random(3);
    const auto set = [&](const char* attribute, std::uint32_t value) {
      if (attribute != nullptr) SetValueIn(channel, GetParam(), attribute, value);
    };
    const bool isRf = std::string_view(m_standing.site) == "physicalChannel";
    set(m_standing.site, isRf ? 10 + 2 * number : 10000000 + 2 * kGap * number);
    set(m_standing.service, 10 + number);
    set(m_standing.tuning, 500);
    set(m_standing.other, 7);
    if (m_standing.hasStatus) set("runningStatus", 4);
    if (GetParam() == InputSignalTDMBMobile) SetLabel(channel, "L" + name);
    if (m_standing.service == nullptr) {
      set("CNI0", 10 + number);
      return channel;
    }
    if (m_standing.service == std::string_view("serviceID")) {
      set("ONID", 133);
      set("TSID", 5 + number);
    }
    if (GetParam() == InputSignalDVBSatellite) set("orbitalPosition", 192);
    return channel;
  }

  /// One of few values of a kind.
  void Vary(Channel& channel, const char* attribute) {
    if (attribute == nullptr || m_random(3) != 0) return;
    SetValueIn(channel, GetParam(), attribute, 500 + m_random(3));
  }

  /// A name that no other service has.
  void Name(Channel& channel, const char* name, bool isShown) const {
    SetBroadcastName(channel, GetParam(), name + std::to_string(channel.index));
    if (isShown) channel.displayName = channel.name;
  }

  /// Without a base a service with another number is known by its name alone.
  void EditByUser(Told& told, bool hasBase) {
    constexpr const char* kNames[] = {"X", "Y"};
    if (m_random(3) == 0) told.list.displayName = OLESTR("mine");
    const bool isNamed = m_random(3) == 0 && (hasBase || !told.isRenumbered);
    if (isNamed) Name(told.list, kNames[m_random(2)], m_random(2) == 0);
    Vary(told.list, m_standing.tuning);
    told.isDeleted = m_random(6) == 0;
  }

  void EditByBroadcaster(Told& told) {
    Channel& scan = told.scan;
    Vary(scan, m_standing.tuning);
    Vary(scan, m_standing.other);
    told.isInScan = m_random(5) != 0;
    const auto change = [&](const char* attribute, std::uint32_t by) {
      SetValueIn(scan, GetParam(), attribute, ValueIn(scan, GetParam(), attribute) + by);
    };
    switch (m_random(4)) {
      case 0:
        Name(scan, m_random(2) == 0 ? "X" : "Z", true);
        break;
      case 1:
        change(m_standing.site, std::string_view(m_standing.site) == "freq" ? kGap : 1);
        told.isMoved = true;
        break;
      case 2:
        if (m_standing.service == nullptr) break;
        change(m_standing.service, 100);
        told.isRenumbered = true;
        break;
      default:
        break;
    }
  }

  bool Differs(const Channel& a, const Channel& b, const char* attribute) const {
    return attribute != nullptr &&
           ValueIn(a, GetParam(), attribute) != ValueIn(b, GetParam(), attribute);
  }
  void Give(const Channel& from, const char* attribute, Channel& to) const {
    if (attribute == nullptr) return;
    SetValueIn(to, GetParam(), attribute, ValueIn(from, GetParam(), attribute));
  }

  /// The rules of a channel that the scan has.
  Expected Met(const Told& told, bool hasBase, const merge::MergePolicy& policy) const {
    const Channel& list = told.list;
    const Channel& scan = told.scan;
    Expected is{merge::Code::Unchanged, list};
    Channel& result = *is.result;
    const bool isOtherName = list.name != scan.name;
    const bool isUsers = hasBase && list.name != told.base.name;
    const bool isBroadcasters = hasBase && scan.name != told.base.name;
    const bool isByBoth = isOtherName && isUsers && isBroadcasters;
    const bool isUnclear = isOtherName && !hasBase && list.name == list.displayName;
    if (isOtherName && !isUsers && !isUnclear) result.name = scan.name;
    const bool isShownByUser =
        hasBase ? list.displayName != told.base.displayName : list.displayName != list.name;
    if (!isShownByUser && !isUnclear) result.displayName = scan.displayName;
    const bool isEdited = hasBase && Differs(list, told.base, m_standing.tuning) &&
                          Differs(list, scan, m_standing.tuning);
    const bool isKept = isEdited && policy.tuning == merge::EditedTuning::Keep;
    if (!isKept) Give(scan, m_standing.tuning, result);
    for (const char* attribute : {m_standing.site, m_standing.service, m_standing.other}) {
      Give(scan, attribute, result);
    }
    const bool isTold = isEdited && (!isKept || Differs(scan, told.base, m_standing.tuning));
    const bool isRenamed = result.name != list.name || result.displayName != list.displayName;
    const std::pair<bool, merge::Code> rules[] = {
        {isByBoth, merge::Code::RenamedByBoth},
        {isUnclear, merge::Code::NameUnclear},
        {isTold, merge::Code::TuningEdited},
        {told.isMoved, merge::Code::Moved},
        {told.isRenumbered, merge::Code::Renumbered},
        {isRenamed, merge::Code::Renamed},
        {Differs(result, list, m_standing.tuning), merge::Code::TuningChanged},
        {Differs(result, list, m_standing.other), merge::Code::StreamsChanged},
        {hasBase && told.wasLost, merge::Code::FoundAgain},
        {true, merge::Code::Unchanged}};
    is.code = std::ranges::find(rules, true, &std::pair<bool, merge::Code>::first)->second;
    return is;
  }

  /// The rules of a channel that the scan has not.
  Expected Missed(const Told& told, const merge::MergePolicy& policy) const {
    const bool isEverywhere =
        policy.scope == merge::Scope::Full ||
        (policy.scope == merge::Scope::Transponders && m_standing.service == nullptr);
    Expected is{merge::Code::Unchanged, told.list};
    if (!isEverywhere) return is;
    is.code = merge::Code::NotFound;
    const bool isSpared = told.list.favorite != 0 && !policy.goneFavorites;
    if (policy.gone == merge::Gone::Remove && !isSpared) return {merge::Code::Removed, {}};
    if (policy.gone != merge::Gone::Mark) return is;
    is.code = m_standing.hasStatus ? merge::Code::Marked : merge::Code::CannotMark;
    if (m_standing.hasStatus) SetValueIn(*is.result, GetParam(), "runningStatus", 1);
    return is;
  }

  /// Codes by the numbers of the services, with the channels that the result has.
  void Hold(const std::vector<Told>& services, bool hasBase, const MergeWorld& world) const {
    const merge::MergePlan plan = world.Plan();
    SCOPED_TRACE(CodesIn(plan));
    std::size_t inList = 0;
    std::vector<merge::Code> others;
    for (const Told& told : services) {
      if (told.isDeleted) {
        if (told.isInScan) {
          const bool isOut = hasBase && world.policy.deleted == merge::Deleted::StayOut;
          const bool isNone = world.policy.newOnes == merge::NewOnes::None;
          others.push_back(isOut    ? merge::Code::DeletedByUser
                           : isNone ? merge::Code::NewLeftOut
                                    : merge::Code::New);
        }
        continue;
      }
      const Expected is =
          told.isInScan ? Met(told, hasBase, world.policy) : Missed(told, world.policy);
      ASSERT_LT(inList, plan.changes.size());
      const merge::Change& change = plan.changes[inList++];
      EXPECT_EQ(merge::CodeName(is.code), merge::CodeName(change.code)) << "of " << change.name;
      ASSERT_EQ(is.result.has_value(), change.resultIndex != 0);
      if (!is.result) continue;
      const auto at = std::ranges::find(plan.result.channels, change.resultIndex, &Channel::index);
      ASSERT_NE(plan.result.channels.end(), at);
      EXPECT_EQ(is.result->name, at->name);
      EXPECT_EQ(is.result->displayName, at->displayName);
      EXPECT_EQ(is.result->favorite, at->favorite);
      for (const char* attribute :
           {m_standing.site, m_standing.service, m_standing.tuning, m_standing.other}) {
        EXPECT_FALSE(Differs(*is.result, *at, attribute)) << attribute;
      }
      const char* status = m_standing.hasStatus ? "runningStatus" : nullptr;
      EXPECT_FALSE(Differs(*is.result, *at, status));
    }
    std::vector<merge::Code> rest;
    for (; inList < plan.changes.size(); ++inList) rest.push_back(plan.changes[inList].code);
    std::ranges::sort(others);
    std::ranges::sort(rest);
    EXPECT_EQ(others, rest);
  }

  const Standing m_standing = StandingOf(GetParam());
  mutable Random m_random{9};
};

}  // namespace

TEST_P(MergeOutcomes, AgreeWithTheRules) {
  RandomWorlds policies(GetParam(), 13);
  for (int i = 0; i < 8 * kMergeCases && !HasFailure(); ++i) {
    SCOPED_TRACE("case " + std::to_string(i));
    const bool hasBase = m_random(3) != 0;
    std::vector<Told> services(1 + m_random(4));
    MergeWorld world{{49, GetParam(), {}}, std::nullopt, {49, GetParam(), {}}, {}};
    for (std::size_t at = 0; at < services.size(); ++at) {
      services[at].base = Service(static_cast<std::uint32_t>(at + 1));
      services[at].wasLost = m_random(4) == 0;
      world.list.channels.push_back(services[at].base);
      world.scan.channels.push_back(services[at].base);
    }
    world.policy.scope = merge::Scope::Full;
    world.base = world.Plan().base;
    world.scan.channels.clear();
    for (const Told& told : services) {
      if (!told.wasLost) world.scan.channels.push_back(told.base);
    }
    world.base = world.Plan().base;
    world.list.channels.clear();
    world.scan.channels.clear();
    for (Told& told : services) {
      told.list = told.scan = told.base;
      EditByBroadcaster(told);
      EditByUser(told, hasBase);
      told.scan.favorite = 0;
      if (!told.isDeleted) {
        told.list.index = static_cast<UINT>(world.list.channels.size() + 1);
        world.list.channels.push_back(told.list);
      }
      if (told.isInScan) world.scan.channels.push_back(told.scan);
    }
    world.policy = policies.Policy();
    world.policy.looseNames = false;
    world.policy.goneAfter = 1;
    world.policy.numbers = merge::Numbers::ByType;
    if (world.scan.channels.empty()) world.policy.scope = merge::Scope::Full;
    if (!hasBase) world.base.reset();
    Hold(services, hasBase, world);
  }
}

INSTANTIATE_TEST_SUITE_P(Types, MergeOutcomes,
                         testing::Values(InputSignalDVBSatellite, InputSignalDVBTerrestrial,
                                         InputSignalDVBHandheld, InputSignalTDMBMobile,
                                         InputSignalISDBTerrestrialOneSeg,
                                         InputSignalAnalogAntenna),
                         [](const testing::TestParamInfo<InputSignalType>& type) {
                           return SignalTypeName(type.param);
                         });

}  // namespace zortunedex::kit
