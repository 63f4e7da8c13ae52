// Time and memory of the worst inputs that are known: each in a process of its own, with a quarter
// of a megabyte and with a whole one. Four times the input may take four times as long, plus what
// noise and the order of a sort add.
//
// Usage: zortunedex_bounds [--check]     exit status 1 when an input takes out of proportion
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

#include "core/interfaces.h"
#include "platform/bstr.h"
#include "platform/com_ptr.h"
#include "platform/host.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kWhole = 1000000;
constexpr double kMostGrowth = 8;
// Times below this are those of opening a database at all.
constexpr double kNoise = 0.05;

struct Input {
  const char* label;
  const char* file;
  std::string head;
  std::function<std::string(std::size_t number)> item;
  std::string tail;
};

constexpr char kSetHead[] =
    "<CHANNELTABLE><Country countrycode=\"49\"><ChannelSet inputSignalType=\"64\">";
constexpr char kSetTail[] = "</ChannelSet></Country></CHANNELTABLE>";
constexpr char kSatHead[] = "<a><SAT_TABLE>";
constexpr char kSatTail[] = "</SAT_TABLE><LNB_TABLE/></a>";
constexpr char kDishHead[] = "<a><SAT_SETTING><DISH_1>";
constexpr char kDishTail[] = "</DISH_1><DISH_2/><DISH_3/><DISH_4/></SAT_SETTING></a>";

std::function<std::string(std::size_t)> Always(std::string text) {
  return [text = std::move(text)](std::size_t) { return text; };
}

std::string Descending(const char* before, std::size_t number, const char* after) {
  return before + std::to_string(10000000 - number) + after;
}

const Input kInputs[] = {
    {"attributes of one element (refused)", "ChanInfo.xml", std::string(kSetHead) + "<Channel",
     [](std::size_t n) { return " a" + std::to_string(n) + "=''"; }, std::string("/>") + kSetTail},
    {"channels of 1,024 attributes", "ChanInfo.xml", kSetHead,
     [](std::size_t) {
       std::string channel = "<Channel";
       for (int n = 0; n < 1024; ++n) channel += " a" + std::to_string(n) + "=''";
       return channel + "/>";
     },
     kSetTail},
    {"elements below 256 namespaces", "ChanInfo.xml",
     [] {
       std::string head = "<CHANNELTABLE";
       for (int n = 0; n < 256; ++n) head += " xmlns:p" + std::to_string(n) + "='u'";
       return head + ">";
     }(),
     Always("<p0:a/>"), "</CHANNELTABLE>"},
    {"channels with equal indexes", "ChanInfo.xml", kSetHead, Always("<Channel index='5'/>"),
     kSetTail},
    {"channels with descending indexes", "ChanInfo.xml", kSetHead,
     [](std::size_t n) { return Descending("<Channel index='", n, "'/>"); }, kSetTail},
    {"channels without anything", "ChanInfo.xml", kSetHead, Always("<Channel/>"), kSetTail},
    {"stream counts of 4294967295", "ChanInfo.xml", kSetHead,
     Always("<Channel index='1'><ElementStreams numOfVideoStreams='4294967295' "
            "numOfAudioStreams='4294967295' numOfDsmccStreams='4294967295' "
            "numOfMhpAitStreams='4294967295'/></Channel>"),
     kSetTail},
    {"streams of one channel", "ChanInfo.xml", std::string(kSetHead) + "<Channel><ElementStreams>",
     Always("<VideoStream/>"), std::string("</ElementStreams></Channel>") + kSetTail},
    {"one long name", "ChanInfo.xml", std::string(kSetHead) + "<Channel name='", Always("nnnnnnnn"),
     std::string("'/>") + kSetTail},
    {"character references in one name", "ChanInfo.xml", std::string(kSetHead) + "<Channel name='",
     Always("&#8364;"), std::string("'/>") + kSetTail},
    {"empty countries", "ChanInfo.xml", "<CHANNELTABLE>", Always("<Country/>"), "</CHANNELTABLE>"},
    {"nesting (refused beyond 256 levels)", "ChanInfo.xml", "<CHANNELTABLE>", Always("<a>"), ""},
    {"namespaces of one element (refused)", "ChanInfo.xml", "<CHANNELTABLE",
     [](std::size_t n) { return " xmlns:p" + std::to_string(n) + "='u'"; }, "/>"},
    {"satellites with descending indexes", "SatelliteInfo.xml", kSatHead,
     [](std::size_t n) { return Descending("<Satellite index='", n, "'/>"); }, kSatTail},
    {"transponders of one satellite", "SatelliteInfo.xml",
     std::string(kSatHead) + "<Satellite><Ku-Band>", Always("<Transponder/>"),
     std::string("</Ku-Band></Satellite>") + kSatTail},
    {"different assignments of one dish", "UserSettings.xml", kDishHead,
     [](std::size_t n) {
       return "<SAT id='" + std::to_string(n) +
              "' band='' LNB_Low='0' LNB_High='0' LNB_Switch='0'/>";
     },
     kDishTail},
    {"assignments that are never found", "UserSettings.xml", kDishHead, Always("<SAT id=\"'\"/>"),
     kDishTail},
};

