// What the lists do when there is no memory.
#include "channels/channel_records.h"
#include "channels/channel_set.h"
#include "channels/failing_new.h"
#include "channels/object_holder.h"

namespace {

std::vector<UINT> Numbers(IChannelInfoMgr* list) {
  std::vector<UINT> numbers;
  UINT count = CountOf(list);
  for (UINT number = 0; number < 100 && count > 0; ++number) {
    ComPtr<IChannelInfo> found;
    if (FAILED(list->GetChannelInfoByNo(number, found.Receive()))) continue;
    numbers.push_back(number);
    --count;
  }
  return numbers;
}

TEST(AllocationFailure, CreationAnswersIt) {
  IChannelInfoMgr* list = nullptr;
  {
    const FailAfter fail(0);
    ExpectHr(E_OUTOFMEMORY, CChanInfoMgr::CreateInstance(&list));
  }
  EXPECT_EQ(nullptr, list);
  const ComPtr<IChannelInfoMgr> made = MakeList(InputSignalFMRadio);
  IChannelInfo* record = nullptr;
  {
    const FailAfter fail(0);
    ExpectHr(E_OUTOFMEMORY, made->CreateChannelInfo(&record));
  }
  EXPECT_EQ(nullptr, record);
}

TEST(AllocationFailure, GrowthLeavesTheListAsItIs) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  int failures = 0;
  for (UINT i = 1; i <= 60; ++i) {
    const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio, 100 - i, i);
    list->SetDirty(0);
    HRESULT hr = S_OK;
    {
      const FailAfter fail(0);
      hr = list->AddChannelInfo(record.Get());
    }
    BOOL dirty = 0;
    if (hr == S_OK) continue;
    ++failures;
    ExpectHr(E_OUTOFMEMORY, hr);
    ExpectRefCount(1, record.Get());
    EXPECT_EQ(i - 1, CountOf(list.Get()));
    for (UINT number : Numbers(list.Get())) {
      ComPtr<IChannelInfo> found;
      list->GetChannelInfoByNo(number, found.Receive());
      found->SetDirty(0);
    }
    ExpectHr(S_OK, list->GetDirty(&dirty));
    EXPECT_EQ(0, dirty);
    ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
  }
  // The array grows by half: seldom, and not once for all.
  EXPECT_GE(failures, 5);
  EXPECT_LE(failures, 15);
  EXPECT_EQ(60u, CountOf(list.Get()));
}

TEST(AllocationFailure, SortLeavesTheListAsItIs) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  for (UINT i = 1; i <= 5; ++i) {
    list->AddChannelInfo(MakeRecord(InputSignalFMRadio, i, 10 - i).Get());
  }
  for (const int allocations : {0, 1}) {
    const FailAfter fail(allocations);
    ExpectHr(E_OUTOFMEMORY, list->SortChannel(SortChannelByNo, 1));
  }
  ComPtr<IChannelInfo> first;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(1, first.Receive()));
  EXPECT_EQ(9u, NumberOf(first.Get()));
  ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 1));
  ExpectHr(S_OK, list->GetChannelInfoByIndex(1, first.Receive()));
  EXPECT_EQ(5u, NumberOf(first.Get()));
}

// Lookups, navigation, removal and moving need no memory.
TEST(AllocationFailure, TheRestWorksWithoutMemory) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  const ComPtr<IChannelInfo> first = MakeRecord(InputSignalFMRadio, 1, 1);
  list->AddChannelInfo(first.Get());
  list->AddChannelInfo(MakeRecord(InputSignalFMRadio, 2, 2).Get());
  Station probe(InputSignalFMRadio);
  ComPtr<IChannelInfo> found;
  UINT value = 0;
  const FailAfter fail(0);
  ExpectHr(S_OK, list->GetChannelCount(0xFFFFFFFF, &value));
  ExpectHr(S_OK, list->GetChannelInfoByNo(2, found.Receive()));
  ExpectHr(S_OK, list->GetChannelInfoByStation(probe.Get(), found.Receive()));
  ExpectHr(S_OK, list->FindNextChannel(1, &value, 0xFFFFFFFF, 0, 1));
  ExpectHr(S_OK, list->MoveChannel(1, 2));
  ExpectHr(S_OK, list->RemoveChannelInfo(first.Get()));
  ExpectHr(S_OK, list->Clear());
}

// Wherever memory ends while loading: the answer says so, and the list can still be used.
TEST(AllocationFailure, LoadingLeavesAUsableList) {
  ChannelSet set;
  for (LONG i = 0; i < 20; ++i) set.Add(20 - i % 7, i);
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  for (UINT i = 0; i < 3; ++i) list->AddChannelInfo(MakeRecord(InputSignalFMRadio, i, i).Get());
  int allocations = 0;
  HRESULT hr = E_FAIL;
  for (; hr != S_OK; ++allocations) {
    ASSERT_LT(allocations, 5000);
    {
      const FailAfter fail(allocations);
      try {
        hr = list->Load(dom::kIidNode, set.Node());
      } catch (const ComError& error) {
        hr = error.Error();
      }
    }
    if (hr == S_OK) break;
    ExpectHr(E_OUTOFMEMORY, hr);
    EXPECT_EQ(3u, CountOf(list.Get())) << allocations;
  }
  EXPECT_GT(allocations, 20);
  EXPECT_EQ(23u, CountOf(list.Get()));
}

