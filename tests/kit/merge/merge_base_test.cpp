// The document of a merge's base: what was written is what is read.
#include <gtest/gtest.h>

#include <algorithm>

#include "kit/failure.h"
#include "kit/interchange/exchange.h"
#include "kit/merge/merge_world.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

namespace {

class MergeBaseDocument : public testing::TestWithParam<InputSignalType> {};

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  const std::size_t place = text.find(what);
  EXPECT_NE(std::string::npos, place) << what;
  return place == std::string::npos ? text : text.replace(place, what.size(), by);
}

}  // namespace

TEST_P(MergeBaseDocument, ComesBackWhole) {
  const Exchange exchange(49, GetParam());
  RandomWorlds worlds(GetParam(), 11);
  for (int i = 0; i < 10; ++i) {
    MergeWorld world = worlds.Next();
    // A record fills in an empty one.
    const auto name = [](Channel& channel) {
      if (channel.displayName.empty()) channel.displayName = OLESTR("shown");
    };
    std::ranges::for_each(world.list.channels, name);
    std::ranges::for_each(world.scan.channels, name);
    world.base.reset();
    const merge::MergePlan first = world.Plan();
    const std::string text = merge::WriteBase(first.base, exchange.Context());
    const merge::MergeBase read = merge::ReadBase(text, exchange.Context());
    EXPECT_EQ(text, merge::WriteBase(read, exchange.Context()));
    ASSERT_EQ(first.base.entries.size(), read.entries.size());
    for (std::size_t j = 0; j < read.entries.size(); ++j) {
      EXPECT_EQ(first.base.entries[j].absent, read.entries[j].absent);
      EXPECT_EQ(first.base.entries[j].source, read.entries[j].source);
      EXPECT_EQ(first.base.entries[j].channel.name, read.entries[j].channel.name);
      EXPECT_EQ(first.base.entries[j].channel.index, read.entries[j].channel.index);
    }
    const merge::MergePlan second = world.PlanOf(merge::Apply(first), &read);
    EXPECT_FALSE(second.changesList) << CodesIn(second);
  }
}

INSTANTIATE_TEST_SUITE_P(Types, MergeBaseDocument,
                         testing::ValuesIn(StorableSignalTypes().begin(),
                                           StorableSignalTypes().end()),
                         [](const testing::TestParamInfo<InputSignalType>& type) {
                           return SignalTypeName(type.param);
                         });

TEST(MergeBaseFile, RefusesWhatIsDamagedOrAnothers) {
  const Exchange exchange(49, InputSignalDVBSatellite);
  const Exchange other(33, InputSignalDVBSatellite);
  ChannelTable list{49, InputSignalDVBSatellite, {}};
  list.channels.push_back(
      MakeStation(list.signal, 1, "A", {{"serviceID", 10}, {"freq", 11493750}}));
  const std::string text = merge::WriteBase(merge::BaseOf(list), exchange.Context());
  EXPECT_EQ(1U, merge::ReadBase(text, exchange.Context()).entries.size());

  const auto expect = [&](const std::string& message, const std::string& bytes) {
    ExpectRaised<Failure>(message, [&] { merge::ReadBase(bytes, exchange.Context()); });
  };
  const std::string damaged = "the base of the last merge is damaged: ";
  expect(damaged + "it is no JSON", text.substr(0, text.size() / 2));
  expect("the file is no base of a merge", "[]");
  expect("the file is no base of a merge", Replaced(text, "merge-base", "channels"));
  expect("the base of the last merge is of another version",
         Replaced(text, "\"version\":1", "\"version\":2"));
  expect(damaged + "an entry has no channel", Replaced(text, "\"channel\":", "\"chanel\":"));
  expect(damaged + "'freq' of A is not what it should be",
         [&] { return Replaced(text, "\"block\":{", "\"block\":{\"freq\":{},"); }());
  expect(damaged + "'scan' is no hexadecimal number",
         Replaced(text, "\"scan\":\"", "\"scan\":\"x"));
  ExpectRaised<Failure>("the base belongs to another list, not to DVBSatellite of country 33",
                        [&] { merge::ReadBase(text, other.Context()); });
  EXPECT_EQ("base-49-DVBSatellite.json", merge::BaseFileName(49, InputSignalDVBSatellite));
}

}  // namespace zortunedex::kit
