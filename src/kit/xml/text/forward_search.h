#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace zortunedex::kit::markup {

/// Finds a mark again and again, from places that do not go back: together the searches take time
/// proportional to the text, also where the mark is far away or missing.
class ForwardSearch {
 public:
  ForwardSearch(std::string_view text, std::string_view mark) : m_text(text), m_mark(mark) {}

  /// The first mark at `from` or behind it; the end of the text when there is none.
  std::size_t From(std::size_t from) {
    if (!m_isKnown || from < m_from || from > m_found) {
      m_found = std::min(m_text.find(m_mark, from), m_text.size());
      m_isKnown = true;
      m_from = from;
    }
    return m_found;
  }

 private:
  std::string_view m_text;
  std::string_view m_mark;
  bool m_isKnown = false;
  std::size_t m_from = 0;
  std::size_t m_found = 0;
};

}  // namespace zortunedex::kit::markup
