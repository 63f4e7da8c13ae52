// What becomes of a channel in the cases that users know.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/home.h"
#include "kit/merge/merge_json.h"
#include "kit/merge/merge_world.h"

namespace zortunedex::kit {

using merge::MergePlan;
using merge::MergePolicy;

namespace {

constexpr InputSignalType kSat = InputSignalDVBSatellite;
constexpr std::uint32_t kH = 1;
constexpr std::uint32_t kV = 2;

Channel Astra(UINT index, const std::string& name, std::uint32_t service,
              std::uint32_t stream = 1011, std::uint32_t frequency = 11493750,
              std::uint32_t polarisation = kH) {
  return MakeStation(kSat, index, name,
                     {{"orbitalPosition", 192},
                      {"ONID", 1},
                      {"TSID", stream},
                      {"serviceID", service},
                      {"freq", frequency},
                      {"polarisation", polarisation},
                      {"symbolRate", 22000},
                      {"serviceType", 1}});
}

ChannelTable TableOf(std::vector<Channel> channels, InputSignalType signal = kSat) {
  return {49, signal, std::move(channels)};
}

/// A story: the list and the scan as they were at the last merge, then what happens.
class MergeStory : public testing::Test {
 protected:
  void Start(std::vector<Channel> channels) {
    m_world.list = TableOf(channels);
    m_world.scan = m_world.list;
    const MergePlan plan = m_world.Plan();
    m_world.base = plan.base;
    EXPECT_FALSE(plan.changesList);
  }
  MergePlan Merge() {
    MergePlan plan = m_world.Plan();
    m_world.list = merge::Apply(plan);
    m_world.base = plan.base;
    return plan;
  }
  std::string TextOf(const MergePlan& plan) {
    return merge::PlanText(plan, merge::PlanKind::Merge);
  }
  std::vector<Channel>& List() { return m_world.list.channels; }
  std::vector<Channel>& Scan() { return m_world.scan.channels; }

  MergeWorld m_world;
};

}  // namespace

TEST_F(MergeStory, BroadcasterRenames) {
  Start({Astra(1, "Das Vierte", 10), Astra(2, "Das Erste", 11)});
  List()[0].favorite = 1;
  Scan()[0] = Astra(0, "Disney", 10);
  const MergePlan plan = Merge();
  EXPECT_EQ(
      "~ 1 Disney  M103 renamed Das Vierte -> Disney\n"
      "M100 1 unchanged\n"
      "M103 1 renamed by the broadcaster\n",
      TextOf(plan));
  EXPECT_EQ(OLESTR("Disney"), List()[0].name);
  EXPECT_EQ(OLESTR("Disney"), List()[0].displayName);
  EXPECT_EQ(1U, List()[0].favorite);
}

TEST_F(MergeStory, UsersNameStaysWhenTheBroadcasterRenames) {
  Start({Astra(1, "Das Vierte", 10)});
  List()[0].displayName = OLESTR("Kinder");
  Scan()[0] = Astra(0, "Disney", 10);
  const MergePlan plan = Merge();
  EXPECT_EQ(merge::Code::Renamed, plan.changes[0].code);
  EXPECT_EQ(OLESTR("Disney"), List()[0].name);
  EXPECT_EQ(OLESTR("Kinder"), List()[0].displayName);
  EXPECT_EQ("1 M100", CodesIn(Merge()));
}

TEST_F(MergeStory, RenamedByBothKeepsTheListsName) {
  Start({Astra(1, "Das Vierte", 10)});
  SetBroadcastName(List()[0], kSat, "Viertes");
  List()[0].displayName = OLESTR("Viertes");
  Scan()[0] = Astra(0, "Disney", 10);
  const MergePlan plan = Merge();
  EXPECT_EQ(
      "! 1 Viertes  M402 was Das Vierte, is Viertes here and Disney in the scan: stays Viertes\n"
      "M402 1 renamed by both: the list's name stays\n",
      TextOf(plan));
  EXPECT_EQ(OLESTR("Viertes"), List()[0].name);
  EXPECT_EQ("1 M100", CodesIn(Merge()));
}

TEST_F(MergeStory, MovedToAnotherTransponder) {
  Start({Astra(5, "ProSieben", 17501, 1107, 12544750, kH)});
  Scan()[0] = Astra(0, "ProSieben", 17501, 1115, 12663750, kV);
  EXPECT_EQ(
      "~ 5 ProSieben  M102 moved 12544750 H -> 12663750 V\n"
      "    TSID 1107 -> 1115\n"
      "M102 1 moved to another transponder\n",
      TextOf(Merge()));
  EXPECT_EQ(12663750U, List()[0].frequency);
  EXPECT_EQ(1115, List()[0].tsid);
}

TEST_F(MergeStory, SameServiceOnAnotherPolarisationMoved) {
  Start({Astra(1, "A", 10)});
  SetValueIn(Scan()[0], kSat, "polarisation", kV);
  EXPECT_EQ("1 M102", CodesIn(Merge()));
}

TEST_F(MergeStory, FrequencyWithinReachIsTuning) {
  Start({Astra(1, "A", 10)});
  Scan()[0].frequency += 2000;
  EXPECT_EQ("1 M101", CodesIn(Merge()));
  Scan()[0].frequency += 2001;
  EXPECT_EQ("1 M102", CodesIn(Merge()));
}

TEST_F(MergeStory, TwoThatSwapTheirNamesKeepTheirPlaces) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11)});
  List()[0].favorite = 3;
  Scan() = {Astra(0, "B", 10), Astra(0, "A", 11)};
  EXPECT_EQ("1 M103, 2 M103", CodesIn(Merge()));
  EXPECT_EQ(OLESTR("B"), List()[0].name);
  EXPECT_EQ(3U, List()[0].favorite);
  EXPECT_EQ(10U, ValueIn(List()[0], kSat, "serviceID"));
}

