#include "platform/linux/dom/path_matches.h"

#include <algorithm>

namespace domtree {

PathMatches::PathMatches(const dom::Path& path, const Node& context)
    : m_parent(&context), m_candidate(context.First()) {
  const Names& names = context.Owner().GetNames();
  m_steps.reserve(path.steps.size());
  for (const dom::Path::Step& step : path.steps) {
    Step& own = m_steps.emplace_back(Step{names.Find(step.name), {}});
    for (const dom::Path::Predicate& predicate : step.predicates) {
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
