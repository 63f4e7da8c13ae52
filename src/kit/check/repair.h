// Mending what can be mended, and nothing else.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "kit/check/checker.h"

namespace zortunedex::kit::check {

/// What is to be mended.
struct RepairSettings {
  Settings check = {};
  /// Only these; all when empty.
  std::set<std::string, std::less<>> codes = {};
  /// What is mended beyond the default.
  std::set<Option> options = {};
};

/// What a repair did, or would do.
struct Repaired {
  std::vector<Finding> mended;
  std::vector<Finding> left;  ///< all that a check would find now
  Files before;
  Files after;
};

/// What the files are when they are repaired; nothing is written. Raises a Failure that says why
/// when something that no finding is about would not be as it was, or when a file cannot be mended
/// without leaving a part out.
Repaired Repair(const Files& files, const RepairSettings& settings);

/// True where a repair is asked for by these settings.
bool IsAsked(const Finding& finding, const RepairSettings& settings);

}  // namespace zortunedex::kit::check
