#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace host {
class FileLock;
}

namespace zortunedex::kit::history {

/// Keeps every other command that changes a directory waiting while it lives.
class DirectoryLock {
 public:
  /// Makes the history's folder and the lock where they are not there yet, and waits for the lock.
  /// Failure when it cannot be had within that time.
  DirectoryLock(const std::string& directory, std::chrono::seconds wait);
  ~DirectoryLock();

 private:
  std::unique_ptr<host::FileLock> m_lock;
};

}  // namespace zortunedex::kit::history
