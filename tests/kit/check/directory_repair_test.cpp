// Repairing a directory: under its lock, through its history, and so that nothing is lost whichever
// call of it fails or is the last one of the process.
#include "kit/check/directory_repair.h"

#include <functional>
#include <set>

#include "kit/failure.h"
#include "kit/history/directory_lock.h"
#include "kit/history/killed_change.h"
#include "kit/history/recorded_home.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace {

using disk_faults::Fault;

std::string ChannelsAt(const std::string& frequency) {
  return "<CHANNELTABLE>\r\n\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
         "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n"
         "\t\t\t<Channel name=\"One\" nameDisplay=\"One\" index=\"1\" freq=\"" +
         frequency +
         "\" favor=\"0\" lock=\"0\"/>\r\n\t\t</ChannelSet>\r\n\t</Country>\r\n</CHANNELTABLE>\r\n";
}

const std::string kBroken = ChannelsAt("89000kHz");
const std::string kMended = ChannelsAt("89000");
constexpr char kAside[] = "ChanInfo.xml.unreadable";
constexpr char kLeftOver[] = "ChanInfo.xml.tmp-1234";

/// Everything that a repair does to a directory: a name, a value, a file without bytes, one that
/// was put aside and one that was left over.
class BrokenHome {
 public:
  explicit BrokenHome(const std::string& channels = "chaninfo.xml") {
    Files().Write(channels, kBroken);
    Files().Write("UserSettings.xml", "");
    Files().Write(kAside, kMended);
    Files().Write(kLeftOver, "half");
  }

