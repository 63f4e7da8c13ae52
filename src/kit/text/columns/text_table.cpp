#include "kit/text/columns/text_table.h"

#include <algorithm>
#include <numeric>

#include "kit/text/ascii.h"
#include "kit/text/columns/display_width.h"

namespace zortunedex::kit {

namespace {

using Rows = std::vector<std::vector<std::string>>;
using Widths = std::vector<std::size_t>;

constexpr std::size_t kGap = 2;
constexpr std::size_t kShortestHeading = 3;
constexpr std::size_t kShortestText = 8;

/// Widest entry of every column from a row on.
Widths WidthsFrom(const Rows& rows, std::size_t first) {
  Widths widths(rows.front().size());
  for (std::size_t row = first; row < rows.size(); ++row) {
    for (std::size_t i = 0; i < rows[row].size(); ++i) {
      widths[i] = std::max(widths[i], display_width::Of(rows[row][i]));
    }
  }
  return widths;
}

/// Columns with something below their heading that is no number.
std::vector<bool> TextColumns(const Rows& rows) {
  std::vector<bool> texts(rows.front().size());
  for (std::size_t row = 1; row < rows.size(); ++row) {
    for (std::size_t i = 0; i < rows[row].size(); ++i) {
      if (!texts[i]) texts[i] = !ParseNumber(rows[row][i]);
    }
  }
  return texts;
}

std::size_t Sum(const Widths& widths) {
  return std::accumulate(widths.begin(), widths.end(), std::size_t{0});
}

/// Takes columns from the widest ones, never below their floors, until the sum is reached.
void Shrink(Widths& widths, const Widths& floors, std::size_t sum) {
  for (std::size_t total = Sum(widths); total > sum; --total) {
    std::size_t widest = widths.size();
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (widths[i] > floors[i] && (widest == widths.size() || widths[i] >= widths[widest])) {
        widest = i;
      }
    }
    if (widest == widths.size()) return;
    --widths[widest];
  }
}

void Fit(const Rows& rows, std::size_t lineWidth, Widths& widths) {
  const std::size_t gaps = kGap * (widths.size() - 1);
  const std::size_t sum = lineWidth > gaps ? lineWidth - gaps : 0;
  Widths floors = WidthsFrom(rows, 1);
  for (std::size_t i = 0; i < floors.size(); ++i) {
    const std::size_t heading = std::min(display_width::Of(rows.front()[i]), kShortestHeading);
    floors[i] = std::max({floors[i], heading, std::size_t{1}});
  }
  Shrink(widths, floors, sum);
  const std::vector<bool> texts = TextColumns(rows);
  for (std::size_t i = 0; i < floors.size(); ++i) {
    if (texts[i]) floors[i] = std::min(floors[i], kShortestText);
  }
  Shrink(widths, floors, sum);
  Shrink(widths, Widths(widths.size(), 1), sum);
}

}  // namespace

std::string TextTable(const Rows& rows, std::optional<std::size_t> lineWidth) {
  Widths widths = WidthsFrom(rows, 0);
  if (lineWidth) Fit(rows, *lineWidth, widths);
  std::string text;
  for (const std::vector<std::string>& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      std::string cut;
      if (lineWidth) cut = display_width::Cut(row[i], widths[i]);
      const std::string& entry = lineWidth ? cut : row[i];
      text += entry;
      if (i + 1 < row.size()) text.append(widths[i] - display_width::Of(entry) + kGap, ' ');
    }
    text += '\n';
  }
  return text;
}

}  // namespace zortunedex::kit
