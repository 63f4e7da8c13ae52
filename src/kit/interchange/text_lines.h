// The lines of a text file.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace zortunedex::kit::interchange {

struct TextLine {
  std::string_view text;   ///< without its end
  std::size_t number = 0;  ///< counted from 1
};

/// Takes a text apart at LF and CR LF, each byte looked at once; a mark in front of the first line
/// is left out.
class TextLines {
 public:
  explicit TextLines(std::string_view text) : m_rest(text) {
    if (m_rest.starts_with("\xEF\xBB\xBF")) m_rest.remove_prefix(3);
  }

  /// Nothing behind the last one. What stands behind the last line feed is a line when it is not
  /// empty.
  std::optional<TextLine> Next() {
    if (m_rest.empty()) return std::nullopt;
    const std::size_t feed = m_rest.find('\n');
    std::string_view line = m_rest.substr(0, feed);
    m_rest.remove_prefix(feed == std::string_view::npos ? m_rest.size() : feed + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return TextLine{line, ++m_number};
  }

 private:
  std::string_view m_rest;
  std::size_t m_number = 0;
};

}  // namespace zortunedex::kit::interchange
