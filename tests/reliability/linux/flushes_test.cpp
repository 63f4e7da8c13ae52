// What is written is on the disk before its name says that it is there, and so is the name.
//
// Linux only: the flush of the directory is
#include <gtest/gtest.h>

#include "reliability/disk_faults.h"
#include "reliability/saved_files.h"
#include "support/expect.h"

namespace {

std::string OrderOfSaving(const SavedFile& file, const TempDir& directory) {
  const ComPtr<IZorTunedex> database = OpenFor(file, directory);
  file.fill(database.Get(), 3);
  const disk_faults::Scope scope(disk_faults::Fault::Short, 1000000);
  ExpectHr(S_OK, file.save(database.Get()));
  return disk_faults::Order();
}

}  // namespace

TEST(Flushes, StandBeforeAndBehindTheRename) {
  for (const SavedFile& file : kSavedFiles) {
    const TempDir directory;
    EXPECT_EQ("frf", OrderOfSaving(file, directory)) << file.label;
  }
}

TEST(Flushes, StandAroundTheCopyOfAnUnreadableFile) {
  for (const SavedFile& file : kSavedFiles) {
    if (file.start != nullptr) continue;  // never written over one that cannot be read
    const TempDir directory;
    directory.Write(file.name, "<broken");
    EXPECT_EQ("frffrf", OrderOfSaving(file, directory)) << file.label;
  }
}
