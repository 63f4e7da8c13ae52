// Linux only: modes, owners, links and limits; its twin is windows/files/atomic_file_test.cpp
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <new>
#include <string>

#include "platform/files.h"
#include "support/allocations.h"
#include "support/in_threads.h"
#include "support/linux/child.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

class AtomicFile : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return m_dir.File(name); }
  mode_t Mode(const std::string& name) const {
    struct stat found {};
    EXPECT_EQ(0, stat(Path(name).c_str(), &found));
    return found.st_mode & 07777U;
  }
  void WriteWithMode(const std::string& name, mode_t mode) const {
    m_dir.Write(name, "old");
    ASSERT_EQ(0, chmod(Path(name).c_str(), mode));
  }

  TempDir m_dir;
};

bool Replace(const std::string& path, std::string_view bytes) {
  files::AtomicFile file(path);
  return file.Write(bytes) && file.Commit();
}

TEST_F(AtomicFile, OldModeIsKept) {
  for (const mode_t mode : {0644U, 0600U, 0640U, 0755U, 0666U, 0400U | 0200U, 01644U, 06755U}) {
    WriteWithMode("file", mode);
    ASSERT_TRUE(Replace(Path("file"), "new"));
    EXPECT_EQ(mode, Mode("file"));
    EXPECT_EQ("new", m_dir.Read("file"));
  }
}

TEST_F(AtomicFile, NewFilesFollowTheMask) {
  for (const auto& [mask, mode] : {std::pair(0022U, 0644U), {0027U, 0640U}, {0077U, 0600U}}) {
    const mode_t before = umask(mask);
    const std::string name = "file" + std::to_string(mask);
    EXPECT_TRUE(Replace(Path(name), "new"));
    umask(before);
    EXPECT_EQ(mode, Mode(name));
  }
}

TEST_F(AtomicFile, ContentOfAnOldFileIsNeverOpenToOthers) {
  WriteWithMode("file", 0640);
  const mode_t before = umask(0);
  const files::AtomicFile file(Path("file"));
  umask(before);
  struct stat found {};
  ASSERT_EQ(0, stat(file.TemporaryPath().c_str(), &found));
  EXPECT_EQ(0600U, found.st_mode & 0777U);
}

TEST_F(AtomicFile, OldOwnerIsKept) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may give files away";
  WriteWithMode("file", 0640);
  ASSERT_EQ(0, chown(Path("file").c_str(), 12345, 23456));
  ASSERT_TRUE(Replace(Path("file"), "new"));
  struct stat found {};
  ASSERT_EQ(0, stat(Path("file").c_str(), &found));
  EXPECT_EQ(12345U, found.st_uid);
  EXPECT_EQ(23456U, found.st_gid);
  EXPECT_EQ(0640U, Mode("file"));
}

TEST_F(AtomicFile, NobodyGainsRightsWhereTheOwnerCannotBeKept) {
  if (geteuid() != 0) GTEST_SKIP() << "needs a file of another user";
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0777));
  const auto replaceAsNobody = [&](gid_t group, mode_t mode) {
    fs::remove(Path("file"));
    WriteWithMode("file", 0600);
    EXPECT_EQ(0, chown(Path("file").c_str(), 0, group));
    EXPECT_EQ(0, chmod(Path("file").c_str(), mode));
    EXPECT_TRUE(AsNobody([&] { return Replace(Path("file"), "new"); }));
    EXPECT_EQ("new", m_dir.Read("file"));
    return Mode("file");
  };
  EXPECT_EQ(0666U, replaceAsNobody(0, 06666));
  EXPECT_EQ(0666U, replaceAsNobody(0, 0676));
  EXPECT_EQ(0622U, replaceAsNobody(0, 0662));
  EXPECT_EQ(0622U, replaceAsNobody(0, 0622));
  // The group of the process itself can be kept.
  EXPECT_EQ(0666U, replaceAsNobody(65534, 06666));
  EXPECT_EQ(0662U, replaceAsNobody(65534, 0662));
}

