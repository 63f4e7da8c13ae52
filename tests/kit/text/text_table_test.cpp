#include "kit/text/columns/text_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "kit/text/columns/display_width.h"

namespace zortunedex::kit {

namespace {

using TableRows = std::vector<std::vector<std::string>>;

const TableRows kTable = {{"INDEX", "FREQUENCY", "NAME", "DISPLAY NAME"},
                          {"1", "11493750", "Das Erste", "Das Erste HD"},
                          {"10", "557143", "\u65E5\u672C\u653E\u9001", "e\u0301t\u00E9"}};

std::size_t Longest(const std::string& table) {
  std::size_t longest = 0;
  std::istringstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    longest = std::max(longest, display_width::Of(line));
  }
  return longest;
}

TEST(TextTables, AlignByColumnsOfTheTerminal) {
  EXPECT_EQ(
      "INDEX  FREQUENCY  NAME       DISPLAY NAME\n"
      "1      11493750   Das Erste  Das Erste HD\n"
      "10     557143     \u65E5\u672C\u653E\u9001   e\u0301t\u00E9\n",
      TextTable(kTable));
}

TEST(TextTables, AreAsTheyAreWhereTheyFit) {
  EXPECT_EQ(TextTable(kTable), TextTable(kTable, 41));
  EXPECT_EQ(TextTable(kTable), TextTable(kTable, 1000));
}

TEST(TextTables, ShortenHeadingsBeforeValues) {
  EXPECT_EQ(
      "IN\u2026  FREQUEN\u2026  NAME       DISPLAY NAME\n"
      "1    11493750  Das Erste  Das Erste HD\n"
      "10   557143    \u65E5\u672C\u653E\u9001   e\u0301t\u00E9\n",
      TextTable(kTable, 38));
}

TEST(TextTables, ShortenTextsBeforeNumbers) {
  const TableRows table = {kTable[0], {"1", "11493750", "Das Erste!", "Das Erste HD"}};
  EXPECT_EQ(
      "IN\u2026  FREQUEN\u2026  NAME       DISPLAY \u2026\n"
      "1    11493750  Das Erst\u2026  Das Erst\u2026\n",
      TextTable(table, 35));
  EXPECT_EQ(
      "IN\u2026  FREQUE\u2026  NAME     DISPLA\u2026\n"
      "1    114937\u2026  Das Er\u2026  Das Er\u2026\n",
      TextTable(table, 30));
}

TEST(TextTables, FitEveryWidthWithAPlaceForEachColumn) {
  for (std::size_t width = 10; width <= 41; ++width) {
    EXPECT_GE(width, Longest(TextTable(kTable, width))) << width;
  }
  // Four columns and the blanks between them.
  EXPECT_EQ(10U, Longest(TextTable(kTable, 1)));
}

TEST(TextTables, OfHeadingsAlone) {
  EXPECT_EQ("INDEX  NAME\n", TextTable({{"INDEX", "NAME"}}, 80));
  EXPECT_EQ("I\u2026  N\u2026\n", TextTable({{"INDEX", "NAME"}}, 6));
}

}  // namespace

}  // namespace zortunedex::kit
