// Presets: eight areas, sixty sub-areas, so many channels in each.
#include "bench/check.h"
#include "bench/database.h"
#include "bench/preset_data.h"
#include "bench/timing.h"
#include "platform/bstr.h"

namespace bench {
namespace {

constexpr InputSignalType kType = InputSignalISDBTerrestrialOneSeg;
constexpr LONG kCustomerArea = kPresetAreas - 1;

void AllPresets(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(2)->Arg(20)->Arg(200)->UseManualTime();
}

ComPtr<IZorTunedex> OpenPresets(UINT channels) {
  ComPtr<IZorTunedex> database = NewDatabase();
  const Bstr directory(PresetDirectory(channels).u16string());
  Check(database->Open(directory.Get(), 81, kType) == S_OK, "Open failed");
  return database;
}

LONG SubAreaCount(const ComPtr<IZorTunedex>& database, LONG area) {
  LONG count = 0;
  Check(database->GetSubAreaCount(area, &count) == S_OK, "not counted");
  return count;
}

void CheckList(const ComPtr<IChannelInfoMgr>& list, UINT channels) {
  UINT count = 0;
  Check(list && list->GetChannelCount(0xFFFFFFFF, &count) == S_OK, "no list");
  Check(count == channels, "channels were lost");
}

void Load(benchmark::State& state) {
  const ComPtr<IZorTunedex> database = OpenPresets(CountOf(state));
  for (auto _ : state) {
    Measure(state,
            [&] { Check(database->LoadPresetOneSegChannelInfo() == S_OK, "the load failed"); });
  }
}
BENCHMARK(Load)->Name("Presets/Load")->Apply(AllPresets);

void Count(benchmark::State& state) {
  const ComPtr<IZorTunedex> database = OpenPresets(CountOf(state));
  for (auto _ : state) {
    Measure(state, [&] {
      LONG areas = 0;
      LONG subAreas = 0;
      Check(database->GetAreaCount(&areas) == S_OK, "not counted");
      for (LONG area = 0; area < areas; ++area) subAreas += SubAreaCount(database, area);
      Check(areas == kPresetAreas && subAreas == kPresetSubAreas, "counted wrongly");
    });
  }
}
BENCHMARK(Count)->Name("Presets/Count")->Apply(AllPresets);

void Name(benchmark::State& state) {
  const ComPtr<IZorTunedex> database = OpenPresets(CountOf(state));
  for (auto _ : state) {
    Measure(state, [&] {
      CHAR name[260] = {};
      for (LONG i = 0; i < kPresetSubAreas; ++i) {
        const HRESULT hr =
            database->GetSubAreaNameByIndex(i / kPresetsInAnArea, i % kPresetsInAnArea, name);
        Check(hr == S_OK && name[0] == 'S', "no name");
      }
    });
  }
}
BENCHMARK(Name)->Name("Presets/Name")->Apply(AllPresets);

void List(benchmark::State& state) {
  const UINT channels = CountOf(state);
  const ComPtr<IZorTunedex> database = OpenPresets(channels);
  for (auto _ : state) {
    ComPtr<IChannelInfoMgr> list;
    Measure(state, [&] { database->GetPresetChannelMgr(3, 4, list.Receive()); });
    CheckList(list, channels);
  }
}
BENCHMARK(List)->Name("Presets/List")->Apply(AllPresets);

// Reads the preset file again and writes the channel file durably, as it always does.
void Select(benchmark::State& state) {
  const UINT channels = CountOf(state);
  for (auto _ : state) {
    const ComPtr<IZorTunedex> database = OpenPresets(channels);
    Measure(state, [&] { Check(database->SetArea(3, 4) == S_OK, "not selected"); });
    ComPtr<IChannelInfoMgr> list;
    Check(database->GetChannelInfoMgr(kType, list.Receive()) == S_OK, "no list");
    CheckList(list, channels);
  }
}
BENCHMARK(Select)->Name("Presets/Select")->Apply(AllPresets);

// A new list, and the whole preset file written durably.
void Store(benchmark::State& state) {
  const UINT channels = CountOf(state);
  const ComPtr<IZorTunedex> database = OpenPresets(channels);
  for (auto _ : state) {
    Measure(state, [&] { database->SaveCustomerChannelList(kCustomerLists, "Stored"); });
    ComPtr<IChannelInfoMgr> list;
    database->GetPresetChannelMgr(kCustomerArea, kCustomerLists, list.Receive());
    CheckList(list, channels);
    Check(database->DeleteCustomerChannelList(kCustomerLists) == S_OK, "not deleted");
  }
}
BENCHMARK(Store)->Name("Presets/Store")->Apply(AllPresets);

}  // namespace
}  // namespace bench
