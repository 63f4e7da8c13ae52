// Many threads: the locked methods of one list against what a plain model lets them see, and
// databases of their own over every file.
#include <atomic>
#include <vector>

#include "reliability/saved_files.h"
#include "support/expect.h"
#include "support/in_threads.h"
#include "support/random.h"

namespace {

constexpr UINT kOfEach = 30;
constexpr InputSignalType kType = InputSignalFMRadio;

ComPtr<IChannelInfo> NewChannel(const ComPtr<IChannelInfoMgr>& list, UINT number) {
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
  channel->SetChannelIndex(number);
  channel->SetChannelNo(number);
  return channel;
}

/// How many channels are certainly in the list, and how many may be: a call counts in the one
/// before it begins, in the other when it has ended.
struct Bounds {
  std::atomic<UINT> added{0};     ///< calls that have ended
  std::atomic<UINT> adding{0};    ///< calls that have begun
  std::atomic<UINT> removed{0};   ///< calls that have ended
  std::atomic<UINT> removing{0};  ///< calls that have begun
};

// What is asked between two looks at the model lies between their bounds.
void ExpectCountIsPossible(const ComPtr<IChannelInfoMgr>& list, const Bounds& bounds) {
  const UINT addedBefore = bounds.added;
  const UINT removedBefore = bounds.removed;
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
  const UINT removingAfter = bounds.removing;
  const UINT addingAfter = bounds.adding;
  EXPECT_GE(count + removingAfter, addedBefore);
  EXPECT_LE(count + removedBefore, addingAfter);
}

// Numbers belong to one thread each, so that every thread knows which of its own are there.
void Work(const ComPtr<IChannelInfoMgr>& list, UINT thread, Bounds& bounds) {
  Random random(thread + 1);
  std::vector<ComPtr<IChannelInfo>> own(kOfEach);
  for (int step = 0; step < 150; ++step) {
    const UINT which = random(kOfEach);
    const UINT number = 1 + thread * kOfEach + which;
    if (!own[which]) {
      own[which] = NewChannel(list, number);
      ++bounds.adding;
      ExpectHr(S_OK, list->AddChannelInfo(own[which].Get()));
      ++bounds.added;
    } else if (random(2) == 0) {
      ++bounds.removing;
      ExpectHr(S_OK, list->RemoveChannelInfo(own[which].Get()));
      ++bounds.removed;
      own[which] = nullptr;
    }
    ComPtr<IChannelInfo> found;
    ExpectHr(own[which] ? S_OK : E_FAIL, list->GetChannelInfoByNo(number, found.Receive()));
    EXPECT_EQ(own[which].Get(), found.Get());
    ExpectCountIsPossible(list, bounds);
  }
}

TEST(Threads, LockedMethodsSeeWhatTheModelLetsThemSee) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenFor(kSavedFiles[0], directory);
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, database->GetChannelInfoMgr(kType, list.Receive()));
  Bounds bounds;
  InThreads([&](UINT thread) { Work(list, thread, bounds); });
  UINT count = 0;
  ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &count));
  EXPECT_EQ(bounds.added - bounds.removed, count);
  EXPECT_GT(bounds.removed, 0U);
}

TEST(Threads, EachWithADirectoryOfItsOwn) {
  InThreads([](UINT thread) {
    for (const SavedFile& file : kSavedFiles) {
      const TempDir directory;
      for (UINT count = 1; count < 8; ++count) {
        ExpectHr(S_OK, SaveRecords(file, directory, count + thread));
        EXPECT_EQ(count + thread, LoadedRecords(file, directory));
      }
      EXPECT_EQ(file.FileCount(), directory.Count());
    }
  });
}

}  // namespace
