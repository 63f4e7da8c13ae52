#pragma once

#include <string_view>
#include <vector>

#include "platform/dom_path.h"
#include "platform/linux/tree/store.h"

namespace domtree {

/// Walks the matches of a path below an element, in document order. The tree must not change
/// meanwhile, and the path's text must stay.
class PathMatches {
 public:
  PathMatches(const dom::Path& path, const Node& context);

  /// Null when there is no further one.
  Node* Next();

 private:
  struct Predicate {
    NameId name;
    std::string_view value;
  };
  struct Step {
    NameId name;
    std::vector<Predicate> predicates;
  };

  static bool Matches(const Node& node, const Step& step);

  std::vector<Step> m_steps;
  /// The candidate for the step, and the node whose child it is.
  const Node* m_parent;
  Node* m_candidate;
  std::size_t m_step = 0;
};

}  // namespace domtree
