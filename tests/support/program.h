// Starts a program without a shell: what its arguments hold means nothing to anybody but the
// program, and only one process has to begin.
#pragma once

#include <string>
#include <vector>

/// Files that stand for the standard streams of a program; those for output are made or emptied.
struct StandardFiles {
  std::string in;
  std::string out;
  std::string err;
};

/// What the program ended with, as a shell tells it; -1 when it could not be started. Paths and
/// arguments are in the platform's narrow form.
int StatusOfProgram(const std::string& path, const std::vector<std::string>& arguments,
                    const StandardFiles& files);
