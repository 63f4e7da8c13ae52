#include "support/linux/child.h"

#include <sys/wait.h>
#include <unistd.h>

int ExitStatusOf(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child < 0) return -1;
  if (child == 0) _exit(work());
  int status = 0;
  const bool hasEnded = waitpid(child, &status, 0) == child && WIFEXITED(status);
  return hasEnded ? WEXITSTATUS(status) : -1;
}

bool InChild(const std::function<bool()>& check) {
  return ExitStatusOf([&] { return check() ? 0 : 1; }) == 0;
}

bool AsNobody(const std::function<bool()>& check) {
  constexpr unsigned kNobody = 65534;
  return InChild([&] {
    const bool isReady = geteuid() != 0 || (setresgid(kNobody, kNobody, kNobody) == 0 &&
                                            setresuid(kNobody, kNobody, kNobody) == 0);
    return isReady && check();
  });
}
