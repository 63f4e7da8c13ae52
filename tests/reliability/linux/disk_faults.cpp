#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

#include "reliability/disk_fault_plan.h"

namespace disk_faults {
namespace {

int ErrorOf(Fault fault) {
  switch (fault) {
    case Fault::NoSpace:
      return ENOSPC;
    case Fault::NoRights:
      return EACCES;
    case Fault::Interrupted:
      return EINTR;
    default:
      return EIO;
  }
}

/// Answers for a call that is hit; `really` is the call itself.
template <typename Call>
auto Answer(Call really) -> decltype(really()) {
  if (!IsHit() || Chosen() == Fault::Short) return really();
  if (Chosen() == Fault::KillHalf) static_cast<void>(really());
  if (EndsProcess()) _exit(kKilled);
  errno = ErrorOf(Chosen());
  return -1;
}

}  // namespace

const bool kIsInterruptible = true;

}  // namespace disk_faults

using disk_faults::Answer;

extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int handle, const void* bytes, std::size_t count);
int __real_rename(const char* from, const char* to);
int __real_renameat2(int fromAt, const char* from, int toAt, const char* to, unsigned flags);
int __real_close(int handle);
int __real_fchmod(int handle, mode_t mode);

int __wrap_open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return Answer([=] { return __real_open(path, flags, mode); });
}

ssize_t __wrap_write(int handle, const void* bytes, std::size_t count) {
  using disk_faults::Fault;
  const Fault chosen = disk_faults::Chosen();
  if (!disk_faults::IsHit()) return __real_write(handle, bytes, count);
  if (chosen == Fault::Short) return __real_write(handle, bytes, (count + 1) / 2);
  if (chosen == Fault::KillHalf) static_cast<void>(__real_write(handle, bytes, count / 2));
  if (disk_faults::EndsProcess()) _exit(disk_faults::kKilled);
  errno = disk_faults::ErrorOf(chosen);
  return -1;
}

// No test cuts the power: a flush is counted and not made, which takes most of the time.
int __wrap_fsync(int handle) {
  disk_faults::Note('f');
  return Answer([=] { return fcntl(handle, F_GETFD) < 0 ? -1 : 0; });
}

int __wrap_rename(const char* from, const char* to) {
  disk_faults::Note('r');
  return Answer([=] { return __real_rename(from, to); });
}

int __wrap_renameat2(int fromAt, const char* from, int toAt, const char* to, unsigned flags) {
  disk_faults::Note('r');
  return Answer([=] { return __real_renameat2(fromAt, from, toAt, to, flags); });
}

// A close that reports an error has closed all the same.
int __wrap_close(int handle) {
  if (!disk_faults::IsHit()) return __real_close(handle);
  if (disk_faults::Chosen() == disk_faults::Fault::KillBefore) _exit(disk_faults::kKilled);
  const int result = __real_close(handle);
  if (disk_faults::EndsProcess()) _exit(disk_faults::kKilled);
  if (disk_faults::Chosen() == disk_faults::Fault::Short) return result;
  errno = disk_faults::ErrorOf(disk_faults::Chosen());
  return -1;
}

int __wrap_fchmod(int handle, mode_t mode) {
  return Answer([=] { return __real_fchmod(handle, mode); });
}

}  // extern "C"