TEST_F(MergeStory, RenumberedService) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11)});
  Scan()[0] = Astra(0, "A", 99);
  EXPECT_EQ(
      "~ 1 A  M104 renumbered serviceID 10 -> 99\n"
      "M100 1 unchanged\n"
      "M104 1 renumbered service\n",
      TextOf(Merge()));
}

TEST_F(MergeStory, RelayIsNew) {
  constexpr InputSignalType kDvbt = InputSignalDVBTerrestrial;
  const auto relay = [](UINT index, std::uint32_t frequency) {
    return MakeStation(kDvbt, index, "ARD",
                       {{"ONID", 8468}, {"TSID", 1}, {"serviceID", 2}, {"freq", frequency}});
  };
  m_world.list = TableOf({relay(4, 506000)}, kDvbt);
  m_world.scan = TableOf({relay(0, 690000), relay(0, 506000)}, kDvbt);
  const MergePlan plan = Merge();
  EXPECT_EQ("4 M100, M201", CodesIn(plan));
  EXPECT_EQ("T-8468-1-2", plan.changes[1].identity);
  EXPECT_EQ(5U, List()[1].index);
  EXPECT_EQ(690000U, List()[1].frequency);
}

TEST_F(MergeStory, DuplicatesAreTheUsersAndFollow) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11), Astra(3, "A", 10)});
  Scan() = {Astra(0, "A", 10, 1022, 12000000), Astra(0, "B", 11)};
  EXPECT_EQ("1 M102, 2 M100, 3 M102", CodesIn(Merge()));
  EXPECT_EQ(12000000U, List()[2].frequency);
}

TEST_F(MergeStory, CopiesStayTogetherWhenTheScanLosesTheirNumber) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11), Astra(3, "A", 10)});
  SetValueIn(List()[2], kSat, "serviceID", 0);
  SetValueIn(Scan()[0], kSat, "serviceID", 0);
  Scan().pop_back();
  EXPECT_EQ("1 M100, 2 M100, 3 M100", CodesIn(Merge()));
  EXPECT_EQ("1 M100, 2 M100, 3 M100", CodesIn(Merge()));
}

