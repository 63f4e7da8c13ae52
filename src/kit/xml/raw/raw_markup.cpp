#include "kit/xml/raw/raw_markup.h"

#include <algorithm>

#include "kit/xml/text/characters.h"

namespace zortunedex::kit::markup {
namespace {

constexpr std::size_t kMostDigits = 10;

/// A place where a value may begin, and in how many ways (2 for more) the text in front of it
/// splits.
struct Start {
  std::size_t place;
  int ways;
};

/// End of the number that begins there, or the same place for none.
std::size_t NumberEnd(std::string_view text, std::size_t begin) {
  std::size_t digits = begin;
  if (digits < text.size() && text[digits] == '-') ++digits;
  std::size_t end = digits;
  while (end < text.size() && end - digits <= kMostDigits && text[end] >= '0' && text[end] <= '9') {
    ++end;
  }
  return end == digits || end - digits > kMostDigits ? begin : end;
}

class Splitter {
 public:
  Splitter(std::string_view text, RawTable table) : m_text(text), m_table(table) {}

  RawSplit Split(std::size_t firstValue, std::size_t end) {
    m_end = end;
    m_starts.assign(1, {{firstValue, 1}});
    for (std::size_t i = 0; i + 1 < m_table.size(); ++i) {
      const std::string mark = "\" " + std::string(m_table[i + 1].name) + "=\"";
      m_starts.push_back(m_table[i].isNumber ? BehindNumbers(mark) : BehindTexts(mark));
      if (m_starts.back().empty()) return {};
    }
    RawSplit split;
    for (const Start& start : m_starts.back()) {
      if (!IsLast(start.place)) continue;
      if (split.solutions == 0) split.values = ValuesUpTo(start.place);
      split.solutions = std::min(2, split.solutions + start.ways);
    }
    return split;
  }

 private:
  std::vector<Start> BehindNumbers(const std::string& mark) const {
    std::vector<Start> behind;
    for (const Start& start : m_starts.back()) {
      const std::size_t end = NumberEnd(m_text, start.place);
      if (end == start.place || !m_text.substr(end).starts_with(mark)) continue;
      behind.push_back({end + mark.size(), start.ways});
    }
    return behind;
  }

  std::vector<Start> BehindTexts(const std::string& mark) const {
    std::vector<Start> behind;
    const std::vector<Start>& starts = m_starts.back();
    std::size_t next = 0;
    int ways = 0;
    for (std::size_t found = m_text.find(mark, starts.front().place); found < m_end;
         found = m_text.find(mark, found + 1)) {
      for (; next < starts.size() && starts[next].place <= found; ++next) {
        ways = std::min(2, ways + starts[next].ways);
      }
      behind.push_back({found + mark.size(), ways});
    }
    return behind;
  }

  /// The last value reaches from here to the end.
  bool IsLast(std::size_t place) const {
    if (place > m_end) return false;
    return !m_table.back().isNumber || (NumberEnd(m_text, place) == m_end && place != m_end);
  }

  /// Goes back from the last value's beginning; of several ways the one with the shortest values at
  /// the back.
  std::vector<Span> ValuesUpTo(std::size_t lastStart) const {
    std::vector<Span> values(m_table.size());
    values.back() = {lastStart, m_end};
    for (std::size_t i = m_table.size() - 1; i > 0; --i) {
      // What stands between two values: quotation mark, blank, name, equals sign, quotation mark.
      const std::size_t end = values[i].begin - m_table[i].name.size() - 4;
      const std::vector<Start>& starts = m_starts[i - 1];
      auto before = std::upper_bound(
          starts.begin(), starts.end(), end,
          [](std::size_t place, const Start& start) { return place < start.place; });
      --before;
      if (m_table[i - 1].isNumber) {
        while (NumberEnd(m_text, before->place) != end) --before;
      }
      values[i - 1] = {before->place, end};
    }
    return values;
  }

  std::string_view m_text;
  RawTable m_table;
  std::size_t m_end = 0;
  /// For every attribute of the table where its value may begin, in ascending order.
  std::vector<std::vector<Start>> m_starts;
};

/// Where the last value has to end, in front of "> or "/>; nothing for a text that ends otherwise.
std::size_t LastEnd(std::string_view text) {
  for (const std::string_view end : {"\"/>", "\">"}) {
    if (text.ends_with(end)) return text.size() - end.size();
  }
  return std::string_view::npos;
}

}  // namespace

RawSplit SplitRaw(std::string_view text, std::string_view element, RawTable table) {
  const std::size_t end = LastEnd(text);
  if (table.empty() || end == std::string_view::npos) return {};
  const std::string head =
      "<" + std::string(element) + " " + std::string(table.front().name) + "=\"";
  if (!text.starts_with(head) || head.size() > end) return {};
  return Splitter(text, table).Split(head.size(), end);
}

}  // namespace zortunedex::kit::markup
