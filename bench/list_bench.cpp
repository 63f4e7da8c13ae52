// Work on a loaded list.
#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "bench/channel_data.h"
#include "bench/check.h"
#include "bench/database.h"
#include "bench/timing.h"
#include "bench/workspace.h"

namespace bench {
namespace {

// A loaded list, and keys that go through it in no order.
class LoadedList {
 public:
  explicit LoadedList(UINT count) : m_count(count), m_database(NewDatabase()) {
    Open(m_database, Workspace::Of(count).Source());
    m_list = SatelliteList(m_database);
  }

  IChannelInfoMgr* operator->() const { return m_list.Get(); }
  UINT Count() const { return m_count; }
  UINT NextKey() { return 1 + (m_key += 7919) % m_count; }

 private:
  UINT m_count;
  UINT m_key = 0;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
};

// The first lookup learns the list's order: that is not what one of many takes.
void FindByNumber(benchmark::State& state) {
  LoadedList list(CountOf(state));
  ComPtr<IChannelInfo> last;
  list->GetChannelInfoByNo(list.Count(), last.Receive());
  for (auto _ : state) {
    ComPtr<IChannelInfo> found;
    Check(list->GetChannelInfoByNo(list.NextKey(), found.Receive()) == S_OK, "not found");
  }
}
BENCHMARK(FindByNumber)->Name("Find/ByNumber")->Apply(AllSizes);

void FindByIndex(benchmark::State& state) {
  LoadedList list(CountOf(state));
  ComPtr<IChannelInfo> last;
  list->GetChannelInfoByIndex(list.Count(), last.Receive());
  for (auto _ : state) {
    ComPtr<IChannelInfo> found;
    Check(list->GetChannelInfoByIndex(list.NextKey(), found.Receive()) == S_OK, "not found");
  }
}
BENCHMARK(FindByIndex)->Name("Find/ByIndex")->Apply(AllSizes);

void FindByStation(benchmark::State& state) {
  LoadedList list(CountOf(state));
  std::vector<BYTE> block;
  _StationTuneInfo probe = {};
  for (auto _ : state) {
    const ChannelData channel = MakeChannelData(list.NextKey());
    block = MakeBlock(channel);
    probe.lTSID = static_cast<LONG>(channel.transportStream);
    probe.cbInformation = static_cast<DWORD>(block.size());
    probe.pbInformation = block.data();
    ComPtr<IChannelInfo> found;
    Check(list->GetChannelInfoByStation(&probe, found.Receive()) == S_OK, "not found");
  }
}
BENCHMARK(FindByStation)->Name("Find/ByStation")->Apply(AllSizes);

void Count(benchmark::State& state) {
  LoadedList list(CountOf(state));
  for (auto _ : state) {
    UINT count = 0;
    list->GetChannelCount(ServiceDigitalTV, &count);
    Check(count == list.Count() / 10 * 9, "counted wrongly");
  }
}
BENCHMARK(Count)->Name("Count/Television")->Apply(AllSizes);

// Once through all channels that the filter accepts, one call each.
void Walk(benchmark::State& state, BOOL favoritesOnly, UINT expected) {
  LoadedList list(CountOf(state));
  for (auto _ : state) {
    UINT steps = 0;
    for (UINT index = 0;
         list->FindNextChannel(index, &index, ServiceDigitalTV, favoritesOnly, 0) == S_OK;) {
      ++steps;
    }
    Check(steps == expected, "walked wrongly");
  }
}
void WalkAll(benchmark::State& state) { Walk(state, 0, CountOf(state) / 10 * 9); }
BENCHMARK(WalkAll)->Name("Walk/Television")->Apply(AllSizes);
void WalkFavorites(benchmark::State& state) { Walk(state, 1, CountOf(state) / 10); }
BENCHMARK(WalkFavorites)->Name("Walk/Favourites")->Apply(AllSizes);

// Records of a scan, each with its index, in the order in which they are added.
std::vector<ComPtr<IChannelInfo>> ScannedRecords(IChannelInfoMgr* list,
                                                 const std::vector<UINT>& indexes) {
  std::vector<ComPtr<IChannelInfo>> records;
  for (const UINT index : indexes) {
    records.emplace_back();
    list->CreateChannelInfo(records.back().Receive());
    records.back()->SetChannelIndex(index);
  }
  return records;
}

// Adds to an empty list, and looks where the last one is.
template <typename Order>
void Add(benchmark::State& state, Order order) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  const TempDirectory directory;
  Open(database, directory.Path());
  const ComPtr<IChannelInfoMgr> list = SatelliteList(database);
  std::vector<UINT> indexes(CountOf(state));
  std::iota(indexes.begin(), indexes.end(), 1);
  order(indexes);
  for (auto _ : state) {
    const auto records = ScannedRecords(list.Get(), indexes);
    Measure(state, [&] {
      for (const auto& record : records) {
        Check(list->AddChannelInfo(record.Get()) == S_OK, "not added");
      }
    });
    UINT last = 0;
    list->FindPreChannel(CountOf(state), &last, 0xFFFFFFFF, 0, 0);
    Check(last == CountOf(state) - 1, "added out of order");
    list->Clear();
  }
}
void AddAscending(benchmark::State& state) {
  Add(state, [](std::vector<UINT>&) {});
}
BENCHMARK(AddAscending)->Name("Add/Ascending")->Apply(AllSizesMeasured);
void AddDescending(benchmark::State& state) {
  Add(state, [](std::vector<UINT>& indexes) { std::reverse(indexes.begin(), indexes.end()); });
}
BENCHMARK(AddDescending)->Name("Add/Descending")->Apply(AllSizesMeasured);
void AddRandom(benchmark::State& state) {
  Add(state, [](std::vector<UINT>& indexes) {
    std::shuffle(indexes.begin(), indexes.end(), std::minstd_rand(1));
  });
}
BENCHMARK(AddRandom)->Name("Add/Random")->Apply(AllSizesMeasured);

// Gives the channels numbers in no order, the same ones each time.
class Shuffler {
 public:
  explicit Shuffler(const LoadedList& list) : m_numbers(list.Count()) {
    for (UINT index = 1; index <= list.Count(); ++index) {
      m_channels.emplace_back();
      list->GetChannelInfoByIndex(index, m_channels.back().Receive());
    }
    std::iota(m_numbers.begin(), m_numbers.end(), 1);
    std::shuffle(m_numbers.begin(), m_numbers.end(), std::minstd_rand(1));
  }
  void Shuffle() const {
    for (std::size_t i = 0; i < m_channels.size(); ++i) m_channels[i]->SetChannelNo(m_numbers[i]);
  }

