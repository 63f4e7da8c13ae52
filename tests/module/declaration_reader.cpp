#include "module/declaration_reader.h"

#include <algorithm>
#include <stdexcept>

namespace {

bool IsOfName(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

// Where a line ends; one of the preprocessor goes on behind a backslash.
std::size_t EndOfLine(std::string_view text, std::size_t at) {
  std::size_t end = std::min(text.find('\n', at), text.size());
  while (text[at] == '#' && end < text.size() && text[end - 1] == '\\') {
    end = std::min(text.find('\n', end + 1), text.size());
  }
  return end;
}

// Where what begins here ends: a blank, a comment, a line of the preprocessor or a word.
std::size_t EndOf(std::string_view text, std::size_t at) {
  if (text[at] == '#' || text.substr(at, 2) == "//") return EndOfLine(text, at);
  std::size_t end = at + 1;
  if (text.substr(at, 2) == "/*") {
    end = text.find("*/", at + 2);
    return end == text.npos ? text.size() : end + 2;
  }
  if (text[at] == '"') {
    end = text.find('"', at + 1);
    return end == text.npos ? text.size() : end + 1;
  }
  while (IsOfName(text[at]) && end < text.size() && IsOfName(text[end])) ++end;
  return end;
}

bool IsWord(std::string_view found) {
  const std::string_view blanks = " \t\r\n#";
  return blanks.find(found[0]) == blanks.npos && !found.starts_with("//") &&
         !found.starts_with("/*");
}

}  // namespace

DeclarationReader::DeclarationReader(std::string_view text) {
  std::size_t line = 1;
  for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
    end = EndOf(text, at);
    const std::string_view found = text.substr(at, end - at);
    if (IsWord(found)) m_words.push_back({std::string(found), line});
    line += static_cast<std::size_t>(std::count(found.begin(), found.end(), '\n'));
  }
  m_words.push_back({{}, line});
}

std::string DeclarationReader::Next() {
  if (AtEnd()) Fail();
  return m_words[m_position++].text;
}

bool DeclarationReader::Accept(std::string_view word) {
  if (Current() != word) return false;
  ++m_position;
  return true;
}

void DeclarationReader::Expect(std::string_view word) {
  if (!Accept(word)) Fail();
}

void DeclarationReader::Fail() const {
  const Word& word = m_words[m_position];
  throw std::runtime_error("line " + std::to_string(word.line) + " cannot be read at \"" +
                           word.text + "\"");
}

std::string DeclarationReader::Bracketed() {
  const std::string open = Next();
  const std::string close = open == "(" ? ")" : open == "[" ? "]" : "}";
  std::string text;
  for (int depth = 1;;) {
    const std::string word = Next();
    if (word == open) ++depth;
    if (word == close && --depth == 0) return text;
    text += word;
  }
}

std::string DeclarationReader::Name() {
  if (AtEnd() || !IsOfName(Current()[0])) Fail();
  return Next();
}

DeclaredParameter DeclarationReader::Declaration() {
  DeclaredParameter declared;
  if (Accept("const")) declared.type = "const ";
  declared.type += Name();
  while (Accept("*")) declared.type += '*';
  declared.name = Name();
  return declared;
}

std::vector<DeclaredParameter> DeclarationReader::Fields() {
  std::vector<DeclaredParameter> fields;
  for (Expect("{"); !Accept("}"); Expect(";")) fields.push_back(Declaration());
  return fields;
}

DeclaredValues DeclarationReader::Values() {
  DeclaredValues values;
  for (Expect("{"); !Accept("}");) {
    const std::string name = Name();
    Expect("=");
    const std::string sign = Accept("-") ? "-" : "";
    if (Current().find_first_not_of("0123456789") != std::string_view::npos) Fail();
    values.emplace_back(name, std::stoll(sign + Next()));
    if (!Accept(",") && Current() != "}") Fail();
  }
  return values;
}
