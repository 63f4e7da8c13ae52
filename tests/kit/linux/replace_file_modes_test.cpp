// Linux only: modes and symbolic links are those of its file system.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/host.h"
#include "support/temp_dir.h"

namespace zortunedex::kit {

namespace {

mode_t ModeOf(const std::string& path) {
  struct stat found {};
  EXPECT_EQ(0, stat(path.c_str(), &found));
  return found.st_mode & 07777U;
}

TEST(ReplaceFileModes, KeepsTheModeOfTheOldFile) {
  const TempDir directory;
  directory.Write("secret", "old");
  ASSERT_EQ(0, chmod(directory.File("secret").c_str(), 0640));
  EXPECT_TRUE(host::ReplaceFile(directory.File("secret"), "new"));
  EXPECT_EQ(0640U, ModeOf(directory.File("secret")));
}

TEST(ReplaceFileModes, GivesANewFileWhatTheUserWants) {
  const TempDir directory;
  const mode_t before = umask(027);
  EXPECT_TRUE(host::ReplaceFile(directory.File("replaced"), "new"));
  EXPECT_TRUE(host::WriteNewFile(directory.File("made"), "new"));
  umask(before);
  EXPECT_EQ(0640U, ModeOf(directory.File("replaced")));
  EXPECT_EQ(0640U, ModeOf(directory.File("made")));
}

TEST(ReplaceFileModes, FollowsALink) {
  const TempDir directory;
  std::filesystem::create_directory(directory.File("shelf"));
  directory.Write("shelf/book", "old");
  std::filesystem::create_symlink("shelf/book", directory.File("link"));
  EXPECT_TRUE(host::ReplaceFile(directory.File("link"), "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(directory.File("link")));
  EXPECT_EQ("new", directory.Read("shelf/book"));
}

TEST(ReplaceFileModes, ANewFileIsNoLinkThatLeadsNowhere) {
  const TempDir directory;
  std::filesystem::create_symlink("nowhere", directory.File("link"));
  EXPECT_FALSE(host::WriteNewFile(directory.File("link"), "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(directory.File("link")));
  EXPECT_EQ(1U, directory.Count());
}

}  // namespace

}  // namespace zortunedex::kit
