// Saving. The library's saves are durable; libdvbv5's is not.
#include <fcntl.h>
#include <unistd.h>

#include "bench/check.h"
#include "bench/database.h"
#include "bench/dvb_file.h"
#include "bench/timing.h"
#include "bench/workspace.h"

namespace bench {
namespace {

// A database on the target directory whose list holds all channels.
class FullDatabase {
 public:
  explicit FullDatabase(const Workspace& files) : m_files(files), m_database(NewDatabase()) {
    Open(m_database, files.Source());
    m_list = SatelliteList(m_database);
    MakeFresh();
    Save();
    Check(ReadFile(files.TargetFile()) == ReadFile(files.SourceFile()),
          "the file is not what the library writes");
  }

  /// Every channel is changed and there is no file.
  void MakeFresh() {
    std::filesystem::remove(m_files.TargetFile());
    // Numbers all channels afresh and lets go of the elements that they came from.
    Check(m_list->SortChannel(SortChannelByNo, 1) == S_OK, "the list could not be sorted");
    // A second Open keeps the list and takes another document.
    Open(m_database, m_files.Target());
  }
  void MakeDirty() { m_list->SetDirty(1); }
  void Save() { Check(m_database->SaveChannelToFile() == S_OK, "the save failed"); }
  void SetStorage(EStorageType storage) { m_database->SetStorageType(storage); }

 private:
  const Workspace& m_files;
  ComPtr<IZorTunedex> m_database;
  ComPtr<IChannelInfoMgr> m_list;
};

void SaveFirst(benchmark::State& state) {
  FullDatabase database(Workspace::Of(CountOf(state)));
  for (auto _ : state) {
    database.MakeFresh();
    Measure(state, [&] { database.Save(); });
  }
}
BENCHMARK(SaveFirst)->Name("Save/First")->Apply(AllSizesMeasured);

void SaveAgain(benchmark::State& state) {
  FullDatabase database(Workspace::Of(CountOf(state)));
  for (auto _ : state) {
    database.MakeDirty();
    Measure(state, [&] { database.Save(); });
  }
}
BENCHMARK(SaveAgain)->Name("Save/Again")->Apply(AllSizesMeasured);

void SavePreFormatted(benchmark::State& state) {
  FullDatabase database(Workspace::Of(CountOf(state)));
  database.SetStorage(StoragePreFmtXML);
  for (auto _ : state) {
    database.MakeDirty();
    Measure(state, [&] { database.Save(); });
  }
}
BENCHMARK(SavePreFormatted)->Name("Save/PreFormatted")->Apply(AllSizesMeasured);

// What is left when nothing has to be made: the same bytes, as durably.
void WriteDurably(const std::string& bytes, const std::filesystem::path& path) {
  const std::filesystem::path temporary = path.string() + ".new";
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  const int directory = open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const bool written =
      write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  Check(written && fsync(file) == 0 && close(file) == 0, "the bytes could not be written");
  std::filesystem::rename(temporary, path);
  Check(fsync(directory) == 0 && close(directory) == 0, "the directory could not be synchronised");
}

void SaveBytes(benchmark::State& state) {
  const Workspace& files = Workspace::Of(CountOf(state));
  const std::string bytes = ReadFile(files.SourceFile());
  for (auto _ : state) {
    Measure(state, [&] { WriteDurably(bytes, files.TargetFile()); });
  }
}
BENCHMARK(SaveBytes)->Name("Save/BytesAlone")->Apply(AllSizesMeasured);

void SaveDvb(benchmark::State& state) {
  const Workspace& files = Workspace::Of(CountOf(state));
  const DvbFile file = MakeDvbFile(files.Count());
  for (auto _ : state) {
    Measure(state, [&] { WriteDvbFile(*file, files.DvbTargetFile()); });
  }
  Check(ReadFile(files.DvbTargetFile()) == ReadFile(files.DvbSourceFile()),
        "libdvbv5 wrote something else");
}
BENCHMARK(SaveDvb)->Name("Save/Dvbv5")->Apply(AllSizesMeasured);

}  // namespace
}  // namespace bench
