#include "bounds/cost.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace bounds {
namespace {

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double SecondsSoFar() {
  rusage used = {};
  getrusage(RUSAGE_SELF, &used);
  return Seconds(used.ru_utime) + Seconds(used.ru_stime);
}

/// Far more than anything takes that is in proportion: what is not must not take the machine along.
void LimitMemory() {
  constexpr rlim_t kMost = rlim_t{8} << 30;
  const rlimit limit = {kMost, kMost};
  setrlimit(RLIMIT_AS, &limit);
}

/// Never returns.
void RunChild(const std::function<Work()>& prepare, int answer) {
  LimitMemory();
  bool isDone = false;
  try {
    const Work work = prepare();
    const double before = SecondsSoFar();
    isDone = work();
    const double seconds = SecondsSoFar() - before;
    isDone = isDone && write(answer, &seconds, sizeof(seconds)) == sizeof(seconds);
  } catch (...) {
    isDone = false;
  }
  _exit(isDone ? 0 : 1);
}

}  // namespace

Cost CostOf(const std::function<Work()>& prepare) {
  int ends[2] = {};
  if (pipe(ends) != 0) return {};
  const pid_t child = fork();
  if (child == 0) RunChild(prepare, ends[1]);
  Cost cost;
  close(ends[1]);
  double seconds = -1;
  if (read(ends[0], &seconds, sizeof(seconds)) == sizeof(seconds)) cost.seconds = seconds;
  close(ends[0]);
  int status = 1;
  rusage used = {};
  wait4(child, &status, 0, &used);
  if (status != 0) return {};
  cost.megabytes = static_cast<double>(used.ru_maxrss) / 1024;
  return cost;
}

bool Words::Has(std::string_view word) const {
  return std::find(m_words.begin(), m_words.end(), word) != m_words.end();
}

bool Words::AreOptions() const {
  return std::all_of(m_words.begin(), m_words.end(),
                     [](std::string_view word) { return word.starts_with("--"); });
}

}  // namespace bounds
