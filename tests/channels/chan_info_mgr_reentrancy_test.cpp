// Records that a host implements and that call back into their list in the middle of its work.
// Nothing is promised but that every reference stays balanced and no memory is touched after it
// went; the sanitizers watch.
#include <functional>

#include "channels/channel_records.h"

namespace {

constexpr UINT kCount = 6;

struct Scene {
  ComPtr<IChannelInfoMgr> list = MakeList(InputSignalDVBTerrestrial);
  std::vector<HostRecord*> records;  // borrowed: the list's references are the only ones

  Scene() {
    for (UINT i = 1; i <= kCount; ++i) {
      HostRecord* raw = nullptr;
      const ComPtr<IChannelInfo> record = HostRecord::Make(&raw);
      raw->index = i;
      raw->number = kCount - i;
      records.push_back(raw);
      ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
    }
  }
};

using Operation = std::function<void(IChannelInfoMgr*)>;

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> operations = {
      [](IChannelInfoMgr* list) {
        UINT count = 0;
        list->GetChannelCount(0xFFFFFFFF, &count);
      },
      [](IChannelInfoMgr* list) {
        ComPtr<IChannelInfo> found;
        list->GetChannelInfoByNo(0, found.Receive());
      },
      [](IChannelInfoMgr* list) {
        ComPtr<IChannelInfo> found;
        list->GetChannelInfoByIndex(kCount, found.Receive());
      },
      [](IChannelInfoMgr* list) {
        Station station(InputSignalDVBTerrestrial);
        ComPtr<IChannelInfo> found;
        list->GetChannelInfoByStation(station.Get(), found.Receive());
      },
      [](IChannelInfoMgr* list) {
        UINT index = 0;
        list->FindNextChannel(2, &index, 0x80, 1, 1);
      },
      [](IChannelInfoMgr* list) {
        UINT index = 0;
        list->FindPreChannel(4, &index, 0x80, 1, 1);
      },
      [](IChannelInfoMgr* list) {
        BOOL dirty = 0;
        list->SetDirty(0);
        list->GetDirty(&dirty);
      },
      [](IChannelInfoMgr* list) { list->MoveChannel(1, kCount); },
      [](IChannelInfoMgr* list) { list->SortChannel(SortChannelByNo, 0); },
      [](IChannelInfoMgr* list) { list->SortChannel(SortChannelBySrvType, 1); },
      [](IChannelInfoMgr* list) {
        list->AddChannelInfo(MakeRecord(InputSignalDVBTerrestrial, 100).Get());
      },
      [](IChannelInfoMgr* list) {
        // A stranger, whose reference goes to the list: the records are numbered afresh.
        list->RemoveChannelInfo(MakeRecord(InputSignalDVBTerrestrial).Detach());
      },
  };
  return operations;
}

// Runs every operation with a hook in every record, one at a time, that fires once.
void WithHook(const std::function<void(Scene&)>& hook) {
  int times = 0;
  for (std::size_t which = 0; which < kCount; ++which) {
    for (std::size_t operation = 0; operation < Operations().size(); ++operation) {
      bool fired = false;
      {
        Scene scene;
        scene.records[which]->onCall = [&] {
          if (fired) return;
          fired = true;
          ++times;
          hook(scene);
        };
        const ComPtr<IChannelInfoMgr> list = scene.list;
        Operations()[operation](list.Get());
        // The list is usable afterwards.
        list->Clear();
        ExpectHr(S_OK, list->AddChannelInfo(MakeRecord(InputSignalDVBTerrestrial, 1).Get()));
        EXPECT_EQ(1u, CountOf(list.Get()));
      }
      EXPECT_EQ(0, HostRecord::alive) << "record " << which << ", operation " << operation;
      HostRecord::alive = 0;
    }
  }
  // Nearly every operation asks every record.
  EXPECT_GE(times, 60);
}

TEST(ChanInfoMgrReentrancy, RecordsThatClearTheirList) {
  WithHook([](Scene& scene) { scene.list->Clear(); });
}

TEST(ChanInfoMgrReentrancy, RecordsThatCloseTheirList) {
  WithHook([](Scene& scene) { scene.list->Close(); });
}

TEST(ChanInfoMgrReentrancy, RecordsThatRemoveTheFirst) {
  WithHook([](Scene& scene) {
    ComPtr<IChannelInfo> first;
    if (FAILED(scene.list->GetChannelInfoByIndex(1, first.Receive()))) return;
    scene.list->RemoveChannelInfo(first.Get());
  });
}

TEST(ChanInfoMgrReentrancy, RecordsThatRemoveTheLast) {
  WithHook([](Scene& scene) {
    ComPtr<IChannelInfo> last;
    if (FAILED(scene.list->GetChannelInfoByIndex(kCount, last.Receive()))) return;
    scene.list->RemoveChannelInfo(last.Get());
  });
}

