#include "kit/interchange/csv/csv_text.h"

#include <algorithm>

#include "kit/text/ascii.h"

namespace zortunedex::kit::interchange::csv {
namespace {

constexpr std::string_view kSeparators = ",;\t";

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

char SeparatorOf(std::string_view text) {
  bool quoted = false;
  for (const char byte : text) {
    if (byte == '"') quoted = !quoted;
    if (quoted) continue;
    if (byte == '\n') break;
    if (kSeparators.find(byte) != std::string_view::npos) return byte;
  }
  return ',';
}

}  // namespace

bool NeedsApostrophe(std::string_view text) {
  if (text.empty()) return false;
  if (std::string_view("=+-@'\t\r").find(text.front()) != std::string_view::npos) return true;
  if (EqualIgnoringCase(text, "TRUE") || EqualIgnoringCase(text, "FALSE")) return true;
  const bool isNumeric = std::ranges::all_of(text, [](char byte) {
    return IsDigit(byte) || std::string_view(" .,:/+-eE").find(byte) != std::string_view::npos;
  });
  return isNumeric && std::ranges::any_of(text, IsDigit);
}

std::string Guarded(std::string_view text) {
  return (NeedsApostrophe(text) ? "'" : "") + std::string(text);
}

std::string_view Unguarded(std::string_view cell) {
  const bool isGuarded = cell.starts_with('\'') && NeedsApostrophe(cell.substr(1));
  return isGuarded ? cell.substr(1) : cell;
}

void AppendCell(std::string& line, std::string_view cell) {
  if (cell.find_first_of(",;\t\"\r\n") == std::string_view::npos) {
    line += cell;
    return;
  }
  line += '"';
  for (const char byte : cell) {
    if (byte == '"') line += '"';
    line += byte;
  }
  line += '"';
}

Rows::Rows(std::string_view text) : m_text(text) {
  if (m_text.starts_with("\xEF\xBB\xBF")) m_text.remove_prefix(3);
  m_separator = SeparatorOf(m_text);
}

bool Rows::AtEndOfRow() const {
  if (m_at == m_text.size() || m_text[m_at] == '\n') return true;
  return m_text[m_at] == '\r' && m_at + 1 < m_text.size() && m_text[m_at + 1] == '\n';
}

void Rows::SkipEndOfRow() {
  if (m_at == m_text.size()) return;
  if (m_text[m_at] == '\r') ++m_at;
  ++m_at;
  ++m_line;
}

std::optional<Row> Rows::Next() {
  while (m_at < m_text.size() && AtEndOfRow()) SkipEndOfRow();
  if (m_at == m_text.size()) return std::nullopt;
  Row row;
  row.line = m_line;
  TakeCell(row);
  while (!AtEndOfRow()) {
    ++m_at;
    TakeCell(row);
  }
  SkipEndOfRow();
  return row;
}

/// Up to the separator behind it, or the end of the row.
void Rows::TakeCell(Row& row) {
  std::string& cell = row.cells.emplace_back();
  if (m_at < m_text.size() && m_text[m_at] == '"') TakeQuoted(row, cell);
  while (!AtEndOfRow() && m_text[m_at] != m_separator) cell += m_text[m_at++];
}

void Rows::TakeQuoted(Row& row, std::string& cell) {
  for (++m_at; m_at < m_text.size(); ++m_at) {
    if (m_text[m_at] == '\n') ++m_line;
    if (m_text[m_at] == '"') {
      const bool doubled = m_at + 1 < m_text.size() && m_text[m_at + 1] == '"';
      if (!doubled) {
        ++m_at;
        return;
      }
      ++m_at;
    }
    cell += m_text[m_at];
  }
  row.open = true;
}

}  // namespace zortunedex::kit::interchange::csv
