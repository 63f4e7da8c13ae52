#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/com.h"

namespace zortunedex::kit {

/// Stored indexes from the first to the last, both included.
struct IndexRange {
  UINT first = 0;
  UINT last = 0;
};

/// "7", "3-9" or several of these behind commas; nothing for what is none, and for a range whose
/// last index is smaller than its first one.
std::optional<std::vector<IndexRange>> ParseIndexRanges(std::string_view text);

/// True when one of the ranges holds the index; they must ascend (`InOrder`).
bool Holds(const std::vector<IndexRange>& ranges, UINT index);
/// The same indexes in ranges that ascend and do not touch each other's.
std::vector<IndexRange> InOrder(std::vector<IndexRange> ranges);

}  // namespace zortunedex::kit
