#include "platform/linux/dom/path.h"

#include <algorithm>

namespace domtree {
namespace {

/// Takes a path apart from its front.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : m_rest(text) {}

  bool AtEnd() const { return m_rest.empty(); }
  bool Take(std::string_view expected) {
    if (!m_rest.starts_with(expected)) return false;
    m_rest.remove_prefix(expected.size());
    return true;
  }
  void SkipBlanks() {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size()));
  }
  /// A name, with a prefix or without.
  bool TakeName(std::string_view& name) {
    name = m_rest.substr(0, m_rest.find_first_of("/[=] \t"));
    m_rest.remove_prefix(name.size());
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) return IsPlainName(name);
    return IsPlainName(name.substr(0, colon)) && IsPlainName(name.substr(colon + 1));
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

}  // namespace

std::optional<Path> Path::Parse(std::string_view text) {
  Scanner scanner(text);
  Path path;
  if (!scanner.Take(".")) return std::nullopt;
  do {
    Step& step = path.m_steps.emplace_back();
    if (!scanner.Take("/") || !scanner.TakeName(step.name)) return std::nullopt;
    while (scanner.Take("[@")) {
      Predicate& predicate = step.predicates.emplace_back();
      if (!scanner.TakeName(predicate.name)) return std::nullopt;
      scanner.SkipBlanks();
      if (!scanner.Take("=")) return std::nullopt;
      scanner.SkipBlanks();
      if (!scanner.TakeQuoted(predicate.value) || !scanner.Take("]")) return std::nullopt;
    }
  } while (!scanner.AtEnd());
  return path;
}

PathMatches::PathMatches(const Path& path, const Node& context)
    : m_parent(&context), m_candidate(context.First()) {
  const Names& names = context.Owner().GetNames();
  m_steps.reserve(path.m_steps.size());
  for (const Path::Step& step : path.m_steps) {
    Step& own = m_steps.emplace_back(Step{names.Find(step.name), {}});
    for (const Path::Predicate& predicate : step.predicates) {
      own.predicates.push_back({names.Find(predicate.name), predicate.value});
    }
  }
}

Node* PathMatches::Next() {
  for (;;) {
    while (m_candidate && !Matches(*m_candidate, m_steps[m_step])) {
      m_candidate = m_candidate->Next();
    }
    if (m_candidate == nullptr) {
      if (m_step == 0) return nullptr;
      --m_step;
      m_candidate = m_parent->Next();
      m_parent = m_parent->Parent();
    } else if (m_step + 1 == m_steps.size()) {
      Node* const match = m_candidate;
      m_candidate = match->Next();
      return match;
    } else {
      ++m_step;
      m_parent = m_candidate;
      m_candidate = m_parent->First();
    }
  }
}

bool PathMatches::Matches(const Node& node, const Step& step) {
  // The name alone would do, but a processing instruction has one too.
  if (node.Name() != step.name || !node.IsElement()) return false;
  return std::all_of(step.predicates.begin(), step.predicates.end(),
                     [&node](const Predicate& predicate) {
                       const Attribute* attribute = node.FindAttribute(predicate.name);
                       return attribute && node.ValueOf(*attribute) == predicate.value;
                     });
}

}  // namespace domtree
