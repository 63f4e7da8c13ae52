#pragma once

/// While it lives, operator new succeeds `count` more times on this thread and fails from then on.
class FailAfter {
 public:
  explicit FailAfter(int count);
  FailAfter(const FailAfter&) = delete;
  FailAfter& operator=(const FailAfter&) = delete;
  ~FailAfter();
};
