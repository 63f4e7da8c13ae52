// What holds on both targets.
#include "platform/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "platform/text.h"
#include "support/temp_dir.h"

namespace {

/// A directory whose names stay put while one is in the way.
class Files : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return m_dir.File(name); }

  TempDir m_dir;
};

/// Bytes in which every block differs.
std::string Content(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

TEST_F(Files, SeparatorIsTheOneOfThePlatformsPaths) {
  const auto preferred = std::filesystem::path::preferred_separator;
  EXPECT_EQ(static_cast<std::uint32_t>(preferred), static_cast<std::uint32_t>(files::kSeparator));
}

TEST_F(Files, PathsOfTextsNameTheSameFiles) {
  m_dir.Write("plain.xml", "12345");
  const Bstr wide = text::FromUtf8(Path("plain.xml"));
  EXPECT_EQ(Path("plain.xml"), files::PathFromWide(wide.View()));
  EXPECT_EQ(5U, files::Size(files::PathFromWide(wide.View())));
}

TEST_F(Files, ExistsCountsDirectoriesToo) {
  m_dir.Write("file", "x");
  EXPECT_TRUE(files::Exists(Path("file")));
  EXPECT_TRUE(files::Exists(m_dir.Path()));
  EXPECT_FALSE(files::Exists(Path("none")));
  EXPECT_FALSE(files::Exists(Path("none/file")));
  EXPECT_FALSE(files::Exists(""));
}

TEST_F(Files, SizeIsThatOfAFile) {
  m_dir.Write("empty", "");
  m_dir.Write("some", std::string(70000, 'x'));
  EXPECT_EQ(0U, files::Size(Path("empty")));
  EXPECT_EQ(70000U, files::Size(Path("some")));
  EXPECT_EQ(0U, files::Size(Path("none")));
  EXPECT_EQ(0U, files::Size(m_dir.Path()));
}

TEST_F(Files, UnreadableCopiesAreNumbered) {
  for (const char* name : {"a.xml.unreadable", "a.xml.unreadable.2", "a.xml.unreadable.3"}) {
    m_dir.Write("a.xml", name);
    ASSERT_TRUE(files::KeepUnreadable(Path("a.xml")));
    EXPECT_EQ(name, m_dir.Read(name));
    EXPECT_EQ(name, m_dir.Read("a.xml"));
  }
  EXPECT_EQ(4U, m_dir.Count());
}

TEST_F(Files, UnreadableCopiesFillTheFirstFreeName) {
  m_dir.Write("a.xml", "new");
  m_dir.Write("a.xml.unreadable", "old");
  std::filesystem::create_directory(Path("a.xml.unreadable.2"));
  m_dir.Write("a.xml.unreadable.4", "later");
  ASSERT_TRUE(files::KeepUnreadable(Path("a.xml")));
  EXPECT_EQ("new", m_dir.Read("a.xml.unreadable.3"));
  EXPECT_EQ("old", m_dir.Read("a.xml.unreadable"));
  EXPECT_EQ("later", m_dir.Read("a.xml.unreadable.4"));
}

TEST_F(Files, UnreadableCopyHoldsEveryByte) {
  const std::string bytes = Content(300001);
  m_dir.Write("a.xml", bytes);
  ASSERT_TRUE(files::KeepUnreadable(Path("a.xml")));
  EXPECT_EQ(bytes, m_dir.Read("a.xml.unreadable"));
}

TEST_F(Files, WhatIsNoFileIsNotKept) {
  EXPECT_FALSE(files::KeepUnreadable(Path("none")));
  std::filesystem::create_directory(Path("directory"));
  EXPECT_FALSE(files::KeepUnreadable(Path("directory")));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, CommitCreatesTheFile) {
  files::AtomicFile file(Path("new.xml"));
  ASSERT_TRUE(file.IsOpen());
  EXPECT_TRUE(file.Write("one "));
  EXPECT_TRUE(file.Write("two"));
  EXPECT_FALSE(m_dir.Has("new.xml"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ("one two", m_dir.Read("new.xml"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, CommitReplacesTheFile) {
  m_dir.Write("old.xml", "a longer old content");
  files::AtomicFile file(Path("old.xml"));
  EXPECT_TRUE(file.Write("new"));
  EXPECT_EQ("a longer old content", m_dir.Read("old.xml"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ("new", m_dir.Read("old.xml"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, NothingWrittenIsAnEmptyFile) {
  m_dir.Write("old.xml", "old");
  files::AtomicFile file(Path("old.xml"));
  EXPECT_TRUE(file.Write(""));
  EXPECT_TRUE(file.Commit());
  EXPECT_TRUE(m_dir.Has("old.xml"));
  EXPECT_EQ("", m_dir.Read("old.xml"));
}

TEST_F(Files, WithoutCommitNothingChanges) {
  m_dir.Write("old.xml", "old");
  {
    files::AtomicFile file(Path("old.xml"));
    EXPECT_TRUE(file.Write(Content(1000000)));
  }
  { const files::AtomicFile file(Path("new.xml")); }
  EXPECT_EQ("old", m_dir.Read("old.xml"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, WritesOfAnySizeKeepTheirOrder) {
  const std::string bytes = Content(3000000);
  files::AtomicFile file(Path("big.xml"));
  std::size_t next = 0;
  for (std::size_t size = 1; next < bytes.size(); size = size * 3 % 700001) {
    const std::string_view some = std::string_view(bytes).substr(next, size);
    ASSERT_TRUE(file.Write(some));
    next += some.size();
  }
  ASSERT_TRUE(file.Commit());
  EXPECT_EQ(bytes, m_dir.Read("big.xml"));
}

void ExpectClosed(const std::string& path) {
  files::AtomicFile file(path);
  EXPECT_FALSE(file.IsOpen()) << path;
  EXPECT_FALSE(file.Write("x")) << path;
  EXPECT_FALSE(file.Commit()) << path;
}

TEST_F(Files, WhereNoFileCanStandNoneIsOpened) {
  std::filesystem::create_directory(Path("directory"));
  ExpectClosed(Path("none/file.xml"));
  ExpectClosed(Path("directory"));
  ExpectClosed("");
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, DirectoryThatAppearsInTheWayStays) {
  {
    files::AtomicFile file(Path("target"));
    ASSERT_TRUE(file.Write("x"));
    std::filesystem::create_directory(Path("target"));
    EXPECT_FALSE(file.Commit());
    EXPECT_FALSE(file.Write("y"));
    EXPECT_FALSE(file.Commit());
  }
  EXPECT_TRUE(std::filesystem::is_directory(Path("target")));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, AnotherWriterMayFillTheTemporaryFile) {
  m_dir.Write("old.xml", "old");
  files::AtomicFile file(Path("old.xml"));
  ASSERT_TRUE(file.IsOpen());
  EXPECT_EQ(std::filesystem::path(m_dir.Path()),
            std::filesystem::path(file.TemporaryPath()).parent_path());
  {
    std::ofstream other(file.TemporaryPath(), std::ios::binary | std::ios::trunc);
    other << "by another";
    ASSERT_TRUE(other.flush());
  }
  EXPECT_EQ("old", m_dir.Read("old.xml"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ("by another", m_dir.Read("old.xml"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(Files, TwoWritersOfOneFileDoNotMix) {
  files::AtomicFile first(Path("file.xml"));
  files::AtomicFile second(Path("file.xml"));
  EXPECT_NE(first.TemporaryPath(), second.TemporaryPath());
  EXPECT_TRUE(first.Write("first"));
  EXPECT_TRUE(second.Write("second"));
  EXPECT_TRUE(first.Commit());
  EXPECT_EQ("first", m_dir.Read("file.xml"));
  EXPECT_TRUE(second.Commit());
  EXPECT_EQ("second", m_dir.Read("file.xml"));
  EXPECT_EQ(1U, m_dir.Count());
}

}  // namespace
