#include "support/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

int StatusOfProgram(const std::string& path, const std::vector<std::string>& arguments,
                    const StandardFiles& files) {
  std::vector<char*> words = {const_cast<char*>(path.c_str())};
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);

  constexpr mode_t kOwnersFile = 0600;
  constexpr int kWritten = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, files.in.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, files.out.c_str(), kWritten,
                                   kOwnersFile);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, files.err.c_str(), kWritten,
                                   kOwnersFile);
  pid_t child = 0;
  const int error = posix_spawn(&child, path.c_str(), &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);

  int status = 0;
  if (error != 0 || waitpid(child, &status, 0) != child) return -1;
  constexpr int kKilled = 128;
  return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled + WTERMSIG(status);
}
