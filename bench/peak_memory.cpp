#include "bench/peak_memory.h"

#include <libxml/parser.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <memory>

#include "bench/catalogue_data.h"
#include "bench/channel_data.h"
#include "bench/check.h"
#include "bench/database.h"
#include "bench/dvb_file.h"
#include "bench/xml_passes.h"

namespace bench {
namespace {

// A line of this process's status, in bytes.
std::uint64_t StatusBytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    std::uint64_t kilobytes = 0;
    if (word == name + ":" && status >> kilobytes) return kilobytes * 1024;
  }
  Check(false, "the memory of the process cannot be asked");
  return 0;
}

void Fill(const Workspace& files, EStorageType storage) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  Open(database, files.Target());
  Check(SatelliteList(database)->Clear() == S_OK, "the list could not be cleared");
  database->SetStorageType(storage);
  FillList(SatelliteList(database).Get(), files.Count());
  Check(database->SaveChannelToFile() == S_OK, "the save failed");
}

const std::map<std::string, std::function<void(const Workspace&)>> kWorks = {
    {"load",
     [](const Workspace& files) {
       const ComPtr<IZorTunedex> database = NewDatabase();
       Open(database, files.Source());
       CheckCount(database, files.Count());
     }},
    {"sax", [](const Workspace& files) { RunSax(ReadFile(files.SourceFile())); }},
    {"tree", [](const Workspace& files) { ReadXmlTree(ReadFile(files.SourceFile())); }},
    {"dvb", [](const Workspace& files) { ReadDvbFile(files.DvbSourceFile()); }},
    {"catalogue",
     [](const Workspace& files) {
       const ComPtr<IZorTunedex> database = NewDatabase();
       Open(database, files.Directory());
       Check(database->LoadSatInfoFromFile() == S_OK, "the load failed");
       CheckCatalogue(database, files.Count());
     }},
    {"catalogue-sax",
     [](const Workspace& files) { RunSax(ReadFile(CatalogueFile(files.Directory()))); }},
    {"open-save",
     [](const Workspace& files) {
       const ComPtr<IZorTunedex> database = NewDatabase();
       Open(database, files.Source());
       SatelliteList(database)->SetDirty(1);
       Check(database->SaveChannelToFile() == S_OK, "the save failed");
     }},
    {"catalogue-open",
     [](const Workspace& files) {
       const ComPtr<IZorTunedex> database = NewDatabase();
       Open(database, files.Directory());
       Check(database->LoadSatInfoFromFile() == S_OK, "the load failed");
     }},
    {"save", [](const Workspace& files) { Fill(files, StorageXML); }},
    {"save-preformatted", [](const Workspace& files) { Fill(files, StoragePreFmtXML); }},
};

}  // namespace

std::optional<std::uint64_t> MeasurePeak(const std::string& work, UINT count,
                                         const std::filesystem::path& directory) {
  std::error_code ignored;
  std::filesystem::remove(Workspace(directory, count).TargetFile(), ignored);
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  const std::string command = "'" + program + "' --peak " + work + " " + std::to_string(count) +
                              " '" + directory.string() + "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  unsigned long long bytes = 0;
  if (!output || std::fscanf(output.get(), "%llu", &bytes) != 1) return std::nullopt;
  return bytes;
}

void RunForPeak(const std::string& work, const Workspace& files) {
  const auto found = kWorks.find(work);
  Check(found != kWorks.end(), "unknown work");
  xmlInitParser();
  const std::uint64_t before = StatusBytes("VmRSS");
  found->second(files);
  // The peak of this process's own memory: a program that is started anew does not inherit it, as
  // it does ru_maxrss.
  std::printf("%llu\n", static_cast<unsigned long long>(StatusBytes("VmHWM") - before));
}

}  // namespace bench
