#include "channels/chan_info_mgr.h"

#include "channels/channel_records.h"

namespace {

class WatchedList : public CChanInfoMgr {
 public:
  HRESULT STDMETHODCALLTYPE SetDirty(BOOL bDirty) override {
    flags.push_back(bDirty);
    return CChanInfoMgr::SetDirty(bDirty);
  }
  std::vector<BOOL> flags;
};

// The records from the first to the last, by number. The list must hold 1..n or n..1.
std::vector<UINT> NumbersByIndex(IChannelInfoMgr* list) {
  std::vector<UINT> numbers;
  ComPtr<IChannelInfo> record;
  for (UINT index = 1; SUCCEEDED(list->GetChannelInfoByIndex(index, record.Receive())); ++index) {
    numbers.push_back(NumberOf(record.Get()));
  }
  return numbers;
}

ComPtr<IChannelInfo> Add(IChannelInfoMgr* list, UINT index, UINT number) {
  ComPtr<IChannelInfo> record = MakeRecord(InputSignalAnalogCable, index, number);
  ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
  return record;
}

TEST(ChanInfoMgr, NewListIsEmptyAndClean) {
  ComPtr<IChannelInfoMgr> list;
  ExpectHr(S_OK, CChanInfoMgr::CreateInstance(list.Receive()));
  ExpectRefCount(1, list.Get());
  EXPECT_EQ(0u, CountOf(list.Get()));
  EXPECT_EQ(0, DirtyOf(list.Get()));
  InputSignalType signalType = InputSignalFMRadio;
  ExpectHr(S_OK, list->GetSignalType(&signalType));
  EXPECT_EQ(InputSignalUnknown, signalType);
  ExpectHr(S_OK, list->Open());
  ExpectHr(S_OK, list->Close());
}

TEST(ChanInfoMgr, NullPointers) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const ComPtr<IChannelInfo> record = Add(list.Get(), 1, 1);
  Station station(InputSignalAnalogCable);
  IChannelInfo* found = record.Get();
  UINT index = 3;
  ExpectHr(E_POINTER, list->GetSignalType(nullptr));
  ExpectHr(E_POINTER, list->CreateChannelInfo(nullptr));
  ExpectHr(E_POINTER, list->AddChannelInfo(nullptr));
  ExpectHr(E_POINTER, list->RemoveChannelInfo(nullptr));
  ExpectHr(E_POINTER, list->GetChannelCount(ServiceAll, nullptr));
  ExpectHr(E_POINTER, list->GetChannelInfoByNo(1, nullptr));
  ExpectHr(E_POINTER, list->GetChannelInfoByIndex(1, nullptr));
  ExpectHr(E_POINTER, list->GetChannelInfoByStation(nullptr, &found));
  ExpectHr(E_POINTER, list->GetChannelInfoByStation(station.Get(), nullptr));
  ExpectHr(E_POINTER, list->FindPreChannel(1, nullptr, ServiceAll, 0, 0));
  ExpectHr(E_POINTER, list->FindNextChannel(1, nullptr, ServiceAll, 0, 0));
  ExpectHr(E_POINTER, list->FindPreChannel(9, nullptr, ServiceAll, 0, 0));
  ExpectHr(E_POINTER, list->FindNextChannel(9, nullptr, ServiceAll, 0, 0));
  ExpectHr(E_POINTER, list->GetDirty(nullptr));
  EXPECT_EQ(record.Get(), found);
  EXPECT_EQ(3u, index);
  EXPECT_EQ(1u, CountOf(list.Get()));
}

