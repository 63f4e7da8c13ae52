// What a directory may be, and what happens to its file, on Linux.
//
// Linux only: file names, modes and links that Windows does not have
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <string>

#include "contract/database.h"
#include "contract/stations.h"
#include "contract/threads.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

void SaveMade(const std::filesystem::path& directory, UINT count) {
  const ComPtr<IZorTunedex> database = OpenDatabase(directory, kSatellite);
  AddMade(ListOf(database, kSatellite), kSatellite, count);
  ExpectHr(S_OK, database->SaveChannelToFile());
}

void ExpectSaved(const std::filesystem::path& directory, UINT count) {
  ExpectMade(ListOf(OpenDatabase(directory, kSatellite), kSatellite), kSatellite, count);
}

}  // namespace

TEST(Files, DirectoriesOfAnyScript) {
  const TempDir directory;
  for (const char16_t* name : {u"\u30C6\u30EC\u30D3", u"\U0001F4FA", u"a\\b", u" "}) {
    const std::filesystem::path path = std::filesystem::path(directory.Path()) / name;
    ASSERT_TRUE(std::filesystem::create_directory(path));
    SaveMade(path, 2);
    EXPECT_TRUE(std::filesystem::exists(path / "ChanInfo.xml"));
    ExpectSaved(path, 2);
  }
}

TEST(Files, PathsHaveNoLimitOfTheLibrary) {
  const TempDir directory;
  std::filesystem::path path(directory.Path());
  for (int level = 0; level < 10; ++level) path /= std::string(100, 'd');
  ASSERT_TRUE(std::filesystem::create_directories(path));
  SaveMade(path, 2);
  ExpectSaved(path, 2);
}

// The system's own limit: there is no room for a separator that is not needed.
TEST(Files, DirectoryThatEndsInASeparatorGetsNoOther) {
  const TempDir directory;
  SaveMade(directory.Path(), 2);
  const std::string name = kChannelFile;
  std::string path = directory.Path();
  path.append(PATH_MAX - 1 - path.size() - name.size(), '/');
  ASSERT_EQ(0, access((path + name).c_str(), R_OK));
  ASSERT_NE(0, access((path + '/' + name).c_str(), R_OK));
  ExpectSaved(path, 2);
}

TEST(Files, RelativeDirectories) {
  const TempDir directory;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(directory.Path());
  SaveMade(".", 1);
  ExpectSaved("./.", 1);
  std::filesystem::current_path(before);
  ExpectSaved(directory.Path(), 1);
}

TEST(Files, ModeAndLinkAreKept) {
  const TempDir directory;
  const TempDir elsewhere;
  SaveMade(elsewhere.Path(), 1);
  ASSERT_EQ(0, chmod(elsewhere.File("ChanInfo.xml").c_str(), 0640));
  std::filesystem::create_symlink(elsewhere.File("ChanInfo.xml"), directory.File("ChanInfo.xml"));
  {
    const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
    Add(ListOf(database, kSatellite), MakeChannel(kSatellite, 2));
    ExpectHr(S_OK, database->SaveChannelToFile());
  }
  EXPECT_TRUE(std::filesystem::is_symlink(directory.File("ChanInfo.xml")));
  ExpectSaved(elsewhere.Path(), 2);
  struct stat status = {};
  ASSERT_EQ(0, stat(elsewhere.File("ChanInfo.xml").c_str(), &status));
  EXPECT_EQ(0640U, status.st_mode & 07777U);
}

// Several databases on one directory: readers see the old file or the new one, never half of it.
// Several databases on one directory: readers see the old file or the new one, never half of it.
TEST(Files, ReadersBesideAWriter) {
  const TempDir directory;
  SaveMade(directory.Path(), 30);
  InThreads([&directory](unsigned number) {
    for (int round = 0; round < 10; ++round) {
      const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), kSatellite);
      ExpectMade(ListOf(database, kSatellite), kSatellite, 30);
      if (number != 0) continue;
      ExpectHr(S_OK, database->SetStorageType(round % 2 == 0 ? StoragePreFmtXML : StorageXML));
      ExpectHr(S_OK, database->SaveChannelToFile());
    }
  });
  EXPECT_EQ(1U, directory.Count());
}