TEST_F(AtomicFile, WriteProtectedFileStays) {
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0777));
  WriteWithMode("file", 0444);
  EXPECT_TRUE(AsNobody([&] { return !files::AtomicFile(Path("file")).IsOpen(); }));
  EXPECT_EQ("old", m_dir.Read("file"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, WriteProtectedDirectoryStays) {
  WriteWithMode("file", 0666);
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0555));
  EXPECT_TRUE(AsNobody([&] { return !files::AtomicFile(Path("file")).IsOpen(); }));
  ASSERT_EQ(0, chmod(m_dir.Path().c_str(), 0700));
  EXPECT_EQ("old", m_dir.Read("file"));
}

TEST_F(AtomicFile, LinksAreFollowed) {
  fs::create_directory(Path("data"));
  m_dir.Write("data/file", "old");
  fs::create_symlink("data/file", Path("relative"));
  fs::create_symlink(Path("relative"), Path("absolute"));
  fs::create_directory_symlink("data", Path("directory"));
  for (const char* name : {"relative", "absolute", "directory/file"}) {
    ASSERT_TRUE(Replace(Path(name), name));
    EXPECT_EQ(name, m_dir.Read("data/file"));
  }
  EXPECT_TRUE(fs::is_symlink(Path("relative")));
  EXPECT_TRUE(fs::is_symlink(Path("absolute")));
  EXPECT_TRUE(fs::is_symlink(Path("directory")));
  EXPECT_FALSE(fs::is_symlink(Path("data/file")));
  EXPECT_EQ(4U, m_dir.Count());
}

TEST_F(AtomicFile, LinkUpwardsIsRelativeToItsOwnPlace) {
  fs::create_directories(Path("a/b"));
  fs::create_symlink("../file", Path("a/b/link"));
  ASSERT_TRUE(Replace(Path("a/b/link"), "new"));
  EXPECT_EQ("new", m_dir.Read("a/file"));
  EXPECT_TRUE(fs::is_symlink(Path("a/b/link")));
}

TEST_F(AtomicFile, LinkToNothingGetsItsFile) {
  fs::create_directory(Path("data"));
  fs::create_symlink("data/later", Path("link"));
  ASSERT_TRUE(Replace(Path("link"), "new"));
  EXPECT_EQ("new", m_dir.Read("data/later"));
  EXPECT_TRUE(fs::is_symlink(Path("link")));
}

TEST_F(AtomicFile, LongLinksAreFollowed) {
  const std::string name(250, 'x');
  fs::create_directories(Path(name + "/" + name));
  fs::create_symlink(Path(name + "/" + name + "/file"), Path("link"));
  ASSERT_TRUE(Replace(Path("link"), "new"));
  EXPECT_EQ("new", m_dir.Read(name + "/" + name + "/file"));
}

// What the system opens through links can be replaced through them.
TEST_F(AtomicFile, AsManyLinksAreFollowedAsTheSystemFollows) {
  m_dir.Write("0", "old");
  int longest = 0;
  for (int link = 1; link <= 50; ++link) {
    const std::string name = std::to_string(link);
    fs::create_symlink(std::to_string(link - 1), Path(name));
    const bool opens = access(Path(name).c_str(), W_OK) == 0;
    if (opens) longest = link;
    EXPECT_EQ(opens, Replace(Path(name), name)) << link;
  }
  EXPECT_GT(longest, 8);
  EXPECT_EQ(std::to_string(longest), m_dir.Read("0"));
}

TEST_F(AtomicFile, LinkInACircleIsRefused) {
  fs::create_symlink("second", Path("first"));
  fs::create_symlink("first", Path("second"));
  EXPECT_FALSE(files::AtomicFile(Path("first")).IsOpen());
  EXPECT_EQ(2U, m_dir.Count());
}

TEST_F(AtomicFile, LongestNamesHaveRoom) {
  const std::string name(255, 'n');
  EXPECT_TRUE(Replace(Path(name), "new"));
  EXPECT_EQ("new", m_dir.Read(name));
  EXPECT_FALSE(files::AtomicFile(Path(name + "n")).IsOpen());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, WhatIsNoFileIsNotReplaced) {
  ASSERT_EQ(0, mkfifo(Path("pipe").c_str(), 0600));
  EXPECT_FALSE(files::AtomicFile(Path("pipe")).IsOpen());
  EXPECT_FALSE(files::AtomicFile("/dev/full").IsOpen());
  EXPECT_FALSE(files::AtomicFile(Path("new") + "/").IsOpen());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, NamesWithoutADirectoryAreInTheCurrentOne) {
  EXPECT_TRUE(InChild([&] {
    return chdir(m_dir.Path().c_str()) == 0 && Replace("plain", "first") &&
           Replace("plain", "second");
  }));
  EXPECT_EQ("second", m_dir.Read("plain"));
  EXPECT_EQ(1U, m_dir.Count());
}

