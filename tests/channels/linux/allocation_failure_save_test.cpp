// Saving without memory, where every allocation is ours. Windows' document makes its own and is not
// reached by a failing operator new; some of its answers are not handed up yet.
//
// Linux only: MSXML allocates without operator new, which is what fails here
#include "channels/channel_records.h"
#include "channels/channel_set.h"
#include "channels/failing_new.h"

namespace {

/// Saves with memory that ends after so many allocations.
HRESULT SaveAfter(IChannelInfoMgr* list, int allocations, const ChannelSet& set = {}) {
  const FailAfter fail(allocations);
  try {
    return list->Save(dom::kIidNode, set.Node());
  } catch (const ComError& error) {
    return error.Error();
  }
}

TEST(SavingWithoutMemory, AnswersIt) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio, 1);
  Station station(InputSignalFMRadio);
  record->SetStationInfo(station.Get());
  list->AddChannelInfo(record.Get());
  int failures = 0;
  for (int allocations = 0;; ++allocations) {
    ASSERT_LT(allocations, 5000);
    const HRESULT hr = SaveAfter(list.Get(), allocations);
    if (hr == S_OK) break;
    ++failures;
    ExpectHr(E_OUTOFMEMORY, hr);
  }
  EXPECT_GT(failures, 0);
}

// What it cannot finish was there before.
TEST(SavingWithoutMemory, KeepsTheElementsOfTheSaveBefore) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  const ChannelSet set;
  for (UINT index = 1; index <= 3; ++index) {
    const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio, index);
    Station station(InputSignalFMRadio);
    station.Text(4, std::string(60, 'n'));
    record->SetStationInfo(station.Get());
    list->AddChannelInfo(record.Get());
  }
  ExpectHr(S_OK, list->Save(dom::kIidNode, set.Node()));
  int failures = 0;
  while (SaveAfter(list.Get(), failures, set) != S_OK) {
    ASSERT_LT(++failures, 5000);
    ASSERT_EQ((std::vector<LONG>{1, 2, 3}), set.Indexes()) << failures;
  }
  EXPECT_GT(failures, 0);
}

// What was written is not in the file yet, whoever wrote it.
TEST(SavingWithoutMemory, LeavesTheListDirty) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  const ComPtr<IChannelInfo> changed = MakeRecord(InputSignalFMRadio, 1);
  const ComPtr<IChannelInfo> last = MakeRecord(InputSignalFMRadio, 2);
  Station station(InputSignalFMRadio);
  for (IChannelInfo* record : {changed.Get(), last.Get()}) {
    record->SetStationInfo(station.Get());
    list->AddChannelInfo(record);
  }
  int writtenThenFailed = 0;
  for (int allocations = 0;; ++allocations) {
    ASSERT_LT(allocations, 5000);
    changed->SetDirty(1);
    last->SetDirty(0);
    list->SetDirty(0);
    const HRESULT hr = SaveAfter(list.Get(), allocations);
    if (hr == S_OK) break;
    if (DirtyOf(changed.Get()) == 0) ++writtenThenFailed;
    EXPECT_EQ(1, DirtyOf(list.Get())) << allocations;
  }
  EXPECT_GT(writtenThenFailed, 0);
}

}  // namespace
