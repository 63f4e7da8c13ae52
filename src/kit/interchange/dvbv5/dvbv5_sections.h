// A file of sections with KEY = VALUE lines, taken apart.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/interchange/loss.h"

namespace zortunedex::kit::interchange::dvbv5 {

struct Value {
  std::string text;
  std::size_t line = 0;
};

struct Section {
  std::size_t line = 0;
  std::string name;
  bool isUnderstood = true;                           ///< false: its first line is no title
  std::map<std::string, Value, std::less<>> values;   ///< by their keys in capitals
  std::vector<std::pair<std::uint32_t, Value>> pids;  ///< lines PID_xx, with xx, in their order

  /// Empty for a key that is missing.
  std::string_view Text(std::string_view key) const;
};

/// Gives the sections of a file one by one. A line that is none of theirs is a loss (L501), and so
/// is the first of two different lines of one key: the last one counts. Returns false where no
/// section says how it is received, as in a file that is nothing of the kind.
bool ReadSections(std::string_view bytes, Losses& losses,
                  const std::function<void(const Section&)>& take);

}  // namespace zortunedex::kit::interchange::dvbv5
