// Linux only: only there does a file stand for the registry
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/registry.h"
#include "support/expect.h"
#include "support/linux/code_page_scope.h"
#include "support/temp_dir.h"

namespace {

class RegistryFile : public testing::Test {
 protected:
  RegistryFile() { Use("machine.reg"); }
  ~RegistryFile() override { ZorTunedexSetRegistryFile(nullptr); }

  void Use(const std::string& name) {
    ExpectHr(S_OK, ZorTunedexSetRegistryFile(m_dir.File(name).c_str()));
  }
  /// Empty when there is no such text.
  static std::string Read(registry::Root root, std::string_view key, std::string_view name) {
    char buffer[256] = "";
    static_cast<void>(registry::ReadText(root, key, name, buffer, sizeof(buffer)));
    return buffer;
  }
  /// The file behind its mark, which holds nothing but ASCII.
  std::string Ascii() const {
    const std::string bytes = m_dir.Read("machine.reg");
    std::string ascii;
    for (std::size_t index = 2; index < bytes.size(); index += 2) ascii += bytes[index];
    return ascii;
  }
  static void ExpectEverythingFails() {
    char buffer[8] = "";
    ExpectHr(E_FAIL,
             registry::ReadText(registry::Root::LocalMachine, "A", "", buffer, sizeof(buffer)));
    EXPECT_FALSE(registry::KeyExists(registry::Root::LocalMachine, ""));
    EXPECT_FALSE(registry::KeyExists(registry::Root::LocalMachine, "A"));
    EXPECT_FALSE(registry::HasSubKeys(registry::Root::LocalMachine, "A"));
    ExpectHr(E_FAIL, registry::CreateKey(registry::Root::LocalMachine, "A"));
    ExpectHr(E_FAIL, registry::SetText(registry::Root::LocalMachine, "A", "", "x"));
    ExpectHr(E_FAIL, registry::SetNumber(registry::Root::LocalMachine, "A", "", 1));
    ExpectHr(E_FAIL, registry::DeleteTree(registry::Root::LocalMachine, "A"));
  }

  TempDir m_dir;
};

TEST_F(RegistryFile, WithoutANameEverythingFails) {
  ExpectHr(S_OK, ZorTunedexSetRegistryFile(nullptr));
  ExpectEverythingFails();
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(RegistryFile, EmptyNameIsRefusedAndTheOldOneStays) {
  ExpectHr(E_INVALIDARG, ZorTunedexSetRegistryFile(""));
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A"));
  EXPECT_TRUE(m_dir.Has("machine.reg"));
}

TEST_F(RegistryFile, FirstWriteCreatesTheFile) {
  EXPECT_FALSE(registry::KeyExists(registry::Root::LocalMachine, ""));
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "A"));
  EXPECT_EQ(0U, m_dir.Count());
  ExpectHr(S_OK, registry::SetText(registry::Root::ClassesRoot, "A", "", "x"));
  ExpectHr(S_OK, registry::SetText(registry::Root::CurrentUser, "A", "", "y"));
  ExpectHr(S_OK, registry::SetNumber(registry::Root::LocalMachine, "A\\B", "n", 258));
  EXPECT_EQ(1U, m_dir.Count());
  EXPECT_EQ("\xFF\xFE", m_dir.Read("machine.reg").substr(0, 2));
  EXPECT_EQ(
      "Windows Registry Editor Version 5.00\r\n\r\n"
      "[HKEY_CLASSES_ROOT\\A]\r\n@=\"x\"\r\n\r\n"
      "[HKEY_CURRENT_USER\\A]\r\n@=\"y\"\r\n\r\n"
      "[HKEY_LOCAL_MACHINE\\A\\B]\r\n\"n\"=dword:00000102\r\n\r\n",
      Ascii());
}

TEST_F(RegistryFile, RootsAreApart) {
  ExpectHr(S_OK, registry::SetText(registry::Root::ClassesRoot, "A", "", "x"));
  EXPECT_EQ("x", Read(registry::Root::ClassesRoot, "A", ""));
  EXPECT_FALSE(registry::KeyExists(registry::Root::CurrentUser, "A"));
  EXPECT_FALSE(registry::KeyExists(registry::Root::LocalMachine, "A"));
}

TEST_F(RegistryFile, ChangesOfOthersAreSeenAtOnce) {
  m_dir.Write("machine.reg", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n@=\"1\"\n");
  EXPECT_EQ("1", Read(registry::Root::LocalMachine, "A", ""));
  m_dir.Write("machine.reg", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n@=\"2\"\n");
  EXPECT_EQ("2", Read(registry::Root::LocalMachine, "A", ""));
}

TEST_F(RegistryFile, WritingKeepsWhatElseIsThere) {
  m_dir.Write("machine.reg",
              "Windows Registry Editor Version 5.00\n[HKEY_USERS\\S-1-5]\n\"b\"=hex:01,\\\n  02\n");
  ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, "A", "", "x"));
  const std::string ascii = Ascii();
  EXPECT_NE(std::string::npos, ascii.find("[HKEY_USERS\\S-1-5]\r\n\"b\"=hex:01,\\\r\n  02\r\n"))
      << ascii;
}

