#include "platform/com.h"
#include "reliability/disk_fault_plan.h"

namespace disk_faults {
namespace {

DWORD ErrorOf(Fault fault) {
  switch (fault) {
    case Fault::NoSpace:
      return ERROR_DISK_FULL;
    case Fault::NoRights:
      return ERROR_ACCESS_DENIED;
    default:
      return ERROR_IO_DEVICE;
  }
}

void EndProcess() {
  if (EndsProcess()) TerminateProcess(GetCurrentProcess(), kKilled);
}

/// Answers `failed` for a call that is hit; `really` is the call itself.
template <typename Result, typename Call>
Result Answer(Result failed, Call really) {
  if (!IsHit() || Chosen() == Fault::Short) return really();
  if (Chosen() == Fault::KillHalf) static_cast<void>(really());
  EndProcess();
  SetLastError(ErrorOf(Chosen()));
  return failed;
}

}  // namespace

const bool kIsInterruptible = false;

}  // namespace disk_faults

using disk_faults::Answer;

// What the library calls through its import table are these pointers.
extern "C" {

extern decltype(&CreateFileW) __real___imp_CreateFileW;
extern decltype(&WriteFile) __real___imp_WriteFile;
extern decltype(&MoveFileExW) __real___imp_MoveFileExW;
extern decltype(&CloseHandle) __real___imp_CloseHandle;

static HANDLE WINAPI FaultyCreate(LPCWSTR path, DWORD access, DWORD share,
                                  LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                                  HANDLE form) {
  return Answer(INVALID_HANDLE_VALUE, [=] {
    return __real___imp_CreateFileW(path, access, share, security, disposition, flags, form);
  });
}

static BOOL WINAPI FaultyWrite(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                               LPOVERLAPPED overlapped) {
  using disk_faults::Fault;
  const Fault chosen = disk_faults::Chosen();
  const auto write = [=](DWORD some) {
    return __real___imp_WriteFile(file, bytes, some, written, overlapped);
  };
  if (!disk_faults::IsHit()) return write(count);
  if (chosen == Fault::Short) return write((count + 1) / 2);
  if (chosen == Fault::KillHalf) static_cast<void>(write(count / 2));
  disk_faults::EndProcess();
  SetLastError(disk_faults::ErrorOf(chosen));
  return FALSE;
}

// No test cuts the power: a flush is counted and not made, which takes most of the time.
static BOOL WINAPI FaultyFlush(HANDLE file) {
  DWORD flags = 0;
  return Answer(FALSE, [&] { return GetHandleInformation(file, &flags); });
}

static BOOL WINAPI FaultyMove(LPCWSTR from, LPCWSTR to, DWORD flags) {
  return Answer(FALSE, [=] { return __real___imp_MoveFileExW(from, to, flags); });
}

// A handle whose closing reports an error is closed all the same.
static BOOL WINAPI FaultyClose(HANDLE handle) {
  using disk_faults::Fault;
  const Fault chosen = disk_faults::Chosen();
  if (!disk_faults::IsHit()) return __real___imp_CloseHandle(handle);
  if (chosen == Fault::KillBefore) disk_faults::EndProcess();
  const BOOL result = __real___imp_CloseHandle(handle);
  disk_faults::EndProcess();
  if (chosen == Fault::Short) return result;
  SetLastError(disk_faults::ErrorOf(chosen));
  return FALSE;
}

decltype(&CreateFileW) __wrap___imp_CreateFileW = FaultyCreate;
decltype(&WriteFile) __wrap___imp_WriteFile = FaultyWrite;
decltype(&FlushFileBuffers) __wrap___imp_FlushFileBuffers = FaultyFlush;
decltype(&MoveFileExW) __wrap___imp_MoveFileExW = FaultyMove;
decltype(&CloseHandle) __wrap___imp_CloseHandle = FaultyClose;

}  // extern "C"
