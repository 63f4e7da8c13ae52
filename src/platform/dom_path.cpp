#include "platform/dom_path.h"

#include <algorithm>
#include <array>

namespace dom {
namespace {

constexpr bool IsLetter(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
}

// For every byte whether a plain name may hold it.
constexpr std::array<bool, 256> kNameBytes = [] {
  std::array<bool, 256> isName{};
  for (int i = 0; i < 128; ++i) {
    const char byte = static_cast<char>(i);
    isName[static_cast<std::size_t>(i)] =
        IsLetter(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
  }
  return isName;
}();

/// Takes a path apart from its front.
class PathScanner {
 public:
  explicit PathScanner(std::string_view text) : m_rest(text) {}

  bool AtEnd() const { return m_rest.empty(); }
  bool Take(std::string_view expected) {
    if (!m_rest.starts_with(expected)) return false;
    m_rest.remove_prefix(expected.size());
    return true;
  }
  void SkipBlanks() {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size()));
  }
  bool TakeName(std::string_view& name) {
    name = m_rest.substr(0, m_rest.find_first_of("/[=] \t"));
    m_rest.remove_prefix(name.size());
    return IsQualifiedName(name);
  }
  bool TakeQuoted(std::string_view& value) {
    if (!Take("'")) return false;
    const std::size_t end = m_rest.find('\'');
    if (end == std::string_view::npos) return false;
    value = m_rest.substr(0, end);
    m_rest.remove_prefix(end + 1);
    return true;
  }

 private:
  std::string_view m_rest;
};

/// What stands behind "[@".
bool TakePredicate(PathScanner& scanner, Path::Predicate& predicate) {
  if (!scanner.TakeName(predicate.name)) return false;
  scanner.SkipBlanks();
  if (!scanner.Take("=")) return false;
  scanner.SkipBlanks();
  return scanner.TakeQuoted(predicate.value) && scanner.Take("]");
}

bool TakeStep(PathScanner& scanner, Path::Step& step) {
  if (!scanner.Take("/") || !scanner.TakeName(step.name)) return false;
  while (scanner.Take("[@")) {
    if (!TakePredicate(scanner, step.predicates.emplace_back())) return false;
  }
  return true;
}

}  // namespace

bool IsPlainName(std::string_view name) {
  return !name.empty() && IsLetter(name.front()) &&
         std::all_of(name.begin(), name.end(),
                     [](char byte) { return kNameBytes[static_cast<unsigned char>(byte)]; });
}

bool IsQualifiedName(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string_view::npos) return IsPlainName(name);
  return IsPlainName(name.substr(0, colon)) && IsPlainName(name.substr(colon + 1));
}

std::optional<Path> Path::Parse(std::string_view text) {
  PathScanner scanner(text);
  if (!scanner.Take(".")) return std::nullopt;
  Path path;
  do {
    if (!TakeStep(scanner, path.steps.emplace_back())) return std::nullopt;
  } while (!scanner.AtEnd());
  return path;
}

std::string_view NameInPath(std::string_view path) {
  if (!path.starts_with("./")) return {};
  path.remove_prefix(2);
  return IsQualifiedName(path) ? path : std::string_view();
}

}  // namespace dom
