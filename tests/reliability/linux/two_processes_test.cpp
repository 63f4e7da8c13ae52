// Processes that work on one directory at the same time: a reader finds a whole file at any moment,
// and the last writer's records stand.
//
// Linux only: a file cannot be replaced on Windows while another database reads it
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "reliability/saved_files.h"
#include "support/expect.h"

namespace {

constexpr int kRounds = 25;

/// A process of its own; its status is what `work` answers.
class Process {
 public:
  explicit Process(const std::function<bool()>& work) : m_process(fork()) {
    if (m_process == 0) _exit(work() ? 0 : 1);
  }
  bool HasSucceeded() const {
    int status = 0;
    return m_process > 0 && waitpid(m_process, &status, 0) == m_process && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
  }

 private:
  pid_t m_process;
};

class TwoProcesses : public testing::TestWithParam<SavedFile> {};

// The files of the two writers have a different size each, so that half of one is seen.
TEST_P(TwoProcesses, ReadersSeeWholeFiles) {
  const SavedFile& file = GetParam();
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(file, directory, 5));
  const auto write = [&](UINT count) {
    return Process([&file, &directory, count] {
      for (int round = 0; round < kRounds; ++round) SaveRecords(file, directory, count);
      return !testing::Test::HasFailure();
    });
  };
  const Process first = write(40);
  const Process second = write(200);
  for (int round = 0; round < kRounds; ++round) {
    // Every record tells how many there are; the count of a torn file would differ from it.
    const UINT count = LoadedRecords(file, directory);
    EXPECT_TRUE(count == 5 || count == 40 || count == 200) << count;
  }
  EXPECT_TRUE(first.HasSucceeded());
  EXPECT_TRUE(second.HasSucceeded());
  ExpectHr(S_OK, SaveRecords(file, directory, 7));
  EXPECT_EQ(7U, LoadedRecords(file, directory));
  EXPECT_EQ(file.FileCount(), directory.Count());
}

// Whoever saves last has loaded nothing of what the other one saved in between.
TEST_P(TwoProcesses, LastWriterWinsWhole) {
  const SavedFile& file = GetParam();
  const TempDir directory;
  ExpectHr(S_OK, SaveRecords(file, directory, 5));
  const ComPtr<IZorTunedex> late = OpenFor(file, directory);
  const Process other([&] { return SaveRecords(file, directory, 40) == S_OK; });
  EXPECT_TRUE(other.HasSucceeded());
  EXPECT_EQ(40U, LoadedRecords(file, directory));
  file.fill(late.Get(), 6);
  ExpectHr(S_OK, file.save(late.Get()));
  EXPECT_EQ(6U, LoadedRecords(file, directory));
  EXPECT_EQ(file.FileCount(), directory.Count());
}

INSTANTIATE_TEST_SUITE_P(Files, TwoProcesses, testing::ValuesIn(kSavedFiles));

}  // namespace