TEST_F(MergeStory, TwinsOfTheScanAreNotWhatTheUserDeleted) {
  constexpr InputSignalType kAnalog = InputSignalAnalogAntenna;
  const auto station = [](const std::string& name, std::uint32_t frequency) {
    return MakeStation(kAnalog, frequency / 100000, name, {{"freq", frequency}});
  };
  m_world.list = TableOf({station("A", 100000), station("D", 900000)}, kAnalog);
  m_world.scan = m_world.list;
  Merge();
  List().pop_back();
  Scan() = {station("A", 100000), station("D", 100100)};
  EXPECT_EQ("1 M100, M203", CodesIn(Merge()));
  Scan() = {station("A", 100000), station("D", 900000)};
  EXPECT_EQ("1 M100, M204", CodesIn(Merge()));
}

TEST_F(MergeStory, TwiceInTheScanTakesTheNearestAndTellsOnce) {
  Start({Astra(1, "A", 10)});
  Scan() = {Astra(0, "A", 10, 1011, 11495000), Astra(0, "A", 10, 1011, 11493750)};
  EXPECT_EQ("1 M100, M203", CodesIn(Merge()));
  EXPECT_EQ("1 M100", CodesIn(Merge()));
}

TEST_F(MergeStory, LostTransponderIsNotLookedForUnlessTheScanIsFull) {
  Start({Astra(1, "A", 10), Astra(2, "B", 20, 1022, 12000000)});
  Scan() = {Astra(0, "A", 10)};
  EXPECT_EQ("1 M100, 2 M100", CodesIn(Merge()));
  m_world.policy.scope = merge::Scope::Full;
  const MergePlan plan = Merge();
  EXPECT_EQ("1 M100, 2 M301", CodesIn(plan));
  EXPECT_EQ(1U, plan.changes[1].absent);
}

TEST_F(MergeStory, MarkedServiceIsFoundAgain) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11)});
  for (Channel* channel : {&List()[1], &Scan()[1]}) SetValueIn(*channel, kSat, "runningStatus", 4);
  Merge();
  m_world.policy.gone = merge::Gone::Mark;
  m_world.told = [](Channel channel) {
    SetValueIn(channel, kSat, "runningStatus", 0);
    return channel;
  };
  for (Channel& channel : Scan()) channel = m_world.told(channel);
  const std::vector<Channel> whole = Scan();
  Scan().pop_back();
  EXPECT_EQ("1 M100, 2 M302", CodesIn(Merge()));
  EXPECT_EQ(1U, ValueIn(List()[1], kSat, "runningStatus"));
  EXPECT_EQ("1 M100, 2 M302", CodesIn(Merge()));
  Scan() = whole;
  EXPECT_EQ("1 M100, 2 M305", CodesIn(Merge()));
  EXPECT_EQ(4U, ValueIn(List()[1], kSat, "runningStatus"));
  EXPECT_EQ("1 M100, 2 M100", CodesIn(Merge()));
}

TEST_F(MergeStory, WithoutRunningStatusItCannotBeMarked) {
  constexpr InputSignalType kAtsc = InputSignalATSCAntenna;
  const auto station = [](UINT index, std::uint32_t minor) {
    return MakeStation(kAtsc, index, "K",
                       {{"physicalChannel", 33}, {"majorChannel", 2}, {"minorChannel", minor}});
  };
  m_world.list = TableOf({station(1, 1), station(2, 2)}, kAtsc);
  m_world.scan = TableOf({station(0, 1)}, kAtsc);
  m_world.policy.gone = merge::Gone::Mark;
  EXPECT_EQ("1 M100, 2 M304", CodesIn(Merge()));
  EXPECT_EQ("1 M100, 2 M301", CodesIn(Merge()));
}

TEST_F(MergeStory, RemovedAfterAsManyScansAsAskedFor) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11), Astra(3, "C", 12), Astra(4, "D", 13)});
  List()[1].favorite = 1;
  m_world.policy.gone = merge::Gone::Remove;
  m_world.policy.goneAfter = 2;
  Scan() = {Astra(0, "A", 10), Astra(0, "D", 13)};
  EXPECT_EQ("1 M100, 2 M301, 3 M301, 4 M100", CodesIn(Merge()));
  EXPECT_EQ("1 M100, 2 M301, 3 M301, 4 M100", CodesIn(Merge())) << "the same scan counts once";
  SetValueIn(Scan()[0], kSat, "PcrPID", 5);
  EXPECT_EQ("1 M105, 2 M301, 3 M303, 4 M100", CodesIn(Merge()));
  ASSERT_EQ(3U, List().size());
  EXPECT_EQ(OLESTR("D"), List()[2].name);
  EXPECT_EQ(3U, List()[2].index);
  m_world.policy.goneFavorites = true;
  EXPECT_EQ("1 M100, 2 M303, 3 M100", CodesIn(Merge()));
}

