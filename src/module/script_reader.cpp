#include "module/script_reader.h"

#include <algorithm>

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::string Capitals(std::string_view text) {
  std::string capitals(text);
  for (char& byte : capitals) {
    if (byte >= 'a' && byte <= 'z') byte = static_cast<char>(byte - 'a' + 'A');
  }
  return capitals;
}

void AppendQuoted(std::string_view text, std::string& to) {
  for (const char byte : text) {
    if (byte == '\'') to += '\'';
    to += byte;
  }
}

}  // namespace

bool ReplaceInScript(std::string_view script, const ScriptReplacements& replacements,
                     std::string& replaced) {
  replaced.clear();
  for (;;) {
    const std::size_t first = script.find('%');
    replaced.append(script.substr(0, first));
    if (first == std::string_view::npos) return true;
    const std::size_t last = script.find('%', first + 1);
    if (last == std::string_view::npos) return false;
    if (last == first + 1) {
      replaced += '%';
    } else {
      const auto found = replacements.find(Capitals(script.substr(first + 1, last - first - 1)));
      if (found == replacements.end()) return false;
      AppendQuoted(found->second, replaced);
    }
    script.remove_prefix(last + 1);
  }
}

bool ScriptToken::Is(std::string_view capitals) const {
  return kind == Kind::Word && Capitals(text) == capitals;
}

void ScriptReader::Advance() {
  if (m_current.kind == ScriptToken::Kind::Error) return;
  m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kBlanks), m_rest.size()));
  if (m_rest.empty()) {
    m_current = {};
  } else if (m_rest.front() == '\'') {
    m_current = TakeQuoted();
  } else {
    const std::string_view word = m_rest.substr(0, m_rest.find_first_of(kBlanks));
    m_rest.remove_prefix(word.size());
    const auto kind = word == "{"   ? ScriptToken::Kind::Open
                      : word == "}" ? ScriptToken::Kind::Close
                                    : ScriptToken::Kind::Word;
    m_current = {kind, std::string(word)};
  }
}

ScriptToken ScriptReader::TakeQuoted() {
  ScriptToken token = {ScriptToken::Kind::Quoted, {}};
  for (;;) {
    const std::size_t end = m_rest.find('\'', 1);
    if (end == std::string_view::npos) return {ScriptToken::Kind::Error, {}};
    token.text.append(m_rest.substr(1, end - 1));
    m_rest.remove_prefix(end);
    if (m_rest.substr(0, 2) != "''") break;
    token.text += '\'';
    m_rest.remove_prefix(1);
  }
  m_rest.remove_prefix(1);
  return token;
}