TEST(ChanInfoMgr, SignalTypeIsStoredAlone) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const ComPtr<IChannelInfo> record = Add(list.Get(), 1, 1);
  record->SetDirty(0);
  list->SetDirty(0);
  ExpectHr(S_OK, list->SetSignalType(InputSignalDVBHandheld));
  EXPECT_EQ(0, DirtyOf(list.Get()));
  InputSignalType signalType = InputSignalUnknown;
  ExpectHr(S_OK, record->GetSignalType(&signalType));
  EXPECT_EQ(InputSignalAnalogCable, signalType);
  ExpectHr(S_OK, list->GetSignalType(&signalType));
  EXPECT_EQ(InputSignalDVBHandheld, signalType);
}

TEST(ChanInfoMgr, CreatedRecordHasTheTypeAndIsNotAdded) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalTDMBMobile);
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, list->CreateChannelInfo(record.Receive()));
  ExpectRefCount(1, record.Get());
  InputSignalType signalType = InputSignalUnknown;
  ExpectHr(S_OK, record->GetSignalType(&signalType));
  EXPECT_EQ(InputSignalTDMBMobile, signalType);
  EXPECT_EQ(1, DirtyOf(record.Get()));
  EXPECT_EQ(0, DirtyOf(list.Get()));
  ComPtr<IChannelInfo> found;
  ExpectHr(E_FAIL, list->GetChannelInfoByIndex(0, found.Receive()));
}

TEST(ChanInfoMgr, AddGoesInFrontOfTheFirstThatIsNotSmaller) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto five = Add(list.Get(), 5, 50);
  const auto three = Add(list.Get(), 3, 30);
  const auto second = Add(list.Get(), 3, 31);
  // Nothing is renumbered.
  EXPECT_EQ(5u, IndexOf(five.Get()));
  EXPECT_EQ(3u, IndexOf(three.Get()));
  ComPtr<IChannelInfo> found;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(3, found.Receive()));
  EXPECT_EQ(second.Get(), found.Get());
  ExpectHr(E_FAIL, list->GetChannelInfoByIndex(1, found.Receive()));
  // A removal numbers by place.
  const auto zero = Add(list.Get(), 0, 0);
  const auto extra = Add(list.Get(), 9, 90);
  ExpectHr(S_OK, list->RemoveChannelInfo(extra.Get()));
  EXPECT_EQ((std::vector<UINT>{0, 31, 30, 50}), NumbersByIndex(list.Get()));
}

TEST(ChanInfoMgr, IndexesCompareUnsigned) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto high = Add(list.Get(), 0xFFFFFFFE, 2);
  const auto low = Add(list.Get(), 1, 1);
  const auto extra = Add(list.Get(), 0, 0);
  ExpectHr(S_OK, list->RemoveChannelInfo(extra.Get()));
  EXPECT_EQ((std::vector<UINT>{1, 2}), NumbersByIndex(list.Get()));
}

TEST(ChanInfoMgr, AddMarksTheListAndTakesAReference) {
  WatchedList list;
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalAnalogCable, 1);
  record->SetDirty(0);
  ExpectHr(S_OK, list.AddChannelInfo(record.Get()));
  EXPECT_EQ(std::vector<BOOL>{1}, list.flags);
  EXPECT_EQ(0, DirtyOf(record.Get()));
  ExpectRefCount(2, record.Get());
}

TEST(ChanInfoMgr, SameRecordMayBeAddedTwice) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto record = Add(list.Get(), 1, 1);
  ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
  ExpectRefCount(3, record.Get());
  EXPECT_EQ(2u, CountOf(list.Get()));
  ExpectHr(S_OK, list->RemoveChannelInfo(record.Get()));
  ExpectRefCount(2, record.Get());
  EXPECT_EQ(1u, CountOf(list.Get()));
}

TEST(ChanInfoMgr, RecordWithoutAnIndexIsNotAdded) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalAnalogCable, 0xFFFFFFFF);
  ExpectHr(E_FAIL, list->AddChannelInfo(record.Get()));
  HostRecord* raw = nullptr;
  const ComPtr<IChannelInfo> host = HostRecord::Make(&raw);
  raw->indexResult = E_UNEXPECTED;
  ExpectHr(E_UNEXPECTED, list->AddChannelInfo(host.Get()));
  EXPECT_EQ(0u, CountOf(list.Get()));
  EXPECT_EQ(0, DirtyOf(list.Get()));
  ExpectRefCount(1, record.Get());
  ExpectRefCount(1, host.Get());
}