TEST_F(MergeStory, FirstMergeKeepsWhatMayBeTheUsers) {
  m_world.list = TableOf({Astra(1, "Old", 10), Astra(2, "Other", 11), Astra(3, "Third", 12)});
  List()[1].displayName = OLESTR("Mine");
  m_world.scan = TableOf({Astra(0, "New", 10), Astra(0, "Another", 11), Astra(0, "Third", 12)});
  const MergePlan plan = Merge();
  EXPECT_EQ(
      "~ 2 Mine  M103 renamed Other -> Another\n"
      "! 1 Old  M403 is Old here and New in the scan; whose name it is, is not known: stays Old\n"
      "M100 1 unchanged\n"
      "M103 1 renamed by the broadcaster\n"
      "M403 1 whose name it is, is not known: both stay\n",
      TextOf(plan));
  EXPECT_EQ(OLESTR("Old"), List()[0].name);
  EXPECT_EQ(OLESTR("Another"), List()[1].name);
  EXPECT_EQ(OLESTR("Mine"), List()[1].displayName);
}

TEST_F(MergeStory, WhatTheUserDeletedStaysOutUnlessItIsWanted) {
  Start({Astra(1, "A", 10), Astra(2, "B", 11)});
  List().pop_back();
  EXPECT_EQ("1 M100, M204", CodesIn(Merge()));
  EXPECT_EQ("1 M100, M204", CodesIn(Merge()));
  m_world.policy.deleted = merge::Deleted::Add;
  EXPECT_EQ("1 M100, M201", CodesIn(Merge()));
  EXPECT_EQ(OLESTR("B"), List()[1].name);
}

TEST_F(MergeStory, NewOnesThatWereLeftOutAreNotTakenForDeleted) {
  Start({Astra(1, "A", 10)});
  Scan().push_back(Astra(0, "B", 11));
  m_world.policy.newOnes = merge::NewOnes::None;
  EXPECT_EQ("1 M100, M202", CodesIn(Merge()));
  m_world.policy.newOnes = merge::NewOnes::End;
  EXPECT_EQ("1 M100, M201", CodesIn(Merge()));
}

TEST_F(MergeStory, NewOnesStandBehindTheirTransponder) {
  Start({Astra(1, "A", 10), Astra(2, "B", 20, 1022, 12000000)});
  Scan().push_back(Astra(0, "C", 11));
  m_world.policy.newOnes = merge::NewOnes::Transponder;
  const MergePlan plan = Merge();
  EXPECT_EQ("1 M100, 2 M100, M201", CodesIn(plan));
  EXPECT_EQ(2U, plan.changes[2].resultIndex);
  EXPECT_EQ(OLESTR("C"), List()[1].name);
  EXPECT_EQ(3U, List()[2].index);
}

TEST_F(MergeStory, EditedTuningIsTheScansOrKept) {
  for (const bool isKept : {false, true}) {
    Start({Astra(1, "A", 10)});
    m_world.policy.tuning = isKept ? merge::EditedTuning::Keep : merge::EditedTuning::Scan;
    SetValueIn(List()[0], kSat, "symbolRate", 27500);
    SetValueIn(Scan()[0], kSat, "symbolRate", 23000);
    EXPECT_EQ(std::string("! 1 A  M404 symbolRate was 22000, you set 27500, the scan has 23000: ") +
                  (isKept ? "27500 stays" : "23000 is taken") +
                  "\nM404 1 tuning edited by the user\n",
              TextOf(Merge()));
    EXPECT_EQ(isKept ? 27500U : 23000U, ValueIn(List()[0], kSat, "symbolRate"));
    EXPECT_EQ("1 M100", CodesIn(Merge()));
  }
}

