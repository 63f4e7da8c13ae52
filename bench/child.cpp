#include "bench/child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/check.h"
#include "bench/timing.h"

namespace bench {
namespace {

double SecondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

pid_t Start(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  Check(posix_spawn_file_actions_init(&actions) == 0, "no memory");
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  Check(posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0,
        "a program could not be started");
  posix_spawn_file_actions_destroy(&actions);
  return child;
}

}  // namespace

std::filesystem::path OwnProgram() { return std::filesystem::read_symlink("/proc/self/exe"); }

void MeasureChild(benchmark::State& state, const std::vector<std::string>& command, int expected) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = Start(command);
  int status = 1;
  rusage used = {};
  const bool hasEnded = wait4(child, &status, 0, &used) == child && WIFEXITED(status);
  Check(hasEnded && WEXITSTATUS(status) == expected, "a program failed");
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  KeepLeast(state.counters[kBestWork], SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime));
  KeepLeast(state.counters[kBestTime], elapsed.count());
  state.SetIterationTime(elapsed.count());
}

}  // namespace bench
