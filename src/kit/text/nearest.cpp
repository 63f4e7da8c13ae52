#include "kit/text/nearest.h"

#include <algorithm>

#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace {

/// Words beyond this are compared with nothing.
constexpr std::size_t kLongest = 64;

bool AreSame(std::string_view a, std::size_t i, std::string_view b, std::size_t j) {
  return EqualIgnoringCase(a.substr(i, 1), b.substr(j, 1));
}

/// Steps from one word to the other: a letter put in, left out or replaced, two neighbours swapped.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        steps[i][j] = i + j;
        continue;
      }
      const std::size_t differs = AreSame(a, i - 1, b, j - 1) ? 0 : 1;
      steps[i][j] =
          std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + differs});
      const bool isSwapped =
          i > 1 && j > 1 && AreSame(a, i - 1, b, j - 2) && AreSame(a, i - 2, b, j - 1);
      if (isSwapped) steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
    }
  }
  return steps[a.size()][b.size()];
}

bool Begins(std::string_view start, std::string_view word) {
  return start.size() > 1 && EqualIgnoringCase(start, word.substr(0, start.size()));
}

}  // namespace

std::optional<std::string> Nearest(std::string_view word, const std::vector<std::string>& known) {
  if (word.size() > kLongest) return std::nullopt;
  std::optional<std::string> nearest;
  // A third of a word may be wrong.
  std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
  for (const std::string& candidate : known) {
    if (candidate.size() > kLongest) continue;
    const std::size_t steps = Distance(word, candidate);
    const std::size_t distance = Begins(word, candidate) ? std::min<std::size_t>(steps, 1) : steps;
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return nearest;
}

std::string Listed(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

}  // namespace zortunedex::kit