TEST_F(MergeStory, SeveralThatFitAreLeftAloneAndNamed) {
  Start({Astra(1, "Info", 10)});
  Scan() = {Astra(0, "Info", 20), Astra(0, "Info", 21)};
  const MergePlan plan = Merge();
  EXPECT_EQ(
      "! 1 Info  M401 is left alone: it may be S19.2E-1-1011-20 Info or S19.2E-1-1011-21 Info\n"
      "M401 1 ambiguous: left alone\n",
      TextOf(plan));
  EXPECT_FALSE(plan.changesList);
}

TEST_F(MergeStory, LooseNamesFindWhatExactOnesDoNot) {
  Start({Astra(1, "Das Erste HD", 10)});
  Scan()[0] = Astra(0, "das erste", 99);
  EXPECT_EQ("1 M301, M201", CodesIn(m_world.Plan()));
  m_world.policy.looseNames = true;
  EXPECT_EQ("1 M104", CodesIn(m_world.Plan()));
}

TEST_F(MergeStory, SelectedStreamStaysTheSamePid) {
  Start({Astra(1, "A", 10)});
  for (const std::uint32_t pid : {101U, 102U}) AddStream(List()[0], kSat, "AudioStream", 3, pid, 7);
  SetValueIn(List()[0], kSat, "audioStream", 1);
  for (const std::uint32_t pid : {100U, 101U, 102U}) {
    AddStream(Scan()[0], kSat, "AudioStream", 3, pid, 7);
  }
  EXPECT_EQ("1 M105", CodesIn(Merge()));
  EXPECT_EQ(2U, ValueIn(List()[0], kSat, "audioStream"));
}

TEST_F(MergeStory, WhatTheFormatCannotHoldStays) {
  Start({Astra(1, "A", 10)});
  SetValueIn(List()[0], kSat, "CA", 1);
  AddStream(List()[0], kSat, "AudioStream", 3, 100, 7);
  const std::vector<Channel> before = List();
  m_world.told = [](Channel channel) {
    for (const char* attribute : {"symbolRate", "orbitalPosition", "CA"}) {
      SetValueIn(channel, kSat, attribute, 0);
    }
    return Coarse(std::move(channel), kSat);
  };
  Scan()[0] = m_world.told(List()[0]);
  EXPECT_NE(before[0].frequency, Scan()[0].frequency);
  EXPECT_EQ("1 M100", CodesIn(Merge()));
  EXPECT_TRUE(SameChannels(before, List()));
  // A stream that came leaves the one that was there what it is.
  AddStream(Scan()[0], kSat, "AudioStream", 0, 101, 0);
  EXPECT_EQ("1 M105", CodesIn(Merge()));
  EXPECT_EQ(before[0].frequency, List()[0].frequency);
  EXPECT_EQ(2U, ValueIn(List()[0], kSat, "numOfAudioStreams"));
}

TEST_F(MergeStory, LnbAndFavouritesAreTheLists) {
  Start({Astra(1, "A", 10)});
  Scan()[0].favorite = 9;
  Scan()[0].lock = 1;
  SetValueIn(Scan()[0], kSat, "LNB_LowFreq", 9750);
  SetValueIn(Scan()[0], kSat, "azimuth", 5);
  SetValueIn(Scan()[0], kSat, "physicalChannel", 77);
  EXPECT_EQ("1 M100", CodesIn(Merge()));
  m_world.policy.numbers = merge::Numbers::Scan;
  EXPECT_EQ("1 M101", CodesIn(Merge()));
  EXPECT_EQ(77U, List()[0].number);
  EXPECT_EQ(0U, List()[0].favorite);
}

TEST_F(MergeStory, RepackOfAtsc) {
  constexpr InputSignalType kAtsc = InputSignalATSCAntenna;
  const auto station = [](UINT index, std::uint32_t rf) {
    return MakeStation(kAtsc, index, "KABC",
                       {{"physicalChannel", rf}, {"majorChannel", 7}, {"minorChannel", 1}});
  };
  m_world.list = TableOf({station(1, 33)}, kAtsc);
  m_world.scan = TableOf({station(0, 21)}, kAtsc);
  const MergePlan plan = Merge();
  EXPECT_EQ(
      "~ 1 KABC  M102 moved RF 33 -> RF 21\n"
      "M102 1 moved to another transponder\n",
      TextOf(plan));
  EXPECT_EQ("A21-7.1", plan.changes[0].identity);
}

