// What becomes of a change that cannot be saved.
//
// Linux only: limits of file sizes, modes, and paths that are bytes
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "api/api_home.h"
#include "support/linux/child.h"

namespace {

/// True when the change raises an error with this reason and all files stay as they are.
template <typename Change>
bool Fails(const ApiHome& home, const std::string& reason, Change change) {
  const std::string channels = home.Read("ChanInfo.xml");
  const std::string settings = home.Read("UserSettings.xml");
  const std::string presets = home.Read("PreSetChannelInfo.xml");
  try {
    change();
  } catch (const zortunedex::error& raised) {
    const bool isMeant = raised.reason().find(reason) != std::string::npos;
    if (!isMeant) std::fprintf(stderr, "%s\n", raised.what());
    return isMeant && channels == home.Read("ChanInfo.xml") &&
           settings == home.Read("UserSettings.xml") &&
           presets == home.Read("PreSetChannelInfo.xml");
  }
  return false;
}

void EveryChangeFails(const ApiHome& home, const std::string& reason) {
  zortunedex::database db = home.Satellite();
  EXPECT_TRUE(AsNobody([&] {
    return Fails(home, reason,
                 [&] { db.edit([](zortunedex::channel_list& list) { list.remove(1); }); });
  }));
  EXPECT_TRUE(AsNobody([&] {
    return Fails(home, reason, [&] {
      db.edit([](zortunedex::channel_list& list) { list.remove(1); },
              zortunedex::file_form::preformatted);
    });
  }));
  EXPECT_TRUE(AsNobody([&] {
    return Fails(home, reason,
                 [&] { db.edit_dishes([](zortunedex::dish_list& dishes) { dishes.clear(1); }); });
  }));
  zortunedex::database oneSeg = home.OneSeg();
  EXPECT_TRUE(
      AsNobody([&] { return Fails(home, reason, [&] { oneSeg.save_customer_list("a"); }); }));
  EXPECT_TRUE(AsNobody([&] {
    return Fails(home, reason, [&] {
      const auto presets = oneSeg.presets();
      oneSeg.select_preset(0, presets.area(0).lists.front().number);
    });
  }));
}

TEST(ApiFaults, AReadOnlyFolderIsToldAndNothingIsChanged) {
  const ApiHome home;
  ASSERT_EQ(0, chmod(home.Path().c_str(), 0555));
  EveryChangeFails(home, "cannot be written; it is as it was");
  ASSERT_EQ(0, chmod(home.Path().c_str(), 0755));
}

TEST(ApiFaults, AFileThatMayNotBeReadIsNotTakenForNone) {
  const ApiHome home;
  const std::string before = home.Read("ChanInfo.xml");
  const std::filesystem::path file = home.Path() / "ChanInfo.xml";
  ASSERT_EQ(0, chmod(file.c_str(), 0));
  EXPECT_TRUE(AsNobody([&] {
    try {
      home.Satellite();
    } catch (const zortunedex::error& raised) {
      return raised.reason() == "its bytes cannot be had" && raised.result() == E_ACCESSDENIED;
    }
    return false;
  }));
  ASSERT_EQ(0, chmod(file.c_str(), 0644));
  EXPECT_EQ(before, home.Read("ChanInfo.xml"));
}

TEST(ApiFaults, AFullDiskIsToldAndNothingIsChanged) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  EXPECT_TRUE(InChild([&] {
    const rlimit limit = {4096, 4096};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    return Fails(home, "takes no more",
                 [&] { db.edit([](zortunedex::channel_list& list) { list.remove(1); }); });
  }));
  // The copy fits, what is saved does not.
  EXPECT_TRUE(InChild([&] {
    const auto size = static_cast<rlim_t>(std::filesystem::file_size(home.Path() / "ChanInfo.xml"));
    const rlimit limit = {size, size};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    return Fails(home, "a copy of it stayed as it was", [&] {
      db.edit([](zortunedex::channel_list& list) {
        for (int i = 0; i < 500; ++i) list.add(list.new_channel().set_name("more"));
      });
    });
  }));
}

TEST(ApiFaults, NoTemporaryDirectoryIsToldAndNothingIsLeft) {
  const ApiHome home;
  zortunedex::database db = home.Satellite();
  EXPECT_TRUE(InChild([&] {
    setenv("TMPDIR", "/nowhere", 1);
    return Fails(home, "",
                 [&] { db.edit([](zortunedex::channel_list& list) { list.remove(1); }); });
  }));
  const TempDir temporary;
  EXPECT_TRUE(InChild([&] {
    setenv("TMPDIR", temporary.Path().c_str(), 1);
    db.edit([](zortunedex::channel_list& list) { list.remove(1); });
    return temporary.Count() == 0;
  }));
}

TEST(ApiFaults, APathThatIsNoTextIsAnError) {
  const zortunedex::library library;
  const std::string path = std::filesystem::temp_directory_path() /
                           "K\xFC"
                           "che";
  std::filesystem::create_directory(path);
  ExpectError("the path is no text", [&] { library.open(path, 49, zortunedex::signal::fm_radio); });
  std::filesystem::remove(path);
}

}  // namespace
