// Time and memory of importing the worst files that are known of every format, from the bytes to
// the list: each in a process of its own, with 10 megabytes and with 100. Ten times the input may
// take ten times as long, plus what noise adds.
//
// Usage: zortunedex_exchange_bounds [--check] [--quick] [FORMAT]
//   --check  exit status 1 when an input takes out of proportion, or more memory than there is for
//   it
//   --quick  a tenth of the sizes
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bounds/cost.h"
#include "kit/failure.h"
#include "kit/files/scratch_directory.h"
#include "kit/interchange/list/formats.h"
#include "kit/interchange/list/importing.h"
#include "kit/interchange/loss_report.h"

using namespace zortunedex::kit;

namespace {

using bounds::Cost;

constexpr std::size_t kWhole = 100'000'000;
constexpr double kMostGrowth = 20;
// Times below this are those of opening a database at all.
constexpr double kNoise = 0.1;

struct Bad {
  const char* format;
  const char* label;
  std::string head;
  std::function<std::string(std::size_t number)> item;
  std::string tail = {};
  const char* bouquet = nullptr;  ///< the bytes are this file of a folder
};

std::function<std::string(std::size_t)> Always(std::string text) {
  return [text = std::move(text)](std::size_t) { return text; };
}

/// Text with the number of the item between its parts.
std::function<std::string(std::size_t)> Numbered(std::string before, std::string behind) {
  return [before = std::move(before), behind = std::move(behind)](std::size_t number) {
    return before + std::to_string(number) + behind;
  };
}

constexpr char kJsonHead[] = "{\"tunedex\":\"channels\",\"version\":1,\"channels\":[";
constexpr char kDvbv5Head[] = "[One]\n\tDELIVERY_SYSTEM = DVBS\n\tSERVICE_ID = 5\n\t";
constexpr char kVdrHead[] = "One:11494:HC23M5S1:S19.2E:22000:";
constexpr char kLamedbHead[] =
    "eDVB services /4/\ntransponders\n00c00000:0001:0001\n\ts 11494000:22000000:0:2:192:2:0\n/\n"
    "end\nservices\n";
constexpr char kServiceHead[] = "0005:00c00000:0001:0001:1:0\n";

const Bad kInputs[] = {
    {"csv", "one long cell", "name\n", Always("a")},
    {"csv", "rows of one letter", "name\n", Always("a\n")},
    {"csv", "rows that fit no column", "name\n", Always("a,b\n")},
    {"csv", "one long number", "freq\n", Always("9")},
    {"csv", "long numbers", "freq\n", Always(std::string(1'000, '9') + "\n")},
    {"csv", "names of columns", "name", Numbered(",c", "")},
    {"csv", "quotes", "name\n\"", Always("\"\"")},
    {"csv", "entries of one list", "AudioStream\n", Always("3|5|0 ")},

    {"json", "one long name", std::string(kJsonHead) + "{\"name\":\"", Always("a"), "\"}]}"},
    {"json", "channels without anything", std::string(kJsonHead) + "{}", Always(",{}"), "]}"},
    {"json", "what is no channel", std::string(kJsonHead) + "0", Always(",0"), "]}"},
    {"json", "one long number", std::string(kJsonHead) + "{\"index\":1", Always("9"), "}]}"},
    {"json", "long numbers", std::string(kJsonHead) + "{}",
     Always(",{\"index\":" + std::string(300, '9') + "}"), "]}"},
    {"json", "keys of one channel", std::string(kJsonHead) + "{\"index\":1",
     Numbered(",\"k", "\":0"), "}]}"},
    {"json", "keys of the document", "{\"tunedex\":\"channels\"", Numbered(",\"k", "\":0"), "}"},
    {"json", "nesting", std::string(kJsonHead), Always("["), ""},
    {"json", "objects in objects", std::string(kJsonHead), Always("{\"a\":"), ""},
    {"json", "entries of one list", std::string(kJsonHead) + "{\"block\":{\"AudioStream\":[{}",
     Always(",{}"), "]}}]}"},

    {"dvbv5", "one long name", "[", Always("]name"), std::string("]\n") + (kDvbv5Head + 6)},
    {"dvbv5", "sections", "", Always("[One]\nDELIVERY_SYSTEM=DVBS\nSERVICE_ID=5\n")},
    {"dvbv5", "titles", kDvbv5Head, Always("[\n")},
    {"dvbv5", "one long number", std::string(kDvbv5Head) + "FREQUENCY = ", Always("9")},
    {"dvbv5", "long numbers", kDvbv5Head, Always("PID_0b = " + std::string(1'000, '9') + "\n")},
    {"dvbv5", "keys", kDvbv5Head, Numbered("K", "=1\n")},
    {"dvbv5", "streams of one channel", std::string(kDvbv5Head) + "AUDIO_PID = ", Always("17 ")},
    {"dvbv5", "lines that are none", kDvbv5Head, Always("x\n")},

    {"vdr", "one long name", "", Always("a,"), ":11494:HC23M5S1:S19.2E:22000:0:0:0:0:5:1:1:0\n"},
    {"vdr", "channels", "", Numbered("A:11494:HC23M5S1:S19.2E:22000:0:0:0:0:", ":1:1:0\n")},
    {"vdr", "channels of one identity", "", Always("A:1:H:S1E:2:0:0:0:0:5:1:1:0\n")},
    {"vdr", "one long number", std::string(kVdrHead) + "0:0:0:0:", Always("9")},
    {"vdr", "fields", kVdrHead, Always(":")},
    {"vdr", "streams of one channel", std::string(kVdrHead) + "0:35=deu@3", Always(",36=fra@4"),
     ":0:0:5:1:1:0\n"},
    {"vdr", "parameters of one channel", "One:11494:H", Always("Q1"),
     ":S19.2E:22000:0:0:0:0:5:1:1:0\n"},
    {"vdr", "systems of one channel", std::string(kVdrHead) + "0:0:0:100", Always(",1702"),
     ":5:1:1:0\n"},
    {"vdr", "groups", std::string(kVdrHead) + "0:0:0:0:5:1:1:0\n", Always(":a\n")},
    {"vdr", "lines that are none", std::string(kVdrHead) + "0:0:0:0:5:1:1:0\n", Always("x\n")},

    {"enigma2", "one long name", std::string(kLamedbHead) + kServiceHead, Always("a"),
     "\np:\nend\n"},
    {"enigma2", "services", kLamedbHead,
     [](std::size_t n) {
       constexpr char kDigits[] = "0123456789abcdef";
       std::string id;
       for (int shift = 12; shift >= 0; shift -= 4) id += kDigits[n >> shift & 15];
       return id + ":00c00000:0001:0001:1:0\na\np:\n";
     }},
    {"enigma2", "transponders", "eDVB services /4/\ntransponders\n",
     [](std::size_t n) {
       std::string key(8, '0');
       for (std::size_t i = 8; i-- > 0; n >>= 4) key[i] = "0123456789abcdef"[n & 15];
       return key + ":0001:0001\n\ts 1\n/\n";
     },
     "end\nservices\nend\n"},
    {"enigma2", "one long number", "eDVB services /4/\ntransponders\n00c00000:0001:0001\n\ts ",
     Always("9")},
    {"enigma2", "streams of one service",
     std::string(kLamedbHead) + kServiceHead + "a\np:", Always(",c:010011"), "\nend\n"},
    {"enigma2", "systems of one service", std::string(kLamedbHead) + kServiceHead + "a\np:",
     [](std::size_t n) { return std::string(",C:") + (n % 2 ? "0100" : "1702"); }, "\nend\n"},
    {"enigma2", "unknown data of one service",
     std::string(kLamedbHead) + kServiceHead + "a\np:", Always(",x"), "\nend\n"},
    {"enigma2", "lines that are none", "eDVB services /5/\n", Always("x\n")},
    {"enigma2", "services of a bouquet", "", Always("#SERVICE 1:0:1:5:1:1:C00000:0:0:0:\n"), "",
     "userbouquet.a.tv"},
    {"enigma2", "lines of a bouquet", "", Always("x\n"), "", "userbouquet.a.tv"},
    {"enigma2", "bouquets", "",
     Numbered("#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"b", "\" ORDER BY bouquet\n"), "",
     "bouquets.tv"},

    {"m3u", "one long name", "#EXTINF:-1,", Always("a")},
    {"m3u", "entries that fit no channel", "", Always("#EXTINF:,a\nx\n")},
    {"m3u", "one long number", "#EXTINF:-1 tvg-chno=\"", Always("9")},
    {"m3u", "attributes of one entry", "#EXTINF:-1", Numbered(" k", "=1")},
    {"m3u", "words of one entry", "#EXTINF:-1", Always(" k")},
    {"m3u", "groups of one entry", "#EXTINF:-1 group-title=\"", Always("a;"), "\",One\nx\n"},
    {"m3u", "directives", "#EXTM3U\n", Numbered("#EXT", "\n")},
    {"m3u", "lines that are none", "#EXTM3U\n", Always("x\n")},
    {"m3u", "lines of an editor's list", "", Always("1;a;1-2-3\n")},
};

std::string BytesOf(const Bad& bad, std::size_t size) {
  std::string bytes = bad.head;
  bytes.reserve(size + 4096);
  for (std::size_t number = 0; bytes.size() < size; ++number) bytes += bad.item(number);
  return bytes + bad.tail;
}

interchange::Input InputOf(const Bad& bad, std::size_t size) {
  interchange::Input input;
  std::string bytes = BytesOf(bad, size);
  if (bad.bouquet == nullptr) {
    input.bytes = std::move(bytes);
    return input;
  }
  input.isFolder = true;
  input.names = {"lamedb", "bouquets.tv", "userbouquet.a.tv"};
  input.read = [bytes = std::move(bytes),
                file = bad.bouquet](const std::string& name) -> std::optional<std::string> {
    if (name == file) return bytes;
    if (name == "lamedb") return kLamedbHead;
    if (name != "bouquets.tv") return std::nullopt;
    return "#SERVICE 1:7:1:0:0:0:0:0:0:0:FROM BOUQUET \"userbouquet.a.tv\" ORDER BY bouquet\n";
  };
  return input;
}

/// Takes a file into an empty list and makes both reports, or refuses it.
bool Import(const Bad& bad, const interchange::Input& input) {
  const ScratchDirectory directory;
  const interchange::Format& format = *interchange::FindFormat(bad.format);
  const bool isTable = format.name == std::string_view("csv");
  const InputSignalType signal = isTable ? InputSignalDVBTerrestrial : InputSignalDVBSatellite;
  const Database database({directory.Path(), 49, signal});
  const NarrowText narrow(database);
  const interchange::ListContext context{49, signal, database, narrow};
  const std::vector<Channel> none;
  try {
    const interchange::Import made =
        interchange::ImportChannels(format, input, {context, none}, interchange::Into::Empty);
    const interchange::LossReport report{interchange::Direction::Import, format.name, made.read,
                                         made.taken, made.losses};
    return interchange::LossText(report).size() <= 100'000;
  } catch (const Failure&) {
    return true;
  }
}

Cost Measure(const Bad& bad, std::size_t size) {
  return bounds::CostOf([&]() -> bounds::Work {
    return [&bad, input = InputOf(bad, size)] { return Import(bad, input); };
  });
}

bool Report(const Bad& bad, std::size_t size) {
  const Cost tenth = Measure(bad, size / 10);
  const Cost whole = Measure(bad, size);
  const double growth = whole.seconds / tenth.seconds;
  const bool isDone = tenth.seconds >= 0 && whole.seconds >= 0;
  const bool isFine = isDone && (whole.seconds < kNoise || growth < kMostGrowth);
  std::printf("| %-7s | %-28s | %7.3f | %7.3f | %5.1f | %6.0f |%s\n", bad.format, bad.label,
              tenth.seconds, whole.seconds, growth, whole.megabytes,
              isFine   ? ""
              : isDone ? " out of proportion"
                       : " not done");
  std::fflush(stdout);
  return isFine;
}

}  // namespace

int main(int argc, char** argv) {
  const bounds::Words words(argc, argv);
  const std::size_t size = words.Has("--quick") ? kWhole / 10 : kWhole;
  const bool isAll = words.AreOptions();
  bool isFine = true;
  std::printf("| %-7s | %-28s | %7s | %7s | %5s | %6s |\n|---|---|---|---|---|---|\n", "format",
              "all of", "1/10, s", "all, s", "ratio", "MB");
  for (const Bad& bad : kInputs) {
    if (isAll || words.Has(bad.format)) isFine = Report(bad, size) && isFine;
  }
  return words.Has("--check") && !isFine ? 1 : 0;
}
