// Makes memory run out on this thread: operator new, task memory, BSTRs and what libxml2 allocates.
#pragma once

namespace memory_faults {

enum class Lasts {
  Once,     ///< the one allocation fails, later ones work again
  ForGood,  ///< every later one fails, too
};

/// While it lives, allocation number `position` (0 for the next one) fails.
class Scope {
 public:
  Scope(int position, Lasts lasts);
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;
  ~Scope();

  bool HasFailed() const;
};

}  // namespace memory_faults
