// Names of elements and attributes, and the paths that select elements, as the document seam takes
// them on both targets.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace dom {

/// True for what a new element or attribute may be called: an ASCII name without a prefix.
bool IsPlainName(std::string_view name);

/// True for an ASCII name, with a prefix or without.
bool IsQualifiedName(std::string_view name);

/// A relative path, a chain of steps: "./A", "./A/B[@x='1'][@y = '2']". Its views point into the
/// text it was made from.
struct Path {
  struct Predicate {
    std::string_view name;
    std::string_view value;
  };
  /// A child element's name, and what its attributes must be.
  struct Step {
    std::string_view name;
    std::vector<Predicate> predicates;
  };

  /// None when the text is no such path. Nothing else may reach a platform's own reader: Wine's
  /// crashes on malformed paths, and a path made of somebody's text must not become another
  /// question.
  static std::optional<Path> Parse(std::string_view text);

  std::vector<Step> steps;  ///< one or more
};

/// The name in a path of one step without predicates, the commonest of all; empty for any other
/// text. Takes no memory.
std::string_view NameInPath(std::string_view path);

}  // namespace dom
