// Files that are hard to read, of any size, and what it costs to look at each.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hostile {

/// A beginning, and what stands behind it again and again.
struct Input {
  const char* label;
  std::string head;
  std::function<std::string(std::size_t number)> item;
};

inline std::function<std::string(std::size_t)> Always(std::string text) {
  return [text = std::move(text)](std::size_t) { return text; };
}

inline constexpr char kSetHead[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>\r\n"
    "\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
    "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n";

inline std::string RandomBytes() {
  static std::mt19937 engine(1);
  std::string bytes(4096, '\0');
  for (char& byte : bytes) byte = static_cast<char>(engine());
  return bytes;
}

inline std::string BytesOf(const Input& input, std::size_t size) {
  std::string bytes = input.head;
  bytes.reserve(size + 4096);
  for (std::size_t number = 0; bytes.size() < size; ++number) bytes += input.item(number);
  return bytes;
}

inline double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

struct Cost {
  double seconds = -1;  ///< of processor time
  double megabytes = 0;
};

/// How a process ended, and what it had cost.
struct Ended {
  int status = 1;
  Cost cost;
};

inline Ended WaitFor(pid_t child) {
  Ended ended;
  rusage used = {};
  wait4(child, &ended.status, 0, &used);
  ended.cost = {Seconds(used.ru_utime) + Seconds(used.ru_stime),
                static_cast<double>(used.ru_maxrss) / 1024};
  return ended;
}

/// What is measured of every input: a part of a size, and all of it.
struct Bounds {
  std::size_t size;
  std::size_t parts;  ///< so many times the smaller input is the larger one
  double mostGrowth;  ///< that many times as long the larger one may take
  Cost (*measure)(const Input& input, std::size_t size);
};

inline bool ReportGrowth(const Bounds& bounds, const Input& input) {
  const Cost part = bounds.measure(input, bounds.size / bounds.parts);
  const Cost whole = bounds.measure(input, bounds.size);
  const double growth = whole.seconds / part.seconds;
  const bool isFine = part.seconds > 0 && whole.seconds > 0 && growth < bounds.mostGrowth;
  std::printf("| %-36s | %7.3f | %7.3f | %5.1f | %7.0f |%s\n", input.label, part.seconds,
              whole.seconds, growth, whole.megabytes, isFine ? "" : " out of proportion");
  std::fflush(stdout);
  return isFine;
}

/// Answers the exit status: with --check 1 when an input takes out of proportion. --quick takes a
/// tenth of the size.
inline int RunBounds(Bounds bounds, std::span<const Input> inputs,
                     const std::vector<std::string_view>& options) {
  const auto has = [&options](std::string_view option) {
    return std::find(options.begin(), options.end(), option) != options.end();
  };
  if (has("--quick")) bounds.size /= 10;
  const std::string part = "1/" + std::to_string(bounds.parts) + ", s";
  std::printf("| %-36s | %7s | %7s | %5s | %7s |\n|---|---|---|---|---|\n", "all of", part.c_str(),
              "all, s", "ratio", "MB");
  bool isFine = true;
  for (const Input& input : inputs) isFine = ReportGrowth(bounds, input) && isFine;
  return has("--check") && !isFine ? 1 : 0;
}

}  // namespace hostile
