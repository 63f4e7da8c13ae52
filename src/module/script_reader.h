#pragma once

#include <map>
#include <string>
#include <string_view>

/// Texts that take the place of `%NAME%`, by name in capitals.
using ScriptReplacements = std::map<std::string, std::string, std::less<>>;

/// Puts replacements into a registry script: `%NAME%` (in any case) becomes its text, with every
/// quote doubled, so that it stays inside the quotes it stands in; `%%` becomes one percent sign.
/// False for a name that is not known and for one that does not end.
bool ReplaceInScript(std::string_view script, const ScriptReplacements& replacements,
                     std::string& replaced);

/// One token of a registry script.
struct ScriptToken {
  enum class Kind { Word, Quoted, Open, Close, End, Error };

  Kind kind = Kind::End;
  std::string text;  ///< of a word, or between the quotes with doubled ones made single

  /// True for this word, in any case. A quoted text is never one.
  bool Is(std::string_view capitals) const;
  bool IsName() const { return kind == Kind::Word || kind == Kind::Quoted; }
};

/// Cuts a registry script into tokens: words between white space, quoted texts, and braces that
/// stand alone. Every call takes at least one byte until the end.
class ScriptReader {
 public:
  explicit ScriptReader(std::string_view script) : m_rest(script) { Advance(); }

  const ScriptToken& Current() const { return m_current; }
  /// Goes on to the next token. The end and an error stay.
  void Advance();

 private:
  ScriptToken TakeQuoted();

  std::string_view m_rest;  ///< behind the current token
  ScriptToken m_current;
};
