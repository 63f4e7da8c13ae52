// Tables with separators, as spreadsheets read and write them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zortunedex::kit::interchange::csv {

/// True for a text that a spreadsheet would take for a formula, a number, a date or a truth value,
/// or whose apostrophe it would hide.
bool NeedsApostrophe(std::string_view text);
/// The text with an apostrophe in front where it needs one.
std::string Guarded(std::string_view text);
/// The text without the apostrophe that Guarded puts there.
std::string_view Unguarded(std::string_view cell);

/// Appends a cell, in quotes where it holds a separator of any kind, a quote or a line break.
void AppendCell(std::string& line, std::string_view cell);

struct Row {
  std::vector<std::string> cells;
  std::size_t line = 0;  ///< where it begins, counted from 1
  bool open = false;     ///< the text ended between two quotes
};

/// Takes a table apart, row by row, each byte looked at once. Rows end with LF or CR LF; between
/// quotes everything belongs to the cell, and two quotes are one.
class Rows {
 public:
  /// The separator is the first of comma, semicolon and tab that stands outside of quotes in the
  /// first row. A byte order mark is left out.
  explicit Rows(std::string_view text);

  /// Nothing behind the last one. Empty lines are no rows.
  std::optional<Row> Next();

 private:
  void TakeCell(Row& row);
  void TakeQuoted(Row& row, std::string& cell);
  bool AtEndOfRow() const;
  void SkipEndOfRow();

  std::string_view m_text;
  std::size_t m_at = 0;
  std::size_t m_line = 1;
  char m_separator = ',';
};

}  // namespace zortunedex::kit::interchange::csv
