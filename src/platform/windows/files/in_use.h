#pragma once

#include "platform/com.h"

namespace in_use {

/// Somebody who loads or saves the same file has it for a few milliseconds, and so have programs
/// that look into every new file; nobody who keeps it open is waited for longer than this.
inline constexpr int kTries = 20;
inline constexpr DWORD kPause = 10;  ///< milliseconds

/// Replacing an open file is answered like replacing one without the right to.
inline bool MayPass(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
         error == ERROR_ACCESS_DENIED;
}

/// Calls `attempt` until it answers true, somebody else's use of the file is not what hinders it,
/// or the time is over. GetLastError tells why it failed.
template <typename Attempt>
bool Retry(Attempt attempt) {
  for (int i = 1; !attempt(); ++i) {
    if (i == kTries || !MayPass(GetLastError())) return false;
    Sleep(kPause);
  }
  return true;
}

}  // namespace in_use
