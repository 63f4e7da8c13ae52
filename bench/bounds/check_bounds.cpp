// Time and memory of `tunedex check` of hostile channel files, as a whole process, with 10
// megabytes and with 100. Ten times the input may take ten times as long, plus what noise adds.
//
// Usage: zortunedex_check_bounds [--check] [--quick]
//   --check  exit status 1 when an input takes out of proportion
//   --quick  a tenth of the sizes
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "bench/bounds/hostile_inputs.h"

namespace {

using namespace hostile;

constexpr std::size_t kWhole = 100'000'000;

constexpr char kOneLine[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE><Country name=\"Germany\" "
    "countrycode=\"49\"><ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">";

std::string Channel(std::size_t index, const std::string& name, const char* end) {
  return "<Channel name=\"" + name + "\" nameDisplay=\"a\" index=\"" + std::to_string(index) +
         "\" freq=\"89000\" favor=\"0\" lock=\"0\"/>" + end;
}

const Input kInputs[] = {
    {"good channels", kSetHead,
     [](std::size_t n) { return "\t\t\t" + Channel(n + 1, "a", "\r\n"); }},
    {"random bytes", "", [](std::size_t) { return RandomBytes(); }},
    {"raw names", kSetHead,
     [](std::size_t n) { return "\t\t\t" + Channel(n + 1, "7\" & <b>", "\r\n"); }},
    {"one line of raw names", kOneLine,
     [](std::size_t n) { return Channel(n + 1, "7\" & <b>", ""); }},
    {"one line of channels with one index", kOneLine,
     [](std::size_t) { return Channel(1, "a", ""); }},
    {"nesting", "", Always("<a>")},
    {"attributes of one element", "<CHANNELTABLE",
     [](std::size_t n) { return " a" + std::to_string(n) + "=''"; }},
    {"channels of 1,000 unknown attributes", kOneLine,
     [](std::size_t) {
       std::string channel = "<Channel index=\"1\"";
       for (int i = 0; i < 1000; ++i) channel += " a" + std::to_string(i) + "=\"\"";
       return channel + "/>";
     }},
    {"streams of one channel",
     "<CHANNELTABLE><Country countrycode=\"49\"><ChannelSet inputSignalType=\"64\">"
     "<Channel index=\"1\"><ElementStreams>",
     Always("<VideoStream type=\"1\" pid=\"16\"/>")},
};

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string path = (std::filesystem::temp_directory_path() / "zortunedex-XXXXXX").string();
    if (mkdtemp(path.data()) != nullptr) m_path = path;
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    if (!m_path.empty()) std::filesystem::remove_all(m_path, ignored);
  }

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

pid_t StartCheck(const std::filesystem::path& directory) {
  const pid_t child = fork();
  if (child != 0) return child;
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  execl(ZORTUNEDEX_TOOL, ZORTUNEDEX_TOOL, "--dir", directory.c_str(), "check", "--level", "note",
        nullptr);
  _exit(127);
}

/// Of one check. Nothing where it did not end as one does.
Cost Measure(const Input& input, std::size_t size) {
  const TemporaryDirectory directory;
  {
    std::ofstream file(directory.Path() / "ChanInfo.xml", std::ios::binary);
    file << BytesOf(input, size);
  }
  const Ended ended = WaitFor(StartCheck(directory.Path()));
  const int status = WIFEXITED(ended.status) ? WEXITSTATUS(ended.status) : -1;
  constexpr int kFound = 3;
  return status == 0 || status == kFound ? ended.cost : Cost{};
}

}  // namespace

int main(int argc, char** argv) {
  return RunBounds({kWhole, 10, 16, Measure}, kInputs, {argv + 1, argv + argc});
}
