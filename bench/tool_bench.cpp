// The tool's commands as whole processes, beside a process that opens and saves the same list, or
// loads the same catalogue, and does nothing else.
#include <filesystem>
#include <map>

#include "bench/catalogue_data.h"
#include "bench/channel_data.h"
#include "bench/child.h"
#include "bench/timing.h"
#include "bench/workspace.h"

namespace bench {
namespace {

void ToolSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10000)->Arg(40000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

// Every name breaks the file, and every channel has the index of the one before.
std::string MakeHostileFile(UINT count) {
  std::string text =
      "<CHANNELTABLE>\r\n\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
      "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n";
  for (UINT i = 0; i < count; ++i) {
    text +=
        "\t\t\t<Channel name=\"7\" & <b>\" nameDisplay=\"\"/>\" index=\"1\" freq=\"1\" favor=\"0\" "
        "lock=\"0\"/>\r\n";
  }
  return text;
}

// The same services under other numbers: each is recognised by the last tier alone.
std::string MakeScan(UINT count) {
  constexpr std::string_view kNumber = "serviceID=\"";
  std::string text = MakeChannelFile(count);
  std::string scan;
  std::size_t from = 0;
  for (std::size_t at = text.find(kNumber); at != std::string::npos;
       at = text.find(kNumber, from)) {
    scan.append(text, from, at + kNumber.size() - from);
    scan += '5';
    from = at + kNumber.size();
  }
  return scan.append(text, from);
}

// A file that the commands change, a scan to be merged into one, and a catalogue with all
// transponders at one satellite.
const std::filesystem::path& ToolDirectory(UINT count) {
  static std::map<UINT, TempDirectory> directories;
  const auto [found, isNew] = directories.try_emplace(count);
  const std::filesystem::path& directory = found->second.Path();
  if (isNew) {
    std::filesystem::create_directory(directory / "source");
    std::filesystem::create_directory(directory / "target");
    WriteFile(directory / "source" / "ChanInfo.xml", MakeChannelFile(count));
    std::filesystem::create_directory(directory / "hostile");
    WriteFile(directory / "hostile" / "ChanInfo.xml", MakeHostileFile(count));
    std::filesystem::create_directory(directory / "scan");
    WriteFile(directory / "scan" / "ChanInfo.xml", MakeScan(count));
    WriteFile(CatalogueFile(directory), MakeCatalogueFile(count, 1));
  }
  return directory;
}

// The work of a process that this program is started as; see peak_memory.h.
void OwnWork(benchmark::State& state, const char* work) {
  const std::string directory = ToolDirectory(CountOf(state)).string();
  const std::string count = std::to_string(CountOf(state));
  for (auto _ : state) {
    MeasureChild(state, {OwnProgram().string(), "--peak", work, count, directory});
  }
}
void OpenAndSave(benchmark::State& state) { OwnWork(state, "open-save"); }
BENCHMARK(OpenAndSave)->Name("Tool/OpenAndSave")->Apply(ToolSizes);
void OpenList(benchmark::State& state) { OwnWork(state, "load"); }
BENCHMARK(OpenList)->Name("Tool/Open")->Apply(ToolSizes);
void OpenCatalogue(benchmark::State& state) { OwnWork(state, "catalogue-open"); }
BENCHMARK(OpenCatalogue)->Name("Tool/OpenCatalogue")->Apply(ToolSizes);

void RunTool(benchmark::State& state, const std::filesystem::path& directory,
             const std::vector<std::string>& words) {
  std::vector<std::string> command = {
      ZORTUNEDEX_TOOL, "--dir", directory.string(), "--country", "49", "--signal", "DVBSatellite"};
  command.insert(command.end(), words.begin(), words.end());
  MeasureChild(state, command);
}

void ToolReads(benchmark::State& state, const std::vector<std::string>& words) {
  for (auto _ : state) RunTool(state, ToolDirectory(CountOf(state)) / "source", words);
}
BENCHMARK_CAPTURE(ToolReads, list, {"channels", "list"})->Name("Tool/List")->Apply(ToolSizes);
BENCHMARK_CAPTURE(ToolReads, show, {"channels", "show", "1"})->Name("Tool/Show")->Apply(ToolSizes);

void ToolCompares(benchmark::State& state, const char* other) {
  for (auto _ : state) {
    const std::filesystem::path& directory = ToolDirectory(CountOf(state));
    RunTool(state, directory / "source", {"channels", "diff", (directory / other).string()});
  }
}
BENCHMARK_CAPTURE(ToolCompares, same, "source")->Name("Tool/Diff")->Apply(ToolSizes);
BENCHMARK_CAPTURE(ToolCompares, renumbered, "scan")->Name("Tool/DiffRenumbered")->Apply(ToolSizes);

BENCHMARK_CAPTURE(ToolReads, check, {"check"})->Name("Tool/Check")->Apply(ToolSizes);
void CheckHostile(benchmark::State& state) {
  constexpr int kFound = 3;
  const std::string directory = (ToolDirectory(CountOf(state)) / "hostile").string();
  for (auto _ : state) MeasureChild(state, {ZORTUNEDEX_TOOL, "--dir", directory, "check"}, kFound);
}
BENCHMARK(CheckHostile)->Name("Tool/CheckHostile")->Apply(ToolSizes);

// Each time something else, so that there is something to save.
void ToolChanges(benchmark::State& state, const std::vector<std::string>& words) {
  UINT index = 0;
  for (auto _ : state) {
    std::vector<std::string> command = words;
    const std::string next = std::to_string(++index);
    for (std::string& word : command) {
      const std::size_t place = word.find("INDEX");
      if (place != std::string::npos) word.replace(place, 5, next);
    }
    if (index == 1) {
      std::filesystem::copy_file(ToolDirectory(CountOf(state)) / "source" / "ChanInfo.xml",
                                 ToolDirectory(CountOf(state)) / "target" / "ChanInfo.xml",
                                 std::filesystem::copy_options::overwrite_existing);
    }
    RunTool(state, ToolDirectory(CountOf(state)) / "target", command);
  }
}
BENCHMARK_CAPTURE(ToolChanges, lock, {"channels", "lock", "INDEX"})
    ->Name("Tool/Lock")
    ->Apply(ToolSizes);
BENCHMARK_CAPTURE(ToolChanges, rename, {"channels", "rename", "INDEX", "Another name"})
    ->Name("Tool/Rename")
    ->Apply(ToolSizes);

BENCHMARK_CAPTURE(ToolChanges, edit,
                  {"channels", "edit", "--index", "INDEX", "--set", "favorite=9INDEX"})
    ->Name("Tool/Edit")
    ->Apply(ToolSizes);

void ToolTransponders(benchmark::State& state) {
  for (auto _ : state) {
    RunTool(state, ToolDirectory(CountOf(state)), {"transponders", "list", "SAT-0000"});
  }
}
BENCHMARK(ToolTransponders)->Name("Tool/Transponders")->Apply(ToolSizes);

}  // namespace
}  // namespace bench
