#include "kit/text/nearest.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

std::string NearestTo(const std::string& word, const std::vector<std::string>& known) {
  return Nearest(word, known).value_or("none");
}

TEST(Nearest, IsFewStepsAway) {
  const std::vector<std::string> known = {"list", "show", "next", "previous", "sort"};
  EXPECT_EQ("list", NearestTo("lsit", known));
  EXPECT_EQ("list", NearestTo("lst", known));
  EXPECT_EQ("list", NearestTo("liist", known));
  EXPECT_EQ("list", NearestTo("LIST", known));
  EXPECT_EQ("show", NearestTo("shaw", known));
  EXPECT_EQ("previous", NearestTo("prevoius", known));
  EXPECT_EQ("previous", NearestTo("prev", known));
  EXPECT_EQ("none", NearestTo("xyzzy", known));
  EXPECT_EQ("none", NearestTo("p", known));
  EXPECT_EQ("none", NearestTo("", known));
  EXPECT_EQ("none", NearestTo("list", {}));
  EXPECT_EQ("none", NearestTo(std::string(65, 'l'), {std::string(65, 'l')}));
}

TEST(Nearest, IsTheFirstOfSeveral) {
  EXPECT_EQ("cat", NearestTo("bat", {"cat", "hat"}));
  EXPECT_EQ("bat", NearestTo("bat", {"cat", "bat"}));
}

TEST(Listed, HasCommasBetween) {
  EXPECT_EQ("", Listed({}));
  EXPECT_EQ("a", Listed({"a"}));
  EXPECT_EQ("a, b", Listed({"a", "b"}));
}

}  // namespace

}  // namespace zortunedex::kit