// The set it came from stays the list's own, and the other one its document's.
TEST(AllocationFailure, AFailedLoadBindsNothing) {
  ChannelSet other;
  for (LONG i = 0; i < 3; ++i) other.Add(i);
  int allocations = 0;
  for (;; ++allocations) {
    ASSERT_LT(allocations, 5000);
    ChannelSet set;
    set.Add(1);
    const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
    ExpectHr(S_OK, list->Load(dom::kIidNode, set.Node()));
    HRESULT hr = S_OK;
    {
      const FailAfter fail(allocations);
      try {
        hr = list->Load(dom::kIidNode, other.Node());
      } catch (const ComError& error) {
        hr = error.Error();
      }
    }
    if (hr == S_OK) break;
    ExpectHr(E_OUTOFMEMORY, hr);
    BOOL dirty = 1;
    ExpectHr(S_OK, list->GetDirty(&dirty));
    EXPECT_EQ(0, dirty);
    ExpectHr(S_OK, list->Clear());
    EXPECT_EQ(0, set.Count());
    EXPECT_EQ(3, other.Count()) << allocations;
  }
  EXPECT_GT(allocations, 5);
}

// The channels of the set go in any case: with the record, or not at all.
TEST(AllocationFailure, StrippingTakesNoMemory) {
  ChannelSet set;
  for (LONG i = 1; i <= 3; ++i) set.Add(i);
  set.AddOther("Other");
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  ExpectHr(S_OK, list->Load(dom::kIidNode, set.Node()));
  ComPtr<IChannelInfo> first;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(1, first.Receive()));
  {
    const FailAfter fail(0);
    ExpectHr(E_OUTOFMEMORY, list->SortChannel(SortChannelByNo, 1));
  }
  EXPECT_EQ(3, set.Count());
  {
    const FailAfter fail(0);
    ExpectHr(S_OK, list->MoveChannel(1, 2));
  }
  EXPECT_EQ(0, set.Count());
  set.Add(1);
  {
    const FailAfter fail(0);
    ExpectHr(S_OK, list->RemoveChannelInfo(first.Get()));
  }
  EXPECT_EQ(0, set.Count());
  set.Add(1);
  {
    const FailAfter fail(0);
    ExpectHr(S_OK, list->Clear());
  }
  EXPECT_EQ(0, set.Count());
  EXPECT_EQ(1, set.Count("./Other"));
}

// Texts raise it; the record stays as it was, or as it is between the two steps of a new station.
TEST(AllocationFailure, TextsRaiseIt) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalATSCCable);
  Station station(InputSignalATSCCable);
  station.Word(4, 7).Word(8, 2).Text(192, std::string(100, 'x'));
  const Bstr other = Wide(std::string(120, 'y'));
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  record->SetChannelDspName(nullptr);
  BSTR name = nullptr;
  const auto raises = [](const std::function<void()>& call) {
    const FailAfter fail(0);
    try {
      call();
    } catch (const ComError& error) {
      return error.Error();
    }
    return S_OK;
  };
  ExpectHr(E_OUTOFMEMORY, raises([&] { record->GetChannelName(&name); }));
  EXPECT_EQ(nullptr, name);
  record->SetDirty(0);
  ExpectHr(E_OUTOFMEMORY, raises([&] { record->SetChannelName(other.Get()); }));
  EXPECT_EQ(0, DirtyOf(record.Get()));
  EXPECT_EQ(station.Block(), StationCopy(record.Get()).Bytes());
  ExpectHr(E_OUTOFMEMORY, raises([&] { record->SetStationInfo(station.Get()); }));
  EXPECT_EQ(1, DirtyOf(record.Get()));
  EXPECT_EQ(station.Block(), StationCopy(record.Get()).Bytes());
  Bstr display;
  ExpectHr(S_OK, record->GetChannelDspName(display.Receive()));
  EXPECT_EQ(nullptr, display.Get());
}

TEST(AllocationFailure, HolderAnswersIt) {
  CObjectHolder<InputSignalType, IChannelInfoMgr> holder;
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalFMRadio);
  {
    const FailAfter fail(0);
    ExpectHr(E_OUTOFMEMORY, holder.Register(InputSignalFMRadio, list.Get()));
  }
  ExpectRefCount(1, list.Get());
  ExpectHr(S_OK, holder.Register(InputSignalFMRadio, list.Get()));
}

}  // namespace