 private:
  std::vector<ComPtr<IChannelInfo>> m_channels;
  std::vector<UINT> m_numbers;
};

void Sort(benchmark::State& state, ESortType sortType) {
  const LoadedList list(CountOf(state));
  const Shuffler shuffler(list);
  for (auto _ : state) {
    // The order stays as the last sort left it, and the numbers change.
    shuffler.Shuffle();
    Measure(state, [&] { Check(list->SortChannel(sortType, 1) == S_OK, "the sort failed"); });
  }
}
void SortByNumber(benchmark::State& state) { Sort(state, SortChannelByNo); }
BENCHMARK(SortByNumber)->Name("Sort/ByNumber")->Arg(1000)->Arg(10000)->UseManualTime();
void SortByService(benchmark::State& state) { Sort(state, SortChannelBySrvType); }
BENCHMARK(SortByService)->Name("Sort/ByService")->Arg(1000)->Arg(10000)->UseManualTime();

// From the end to the front, which numbers every channel afresh.
void Move(benchmark::State& state) {
  const LoadedList list(CountOf(state));
  list->MoveChannel(1, 2);
  for (auto _ : state) {
    Check(list->MoveChannel(list.Count(), 1) == S_OK, "the move failed");
  }
}
BENCHMARK(Move)->Name("Move/LastToFirst")->Apply(AllSizes);

}  // namespace
}  // namespace bench
