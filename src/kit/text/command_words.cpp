#include "kit/text/command_words.h"

#include <algorithm>

namespace zortunedex::kit {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kEscapedInQuotes = "$`\"\\";

class WordReader {
 public:
  explicit WordReader(std::string_view line) : m_rest(line) {}

  /// False at the end of the line.
  bool SkipBlanks() {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kBlanks), m_rest.size()));
    return !m_rest.empty();
  }

  /// The word at the front; nothing for one that does not end.
  std::optional<std::string> Word() {
    std::string word;
    while (!m_rest.empty() && kBlanks.find(m_rest.front()) == std::string_view::npos) {
      const char letter = Take();
      const bool whole = letter == '\''   ? Single(word)
                         : letter == '"'  ? Double(word)
                         : letter == '\\' ? Escaped(word)
                                          : Add(letter, word);
      if (!whole) return std::nullopt;
    }
    return word;
  }

 private:
  char Take() {
    const char letter = m_rest.front();
    m_rest.remove_prefix(1);
    return letter;
  }

  static bool Add(char letter, std::string& word) {
    word += letter;
    return true;
  }

  bool Escaped(std::string& word) { return !m_rest.empty() && Add(Take(), word); }

  bool Single(std::string& word) {
    const std::size_t end = m_rest.find('\'');
    if (end == std::string_view::npos) return false;
    word += m_rest.substr(0, end);
    m_rest.remove_prefix(end + 1);
    return true;
  }

  bool Double(std::string& word) {
    while (!m_rest.empty()) {
      const char letter = Take();
      if (letter == '"') return true;
      const bool escapes = letter == '\\' && !m_rest.empty() &&
                           kEscapedInQuotes.find(m_rest.front()) != std::string_view::npos;
      word += escapes ? Take() : letter;
    }
    return false;
  }

  std::string_view m_rest;
};

}  // namespace

std::optional<std::vector<std::string>> CommandWords(std::string_view line) {
  std::vector<std::string> words;
  WordReader reader(line);
  while (reader.SkipBlanks()) {
    std::optional<std::string> word = reader.Word();
    if (!word) return std::nullopt;
    words.push_back(*std::move(word));
  }
  return words;
}

}  // namespace zortunedex::kit