/// Runs `check` in a process whose files may not grow beyond `size` bytes.
bool WithFullDisk(rlim_t size, const std::function<bool()>& check) {
  return InChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {size, size};
    return setrlimit(RLIMIT_FSIZE, &limit) == 0 && check();
  });
}

TEST_F(AtomicFile, FullDiskLeavesTheOldFile) {
  m_dir.Write("file", "old");
  for (const rlim_t room : {0U, 1U, 4096U, 300000U, 999999U}) {
    EXPECT_TRUE(WithFullDisk(room, [&] {
      files::AtomicFile file(Path("file"));
      const std::string block(1000, 'x');
      bool isWritten = true;
      for (int count = 0; count < 1000; ++count) isWritten = file.Write(block) && isWritten;
      // What is gathered before it is written fails as late as in Commit.
      return !file.Commit() && !file.Write("x") && (room > 700000 || !isWritten);
    })) << room;
    EXPECT_EQ("old", m_dir.Read("file"));
    EXPECT_EQ(1U, m_dir.Count());
  }
  EXPECT_TRUE(
      WithFullDisk(1000000, [&] { return Replace(Path("file"), std::string(1000000, 'x')); }));
  EXPECT_EQ(1000000U, files::Size(Path("file")));
}

TEST_F(AtomicFile, LostTemporaryFileLeavesTheOldOne) {
  m_dir.Write("file", "old");
  {
    files::AtomicFile file(Path("file"));
    ASSERT_TRUE(file.Write("new"));
    ASSERT_EQ(0, unlink(file.TemporaryPath().c_str()));
    EXPECT_FALSE(file.Commit());
  }
  EXPECT_EQ("old", m_dir.Read("file"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, WhatAKilledProcessLeftIsRemoved) {
  m_dir.Write("file", "old");
  EXPECT_EQ(7, ExitStatusOf([&] {
              files::AtomicFile file(Path("file"));
              _exit(file.Write("new") ? 7 : 8);
              return 9;
            }));
  m_dir.Write(".tunedex-0123456789abcdef", "abandoned");
  ASSERT_TRUE(Replace(Path("file"), "newer"));
  EXPECT_EQ("newer", m_dir.Read("file"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, WhatIsBeingWrittenIsNotRemoved) {
  files::AtomicFile first(Path("file"));
  ASSERT_TRUE(first.Write("first"));
  EXPECT_TRUE(InChild([&] { return Replace(Path("file"), "child"); }));
  ASSERT_TRUE(Replace(Path("file"), "second"));
  EXPECT_TRUE(fs::exists(first.TemporaryPath()));
  ASSERT_TRUE(first.Commit());
  EXPECT_EQ("first", m_dir.Read("file"));
  EXPECT_EQ(1U, m_dir.Count());
}

// Each looks for abandoned files while the others make theirs.
TEST_F(AtomicFile, WritersDoNotRemoveEachOthersFiles) {
  InThreads([&](UINT thread) {
    for (int round = 0; round < 50; ++round) {
      EXPECT_TRUE(Replace(Path("file"), std::string(thread + 1, 'x')));
    }
  });
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, OtherNamesAreNotRemoved) {
  for (const char* name : {".tunedex-0123456789abcde", ".tunedex-0123456789abcdef0",
                           ".tunedex-0123456789ABCDEF", ".tunedex-0123456789abcdeg", ".tunedex-"}) {
    m_dir.Write(name, "mine");
  }
  fs::create_directory(Path(".tunedex-0000000000000001"));
  fs::create_symlink("nowhere", Path(".tunedex-0000000000000002"));
  ASSERT_EQ(0, mkfifo(Path(".tunedex-0000000000000003").c_str(), 0600));
  ASSERT_TRUE(Replace(Path("file"), "new"));
  EXPECT_EQ(9U, m_dir.Count());
}

TEST_F(AtomicFile, SpentFileDoesNothing) {
  files::AtomicFile file(Path("file"));
  ASSERT_TRUE(file.Write("new"));
  ASSERT_TRUE(file.Commit());
  EXPECT_FALSE(file.Write("more"));
  EXPECT_FALSE(file.Commit());
  EXPECT_EQ("new", m_dir.Read("file"));
}

TEST_F(AtomicFile, UnreadableCopyKeepsTheMode) {
  for (const mode_t mode : {0600U, 0644U, 0440U}) {
    WriteWithMode("file", mode);
    ASSERT_TRUE(files::KeepUnreadable(Path("file")));
    EXPECT_EQ(mode, Mode("file.unreadable"));
    fs::remove(Path("file.unreadable"));
    fs::remove(Path("file"));
  }
}

TEST_F(AtomicFile, UnreadableCopyStandsBesideTheName) {
  fs::create_directory(Path("data"));
  m_dir.Write("data/file", "bytes");
  fs::create_symlink("data/file", Path("link"));
  // A name that points nowhere is taken, too: the copy must not go where it points.
  fs::create_symlink("elsewhere", Path("link.unreadable"));
  ASSERT_TRUE(files::KeepUnreadable(Path("link")));
  EXPECT_EQ("bytes", m_dir.Read("link.unreadable.2"));
  EXPECT_FALSE(fs::is_symlink(Path("link.unreadable.2")));
  EXPECT_FALSE(m_dir.Has("elsewhere"));
  EXPECT_FALSE(m_dir.Has("data/file.unreadable"));
}

TEST_F(AtomicFile, UnreadableCopyOnAFullDiskLeavesNothing) {
  m_dir.Write("file", std::string(200000, 'x'));
  for (const rlim_t room : {0U, 65536U, 199999U}) {
    EXPECT_TRUE(WithFullDisk(room, [&] { return !files::KeepUnreadable(Path("file")); }));
    EXPECT_EQ(1U, m_dir.Count());
  }
  EXPECT_TRUE(WithFullDisk(200000, [&] { return files::KeepUnreadable(Path("file")); }));
}

/// Runs `work` with the memory ending one allocation later each time, until it suffices, and
/// expects the directory's only file to stay until then.
void FailEverywhere(const TempDir& dir, const std::function<bool()>& work) {
  for (std::size_t position = 0; position < 100; ++position) {
    bool isDone = false;
    try {
      const allocations::FailFrom failure(position);
      isDone = work();
    } catch (const std::bad_alloc&) {
      EXPECT_EQ("old", dir.Read("file")) << position;
      EXPECT_EQ(1U, dir.Count()) << position;
      continue;
    }
    EXPECT_TRUE(isDone);
    EXPECT_GT(position, 0U) << "nothing was allocated";
    return;
  }
  ADD_FAILURE() << "never had enough";
}

TEST_F(AtomicFile, LackOfMemoryLeavesTheOldFile) {
  m_dir.Write("file", "old");
  const std::string path = Path("file");
  const std::string bytes(100000, 'x');
  FailEverywhere(m_dir, [&] { return Replace(path, bytes); });
  EXPECT_EQ(bytes, m_dir.Read("file"));
}

TEST_F(AtomicFile, LackOfMemoryLeavesNoUnreadableCopy) {
  m_dir.Write("file", "old");
  const std::string path = Path("file");
  FailEverywhere(m_dir, [&] { return files::KeepUnreadable(path); });
  EXPECT_EQ("old", m_dir.Read("file.unreadable"));
}

TEST_F(AtomicFile, UnreadableCopyOfAPipeDoesNotWait) {
  ASSERT_EQ(0, mkfifo(Path("pipe").c_str(), 0600));
  EXPECT_FALSE(files::KeepUnreadable(Path("pipe")));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, UnreadableCopyNeedsAFreeName) {
  const std::string name(250, 'n');
  m_dir.Write(name, "x");
  EXPECT_FALSE(files::KeepUnreadable(Path(name)));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(AtomicFile, PathsAreUtf8InEveryCodePage) {
  ASSERT_EQ(S_OK, ZorTunedexSetCodePage(932));
  const std::string name = files::PathFromWide(u"\u3042.xml");
  ZorTunedexSetCodePage(65001);
  EXPECT_EQ("\xE3\x81\x82.xml", name);
}

}  // namespace
