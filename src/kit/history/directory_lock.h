#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "kit/failure.h"

namespace host {
class FileLock;
}

namespace zortunedex::kit::history {

/// Somebody else changes the directory, and did not end in time; nothing was changed.
class DirectoryBusy : public Failure {
  using Failure::Failure;
};

/// Keeps every other command that changes a directory waiting while it lives.
class DirectoryLock {
 public:
  /// Makes the history's folder and the lock where they are not there yet, and waits for the lock.
  /// DirectoryBusy when it cannot be had within that time, Failure when it cannot be made.
  DirectoryLock(const std::string& directory, std::chrono::seconds wait);
  ~DirectoryLock();

 private:
  std::unique_ptr<host::FileLock> m_lock;
};

}  // namespace zortunedex::kit::history
