// The methods that lock, from several threads at once.
#include <atomic>
#include <thread>

#include "channels/channel_records.h"
#include "support/random.h"

namespace {

constexpr std::uint32_t kThreads = 8;

void OnAllThreads(const std::function<void(std::uint32_t)>& work) {
  std::vector<std::thread> threads;
  for (std::uint32_t t = 0; t < kThreads; ++t) threads.emplace_back(work, t);
  for (std::thread& thread : threads) thread.join();
}

TEST(ChanInfoMgrThreads, AddsFromAllThreadsArrive) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  OnAllThreads([&](std::uint32_t t) {
    for (UINT i = 0; i < 50; ++i) {
      ExpectHr(S_OK,
               list->AddChannelInfo(MakeRecord(InputSignalAnalogCable, i * kThreads + t).Get()));
    }
  });
  EXPECT_EQ(50 * kThreads, CountOf(list.Get()));
  UINT last = 0;
  UINT index = 0;
  for (UINT place = 0; place < 50 * kThreads; ++place) {
    ExpectHr(S_OK, list->FindNextChannel(place, &index, 0xFFFFFFFF, 0, 0));
    EXPECT_LE(last, index);
    last = index;
  }
}

TEST(ChanInfoMgrThreads, LockedMethodsTogether) {
  const ComPtr<IChannelInfoMgr> list = MakeList(InputSignalAnalogCable);
  std::atomic<UINT> removed{0};
  OnAllThreads([&](std::uint32_t t) {
    Random random(t + 1);
    std::vector<ComPtr<IChannelInfo>> own;
    for (int i = 0; i < 200; ++i) {
      ComPtr<IChannelInfo> found;
      switch (random(6)) {
        case 0:
        case 1:
          own.push_back(MakeRecord(InputSignalAnalogCable, random(100), random(100)));
          ExpectHr(S_OK, list->AddChannelInfo(own.back().Get()));
          break;
        case 2:
          if (own.empty()) break;
          ExpectHr(S_OK, list->RemoveChannelInfo(own.back().Get()));
          own.pop_back();
          ++removed;
          break;
        case 3:
          EXPECT_LE(CountOf(list.Get()), 200 * kThreads);
          break;
        case 4:
          list->GetChannelInfoByNo(random(100), found.Receive());
          list->GetChannelInfoByIndex(random(100), found.Receive());
          break;
        default: {
          Station probe(InputSignalAnalogCable);
          probe->lPhysicalChannel = static_cast<LONG>(random(100));
          if (SUCCEEDED(list->GetChannelInfoByStation(probe.Get(), found.Receive()))) {
            EXPECT_EQ(static_cast<UINT>(probe->lPhysicalChannel), NumberOf(found.Get()));
          }
        }
      }
    }
    for (const ComPtr<IChannelInfo>& record : own) {
      ExpectHr(S_OK, list->RemoveChannelInfo(record.Get()));
      ++removed;
    }
  });
  EXPECT_EQ(0u, CountOf(list.Get()));
  EXPECT_GT(removed, 0u);
}

}  // namespace