TEST(ChanInfoMgr, RecordThatStopsTellingItsIndexStopsNoScan) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto silent = Add(list.Get(), 7, 70);
  silent->SetChannelIndex(0xFFFFFFFF);
  const auto next = Add(list.Get(), 0, 1);
  ComPtr<IChannelInfo> found;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(0, found.Receive()));
  EXPECT_EQ(next.Get(), found.Get());
  ExpectHr(E_FAIL, list->GetChannelInfoByIndex(0xFFFFFFFF, found.Receive()));
  const auto extra = Add(list.Get(), 9, 90);
  ExpectHr(S_OK, list->RemoveChannelInfo(extra.Get()));
  EXPECT_EQ((std::vector<UINT>{70, 1}), NumbersByIndex(list.Get()));
}

TEST(ChanInfoMgr, RemoveRenumbersAndMarks) {
  WatchedList list;
  const auto first = Add(&list, 4, 40);
  const auto second = Add(&list, 8, 80);
  const auto third = Add(&list, 9, 90);
  first->SetDirty(0);
  third->SetDirty(0);
  list.flags.clear();
  ExpectHr(S_OK, list.RemoveChannelInfo(second.Get()));
  EXPECT_EQ(std::vector<BOOL>{1}, list.flags);
  EXPECT_EQ(1u, IndexOf(first.Get()));
  EXPECT_EQ(2u, IndexOf(third.Get()));
  EXPECT_EQ(8u, IndexOf(second.Get()));
  EXPECT_EQ(1, DirtyOf(first.Get()));
  EXPECT_EQ(1, DirtyOf(third.Get()));
  ExpectRefCount(1, second.Get());
  ExpectRefCount(2, first.Get());
}

// The reference that goes is then the caller's.
TEST(ChanInfoMgr, RemovingAStrangerReleasesItAndRenumbers) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto member = Add(list.Get(), 17, 1);
  list->SetDirty(0);
  const ComPtr<IChannelInfo> stranger = MakeRecord(InputSignalAnalogCable, 1);
  stranger->AddRef();
  ExpectRefCount(2, stranger.Get());
  ExpectHr(S_OK, list->RemoveChannelInfo(stranger.Get()));
  ExpectRefCount(1, stranger.Get());
  EXPECT_EQ(1u, IndexOf(member.Get()));
  EXPECT_EQ(1, DirtyOf(list.Get()));
  // Also from an empty list, and also the last reference.
  const ComPtr<IChannelInfoMgr> empty = MakeList(InputSignalAnalogCable);
  HostRecord* raw = nullptr;
  ComPtr<IChannelInfo> last = HostRecord::Make(&raw);
  ExpectHr(S_OK, empty->RemoveChannelInfo(last.Detach()));
  EXPECT_EQ(0, HostRecord::alive);
  BOOL dirty = 0;
  ExpectHr(S_OK, empty->GetDirty(&dirty));
  EXPECT_EQ(1, dirty);
}

TEST(ChanInfoMgr, ClearReleasesEverything) {
  WatchedList list;
  const auto record = Add(&list, 1, 1);
  list.flags.clear();
  ExpectHr(S_OK, list.Clear());
  EXPECT_EQ(std::vector<BOOL>{0}, list.flags);
  ExpectRefCount(1, record.Get());
  EXPECT_EQ(0u, CountOf(&list));
  EXPECT_EQ(0, DirtyOf(&list));
  EXPECT_EQ(1u, IndexOf(record.Get()));
}