std::string BytesOf(const Input& input, std::size_t size) {
  std::string bytes = input.head;
  for (std::size_t number = 0; bytes.size() < size; ++number) bytes += input.item(number);
  return bytes + input.tail;
}

bool Work(const fs::path& directory) {
  void* factory = nullptr;
  void* made = nullptr;
  if (FAILED(host::GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, &factory))) return false;
  const auto held = ComPtr<IClassFactory>::Attach(static_cast<IClassFactory*>(factory));
  if (FAILED(held->CreateInstance(nullptr, IID_IZorTunedex, &made))) return false;
  const auto database = ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(made));
  const Bstr path(directory.u16string());
  if (FAILED(database->Open(path.Get(), 49, InputSignalDVBSatellite))) return false;
  database->LoadSatInfoFromFile();
  database->SaveUserSettingsToFile();
  ComPtr<IChannelInfoMgr> list;
  if (FAILED(database->GetChannelInfoMgr(InputSignalDVBSatellite, list.Receive()))) return false;
  // As the list came, and numbered afresh.
  list->SetDirty(1);
  database->SaveChannelToFile();
  list->SortChannel(SortChannelByNo, 1);
  return SUCCEEDED(database->SaveChannelToFile());
}

struct Cost {
  double seconds = -1;
  double megabytes = 0;
};

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Loads and saves in a process of its own.
Cost Measure(const Input& input, std::size_t size) {
  std::string name = (fs::temp_directory_path() / "zortunedex-bounds-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) return {};
  std::ofstream(fs::path(name) / input.file, std::ios::binary) << BytesOf(input, size);
  const pid_t child = fork();
  if (child == 0) _exit(Work(name) ? 0 : 1);
  int status = 1;
  rusage used = {};
  wait4(child, &status, 0, &used);
  fs::remove_all(name);
  if (status != 0) return {};
  return {Seconds(used.ru_utime) + Seconds(used.ru_stime),
          static_cast<double>(used.ru_maxrss) / 1024};
}

bool Report(const Input& input) {
  const Cost quarter = Measure(input, kWhole / 4);
  const Cost whole = Measure(input, kWhole);
  const double growth = whole.seconds / quarter.seconds;
  const bool isFine = quarter.seconds >= 0 && whole.seconds >= 0 &&
                      (whole.seconds < kNoise || growth < kMostGrowth);
  std::printf("| %-36s | %7.3f | %7.3f | %5.1f | %6.1f |%s\n", input.label, quarter.seconds,
              whole.seconds, growth, whole.megabytes, isFine ? "" : " out of proportion");
  std::fflush(stdout);
  return isFine;
}

}  // namespace

int main(int argc, char** argv) {
  bool isFine = true;
  std::printf("| %-36s | %7s | %7s | %5s | %6s |\n|---|---|---|---|---|\n", "1 MB of", "250 KB, s",
              "1 MB, s", "ratio", "MB");
  for (const Input& input : kInputs) isFine = Report(input) && isFine;
  return argc > 1 && std::string_view(argv[1]) == "--check" && !isFine ? 1 : 0;
}
