// Loading the satellite catalogue, beside a parser over the same bytes.
#include "bench/catalogue_data.h"
#include "bench/check.h"
#include "bench/database.h"
#include "bench/timing.h"
#include "bench/workspace.h"
#include "bench/xml_passes.h"

namespace bench {
namespace {

void AllCatalogues(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(2000)->Arg(20000)->Arg(200000)->UseManualTime();
}

void LoadCatalogue(benchmark::State& state) {
  const UINT count = CountOf(state);
  for (auto _ : state) {
    const ComPtr<IZorTunedex> database = NewDatabase();
    Open(database, CatalogueDirectory(count));
    Measure(state, [&] { Check(database->LoadSatInfoFromFile() == S_OK, "the load failed"); });
    CheckCatalogue(database, count);
  }
}
BENCHMARK(LoadCatalogue)->Name("Catalogue/Load")->Apply(AllCatalogues);

void ParseCatalogue(benchmark::State& state) {
  const UINT count = CountOf(state);
  const std::string bytes = ReadFile(CatalogueFile(CatalogueDirectory(count)));
  for (auto _ : state) {
    std::size_t elements = 0;
    Measure(state, [&] { elements = RunSax(bytes); });
    Check(elements == 3 + std::size_t{3} * SatellitesFor(count) + count + kLnbTypes,
          "elements were lost");
  }
}
BENCHMARK(ParseCatalogue)->Name("Catalogue/SaxPass")->Apply(AllCatalogues);

}  // namespace
}  // namespace bench
