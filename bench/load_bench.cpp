// Loading: the whole way of a host to a list of channels, beside parsers over the same bytes and
// libdvbv5 over the same channels. Freeing is not measured.
#include "bench/check.h"
#include "bench/database.h"
#include "bench/dvb_file.h"
#include "bench/timing.h"
#include "bench/workspace.h"
#include "bench/xml_passes.h"

namespace bench {
namespace {

void LoadDatabase(benchmark::State& state) {
  const Workspace& files = Workspace::Of(CountOf(state));
  for (auto _ : state) {
    const ComPtr<IZorTunedex> database = NewDatabase();
    Measure(state, [&] { Open(database, files.Source()); });
    CheckCount(database, files.Count());
  }
}
BENCHMARK(LoadDatabase)->Name("Load/ZorTunedex")->Apply(AllSizesMeasured);

void LoadSax(benchmark::State& state) {
  const std::string bytes = ReadFile(Workspace::Of(CountOf(state)).SourceFile());
  for (auto _ : state) {
    std::size_t count = 0;
    Measure(state, [&] { count = RunSax(bytes); });
    Check(count == 3 + std::size_t{8} * CountOf(state), "elements were lost");
  }
}
BENCHMARK(LoadSax)->Name("Load/SaxPass")->Apply(AllSizesMeasured);

void LoadTree(benchmark::State& state) {
  const std::string bytes = ReadFile(Workspace::Of(CountOf(state)).SourceFile());
  for (auto _ : state) {
    XmlTree tree;
    Measure(state, [&] { tree = ReadXmlTree(bytes); });
  }
}
BENCHMARK(LoadTree)->Name("Load/XmlTree")->Apply(AllSizesMeasured);

void LoadDvb(benchmark::State& state) {
  const Workspace& files = Workspace::Of(CountOf(state));
  for (auto _ : state) {
    DvbFile file;
    Measure(state, [&] { file = ReadDvbFile(files.DvbSourceFile()); });
    Check(CountDvbChannels(*file) == files.Count(), "libdvbv5 lost channels");
  }
}
BENCHMARK(LoadDvb)->Name("Load/Dvbv5")->Apply(AllSizesMeasured);

}  // namespace
}  // namespace bench