TEST(ChanInfoMgr, CloseAndDestructionReleaseEverything) {
  ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto record = Add(list.Get(), 1, 1);
  ExpectHr(S_OK, list->Close());
  ExpectRefCount(1, record.Get());
  ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
  ExpectRefCount(2, record.Get());
  list.Reset();
  ExpectRefCount(1, record.Get());
}

TEST(ChanInfoMgr, DirtyIsTheListsFlagOrAnyRecords) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto first = Add(list.Get(), 1, 1);
  const auto second = Add(list.Get(), 2, 2);
  const auto clean = [&] {
    first->SetDirty(0);
    second->SetDirty(0);
    list->SetDirty(0);
  };
  clean();
  EXPECT_EQ(0, DirtyOf(list.Get()));
  second->SetDirty(-8);
  EXPECT_EQ(1, DirtyOf(list.Get()));
  clean();
  // The list's own flag comes out as it was stored, and touches no record.
  ExpectHr(S_OK, list->SetDirty(6));
  EXPECT_EQ(6, DirtyOf(list.Get()));
  EXPECT_EQ(0, DirtyOf(first.Get()));
}

TEST(ChanInfoMgr, DirtyScanStopsAtTheFirst) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  HostRecord* raw[3] = {};
  std::vector<ComPtr<IChannelInfo>> records;
  for (UINT i = 0; i < 3; ++i) {
    records.push_back(HostRecord::Make(&raw[i]));
    raw[i]->index = i + 1;
    ExpectHr(S_OK, list->AddChannelInfo(records.back().Get()));
  }
  list->SetDirty(0);
  raw[0]->dirtyResult = E_FAIL;  // counts as clean
  raw[1]->dirty = 1;
  for (HostRecord* record : raw) record->calls = 0;
  EXPECT_EQ(1, DirtyOf(list.Get()));
  EXPECT_EQ(1, raw[0]->calls);
  EXPECT_EQ(1, raw[1]->calls);
  EXPECT_EQ(0, raw[2]->calls);
}

TEST(ChanInfoMgr, MoveToBothEnds) {
  struct Row {
    UINT from;
    UINT to;
    std::vector<UINT> order;
  };
  for (const Row& row :
       {Row{1, 3, {20, 30, 10, 40}}, Row{4, 1, {40, 10, 20, 30}}, Row{3, 2, {10, 30, 20, 40}},
        Row{2, 4, {10, 30, 40, 20}}, Row{1, 99, {20, 30, 40, 10}}, Row{3, 0, {30, 10, 20, 40}}}) {
    const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
    for (UINT i = 1; i <= 4; ++i) Add(list.Get(), i, 10 * i);
    list->SetDirty(0);
    ExpectHr(S_OK, list->MoveChannel(row.from, row.to));
    EXPECT_EQ(row.order, NumbersByIndex(list.Get())) << row.from << " to " << row.to;
    EXPECT_EQ(1, DirtyOf(list.Get()));
  }
}

TEST(ChanInfoMgr, MoveKeepsReferences) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto first = Add(list.Get(), 1, 1);
  const auto second = Add(list.Get(), 2, 2);
  ExpectHr(S_OK, list->MoveChannel(1, 2));
  ExpectRefCount(2, first.Get());
  ExpectRefCount(2, second.Get());
  EXPECT_EQ(2u, IndexOf(first.Get()));
}

TEST(ChanInfoMgr, MoveChecksItsIndexes) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  ExpectHr(E_INVALIDARG, list->MoveChannel(1, 1));
  ExpectHr(E_FAIL, list->MoveChannel(1, 2));
  Add(list.Get(), 1, 10);
  Add(list.Get(), 2, 20);
  ExpectHr(E_INVALIDARG, list->MoveChannel(7, 7));
  ExpectHr(E_FAIL, list->MoveChannel(3, 1));
  ExpectHr(E_FAIL, list->MoveChannel(0, 1));
  EXPECT_EQ((std::vector<UINT>{10, 20}), NumbersByIndex(list.Get()));
}

