// Looks into this program's operator new, which allocations.cpp replaces.
#pragma once

#include <cstddef>

namespace allocations {

/// Bytes that are allocated now.
std::size_t LiveBytes();

/// Lets the allocations of this thread fail from the given one (0 for the next) to the object's
/// end.
class FailFrom {
 public:
  explicit FailFrom(std::size_t position);
  FailFrom(const FailFrom&) = delete;
  FailFrom& operator=(const FailFrom&) = delete;
  ~FailFrom();

  bool HasFailed() const;
};

}  // namespace allocations
