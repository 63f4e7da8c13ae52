#include "kit/xml/text/edits.h"

#include <gtest/gtest.h>

#include <map>

#include "support/random.h"

namespace zortunedex::kit {

namespace {

using markup::Edits;
using markup::Span;

TEST(Edits, ReplaceInsertAndRemove) {
  Edits edits;
  EXPECT_TRUE(edits.Add({{4, 5}, "&amp;"}));
  EXPECT_TRUE(edits.Add({{0, 1}, ""}));
  EXPECT_TRUE(edits.Add({{7, 7}, "!"}));
  EXPECT_EQ("bcd&amp;fg!", edits.Apply("abcd&fg"));
  EXPECT_EQ(3U, edits.Count());
}

TEST(Edits, NoneLeaveTheBytesAsTheyAre) {
  EXPECT_TRUE(Edits().IsEmpty());
  EXPECT_EQ("abc", Edits().Apply("abc"));
}

TEST(Edits, RefuseWhatOverlaps) {
  Edits edits;
  ASSERT_TRUE(edits.Add({{2, 5}, "x"}));
  for (const Span span :
       {Span(2, 5), Span(0, 3), Span(4, 9), Span(3, 4), Span(0, 9), Span(3, 3), Span(4, 4)}) {
    EXPECT_FALSE(edits.Add({span, "y"})) << span.begin << ' ' << span.end;
  }
  EXPECT_TRUE(edits.Add({{0, 2}, "1"}));
  EXPECT_TRUE(edits.Add({{5, 6}, "2"}));
  EXPECT_TRUE(edits.Add({{2, 2}, "<"}));
  EXPECT_TRUE(edits.Add({{5, 5}, ">"}));
  EXPECT_EQ("1<x>2gh", edits.Apply("abcdefgh"));
}

TEST(Edits, RefuseToReplaceWhereSomethingIsInserted) {
  Edits edits;
  ASSERT_TRUE(edits.Add({{3, 3}, "x"}));
  EXPECT_FALSE(edits.Add({{2, 4}, ""}));
  EXPECT_TRUE(edits.Add({{3, 4}, ""}));
  EXPECT_TRUE(edits.Add({{2, 3}, ""}));
  EXPECT_EQ("abxe", edits.Apply("abcde"));
}

TEST(Edits, InsertInTheOrderTheyCame) {
  Edits edits;
  edits.Add({{1, 1}, "1"});
  edits.Add({{1, 2}, "B"});
  edits.Add({{1, 1}, "2"});
  EXPECT_EQ("a12Bc", edits.Apply("abc"));
}

TEST(Edits, ApplyToNothingOutsideTheBytes) {
  Edits insertion;
  insertion.Add({{4, 4}, "x"});
  EXPECT_EQ(std::nullopt, insertion.Apply("abc"));
  EXPECT_EQ("abcdx", insertion.Apply("abcd"));
  Edits replacement;
  replacement.Add({{2, 4}, "x"});
  EXPECT_EQ(std::nullopt, replacement.Apply("abc"));
  EXPECT_FALSE(Edits().Add({{4, 2}, "x"}));
}

// Against edits made one by one from the back.
TEST(Edits, DoTheSameInAnyOrder) {
  Random random(5);
  for (int round = 0; round < 300; ++round) {
    const std::string bytes = "abcdefghijklmnopqrst";
    Edits edits;
    std::map<std::size_t, markup::Edit> replaced;
    for (int i = 0; i < 8; ++i) {
      const std::size_t begin = random(20);
      const markup::Edit edit{{begin, begin + 1 + random(3)}, std::string(random(3), 'X')};
      if (edit.span.end > bytes.size()) continue;
      if (edits.Add(edit)) replaced[begin] = edit;
    }
    std::string expected = bytes;
    for (auto edit = replaced.rbegin(); edit != replaced.rend(); ++edit) {
      expected.replace(edit->first, edit->second.span.Size(), edit->second.text);
    }
    ASSERT_EQ(expected, edits.Apply(bytes));
  }
}

}  // namespace

}  // namespace zortunedex::kit