TEST(ChanInfoMgrReentrancy, RecordsThatAddOthers) {
  WithHook([](Scene& scene) {
    for (UINT index = 0; index < 20; ++index) {
      scene.list->AddChannelInfo(MakeRecord(InputSignalDVBTerrestrial, index).Get());
    }
  });
}

TEST(ChanInfoMgrReentrancy, RecordsThatSortAndMove) {
  WithHook([](Scene& scene) {
    scene.list->SortChannel(SortChannelByNo, 1);
    scene.list->MoveChannel(2, 5);
    scene.list->SortChannel(SortChannelBySrvType, 0);
  });
}

// The record releases the last reference on its list; the list goes with the end of the call.
TEST(ChanInfoMgrReentrancy, RecordsThatReleaseTheirList) {
  for (std::size_t operation = 0; operation < Operations().size(); ++operation) {
    {
      Scene scene;
      IChannelInfoMgr* const list = scene.list.Get();
      for (HostRecord* record : scene.records) {
        record->onCall = [&] { scene.list.Reset(); };
      }
      Operations()[operation](list);
      EXPECT_EQ(nullptr, scene.list.Get()) << operation;
    }
    EXPECT_EQ(0, HostRecord::alive) << operation;
    HostRecord::alive = 0;
  }
}

// What the record did to the order while it was asked stays.
TEST(ChanInfoMgrReentrancy, SortLeavesAListThatChangedMeanwhile) {
  Scene scene;
  bool fired = false;
  scene.records[0]->onCall = [&] {
    if (fired) return;
    fired = true;
    scene.list->AddChannelInfo(MakeRecord(InputSignalDVBTerrestrial, 0, 99).Get());
  };
  ExpectHr(S_OK, scene.list->SortChannel(SortChannelByNo, 1));
  EXPECT_EQ(kCount + 1, CountOf(scene.list.Get()));
  ComPtr<IChannelInfo> first;
  ExpectHr(S_OK, scene.list->GetChannelInfoByIndex(1, first.Receive()));
  EXPECT_EQ(99u, NumberOf(first.Get()));
  EXPECT_EQ(2u, scene.records[0]->index);
}

// Its removal came first.
TEST(ChanInfoMgrReentrancy, MovingARecordThatLeavesMeanwhileFails) {
  Scene scene;
  HostRecord* const leaving = scene.records[2];
  const ComPtr<IChannelInfo> held(leaving);
  leaving->onCall = [&] {
    leaving->onCall = nullptr;
    scene.list->RemoveChannelInfo(leaving);
  };
  ExpectHr(E_FAIL, scene.list->MoveChannel(3, 1));
  EXPECT_EQ(kCount - 1, CountOf(scene.list.Get()));
  EXPECT_EQ(3u, leaving->index);
  ExpectRefCount(1, leaving);
}

TEST(ChanInfoMgrReentrancy, LockedMethodsMayCallEachOther) {
  Scene scene;
  UINT inner = 0;
  scene.records[2]->onCall = [&] {
    scene.records[2]->onCall = nullptr;
    inner = CountOf(scene.list.Get());
  };
  EXPECT_EQ(kCount, CountOf(scene.list.Get()));
  EXPECT_EQ(kCount, inner);
}

// Records that are released last by the list may use it while they go.
TEST(ChanInfoMgrReentrancy, ClearReleasesRecordsThatLeftTheArray) {
  class Farewell : public HostRecord {
   public:
    Farewell(IChannelInfoMgr* list, std::vector<UINT>& counts) : m_list(list), m_counts(counts) {}
    ~Farewell() override {
      UINT count = 4711;
      m_list->GetChannelCount(0xFFFFFFFF, &count);
      m_counts.push_back(count);
    }

   private:
    IChannelInfoMgr* m_list;
    std::vector<UINT>& m_counts;
  };
  std::vector<UINT> counts;
  ComPtr<IChannelInfoMgr> list = MakeList(InputSignalDVBTerrestrial);
  for (int i = 0; i < 3; ++i) {
    const auto record = ComPtr<IChannelInfo>::Attach(new Farewell(list.Get(), counts));
    ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
  }
  ComPtr<IChannelInfo> first;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(0, first.Receive()));
  IChannelInfo* const raw = first.Get();
  first.Reset();
  ExpectHr(S_OK, list->RemoveChannelInfo(raw));
  EXPECT_EQ(std::vector<UINT>{2}, counts);
  ExpectHr(S_OK, list->Clear());
  EXPECT_EQ((std::vector<UINT>{2, 0, 0}), counts);
  ExpectHr(S_OK, list->AddChannelInfo(
                     ComPtr<IChannelInfo>::Attach(new Farewell(list.Get(), counts)).Get()));
  list.Reset();
  EXPECT_EQ((std::vector<UINT>{2, 0, 0, 0}), counts);
}

}  // namespace
