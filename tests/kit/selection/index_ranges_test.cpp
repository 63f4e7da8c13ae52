#include "kit/selection/index_ranges.h"

#include <gtest/gtest.h>

#include <string>

namespace zortunedex::kit {

namespace {

std::string Text(const std::vector<IndexRange>& ranges) {
  std::string text;
  for (const IndexRange& range : ranges) {
    text += std::to_string(range.first) + "-" + std::to_string(range.last) + " ";
  }
  return text;
}

TEST(IndexRanges, AreParsed) {
  EXPECT_EQ("7-7 ", Text(*ParseIndexRanges("7")));
  EXPECT_EQ("3-9 12-12 ", Text(*ParseIndexRanges("3-9,12")));
  EXPECT_EQ("0-4294967295 ", Text(*ParseIndexRanges("0-0xFFFFFFFF")));
  EXPECT_EQ("5-5 1-2 5-5 ", Text(*ParseIndexRanges("5,1-2,5-5")));
  for (const char* text : {"", ",", "1,", ",1", "1,,2", "-", "-1", "1-", "2-1", "1-2-3", "a", " 1",
                           "1 ", "1 -2", "4294967296", "1-4294967296", "1--2"}) {
    EXPECT_FALSE(ParseIndexRanges(text)) << text;
  }
}

TEST(IndexRanges, InOrderAreJoinedAndLookedUp) {
  const std::vector<IndexRange> ranges = InOrder({{20, 30}, {3, 9}, {5, 12}, {30, 31}, {1, 1}});
  EXPECT_EQ("1-1 3-12 20-31 ", Text(ranges));
  for (const UINT index : {1U, 3U, 12U, 20U, 25U, 31U}) EXPECT_TRUE(Holds(ranges, index)) << index;
  for (const UINT index : {0U, 2U, 13U, 19U, 32U, 4294967295U}) {
    EXPECT_FALSE(Holds(ranges, index)) << index;
  }
  EXPECT_FALSE(Holds({}, 1));
}

}  // namespace

}  // namespace zortunedex::kit
