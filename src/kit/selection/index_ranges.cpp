#include "kit/selection/index_ranges.h"

#include <algorithm>

#include "kit/text/ascii.h"

namespace zortunedex::kit {

namespace {

std::optional<IndexRange> ParseRange(std::string_view text) {
  const std::size_t dash = text.find('-');
  const auto first = ParseNumber(text.substr(0, dash), 0, UINT32_MAX);
  const auto last =
      dash == std::string_view::npos ? first : ParseNumber(text.substr(dash + 1), 0, UINT32_MAX);
  if (!first || !last || *last < *first) return std::nullopt;
  return IndexRange{static_cast<UINT>(*first), static_cast<UINT>(*last)};
}

}  // namespace

std::optional<std::vector<IndexRange>> ParseIndexRanges(std::string_view text) {
  std::vector<IndexRange> ranges;
  while (true) {
    const std::size_t comma = text.find(',');
    const std::optional<IndexRange> range = ParseRange(text.substr(0, comma));
    if (!range) return std::nullopt;
    ranges.push_back(*range);
    if (comma == std::string_view::npos) return ranges;
    text.remove_prefix(comma + 1);
  }
}

bool Holds(const std::vector<IndexRange>& ranges, UINT index) {
  const auto range =
      std::lower_bound(ranges.begin(), ranges.end(), index,
                       [](const IndexRange& other, UINT value) { return other.last < value; });
  return range != ranges.end() && range->first <= index;
}

std::vector<IndexRange> InOrder(std::vector<IndexRange> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const IndexRange& a, const IndexRange& b) { return a.first < b.first; });
  std::vector<IndexRange> joined;
  for (const IndexRange& range : ranges) {
    if (!joined.empty() && range.first <= joined.back().last) {
      joined.back().last = std::max(joined.back().last, range.last);
    } else {
      joined.push_back(range);
    }
  }
  return joined;
}

}  // namespace zortunedex::kit