// A record that cannot be added again is out of the list: nothing is rolled back.
TEST(ChanInfoMgr, MoveToTheIndexThatCannotBeHad) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto first = Add(list.Get(), 1, 10);
  Add(list.Get(), 2, 20);
  ExpectHr(E_FAIL, list->MoveChannel(1, 0xFFFFFFFF));
  EXPECT_EQ(std::vector<UINT>{20}, NumbersByIndex(list.Get()));
  ExpectRefCount(1, first.Get());
}

TEST(ChanInfoMgr, SortByNumberDescendingNumbersFromTheEnd) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto thirty = Add(list.Get(), 1, 30);
  const auto ten = Add(list.Get(), 2, 10);
  const auto twenty = Add(list.Get(), 3, 20);
  list->SetDirty(0);
  ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 0));
  EXPECT_EQ(1u, IndexOf(thirty.Get()));
  EXPECT_EQ(2u, IndexOf(twenty.Get()));
  EXPECT_EQ(3u, IndexOf(ten.Get()));
  EXPECT_EQ(1, DirtyOf(list.Get()));
  // The array itself is ascending: navigation goes by place and answers indexes.
  UINT index = 0;
  ExpectHr(S_OK, list->FindNextChannel(0, &index, ServiceAll, 0, 0));
  EXPECT_EQ(3u, index);
  ExpectHr(S_OK, list->FindNextChannel(1, &index, ServiceAll, 0, 0));
  EXPECT_EQ(2u, index);
  ExpectHr(S_OK, list->FindNextChannel(2, &index, ServiceAll, 0, 0));
  EXPECT_EQ(1u, index);

  ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 5));
  EXPECT_EQ(1u, IndexOf(ten.Get()));
  EXPECT_EQ(2u, IndexOf(twenty.Get()));
  EXPECT_EQ(3u, IndexOf(thirty.Get()));
}

TEST(ChanInfoMgr, NumbersSortUnsigned) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  Add(list.Get(), 1, 0x80000000);
  Add(list.Get(), 2, 5);
  ExpectHr(S_OK, list->SortChannel(SortChannelByNo, 1));
  EXPECT_EQ((std::vector<UINT>{5, 0x80000000}), NumbersByIndex(list.Get()));
}

TEST(ChanInfoMgr, OtherSortsFailAndChangeNothing) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  Add(list.Get(), 1, 30);
  const auto last = Add(list.Get(), 7, 10);
  last->SetDirty(0);
  list->SetDirty(0);
  for (const int type : {0, 3, 4, 8, 22, 50, 100, -1}) {
    ExpectHr(E_FAIL, list->SortChannel(static_cast<ESortType>(type), 1));
  }
  EXPECT_EQ(7u, IndexOf(last.Get()));
  EXPECT_EQ(0, DirtyOf(last.Get()));
}

TEST(ChanInfoMgr, SortOfAnEmptyListMarksIt) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  ExpectHr(S_OK, list->SortChannel(SortChannelBySrvType, 0));
  EXPECT_EQ(1, DirtyOf(list.Get()));
}

TEST(ChanInfoMgr, SortKeepsReferences) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  const auto first = Add(list.Get(), 1, 30);
  const auto second = Add(list.Get(), 2, 10);
  ExpectHr(S_OK, list->SortChannel(SortChannelBySrvType, 1));
  ExpectRefCount(2, first.Get());
  ExpectRefCount(2, second.Get());
}

TEST(ChanInfoMgr, ListsAreFreedWithRecordsThatOutliveThem) {
  HostRecord* raw = nullptr;
  {
    const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
    ComPtr<IChannelInfo> record = HostRecord::Make(&raw);
    ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
    record.Reset();
    EXPECT_EQ(1, HostRecord::alive);
  }
  EXPECT_EQ(0, HostRecord::alive);
}

}  // namespace
