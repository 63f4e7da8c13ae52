// What a piece of work costs, measured in a process of its own, and what the programs that compare
// such costs take of their command lines.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace bounds {

struct Cost {
  double seconds = -1;   ///< of the processor; below 0: the work failed, or the process died
  double megabytes = 0;  ///< peak memory of the process
};

/// False for work that failed.
using Work = std::function<bool()>;

/// Makes the work in a new process, runs it there and counts its processor time alone. The memory
/// is that of both.
Cost CostOf(const std::function<Work()>& prepare);

/// The words of a command line behind the program's name.
class Words {
 public:
  Words(int argc, char** argv) : m_words(argv + 1, argv + argc) {}

  bool Has(std::string_view word) const;
  /// True where every word is an option.
  bool AreOptions() const;

 private:
  std::vector<std::string_view> m_words;
};

}  // namespace bounds
