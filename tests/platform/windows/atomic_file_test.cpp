#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"
#include "support/temp_dir.h"

namespace {

TEST(AtomicFile, KeepsTheAttributesOfTheOldFile) {
  const TempDir dir;
  dir.Write("old.xml", "old");
  ASSERT_TRUE(SetFileAttributesA(dir.File("old.xml").c_str(), FILE_ATTRIBUTE_HIDDEN));
  files::AtomicFile file(dir.File("old.xml"));
  EXPECT_TRUE(file.Write("new"));
  EXPECT_TRUE(file.Commit());
  EXPECT_TRUE(GetFileAttributesA(dir.File("old.xml").c_str()) & FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ("new", dir.Read("old.xml"));
}

TEST(AtomicFile, ReadOnlyFileStays) {
  const TempDir dir;
  dir.Write("old.xml", "old");
  ASSERT_TRUE(SetFileAttributesA(dir.File("old.xml").c_str(), FILE_ATTRIBUTE_READONLY));
  files::AtomicFile file(dir.File("old.xml"));
  EXPECT_FALSE(file.IsOpen());
  EXPECT_FALSE(file.Write("new"));
  EXPECT_FALSE(file.Commit());
  EXPECT_EQ("old", dir.Read("old.xml"));
  EXPECT_EQ(1U, dir.Count());
  SetFileAttributesA(dir.File("old.xml").c_str(), FILE_ATTRIBUTE_NORMAL);
}

// Somebody who has the file open does not lose it, and the failure leaves nothing behind.
TEST(AtomicFile, FileInUseStays) {
  const TempDir dir;
  dir.Write("old.xml", "old");
  const HANDLE held = CreateFileA(dir.File("old.xml").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, held);
  {
    files::AtomicFile file(dir.File("old.xml"));
    EXPECT_TRUE(file.Write("new"));
    EXPECT_FALSE(file.Commit());
  }
  EXPECT_EQ("old", dir.Read("old.xml"));
  EXPECT_EQ(1U, dir.Count());
  CloseHandle(held);
}

TEST(AtomicFile, AnotherWriterMayTakeTheTemporaryPath) {
  const TempDir dir;
  files::AtomicFile file(dir.File("new.xml"));
  ASSERT_TRUE(file.IsOpen());
  const HANDLE writer = CreateFileA(file.TemporaryPath().c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, writer);
  DWORD written = 0;
  EXPECT_TRUE(WriteFile(writer, "theirs", 6, &written, nullptr));
  CloseHandle(writer);
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ("theirs", dir.Read("new.xml"));
  EXPECT_EQ(1U, dir.Count());
}

}  // namespace
