// Makes the system calls of saving fail, stop half-way or end the process. This program links with
// --wrap for each of them, on Windows for the library's pointers to them: calls of the library's
// objects come through here.
#pragma once

#include <string>

namespace disk_faults {

/// What happens at the chosen call.
enum class Fault {
  NoSpace,
  NoRights,
  Device,       ///< it is broken
  Interrupted,  ///< EINTR, once; Linux alone
  Short,        ///< a write takes half of its bytes; other calls work
  KillBefore,   ///< the process ends in place of the call
  KillHalf,     ///< the process ends after half of a write, or after the whole of another call
};

/// Whether calls can be interrupted here.
extern const bool kIsInterruptible;

/// While it lives, call number `position` (0 for the next one) of those that save meets the fault.
/// NoSpace, NoRights and Device stay: every later write, create, flush and rename fails, too.
class Scope {
 public:
  Scope(Fault fault, int position);
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;
  ~Scope();
};

/// How many calls there were since the scope began.
int Calls();

/// 'f' for every flush and 'r' for every rename since the scope began, in their order. Linux alone.
const std::string& Order();

/// Exit status of a process that was killed so.
constexpr int kKilled = 99;

}  // namespace disk_faults
