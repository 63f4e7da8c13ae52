#include "kit/interchange/csv/csv_text.h"

#include <gtest/gtest.h>

#include "support/random.h"

namespace zortunedex::kit {

namespace {

using interchange::csv::AppendCell;
using interchange::csv::Guarded;
using interchange::csv::NeedsApostrophe;
using interchange::csv::Row;
using interchange::csv::Rows;
using interchange::csv::Unguarded;

using Table = std::vector<std::vector<std::string>>;

Table CellsOf(std::string_view text) {
  Table table;
  Rows rows(text);
  while (std::optional<Row> row = rows.Next()) table.push_back(row->cells);
  return table;
}

std::string Cell(std::string_view text) {
  std::string line;
  AppendCell(line, text);
  return line;
}

TEST(CsvText, GuardsWhatSpreadsheetsTakeForSomethingElse) {
  for (const char* text : {"=A1",   "+1",         "-x",   "@SUM",   "'",        "'tis", "\tx",
                           "\rx",   "1",          "3/4",  "2:33:0", "10.0.0.1", "1e5",  "E1",
                           "1 000", "2026-11-22", "0049", "TRUE",   "FALSE",    "true", "1,5"}) {
    EXPECT_TRUE(NeedsApostrophe(text)) << text;
    EXPECT_EQ(std::string("'") + text, Guarded(text));
    EXPECT_EQ(text, Unguarded(Guarded(text)));
  }
  for (const char* text : {"", "e", "-", "ZDF", "3sat", "RTL 2", "a=b", "TRUER", "2|33|0", " =1",
                           ".", "1\xC2\xA0", "E"}) {
    if (std::string_view(text) == "-") continue;  // begins a formula
    EXPECT_FALSE(NeedsApostrophe(text)) << text;
    EXPECT_EQ(text, Unguarded(Guarded(text)));
  }
}

TEST(CsvText, KeepsAnApostropheThatNobodyPutThere) {
  EXPECT_EQ("'n Sync", Unguarded("'n Sync"));
  EXPECT_EQ("'n Sync", Unguarded(Guarded("'n Sync")));
  EXPECT_EQ("''1", Unguarded(Guarded("''1")));
}

TEST(CsvText, QuotesCellsThatHoldASeparatorAQuoteOrALineBreak) {
  EXPECT_EQ("a b", Cell("a b"));
  EXPECT_EQ("", Cell(""));
  EXPECT_EQ("\"a,b\"", Cell("a,b"));
  EXPECT_EQ("\"a;b\"", Cell("a;b"));
  EXPECT_EQ("\"a\tb\"", Cell("a\tb"));
  EXPECT_EQ("\"a\r\nb\"", Cell("a\r\nb"));
  EXPECT_EQ("\"say \"\"hi\"\"\"", Cell("say \"hi\""));
}

TEST(CsvText, TakesCommasSemicolonsAndTabs) {
  EXPECT_EQ((Table{{"a", "b;c"}, {"1", "2"}}), CellsOf("a,b;c\n1,2\n"));
  EXPECT_EQ((Table{{"a", "b,c"}, {"1,5", "2"}}), CellsOf("a;b,c\r\n1,5;2\r\n"));
  EXPECT_EQ((Table{{"a", "b"}, {"1;2", "3,4"}}), CellsOf("a\tb\n1;2\t3,4"));
  EXPECT_EQ((Table{{"a;b", "c"}}), CellsOf("\"a;b\",c"));
  EXPECT_EQ((Table{{"alone"}, {"1"}}), CellsOf("alone\n1"));
}

TEST(CsvText, TakesAMarkAndEveryKindOfLineEnd) {
  EXPECT_EQ((Table{{"a", "b"}, {"1", "2"}}), CellsOf("\xEF\xBB\xBF"
                                                     "a,b\r\n1,2\n"));
  EXPECT_EQ((Table{{"a"}, {"b"}}), CellsOf("\r\n\na\n\r\n\n\nb"));
  EXPECT_EQ((Table{{"a\r", "b"}}), CellsOf("a\r,b"));  // a lone one belongs to the cell
  EXPECT_EQ(Table{}, CellsOf(""));
  EXPECT_EQ(Table{}, CellsOf("\xEF\xBB\xBF\r\n"));
}

TEST(CsvText, TakesWhatStandsBetweenQuotes) {
  EXPECT_EQ((Table{{"a,b", "c\r\nd", "\"", ""}}), CellsOf("\"a,b\",\"c\r\nd\",\"\"\"\",\"\""));
  EXPECT_EQ((Table{{"a\"b", "c"}}), CellsOf("a\"b,c"));    // not at its beginning
  EXPECT_EQ((Table{{"abc", "d"}}), CellsOf("\"ab\"c,d"));  // text behind a quote is the cell's
}

TEST(CsvText, CountsLinesAlsoInsideOfCells) {
  Rows rows("a,b\n\"1\n2\",3\n\n4,5\n");
  EXPECT_EQ(1U, rows.Next()->line);
  EXPECT_EQ(2U, rows.Next()->line);
  EXPECT_EQ(5U, rows.Next()->line);
  EXPECT_FALSE(rows.Next());
}

TEST(CsvText, TellsARowThatEndsBetweenQuotes) {
  Rows rows("a,b\n1,\"2\n3,4\n");
  EXPECT_FALSE(rows.Next()->open);
  const std::optional<Row> open = rows.Next();
  EXPECT_TRUE(open->open);
  EXPECT_EQ("2\n3,4\n", open->cells.back());
  EXPECT_FALSE(rows.Next());
}

TEST(CsvText, GivesBackEveryCell) {
  Random random(7);
  constexpr std::string_view kBytes = "a,;\t\"\r\n'= 1";
  for (int round = 0; round < 2000; ++round) {
    Table table(1 + random(4));
    std::string text;
    for (auto& row : table) {
      row.resize(3);
      for (std::size_t i = 0; i < row.size(); ++i) {
        for (std::uint32_t length = random(6); length > 0; --length) {
          row[i] += kBytes[random(kBytes.size())];
        }
        // A carriage return that ends a cell without quotes would belong to the line's end.
        AppendCell(text, row[i]);
        text += i + 1 < row.size() ? "," : "\r\n";
      }
    }
    // A separator inside of the first cells has no say: it stands in quotes.
    EXPECT_EQ(table, CellsOf(text)) << text;
  }
}

}  // namespace

}  // namespace zortunedex::kit
