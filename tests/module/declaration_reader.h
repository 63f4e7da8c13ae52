// Declarations in the texts of C++ headers and of IDL, taken apart word by word.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct DeclaredParameter {
  std::string type;  ///< as written, with blanks taken out before stars
  std::string name;
};

using DeclaredValues = std::vector<std::pair<std::string, std::int64_t>>;

/// Stands on a word: a name, a number, a text with its quotes or one other character. Comments and
/// lines of the preprocessor are passed over. What is not there raises std::runtime_error with the
/// line, so nothing that is declared can be missed.
class DeclarationReader {
 public:
  explicit DeclarationReader(std::string_view text);

  /// The word, which is empty at the end.
  std::string_view Current() const { return m_words[m_position].text; }
  bool AtEnd() const { return Current().empty(); }
  std::string Next();
  std::string Name();
  /// Goes on when the word is this one.
  bool Accept(std::string_view word);
  void Expect(std::string_view word);
  [[noreturn]] void Fail() const;

  /// What stands between the bracket that it is on and the one that closes it, without blanks.
  std::string Bracketed();
  /// "const CHAR* name" and the like.
  DeclaredParameter Declaration();
  /// "{ LONG a; LONG b; }"
  std::vector<DeclaredParameter> Fields();
  /// "{ A = 1, B = -2 }", with or without a comma behind the last one.
  DeclaredValues Values();

 private:
  struct Word {
    std::string text;
    std::size_t line;
  };

  std::vector<Word> m_words;  // the last one is empty
  std::size_t m_position = 0;
};
