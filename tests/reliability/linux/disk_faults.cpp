#include "reliability/disk_faults.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace disk_faults {
namespace {

bool isOn = false;
Fault chosen = Fault::Device;
int left = 0;
int calls = 0;

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

bool Stays() {
  return chosen == Fault::NoSpace || chosen == Fault::NoRights || chosen == Fault::Device;
}

/// True when this call is the chosen one, or follows it and the fault stays.
bool IsHit() {
  if (!isOn) return false;
  const int number = calls++;
  return number == left || (number > left && Stays());
}

bool EndsProcess() { return chosen == Fault::KillBefore || chosen == Fault::KillHalf; }

/// Answers for a call that is hit; `really` is the call itself.
template <typename Call>
auto Answer(Call really) -> decltype(really()) {
  if (!IsHit() || chosen == Fault::Short) return really();
  if (chosen == Fault::KillHalf) static_cast<void>(really());
  if (EndsProcess()) _exit(kKilled);
  errno = ErrorOf(chosen);
  return -1;
}

}  // namespace

const bool kIsInterruptible = true;

Scope::Scope(Fault fault, int position) {
  chosen = fault;
  left = position;
  calls = 0;
  isOn = true;
}

Scope::~Scope() { isOn = false; }

int Calls() { return calls; }

}  // namespace disk_faults

using disk_faults::Answer;

extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int handle, const void* bytes, std::size_t count);
int __real_fsync(int handle);
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
  using disk_faults::chosen;
  using disk_faults::Fault;
  if (!disk_faults::IsHit()) return __real_write(handle, bytes, count);
  if (chosen == Fault::Short) return __real_write(handle, bytes, (count + 1) / 2);
  if (chosen == Fault::KillHalf) static_cast<void>(__real_write(handle, bytes, count / 2));
  if (disk_faults::EndsProcess()) _exit(disk_faults::kKilled);
  errno = disk_faults::ErrorOf(chosen);
  return -1;
}

int __wrap_fsync(int handle) {
  return Answer([=] { return __real_fsync(handle); });
}

int __wrap_rename(const char* from, const char* to) {
  return Answer([=] { return __real_rename(from, to); });
}

int __wrap_renameat2(int fromAt, const char* from, int toAt, const char* to, unsigned flags) {
  return Answer([=] { return __real_renameat2(fromAt, from, toAt, to, flags); });
}

// A close that reports an error has closed all the same.
int __wrap_close(int handle) {
  if (!disk_faults::IsHit()) return __real_close(handle);
  if (disk_faults::chosen == disk_faults::Fault::KillBefore) _exit(disk_faults::kKilled);
  const int result = __real_close(handle);
  if (disk_faults::EndsProcess()) _exit(disk_faults::kKilled);
  if (disk_faults::chosen == disk_faults::Fault::Short) return result;
  errno = disk_faults::ErrorOf(disk_faults::chosen);
  return -1;
}

int __wrap_fchmod(int handle, mode_t mode) {
  return Answer([=] { return __real_fchmod(handle, mode); });
}

}  // extern "C"