/// As playlists do.
TEST_F(MergeStory, NamesWhatServicesAre) {
  const auto identity = [this](InputSignalType signal, Attributes attributes) {
    m_world.list = TableOf({}, signal);
    m_world.scan = TableOf({MakeStation(signal, 0, "N", attributes)}, signal);
    return m_world.Plan().changes.at(0).identity;
  };
  EXPECT_EQ("S19.2E-1-2-3",
            identity(kSat, {{"orbitalPosition", 192}, {"ONID", 1}, {"TSID", 2}, {"serviceID", 3}}));
  EXPECT_EQ("S30.0W-1-2-3", identity(kSat, {{"orbitalPosition", 300},
                                            {"westPosition", 1},
                                            {"ONID", 1},
                                            {"TSID", 2},
                                            {"serviceID", 3}}));
  EXPECT_EQ("T-8468-770-1",
            identity(InputSignalDVBTerrestrial, {{"ONID", 8468}, {"TSID", 770}, {"serviceID", 1}}));
  EXPECT_EQ("H-1-2-3",
            identity(InputSignalDVBHandheld, {{"ONID", 1}, {"TSID", 2}, {"serviceID", 3}}));
  EXPECT_EQ("C79-2.1",
            identity(InputSignalATSCCable,
                     {{"physicalChannel", 79}, {"majorChannel", 2}, {"minorChannel", 1}}));
  EXPECT_EQ("1SEG-32736-1024", identity(InputSignalISDBTerrestrialOneSeg,
                                        {{"NetworkID", 32736}, {"ServiceID", 1024}}));
  EXPECT_EQ("DMB-e1234567-181280",
            identity(InputSignalTDMBMobile, {{"ServiceID", 3777185127}, {"freq", 181280}}));
  EXPECT_EQ("FM-88800", identity(InputSignalFMRadio, {{"freq", 88800}}));
  EXPECT_EQ("TV-224250", identity(InputSignalAnalogCable, {{"freq", 224250}}));
}

TEST_F(MergeStory, PlanAsJson) {
  Start({Astra(3, "A", 10), Astra(4, "B", 11)});
  SetValueIn(Scan()[0], kSat, "CA", 1);
  Scan()[1] = Astra(0, "C", 12, 1022, 12000000);
  m_world.policy.scope = merge::Scope::Full;
  const MergePlan plan = Merge();
  const nlohmann::ordered_json json = merge::PlanDocument(plan, merge::PlanKind::Diff);
  EXPECT_EQ(
      R"({"tunedex":"diff","version":1,"summary":{"M105":1,"M201":1,"M301":1},"changes":[)"
      R"({"code":"M105","index":3,"identity":"S19.2E-1-1011-10","name":"A","fields":[)"
      R"({"field":"CA","list":0,"base":0,"scan":1,"result":1}]},)"
      R"({"code":"M301","index":4,"identity":"S19.2E-1-1011-11","name":"B","fields":[],"absent":1},)"
      R"({"code":"M201","index":5,"identity":"S19.2E-1-1022-12","name":"C","fields":[]}]})",
      json.dump());
  EXPECT_EQ(json.dump(2), merge::PlanJson(plan, merge::PlanKind::Diff));
}

TEST_F(MergeStory, RefusesOtherListsAndEmptyScans) {
  Start({Astra(1, "A", 10)});
  Scan().clear();
  ExpectRaised<Failure>(
      "the scan holds no channels; only a scan of everything (--scope full) may be empty",
      [this] { m_world.Plan(); });
  m_world.policy.scope = merge::Scope::Full;
  EXPECT_EQ("1 M301", CodesIn(m_world.Plan()));
  m_world.scan.country = 33;
  ExpectRaised<Failure>("the scan belongs to country 33, the list to 49",
                        [this] { m_world.Plan(); });
  m_world.scan.signal = InputSignalFMRadio;
  ExpectRaised<Failure>("the scan holds channels of FMRadio, the list those of DVBSatellite",
                        [this] { m_world.Plan(); });
}

}  // namespace zortunedex::kit
