#include "kit/history/directory_lock.h"

#include <algorithm>
#include <thread>

#include "kit/failure.h"
#include "kit/history/killed_change.h"
#include "kit/history/recorded_home.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

using std::chrono::seconds;

TEST(DirectoryLock, IsHeldByOneAtATime) {
  const TempDir directory;
  {
    const history::DirectoryLock first(directory.Path(), seconds(0));
    ExpectRaised<history::DirectoryBusy>(
        "another command is changing the directory; nothing was changed. Waited 0 s",
        [&] { const history::DirectoryLock second(directory.Path(), seconds(0)); });
  }
  EXPECT_NO_THROW(history::DirectoryLock(directory.Path(), seconds(0)));
}

TEST(DirectoryLock, IsWaitedFor) {
  const TempDir directory;
  auto first = std::make_unique<history::DirectoryLock>(directory.Path(), seconds(0));
  std::thread release([&first] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    first.reset();
  });
  EXPECT_NO_THROW(history::DirectoryLock(directory.Path(), seconds(60)));
  release.join();
}

// The file of the lock says nothing: the system knows who holds it.
TEST(DirectoryLock, OfADeadProcessIsFree) {
  const RecordedHome home(Texts{{"ChanInfo.xml", "old"}});
  ASSERT_EQ(disk_faults::kKilled, StatusOfKilledChange(home.Files().Path(), Operation::DieWithLock,
                                                       disk_faults::Fault::Device, 1000000));
  EXPECT_TRUE(home.Files().Has("tunedex-history/lock"));
  history::ChangeSettings settings = home.Settings();
  settings.wait = seconds(0);
  EXPECT_NO_THROW(history::MakeChange(settings, RecordedHome::Writing({})));
}

// Each change builds on what the other one left.
TEST(DirectoryLock, LetsNoChangeOfTwoLoopsGetLost) {
  constexpr int kChanges = 100;
  const RecordedHome home;
  const auto loop = [&home](char letter) {
    history::ChangeSettings settings = home.Settings();
    settings.wait = seconds(120);
    for (int i = 0; i < kChanges; ++i) {
      history::MakeChange(settings, [letter](const std::string& scratch) {
        const std::string path = history::PathOf(scratch, "ChanInfo.xml");
        std::ofstream(path, std::ios::binary | std::ios::app) << letter;
      });
    }
  };
  std::thread other(loop, 'b');
  loop('a');
  other.join();
  const std::string text = home.Files().Read("ChanInfo.xml");
  EXPECT_EQ(kChanges, std::count(text.begin(), text.end(), 'a'));
  EXPECT_EQ(kChanges, std::count(text.begin(), text.end(), 'b'));
  EXPECT_EQ(2 * kChanges + 1, static_cast<int>(home.Store().Head()->number));
  ExpectWholeHistory(home.Files().Path());
}

}  // namespace

}  // namespace zortunedex::kit
