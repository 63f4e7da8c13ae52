#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

#include "platform/dom.h"
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

/// Has a file open, alone, and lets go of it a moment later.
class HeldForAMoment {
 public:
  explicit HeldForAMoment(const std::string& path)
      : m_file(CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)),
        m_thread([this] {
          Sleep(60);
          CloseHandle(m_file);
        }) {
    EXPECT_NE(INVALID_HANDLE_VALUE, m_file);
  }

 private:
  HANDLE m_file;
  std::jthread m_thread;
};

TEST(AtomicFile, FileInUseForAMomentIsReplaced) {
  const TempDir dir;
  dir.Write("old.xml", "old");
  {
    files::AtomicFile file(dir.File("old.xml"));
    EXPECT_TRUE(file.Write("new"));
    const HeldForAMoment held(dir.File("old.xml"));
    EXPECT_TRUE(file.Commit());
  }
  EXPECT_EQ("new", dir.Read("old.xml"));
  EXPECT_EQ(1U, dir.Count());
}

TEST(AtomicFile, FileInUseForAMomentIsRead) {
  const TempDir dir;
  dir.Write("a.xml", "<a b='1'/>");
  const HeldForAMoment held(dir.File("a.xml"));
  dom::Document document;
  ASSERT_HRESULT_SUCCEEDED(document.Create());
  bool success = false;
  EXPECT_EQ(S_OK, document.Load(dir.File("a.xml"), success));
  EXPECT_TRUE(success);
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

bool Replace(const std::string& path, std::string_view bytes) {
  files::AtomicFile file(path);
  return file.Write(bytes) && file.Commit();
}

/// The name that a process gives its temporary files.
std::string NameOf(DWORD process) {
  char name[32];
  std::snprintf(name, sizeof(name), "zt%08lx0123abcd.tmp", process);
  return name;
}

/// A number that no process has now.
DWORD NoProcess() {
  for (DWORD process = 0x7FFFFFF0;; process -= 4) {
    const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
    if (handle == nullptr && GetLastError() == ERROR_INVALID_PARAMETER) return process;
    CloseHandle(handle);
  }
}

void MakeOld(const std::string& path) {
  const HANDLE file = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, file);
  const SYSTEMTIME then = {2001, 2, 0, 3, 4, 5, 6, 7};
  FILETIME time{};
  EXPECT_TRUE(SystemTimeToFileTime(&then, &time));
  EXPECT_TRUE(SetFileTime(file, &time, &time, &time));
  CloseHandle(file);
}

TEST(AtomicFile, FilesOfProcessesThatAreGoneAreRemoved) {
  const TempDir dir;
  dir.Write(NameOf(NoProcess()), "abandoned");
  dir.Write("file", "old");
  EXPECT_TRUE(Replace(dir.File("file"), "new"));
  EXPECT_EQ("new", dir.Read("file"));
  EXPECT_EQ(1U, dir.Count());
}

// The process of that number is another one than the one that made the file.
TEST(AtomicFile, FilesThatAreOlderThanTheirProcessAreRemoved) {
  const TempDir dir;
  const std::string name = NameOf(GetCurrentProcessId());
  dir.Write(name, "abandoned");
  MakeOld(dir.File(name));
  FILETIME made{};
  const HANDLE file = CreateFileA(dir.File(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  EXPECT_TRUE(GetFileTime(file, &made, nullptr, nullptr));
  CloseHandle(file);
  if (made.dwHighDateTime > 0x01C20000) GTEST_SKIP() << "no time of creation can be set here";
  EXPECT_TRUE(Replace(dir.File("file"), "new"));
  EXPECT_FALSE(dir.Has(name));
}

TEST(AtomicFile, WhatIsBeingWrittenIsNotRemoved) {
  const TempDir dir;
  files::AtomicFile first(dir.File("file"));
  ASSERT_TRUE(first.IsOpen());
  dir.Write(NameOf(GetCurrentProcessId()), "of this process");
  EXPECT_TRUE(Replace(dir.File("file"), "second"));
  EXPECT_TRUE(dir.Has(NameOf(GetCurrentProcessId())));
  EXPECT_TRUE(first.Write("first"));
  EXPECT_TRUE(first.Commit());
  EXPECT_EQ("first", dir.Read("file"));
}

TEST(AtomicFile, OtherNamesAreNotRemoved) {
  const TempDir dir;
  const std::string name = NameOf(NoProcess());
  const std::string others[] = {
      name + "x",       "x" + name, name.substr(0, 17) + ".tmp", "zt00000000.tmp",
      "ztxxxxxxxx.tmp", "zt.tmp",   "zt 7fffff01234567.tmp"};
  for (const std::string& other : others) dir.Write(other, "somebody's");
  std::filesystem::create_directory(dir.File(name));
  EXPECT_TRUE(Replace(dir.File("file"), "new"));
  for (const std::string& other : others) EXPECT_EQ("somebody's", dir.Read(other)) << other;
  EXPECT_TRUE(dir.Has(name)) << "a directory";
}

}  // namespace
