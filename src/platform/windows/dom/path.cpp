#include "platform/windows/dom/path.h"

namespace dom {
namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

bool IsNamePart(char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

/// Takes what it recognises from the front of the text.
class Reader {
 public:
  explicit Reader(std::string_view text) : m_rest(text) {}

  bool AtEnd() const { return m_rest.empty(); }
  bool Next(char c) const { return !m_rest.empty() && m_rest.front() == c; }
  bool Take(char c) {
    if (!Next(c)) return false;
    m_rest.remove_prefix(1);
    return true;
  }
  void TakeBlanks() {
    while (Take(' ') || Take('\t')) {
    }
  }
  bool TakeName() { return TakePlainName() && (!Take(':') || TakePlainName()); }
  bool TakePlainName() {
    if (m_rest.empty() || !IsLetter(m_rest.front())) return false;
    while (!m_rest.empty() && IsNamePart(m_rest.front())) m_rest.remove_prefix(1);
    return true;
  }
  bool TakeQuoted() {
    if (!Take('\'')) return false;
    const std::size_t end = m_rest.find('\'');
    if (end == std::string_view::npos) return false;
    m_rest.remove_prefix(end + 1);
    return true;
  }

 private:
  std::string_view m_rest;
};

bool TakePredicate(Reader& reader) {
  if (!reader.Take('[') || !reader.Take('@') || !reader.TakeName()) return false;
  reader.TakeBlanks();
  if (!reader.Take('=')) return false;
  reader.TakeBlanks();
  return reader.TakeQuoted() && reader.Take(']');
}

bool TakeStep(Reader& reader) {
  if (!reader.Take('/') || !reader.TakeName()) return false;
  while (reader.Next('[')) {
    if (!TakePredicate(reader)) return false;
  }
  return true;
}

}  // namespace

bool IsName(std::string_view name) {
  Reader reader(name);
  return reader.TakePlainName() && reader.AtEnd();
}

bool IsQualifiedName(std::string_view name) {
  Reader reader(name);
  return reader.TakeName() && reader.AtEnd();
}

bool IsPath(std::string_view path) {
  Reader reader(path);
  if (!reader.Take('.')) return false;
  do {
    if (!TakeStep(reader)) return false;
  } while (!reader.AtEnd());
  return true;
}

}  // namespace dom
