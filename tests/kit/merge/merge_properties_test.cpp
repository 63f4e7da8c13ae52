// What every merge keeps, whatever meets in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "kit/merge/merge_report.h"
#include "kit/merge/merge_world.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

using merge::Change;
using merge::MergePlan;

namespace {

class MergeProperties : public testing::TestWithParam<InputSignalType> {
 protected:
  /// Calls with worlds of the type until one fails.
  template <typename Check>
  void ForWorlds(Check check) {
    RandomWorlds worlds(GetParam(), 7);
    for (int i = 0; i < kMergeCases && !HasFailure(); ++i) {
      SCOPED_TRACE("case " + std::to_string(i));
      check(worlds);
    }
  }
};

/// What a scan that was merged already may still say.
bool IsOfSecondMerge(merge::Code code) {
  constexpr merge::Code kCodes[] = {merge::Code::Unchanged,     merge::Code::NotFound,
                                    merge::Code::Marked,        merge::Code::NewLeftOut,
                                    merge::Code::DeletedByUser, merge::Code::Ambiguous};
  return std::ranges::find(kCodes, code) != std::end(kCodes);
}

std::vector<std::string> SortedCodes(const MergePlan& plan) {
  std::vector<std::string> codes;
  for (const Change& change : plan.changes) {
    codes.push_back(std::to_string(change.index) + " " + merge::CodeName(change.code) + " " +
                    change.identity);
  }
  std::sort(codes.begin(), codes.end());
  return codes;
}

}  // namespace

TEST_P(MergeProperties, TwiceIsOnce) {
  ForWorlds([](RandomWorlds& worlds) {
    const MergeWorld world = worlds.Next();
    const MergePlan first = world.Plan();
    const ChannelTable once = merge::Apply(first);
    const MergePlan second = world.PlanOf(once, &first.base);
    EXPECT_TRUE(SameChannels(once.channels, merge::Apply(second).channels));
    EXPECT_FALSE(second.changesList);
    for (const Change& change : second.changes) {
      EXPECT_TRUE(IsOfSecondMerge(change.code)) << merge::CodeName(change.code);
      EXPECT_TRUE(change.fields.empty());
    }
    EXPECT_TRUE(first.base.entries == second.base.entries);
    EXPECT_EQ(first.base.scan, second.base.scan);
    if (HasFailure()) {
      ADD_FAILURE() << merge::PlanText(first, merge::PlanKind::Merge) << "and then\n"
                    << merge::PlanText(second, merge::PlanKind::Merge);
    }
  });
}

TEST_P(MergeProperties, OrderOfTheScanDoesNotMatter) {
  ForWorlds([](RandomWorlds& worlds) {
    MergeWorld world = worlds.Next();
    const MergePlan before = world.Plan();
    worlds.Shuffle(world.scan);
    const MergePlan after = world.Plan();
    EXPECT_TRUE(SameChannels(before.result.channels, after.result.channels));
    EXPECT_EQ(SortedCodes(before), SortedCodes(after));
    EXPECT_EQ(before.base.scan, after.base.scan);
    EXPECT_TRUE(before.base.entries == after.base.entries);
  });
}

TEST_P(MergeProperties, WithItselfChangesNothing) {
  ForWorlds([](RandomWorlds& worlds) {
    const ChannelTable list = worlds.List();
    if (list.channels.empty()) return;
    const MergePlan plan = merge::PlanMerge(list, nullptr, list, worlds.Policy());
    EXPECT_FALSE(plan.changesList);
    EXPECT_TRUE(SameChannels(list.channels, plan.result.channels));
    for (const Change& change : plan.changes) {
      EXPECT_TRUE(change.code == merge::Code::Unchanged || change.code == merge::Code::TwiceInScan)
          << merge::PlanText(plan, merge::PlanKind::Merge);
    }
  });
}

TEST_P(MergeProperties, KeepAndEndLeaveFavouritesLocksAndIndexes) {
  ForWorlds([](RandomWorlds& worlds) {
    MergeWorld world = worlds.Next();
    world.policy.gone = merge::Gone::Keep;
    world.policy.newOnes = merge::NewOnes::End;
    const std::vector<Channel> result = merge::Apply(world.Plan()).channels;
    const std::vector<Channel>& list = world.list.channels;
    ASSERT_LE(list.size(), result.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
      EXPECT_EQ(list[i].index, result[i].index);
      EXPECT_EQ(list[i].favorite, result[i].favorite);
      EXPECT_EQ(list[i].lock, result[i].lock);
    }
    for (std::size_t i = std::max<std::size_t>(list.size(), 1); i < result.size(); ++i) {
      EXPECT_LT(result[i - 1].index, result[i].index);
      EXPECT_EQ(0U, result[i].favorite);
    }
  });
}

TEST_P(MergeProperties, EveryChannelIsInOneChange) {
  ForWorlds([](RandomWorlds& worlds) {
    const MergeWorld world = worlds.Next();
    const MergePlan plan = world.Plan();
    std::map<std::size_t, int> ofList;
    std::map<std::size_t, int> ofScan;
    std::map<UINT, int> ofResult;
    for (const Change& change : plan.changes) {
      if (change.inList) ++ofList[*change.inList];
      for (const std::size_t place : change.inScan) ++ofScan[place];
      if (change.resultIndex != 0) ++ofResult[change.resultIndex];
    }
    EXPECT_EQ(world.list.channels.size(), ofList.size());
    EXPECT_EQ(world.scan.channels.size(), ofScan.size()) << CodesIn(plan);
    EXPECT_EQ(plan.result.channels.size(), ofResult.size());
    for (const auto* counts : {&ofList, &ofScan}) {
      for (const auto& [place, count] : *counts) EXPECT_EQ(1, count) << "place " << place;
    }
  });
}

TEST_P(MergeProperties, RemovedAndAddedChannelsLeaveNoGap) {
  ForWorlds([](RandomWorlds& worlds) {
    MergeWorld world = worlds.Next();
    world.policy.gone = merge::Gone::Remove;
    const MergePlan plan = world.Plan();
    const bool isRemoved = std::ranges::any_of(
        plan.changes, [](const Change& change) { return change.code == merge::Code::Removed; });
    if (!isRemoved) return;
    for (std::size_t i = 0; i < plan.result.channels.size(); ++i) {
      EXPECT_EQ(i + 1, plan.result.channels[i].index);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Types, MergeProperties,
                         testing::ValuesIn(StorableSignalTypes().begin(),
                                           StorableSignalTypes().end()),
                         [](const testing::TestParamInfo<InputSignalType>& type) {
                           return SignalTypeName(type.param);
                         });

}  // namespace zortunedex::kit
