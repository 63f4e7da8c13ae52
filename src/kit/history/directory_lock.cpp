#include "kit/history/directory_lock.h"

#include <thread>

#include "kit/history/snapshots/file_set.h"
#include "platform/host.h"

namespace zortunedex::kit::history {
namespace {

constexpr std::chrono::milliseconds kPause{10};

}  // namespace

DirectoryLock::DirectoryLock(const std::string& directory, std::chrono::seconds wait) {
  std::string cause;
  const std::string folder = PathOf(directory, kFolder);
  if (!host::MakeFolder(folder, cause)) {
    throw Failure{E_FAIL,
                  std::string(kFolder) + " cannot be made: " + cause + "; nothing was changed"};
  }
  m_lock = std::make_unique<host::FileLock>(PathOf(folder, "lock"), cause);
  if (!m_lock->IsOpen()) {
    throw Failure{E_FAIL, std::string(kFolder) + "/lock cannot be opened: " + cause +
                              "; nothing was changed"};
  }
  const auto end = std::chrono::steady_clock::now() + wait;
  while (!m_lock->Take()) {
    if (std::chrono::steady_clock::now() >= end) {
      throw DirectoryBusy{
          E_FAIL, "another command is changing the directory; nothing was changed. Waited " +
                      std::to_string(wait.count()) + " s"};
    }
    std::this_thread::sleep_for(kPause);
  }
}

DirectoryLock::~DirectoryLock() = default;

}  // namespace zortunedex::kit::history
