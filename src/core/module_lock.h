#pragma once

#include <atomic>

#include "platform/com.h"

/// Counts what keeps the library loaded: every database object, and every lock of the class
/// factory.
class ModuleLock {
 public:
  ModuleLock() { Lock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock() { Unlock(); }

  static void Lock() { ++s_count; }
  static void Unlock() { --s_count; }
  static bool IsHeld() { return s_count != 0; }

 private:
  static inline std::atomic<LONG> s_count{0};
};
