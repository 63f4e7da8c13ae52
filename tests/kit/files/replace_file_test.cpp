#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/host.h"
#include "support/temp_dir.h"

namespace zortunedex::kit {

namespace {

TEST(ReplaceFile, MakesAFileAndReplacesIt) {
  const TempDir directory;
  const std::string path = directory.File("table.csv");
  EXPECT_TRUE(host::ReplaceFile(path, "first"));
  EXPECT_EQ("first", directory.Read("table.csv"));
  EXPECT_TRUE(host::ReplaceFile(path, std::string("a\0b\r\n", 5)));
  EXPECT_EQ(std::string("a\0b\r\n", 5), directory.Read("table.csv"));
  EXPECT_TRUE(host::ReplaceFile(path, ""));
  EXPECT_TRUE(directory.Has("table.csv"));
  EXPECT_EQ("", directory.Read("table.csv"));
  EXPECT_EQ(1U, directory.Count());
}

TEST(ReplaceFile, WritesMoreThanOneBlock) {
  const TempDir directory;
  const std::string bytes(3'000'001, 'x');
  EXPECT_TRUE(host::ReplaceFile(directory.File("large"), bytes));
  EXPECT_TRUE(bytes == directory.Read("large"));
}

TEST(ReplaceFile, TakesNamesInUtf8) {
  const TempDir directory;
  const std::u8string name = u8"Känäle 地上.json";
  const std::string path = directory.Path() + "/" + std::string(name.begin(), name.end());
  EXPECT_TRUE(host::ReplaceFile(path, "first"));
  EXPECT_TRUE(host::ReplaceFile(path, "second"));
  std::ifstream file(std::filesystem::path(directory.Path()) / name, std::ios::binary);
  EXPECT_EQ("second", std::string(std::istreambuf_iterator<char>(file), {}));
  EXPECT_EQ(1U, directory.Count());
}

TEST(ReplaceFile, LeavesADirectoryInItsPlace) {
  const TempDir directory;
  std::filesystem::create_directory(directory.File("taken"));
  EXPECT_FALSE(host::ReplaceFile(directory.File("taken"), "bytes"));
  EXPECT_TRUE(std::filesystem::is_directory(directory.File("taken")));
  EXPECT_EQ(1U, directory.Count());
}

TEST(ReplaceFile, FailsWithoutTheDirectory) {
  const TempDir directory;
  EXPECT_FALSE(host::ReplaceFile(directory.File("none") + "/table.csv", "bytes"));
  EXPECT_FALSE(host::ReplaceFile("", "bytes"));
  EXPECT_EQ(0U, directory.Count());
}

TEST(WriteNewFile, MakesAFile) {
  const TempDir directory;
  EXPECT_TRUE(host::WriteNewFile(directory.File("new"), "bytes"));
  EXPECT_EQ("bytes", directory.Read("new"));
  EXPECT_EQ(1U, directory.Count());
}

TEST(WriteNewFile, LeavesWhatStandsThere) {
  const TempDir directory;
  directory.Write("old", "old");
  std::filesystem::create_directory(directory.File("folder"));
  EXPECT_FALSE(host::WriteNewFile(directory.File("old"), "new"));
  EXPECT_EQ("old", directory.Read("old"));
  EXPECT_FALSE(host::WriteNewFile(directory.File("folder"), "new"));
  EXPECT_TRUE(std::filesystem::is_directory(directory.File("folder")));
  EXPECT_FALSE(host::WriteNewFile(directory.File("none") + "/new", "new"));
  EXPECT_FALSE(host::WriteNewFile("", "new"));
  EXPECT_EQ(2U, directory.Count());
}

}  // namespace

}  // namespace zortunedex::kit