TEST_F(RegistryFile, WhatIsNoRegistryFileIsNeverTouched) {
  for (const std::string& bytes : {std::string("<CHANNELTABLE/>"), std::string("\0", 1)}) {
    m_dir.Write("machine.reg", bytes);
    ExpectEverythingFails();
    EXPECT_EQ(bytes, m_dir.Read("machine.reg"));
  }
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(RegistryFile, FileWithBytesThatAreNoTextIsReadAndNotWritten) {
  const std::string bytes =
      "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\A]\r\n@=\"x\"\r\n\"n\"=\"caf\xE9\"\r\n";
  m_dir.Write("machine.reg", bytes);
  EXPECT_EQ("x", Read(registry::Root::LocalMachine, "A", ""));
  ExpectHr(E_FAIL, registry::SetText(registry::Root::LocalMachine, "A", "", "y"));
  EXPECT_EQ(bytes, m_dir.Read("machine.reg"));
  const CodePageScope scope(1252);
  ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, "A", "", "y"));
  EXPECT_EQ("caf\xE9", Read(registry::Root::LocalMachine, "A", "n"));
}

TEST_F(RegistryFile, EmptyFileIsAnEmptyRegistry) {
  m_dir.Write("machine.reg", "");
  EXPECT_FALSE(registry::KeyExists(registry::Root::LocalMachine, "A"));
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A"));
  EXPECT_TRUE(registry::KeyExists(registry::Root::LocalMachine, "A"));
}

TEST_F(RegistryFile, DirectoriesPipesAndHugeFilesFail) {
  std::filesystem::create_directory(m_dir.File("directory"));
  Use("directory");
  ExpectEverythingFails();
  ASSERT_EQ(0, mkfifo(m_dir.File("pipe").c_str(), 0600));
  Use("pipe");
  ExpectEverythingFails();
  m_dir.Write("huge", "REGEDIT4\r\n");
  ASSERT_EQ(0, truncate(m_dir.File("huge").c_str(), off_t{257} * 1024 * 1024));
  Use("huge");
  ExpectEverythingFails();
  Use("missing/machine.reg");
  char buffer[8];
  ExpectHr(E_FAIL,
           registry::ReadText(registry::Root::LocalMachine, "A", "", buffer, sizeof(buffer)));
  ExpectHr(E_FAIL, registry::CreateKey(registry::Root::LocalMachine, "A"));
}

TEST_F(RegistryFile, LinkToTheFileStaysALink) {
  m_dir.Write("real.reg", "REGEDIT4\r\n");
  std::filesystem::create_symlink("real.reg", m_dir.File("machine.reg"));
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A"));
  EXPECT_TRUE(std::filesystem::is_symlink(m_dir.File("machine.reg")));
  Use("real.reg");
  EXPECT_TRUE(registry::KeyExists(registry::Root::LocalMachine, "A"));
}

TEST_F(RegistryFile, TextsAreReadInTheCodePage) {
  const CodePageScope scope(932);
  ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, "A\\\xE6\x97\xA5", "\xE6\x9C\xAC",
                                   "\xE6\x97\xA5\xE6\x9C\xAC\xC3\xA9"));
  EXPECT_EQ("\x93\xFA\x96\x7B?",
            Read(registry::Root::LocalMachine, "A\\\xE6\x97\xA5", "\xE6\x9C\xAC"));
  char buffer[5];
  ExpectHr(E_FAIL, registry::ReadText(registry::Root::LocalMachine, "A\\\xE6\x97\xA5",
                                      "\xE6\x9C\xAC", buffer, sizeof(buffer)));
}

TEST_F(RegistryFile, TextEndsAtItsFirstZero) {
  ExpectHr(S_OK,
           registry::SetText(registry::Root::LocalMachine, "A", "", std::string_view("ab\0cd", 5)));
  char buffer[3];
  ExpectHr(S_OK, registry::ReadText(registry::Root::LocalMachine, "A", "", buffer, sizeof(buffer)));
  EXPECT_STREQ("ab", buffer);
}

TEST_F(RegistryFile, NamesThatNoLineHoldsAreRefused) {
  for (const std::string_view bad :
       {std::string_view("a\nb"), std::string_view("a\r"), std::string_view("a\0b", 3)}) {
    ExpectHr(E_INVALIDARG, registry::CreateKey(registry::Root::LocalMachine, bad));
    ExpectHr(E_INVALIDARG, registry::SetText(registry::Root::LocalMachine, bad, "n", "x"));
    ExpectHr(E_INVALIDARG, registry::SetText(registry::Root::LocalMachine, "A", bad, "x"));
    ExpectHr(E_INVALIDARG, registry::SetNumber(registry::Root::LocalMachine, "A", bad, 1));
  }
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(RegistryFile, SeparatorsAroundAKeyMeanNothing) {
  ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, "A\\B\\", "", "x"));
  EXPECT_EQ("x", Read(registry::Root::LocalMachine, "A\\B", ""));
  ExpectHr(E_INVALIDARG, registry::DeleteTree(registry::Root::LocalMachine, "\\"));
  EXPECT_EQ("x", Read(registry::Root::LocalMachine, "A\\B\\", ""));
}

TEST_F(RegistryFile, ThreadsLoseNothing) {
  constexpr int kThreads = 4;
  constexpr int kCalls = 15;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([thread] {
      for (int call = 0; call < kCalls; ++call) {
        const std::string name = std::to_string(thread) + "-" + std::to_string(call);
        ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, "A", name, name));
        EXPECT_EQ(name, Read(registry::Root::LocalMachine, "A", name));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int thread = 0; thread < kThreads; ++thread) {
    for (int call = 0; call < kCalls; ++call) {
      const std::string name = std::to_string(thread) + "-" + std::to_string(call);
      EXPECT_EQ(name, Read(registry::Root::LocalMachine, "A", name));
    }
  }
}

}  // namespace
