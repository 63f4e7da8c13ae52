#pragma once

#include <atomic>
#include <mutex>

#include "platform/com.h"

/// A lock that its own thread may take again.
class CriticalSection {
 public:
  CriticalSection() = default;
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

  // Named for std::lock_guard.
  void lock() {
    m_mutex.lock();
    ++m_depth;
  }
  void unlock() {
    m_mutex.unlock();
    --m_depth;
  }

  /// How often the lock is held. It falls just after the lock is free, so it is exact only when
  /// nobody is leaving: for tests and debuggers.
  LONG Depth() const { return m_depth; }

 private:
  std::recursive_mutex m_mutex;
  std::atomic<LONG> m_depth{0};
};
