// Which service of one table is which of another one.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "kit/merge/matching/nodes.h"

namespace zortunedex::kit::merge {

/// Several services that fit each other, and nothing tells which is which.
struct Ambiguity {
  std::vector<std::size_t> left;
  std::vector<std::size_t> right;
};

/// By nodes; kNone where there is none.
struct Matching {
  std::vector<std::size_t> rightOf;
  std::vector<std::size_t> leftOf;
  std::vector<Ambiguity> ambiguities;
  std::vector<std::size_t> ambiguityOfLeft;
  std::vector<std::size_t> ambiguityOfRight;

  bool IsOpenLeft(std::size_t node) const {
    return rightOf[node] == kNone && ambiguityOfLeft[node] == kNone;
  }
  bool IsOpenRight(std::size_t node) const {
    return leftOf[node] == kNone && ambiguityOfRight[node] == kNone;
  }
  void Pair(std::size_t left, std::size_t right) {
    rightOf[left] = right;
    leftOf[right] = left;
  }
};

/// Nodes that are known to belong together, left and right.
using Hints = std::vector<std::pair<std::size_t, std::size_t>>;

/// One to one: the hints, then what is the same in everything, then tier by tier what is left.
/// Where several fit, those of the same place on the air belong together, then those of the same
/// name; others are ambiguous and match nothing further. O(n log n).
Matching MatchNodes(const Nodes& left, const Nodes& right, InputSignalType signal,
                    const Hints& hints = {});

}  // namespace zortunedex::kit::merge
