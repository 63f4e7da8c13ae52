// Every call of every save fails, stops half-way or is the last one of its process: the directory
// then holds the old or the new records, whole, and the next save leaves nothing else behind.
#include "reliability/disk_faults.h"

#include <filesystem>
#include <functional>

#include "reliability/killed_save.h"
#include "support/expect.h"

namespace {

using disk_faults::Fault;

constexpr UINT kOld = 3;
constexpr UINT kNew = 30;
constexpr char kMalformed[] = "<not xml";

struct Case {
  const SavedFile& file;
  bool isUnreadable;  ///< what stands there before is no XML
};

std::size_t FileCount(const Case& now) { return now.file.FileCount() + (now.isUnreadable ? 1 : 0); }

std::string Prepare(const Case& now, const TempDir& directory) {
  if (now.isUnreadable) {
    directory.Write(now.file.name, kMalformed);
  } else {
    SaveRecords(now.file, directory, kOld);
  }
  return directory.Read(now.file.name);
}

/// The directory holds what was there or the new records, and an unreadable file is still there
/// under one of its names.
void ExpectOldOrNew(const Case& now, const TempDir& directory, const std::string& old) {
  if (directory.Read(now.file.name) == old) return;
  EXPECT_EQ(kNew, LoadedRecords(now.file, directory));
  if (now.isUnreadable) {
    EXPECT_EQ(old, directory.Read(std::string(now.file.name) + ".unreadable"));
  }
}

/// Nothing but the file and whole copies of an unreadable one.
void ExpectNothingElse(const Case& now, const TempDir& directory, const std::string& old) {
  const std::string copy = std::string(now.file.name) + ".unreadable";
  for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
    const std::string name = entry.path().filename().string();
    if (name == now.file.name || (now.file.other != nullptr && name == now.file.other)) continue;
    EXPECT_TRUE(now.isUnreadable && name.starts_with(copy)) << name;
    EXPECT_EQ(old, directory.Read(name)) << name;
  }
}

// Killed between the copy and the file itself, an unreadable file is copied once more: whole, and
// under the next name.
void ExpectNextSaveIsClean(const Case& now, const TempDir& directory, const std::string& old) {
  ExpectHr(S_OK, SaveRecords(now.file, directory, kNew + 1));
  EXPECT_EQ(kNew + 1, LoadedRecords(now.file, directory));
  ExpectNothingElse(now, directory, old);
  if (now.isUnreadable) {
    EXPECT_TRUE(directory.Has(std::string(now.file.name) + ".unreadable"));
  }
}

/// The calls of an undisturbed save.
int CallsOf(const Case& now) {
  const TempDir directory;
  Prepare(now, directory);
  const ComPtr<IZorTunedex> database = OpenFor(now.file, directory);
  now.file.fill(database.Get(), kNew);
  const disk_faults::Scope scope(Fault::Short, 1000000);
  ExpectHr(S_OK, now.file.save(database.Get()));
  return disk_faults::Calls();
}

void ForEveryCall(const std::function<void(const Case& now, int position)>& check) {
  for (const SavedFile& file : kSavedFiles) {
    for (const bool isUnreadable : {false, true}) {
      if (isUnreadable && file.start != nullptr) continue;  // nothing is written
      const Case now = {file, isUnreadable};
      const int calls = CallsOf(now);
      // Create, write, flush, rename, close, and the directory's own three at least.
      EXPECT_GE(calls, 8);
      for (int position = 0; position < calls; ++position) {
        SCOPED_TRACE(std::string(file.label) + (isUnreadable ? ", unreadable" : "") + ", call " +
                     std::to_string(position));
        check(now, position);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

void FailAt(const Case& now, int position, Fault fault) {
  const TempDir directory;
  const std::string old = Prepare(now, directory);
  const ComPtr<IZorTunedex> database = OpenFor(now.file, directory);
  now.file.fill(database.Get(), kNew);
  {
    const disk_faults::Scope scope(fault, position);
    now.file.save(database.Get());
  }
  ExpectOldOrNew(now, directory, old);
  // Nothing is left to clean up where the process lives on.
  ExpectNothingElse(now, directory, old);
  // The records are still in memory: the same database saves them once the disk works again.
  ExpectHr(S_OK, database->SetStorageType(now.file.storage));
  ExpectHr(S_OK, now.file.save(database.Get()));
  EXPECT_EQ(kNew, LoadedRecords(now.file, directory));
  EXPECT_EQ(FileCount(now), directory.Count());
}

TEST(DiskFaults, FullDiskAtEveryCall) {
  ForEveryCall([](const Case& now, int position) { FailAt(now, position, Fault::NoSpace); });
}

TEST(DiskFaults, NoRightsAtEveryCall) {
  ForEveryCall([](const Case& now, int position) { FailAt(now, position, Fault::NoRights); });
}

TEST(DiskFaults, BrokenDeviceAtEveryCall) {
  ForEveryCall([](const Case& now, int position) { FailAt(now, position, Fault::Device); });
}

TEST(DiskFaults, InterruptionAtEveryCall) {
  if (!disk_faults::kIsInterruptible) GTEST_SKIP() << "no call of this system is interrupted";
  ForEveryCall([](const Case& now, int position) { FailAt(now, position, Fault::Interrupted); });
}

// Taking half of what is to be written is no failure.
TEST(DiskFaults, ShortWriteAtEveryCall) {
  ForEveryCall([](const Case& now, int position) {
    const TempDir directory;
    Prepare(now, directory);
    const ComPtr<IZorTunedex> database = OpenFor(now.file, directory);
    now.file.fill(database.Get(), kNew);
    {
      const disk_faults::Scope scope(Fault::Short, position);
      ExpectHr(S_OK, now.file.save(database.Get()));
    }
    EXPECT_EQ(kNew, LoadedRecords(now.file, directory));
    EXPECT_EQ(FileCount(now), directory.Count());
  });
}

void KillAt(const Case& now, int position, Fault fault) {
  const TempDir directory;
  const std::string old = Prepare(now, directory);
  EXPECT_EQ(disk_faults::kKilled, StatusOfKilledSave(now.file, directory, kNew, fault, position));
  ExpectOldOrNew(now, directory, old);
  ExpectNextSaveIsClean(now, directory, old);
}

TEST(DiskFaults, ProcessKilledBeforeEveryCall) {
  ForEveryCall([](const Case& now, int position) { KillAt(now, position, Fault::KillBefore); });
}

TEST(DiskFaults, ProcessKilledInEveryCall) {
  ForEveryCall([](const Case& now, int position) { KillAt(now, position, Fault::KillHalf); });
}

}  // namespace