  const TempDir& Files() const { return m_home.Files(); }
  const RecordedHome& Home() const { return m_home; }
  std::string Path() const { return Files().Path(); }
  check::Repaired Repair(bool isTrial = false, bool isRecorded = true) const {
    history::ChangeSettings settings = m_home.Settings("repair");
    settings.isTrial = isTrial;
    settings.isRecorded = isRecorded;
    return check::RepairDirectory(settings, {});
  }
  /// Names as they are written, also where letters of either case are the same.
  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(Path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  std::string KeptAside() const {
    const std::string name = std::string("tunedex-history/") + kAside;
    return Files().Has(name) ? Files().Read(name) : std::string();
  }

 private:
  RecordedHome m_home;
};

using NameSet = std::set<std::string>;

NameSet CodesOf(const std::vector<check::Finding>& findings) {
  NameSet codes;
  for (const check::Finding& finding : findings) codes.insert(std::string(finding.code->name));
  return codes;
}

const NameSet kAllCodes = {"ZT003", "ZT004", "ZT006", "ZT009", "ZT100"};

void ExpectRepaired(const BrokenHome& broken) {
  EXPECT_EQ(NameSet({"ChanInfo.xml", "tunedex-history"}), broken.Names());
  EXPECT_EQ(kMended, broken.Files().Read("ChanInfo.xml"));
  EXPECT_EQ(kMended, broken.KeptAside());
  EXPECT_FALSE(broken.Files().Has(std::string("tunedex-history/") + kAside + "-2"));
  const history::Store store = broken.Home().Store();
  EXPECT_NO_THROW(store.RequireWhole());
  EXPECT_FALSE(store.InProgress());
}

TEST(DirectoryRepair, DoesEverythingAtOnce) {
  const BrokenHome broken;
  const check::Repaired result = broken.Repair();
  EXPECT_EQ(kAllCodes, CodesOf(result.mended));
  EXPECT_TRUE(result.left.empty());
  ExpectRepaired(broken);
}

TEST(DirectoryRepair, ATrialTellsAllAndDoesNothing) {
  const BrokenHome broken;
  const NameSet names = broken.Names();
  const check::Repaired result = broken.Repair(true);
  EXPECT_EQ(kAllCodes, CodesOf(result.mended));
  EXPECT_TRUE(result.left.empty());
  EXPECT_EQ(names, broken.Names());
  EXPECT_EQ(kBroken, broken.Files().Read("chaninfo.xml"));
}

// The name stays: a history knows files by the names that they are looked for by.
TEST(DirectoryRepair, WhatItChangesIsTakenBack) {
  const BrokenHome broken;
  broken.Repair();
  history::Undo(broken.Home().Settings());
  EXPECT_EQ(Texts({{"ChanInfo.xml", kBroken}, {"UserSettings.xml", ""}}), broken.Home().Now());
  EXPECT_EQ(NameSet({"ChanInfo.xml", "UserSettings.xml", "tunedex-history"}), broken.Names());
  history::Redo(broken.Home().Settings());
  ExpectRepaired(broken);
}

TEST(DirectoryRepair, RenamesAlsoWhenNothingElseIsToDo) {
  const RecordedHome home({{"CHANINFO.XML", kMended}});
  const check::Repaired result = check::RepairDirectory(home.Settings(), {});
  EXPECT_EQ(NameSet({"ZT009"}), CodesOf(result.mended));
  EXPECT_EQ(Texts({{"ChanInfo.xml", kMended}}), home.Now());
  EXPECT_TRUE(home.Store().IsEmpty());
}

// Some systems change letters in two steps, and a process may end between them.
TEST(DirectoryRepair, FinishesARenamingThatWasBegun) {
  const RecordedHome home({{"ChanInfo.xml.renamed", kMended}});
  const check::Repaired result = check::RepairDirectory(home.Settings(), {});
  EXPECT_EQ(NameSet({"ZT009"}), CodesOf(result.mended));
  EXPECT_EQ(Texts({{"ChanInfo.xml", kMended}}), home.Now());
}

// What cannot be repaired keeps its name, too.
TEST(DirectoryRepair, ARefusedRepairLeavesEverything) {
  const BrokenHome broken;
  std::string split;
  for (const std::string part : {"A", "B"}) split += "\" nameDisplay=\"" + part;
  std::string bytes = kMended;
  bytes.replace(bytes.find("name=\"One"), 9, "name=\"One" + split);
  broken.Files().Write("chaninfo.xml", bytes);
  const NameSet before = broken.Names();
  try {
    broken.Repair();
    ADD_FAILURE() << "it was repaired";
  } catch (const Failure& refused) {
    EXPECT_NE(std::string::npos, std::string(refused.what()).find("--drop-unrepairable"));
  }
  NameSet after = broken.Names();
  after.erase("tunedex-history");
  EXPECT_EQ(before, after);
}

TEST(DirectoryRepair, WaitsForTheLock) {
  const BrokenHome broken;
  history::ChangeSettings settings = broken.Home().Settings();
  settings.wait = std::chrono::seconds(0);
  {
    const history::DirectoryLock lock(broken.Path(), std::chrono::seconds(0));
    EXPECT_THROW(check::RepairDirectory(settings, {}), Failure);
    EXPECT_EQ(NameSet({"UserSettings.xml", kAside, kLeftOver, "chaninfo.xml", "tunedex-history"}),
              broken.Names());
  }
  check::RepairDirectory(settings, {});
  ExpectRepaired(broken);
}

TEST(DirectoryRepair, WithoutAHistoryNothingIsKept) {
  const BrokenHome broken;
  broken.Repair(false, false);
  EXPECT_EQ(NameSet({"ChanInfo.xml", "tunedex-history"}), broken.Names());
  EXPECT_EQ("", broken.KeptAside());
}

/// The channels stand there, old or new, under one of the names, and so does what was put aside.
void ExpectNothingLost(const BrokenHome& broken) {
  std::string channels;
  for (const char* name : {"ChanInfo.xml", "chaninfo.xml", "ChanInfo.xml.renamed"}) {
    if (channels.empty() && broken.Files().Has(name)) channels = broken.Files().Read(name);
  }
  EXPECT_TRUE(channels == kBroken || channels == kMended) << channels;
  const bool isAside = broken.Files().Has(kAside) && broken.Files().Read(kAside) == kMended;
  EXPECT_TRUE(isAside || broken.KeptAside() == kMended);
}

/// A second repair does what the first one did not, and what was found at first can be had back.
void ExpectTheNextDoesTheRest(const BrokenHome& broken) {
  broken.Repair();
  ExpectRepaired(broken);
  history::Undo(broken.Home().Settings());
  EXPECT_EQ(Texts({{"ChanInfo.xml", kBroken}, {"UserSettings.xml", ""}}), broken.Home().Now());
}

int CallsOfARepair() {
  const BrokenHome broken;
  const disk_faults::Scope scope(Fault::Short, 1000000);
  broken.Repair();
  return disk_faults::Calls();
}

void ForEveryCallOfARepair(const std::function<void(const BrokenHome& broken, int position)>& hit) {
  const int calls = CallsOfARepair();
  EXPECT_GE(calls, 20);
  for (int position = 0; position < calls && !testing::Test::HasFailure(); ++position) {
    SCOPED_TRACE("call " + std::to_string(position) + " of " + std::to_string(calls));
    const BrokenHome broken;
    hit(broken, position);
    ExpectNothingLost(broken);
    ExpectTheNextDoesTheRest(broken);
  }
}

class RepairFaults : public testing::TestWithParam<Fault> {};

TEST_P(RepairFaults, LoseNothing) {
  ForEveryCallOfARepair([](const BrokenHome& broken, int position) {
    const disk_faults::Scope scope(GetParam(), position);
    try {
      broken.Repair();
    } catch (const Failure& failure) {
      EXPECT_NE("", std::string(failure.what()));
    }
  });
}

INSTANTIATE_TEST_SUITE_P(All, RepairFaults, testing::Values(Fault::Device, Fault::Short));

class KilledRepairs : public testing::TestWithParam<Fault> {};

TEST_P(KilledRepairs, LoseNothing) {
  ForEveryCallOfARepair([](const BrokenHome& broken, int position) {
    EXPECT_EQ(disk_faults::kKilled,
              StatusOfKilledChange(broken.Path(), Operation::Repair, GetParam(), position));
  });
}

INSTANTIATE_TEST_SUITE_P(All, KilledRepairs, testing::Values(Fault::KillBefore, Fault::KillHalf));

}  // namespace

}  // namespace zortunedex::kit
