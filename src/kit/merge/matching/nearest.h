#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zortunedex::kit::merge {

/// A node of one of two sides on a line.
struct Point {
  std::uint32_t value = 0;
  std::size_t node = 0;
  bool isLeft = false;
};

/// Pairs of a left and a right node, the nearest two first and each node once, until no two are
/// within `reach`. Of equally near ones the lowest are taken, then the first. O(n log n).
std::vector<std::pair<std::size_t, std::size_t>> NearestPairs(std::vector<Point> points,
                                                              std::uint32_t reach);

}  // namespace zortunedex::kit::merge
