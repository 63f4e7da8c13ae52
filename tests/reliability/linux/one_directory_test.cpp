// Many threads, each with databases of its own on the same files.
//
// Linux only: a file cannot be replaced on Windows while another database reads it
#include "reliability/saved_files.h"
#include "support/expect.h"
#include "support/in_threads.h"

// Writers in one process keep apart like those of several.
TEST(Threads, AllOnOneDirectory) {
  for (const SavedFile& file : kSavedFiles) {
    const TempDir directory;
    ExpectHr(S_OK, SaveRecords(file, directory, 10));
    InThreads([&](UINT thread) {
      for (UINT round = 0; round < 5; ++round) {
        ExpectHr(S_OK, SaveRecords(file, directory, 10 + thread));
        const UINT count = LoadedRecords(file, directory);
        EXPECT_TRUE(count >= 10 && count < 10 + kThreads) << count;
      }
    });
    EXPECT_EQ(file.FileCount(), directory.Count());
  }
}
