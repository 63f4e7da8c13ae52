// What is said of a save that fails, and of the file.
//
// Linux only: limits of file sizes, and modes
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "kit/home.h"
#include "kit/satellites/dish_settings.h"
#include "kit/saving/save_table.h"
#include "support/linux/child.h"

namespace zortunedex::kit {

namespace {

/// True when a save raises a Failure with this message and the file stays as it is.
template <typename Save>
bool Fails(const Home& home, const std::string& file, const std::string& message, Save save) {
  const std::string before = home.Files().Read(file);
  try {
    save();
  } catch (const Failure& failure) {
    return failure.what() == message && home.Files().Read(file) == before;
  }
  return false;
}

void LimitFiles(rlim_t size) {
  const rlimit limit = {size, size};
  ::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &limit);
}

ChannelTable Shortened(const Home& home) {
  ChannelTable table = ReadTable(home.At(49, InputSignalDVBSatellite));
  table.channels.pop_back();
  return table;
}

TEST(SaveWatchLimits, TheCauseIsFoundAndTheFileUnchanged) {
  const Home home;
  const ChannelTable table = Shortened(home);
  EXPECT_TRUE(InChild([&] {
    LimitFiles(4096);
    return Fails(home, "ChanInfo.xml",
                 "ChanInfo.xml could not be written: File too large; the file is unchanged",
                 [&] { SaveTable(home.Path(), table); });
  }));
}

TEST(SaveWatchLimits, AReadOnlyFolderIsTheCause) {
  const Home home;
  const ChannelTable table = Shortened(home);
  ASSERT_EQ(0, chmod(home.Path().c_str(), 0555));
  EXPECT_TRUE(AsNobody([&] {
    return Fails(home, "ChanInfo.xml",
                 "ChanInfo.xml could not be written: Permission denied; the file is unchanged",
                 [&] { SaveTable(home.Path(), table); });
  }));
  ASSERT_EQ(0, chmod(home.Path().c_str(), 0755));
  EXPECT_EQ(table.channels.size(), SaveTable(home.Path(), table).channels.size());
}

TEST(SaveWatchLimits, DishesToo) {
  const Home home;
  Dishes dishes = ReadDishes(home.Satellites());
  dishes.clear(1);
  ASSERT_EQ(0, chmod(home.Path().c_str(), 0555));
  EXPECT_TRUE(AsNobody([&] {
    return Fails(home, "UserSettings.xml",
                 "UserSettings.xml could not be written: Permission denied; the file is unchanged",
                 [&] { SaveDishes(home.Satellites(), dishes); });
  }));
  chmod(home.Path().c_str(), 0755);
}

}  // namespace

}  // namespace zortunedex::kit
