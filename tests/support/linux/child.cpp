#include "support/linux/child.h"

#include <sys/wait.h>
#include <unistd.h>

bool InChild(const std::function<bool()>& check) {
  const pid_t child = fork();
  if (child < 0) return false;
  if (child == 0) _exit(check() ? 0 : 1);
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool AsNobody(const std::function<bool()>& check) {
  constexpr unsigned kNobody = 65534;
  return InChild([&] {
    const bool isReady = geteuid() != 0 || (setresgid(kNobody, kNobody, kNobody) == 0 &&
                                            setresuid(kNobody, kNobody, kNobody) == 0);
    return isReady && check();
  });
}
