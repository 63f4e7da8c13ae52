// Who is who, what is new and what is gone, held against a plain model; for types with identifiers
// that may be left open.
#include <gtest/gtest.h>

#include <algorithm>

#include "kit/merge/merge_sight.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

class MergeTiers : public testing::TestWithParam<InputSignalType> {
 protected:
  /// Channels that no two can be taken for one another: copies and twins are added again.
  std::vector<Channel> EachApart(const std::vector<Channel>& channels,
                                 bool (*areOne)(const Sight&, const Sight&)) const {
    std::vector<Channel> apart;
    for (const Channel& channel : channels) {
      const Sight sight = SightOf(channel, GetParam());
      const bool isMet = std::ranges::any_of(
          apart, [&](const Channel& other) { return areOne(sight, SightOf(other, GetParam())); });
      if (!isMet) apart.push_back(channel);
    }
    return apart;
  }

  std::vector<Sight> SightsOf(const std::vector<Channel>& channels) const {
    std::vector<Sight> sights;
    for (const Channel& channel : channels) sights.push_back(SightOf(channel, GetParam()));
    return sights;
  }

  void SetLabels(ChannelTable& table, Random& numbers) const {
    constexpr const char* kLabels[] = {"", "L", "L", "M"};
    if (GetParam() != InputSignalTDMBMobile) return;
    for (Channel& channel : table.channels) SetLabel(channel, kLabels[numbers(4)]);
  }

  MergeWorld Next(RandomWorlds& worlds) const {
    MergeWorld world = worlds.Next();
    world.base.reset();
    world.told = {};
    world.policy = {};
    world.policy.scope = worlds.Numbers()(2) == 0 ? merge::Scope::Full : merge::Scope::Transponders;
    SetLabels(world.list, worlds.Numbers());
    SetLabels(world.scan, worlds.Numbers());
    world.list.channels = EachApart(world.list.channels, AreCopies);
    world.scan.channels = EachApart(world.scan.channels, AreTwins);
    return world;
  }
};

/// What the merge made of it, in the model's words.
struct Seen {
  std::map<std::size_t, std::size_t> pairs;
  std::set<std::size_t> ambiguous;
  std::set<std::size_t> missed;
  std::set<std::size_t> isNew;
};

Seen SeenIn(const merge::MergePlan& plan) {
  Seen seen;
  for (const merge::Change& change : plan.changes) {
    if (change.code == merge::Code::New) seen.isNew.insert(change.inScan.front());
    if (!change.inList) continue;
    if (change.code == merge::Code::Ambiguous) seen.ambiguous.insert(*change.inList);
    if (change.code == merge::Code::NotFound) seen.missed.insert(*change.inList);
    if (change.code != merge::Code::Ambiguous && !change.inScan.empty()) {
      seen.pairs[*change.inList] = change.inScan.front();
    }
  }
  return seen;
}

std::string Described(const std::vector<Sight>& sights) {
  std::string text;
  for (const Sight& sight : sights) {
    text += "\n  service " + std::to_string(sight.service) + " stream " +
            std::to_string(sight.stream) + " network " + std::to_string(sight.network) + " type " +
            std::to_string(sight.serviceType) + " at " + std::to_string(sight.position) + " " +
            std::to_string(sight.frequency) + " " + std::to_string(sight.polarisation) + " RF " +
            std::to_string(sight.rf) + " CNI " + std::to_string(sight.station[0]) + " " +
            std::to_string(sight.station[1]) + " '" + sight.label + "' '" +
            std::string(sight.name.begin(), sight.name.end()) + "'";
  }
  return text;
}

}  // namespace

TEST_P(MergeTiers, AgreeWithThePlainModel) {
  RandomWorlds worlds(GetParam(), 5);
  std::size_t matched = 0;
  int open = 0;
  for (int i = 0; i < 8 * kMergeCases && !HasFailure(); ++i) {
    const MergeWorld world = Next(worlds);
    if (world.scan.channels.empty()) continue;
    SightModel model(SightsOf(world.list.channels), SightsOf(world.scan.channels), false);
    SightModel reversed(SightsOf(world.list.channels), SightsOf(world.scan.channels), true);
    model.Run();
    reversed.Run();
    if (model.isOpen || model.pairs != reversed.pairs || model.ambiguous != reversed.ambiguous) {
      ++open;
      continue;
    }
    std::set<std::size_t> missed;
    for (std::size_t l = 0; l < world.list.channels.size(); ++l) {
      if (model.pairs.contains(l) || model.ambiguous.contains(l)) continue;
      if (world.policy.scope == merge::Scope::Full || model.IsLookedFor(l)) missed.insert(l);
    }
    std::set<std::size_t> isNew;
    for (std::size_t s = 0; s < world.scan.channels.size(); ++s) {
      if (model.IsNew(s)) isNew.insert(s);
    }
    const merge::MergePlan plan = world.Plan();
    const Seen seen = SeenIn(plan);
    SCOPED_TRACE("case " + std::to_string(i) + ": " + CodesIn(plan) + "\nlist" +
                 Described(SightsOf(world.list.channels)) + "\nscan" +
                 Described(SightsOf(world.scan.channels)));
    EXPECT_EQ(model.pairs, seen.pairs);
    EXPECT_EQ(model.ambiguous, seen.ambiguous);
    if (HasFailure()) return;
    EXPECT_EQ(missed, seen.missed);
    EXPECT_EQ(isNew, seen.isNew);
    matched += model.pairs.size();
  }
  EXPECT_LT(std::size_t{kMergeCases}, matched);
  EXPECT_GT(kMergeCases, open);
}

INSTANTIATE_TEST_SUITE_P(Types, MergeTiers,
                         testing::Values(InputSignalDVBSatellite, InputSignalDVBTerrestrial,
                                         InputSignalDVBHandheld, InputSignalTDMBMobile,
                                         InputSignalISDBTerrestrialOneSeg, InputSignalAnalogAntenna,
                                         InputSignalAnalogCable),
                         [](const testing::TestParamInfo<InputSignalType>& type) {
                           return SignalTypeName(type.param);
                         });

}  // namespace zortunedex::kit
